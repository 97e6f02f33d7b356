// The entries of a list as views show them.
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <functional>

#include "host/screens/list_items.h"

namespace qorhost {

/// What is shown of an entry's text.
using EntryText = std::function<QString(const QString& text)>;

/// Shares the entries with the list that they are of; texts are made when they are looked at, so
/// that a list of tens of thousands opens at once.
class ListEntriesModel final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  /// Shows other entries. Those that are only appended leave the view where it is, and a list
  /// that was filled again with the same as it is.
  void Show(const ListItems& items);
  /// Shows the texts of all entries, from now on, as the function says.
  void ShowTextsBy(EntryText text);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  ListItems items_;
  EntryText text_;
};

}  // namespace qorhost

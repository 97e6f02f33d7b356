// The rows of a desk's list as a table view shows them.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <vector>

#include "host/desks/list.h"
#include "host/desktop/screens/wanted_text.h"
#include "host/files/table.h"

namespace qorhost {

/// Texts are made when they are looked at. Sorts as the desks do: dates as dates, numbers as
/// numbers, what has no value last; and narrows to the rows with a text in one of their cells.
class ListTableModel final : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Shows another list, sorted and narrowed as the last one was.
  void Show(List list);
  /// The rows of a table whose cells are for people already.
  void Show(const Table& table);
  /// To those in which WantedText finds it; an empty text shows all rows.
  void Narrow(const QString& text);

  /// How many rows there are, with those that are not shown.
  [[nodiscard]] std::size_t total() const { return all_.rows.size(); }
  /// All that is shown, in its order.
  [[nodiscard]] const List& shown() const { return shown_; }
  /// The row that is shown at a place.
  [[nodiscard]] const std::vector<qorcred::Value>& Row(int row) const {
    return shown_.rows.at(static_cast<std::size_t>(row));
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  void ShowAsAsked();

  List all_;
  List shown_;
  WantedText text_;
  int sortedBy_ = -1;
  bool downwards_ = false;
};

}  // namespace qorhost

// The differences between a unit and the store, each to be accepted or not.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <cstddef>
#include <functional>
#include <vector>

#include "host/desks/unit_merge.h"
#include "host/desktop/screens/wanted_text.h"

namespace qorhost {

/// A row for each difference with a box to tick. One thread.
class MergeTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Null shows nothing. What was accepted before is accepted still where it is there still. The
  /// merge must live until another one is shown.
  void Show(const UnitMerge* merge, const std::vector<UnitCode>& unit);
  /// Any letter case; an empty text shows all.
  void Narrow(const QString& text);
  void Accept(int row, bool accepted);
  void AcceptShown();
  void AcceptNone();
  /// Called when something else is accepted.
  void OnAccept(std::function<void()> handler) { onAccept_ = std::move(handler); }

  /// Places of the plan's steps, in their order.
  [[nodiscard]] std::vector<std::size_t> Accepted() const;
  [[nodiscard]] bool IsAccepted(int row) const { return accepted_.at(StepAt(row)); }
  /// The step of the plan that is shown at a place.
  [[nodiscard]] std::size_t StepAt(int row) const {
    return shown_.at(static_cast<std::size_t>(row));
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  struct Difference {
    MergeAction action = MergeAction::kInsert;
    MergeSubject subject;
    QString what;
  };
  [[nodiscard]] QString TextAt(std::size_t step, int column) const;
  void ShowAsAsked();
  void TellAccepted();

  std::vector<Difference> differences_;
  std::vector<bool> accepted_;
  std::vector<std::size_t> shown_;
  WantedText text_;
  std::function<void()> onAccept_;
};

}  // namespace qorhost

// What becomes of the rows of a desktop database file, before there is a store of them.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "host/desks/moving_in/moving_plan.h"
#include "host/desktop/screens/list_table_model.h"

namespace qorhost {

/// Shows the plan of all units or of one. Accepted when the store is to be made of it.
class MovingDialog final : public QDialog {
  Q_OBJECT

 public:
  /// Makes the plan of a unit, or of all; nothing where it cannot be made, which was told.
  using Planning = std::function<std::optional<MovingPlan>(std::optional<std::int32_t> unit)>;

  /// `plan` is that of all units.
  MovingDialog(QWidget* parent, QString file, MovingPlan plan, Planning planning);

  [[nodiscard]] const MovingPlan& plan() const { return plan_; }

 private:
  void FillUnits();
  void Choose(int index);
  void Show();
  void SaveReport();

  QString file_;
  MovingPlan plan_;
  Planning planning_;
  QComboBox* units_;
  QLabel* summary_;
  ListTableModel cells_;
  QTableView* table_;
  QCheckBox* skips_;
  QPushButton* make_ = nullptr;
};

}  // namespace qorhost

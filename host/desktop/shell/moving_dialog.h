// What becomes of the rows of a desktop database file, before there is a store of them.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "host/desks/moving_in/moving_in.h"
#include "host/desktop/screens/list_table_model.h"

namespace qorhost {

/// Where the new store is to be.
enum class MovingTarget : std::uint8_t { kFile, kServer };

/// Shows the plan of all units or of one. Accepted when the store is to be made of it.
class MovingDialog final : public QDialog {
  Q_OBJECT

 public:
  /// Makes the plan of an order; nothing where it cannot be made, which was told.
  using Planning = std::function<std::optional<MovingPlan>(const MovingOrder& order)>;

  /// `plan` is that of `order`, which is of all units. `never` are files that no report is written
  /// over, beside that of the order.
  MovingDialog(QWidget* parent, MovingOrder order, MovingPlan plan, Planning planning,
               std::vector<std::filesystem::path> never);

  [[nodiscard]] const MovingPlan& plan() const { return plan_; }
  [[nodiscard]] MovingTarget target() const { return target_; }

 private:
  void FillUnits();
  void FillCodePages();
  void Choose();
  void Show();
  void Make(MovingTarget target);
  void SaveReport();

  MovingOrder order_;
  MovingPlan plan_;
  Planning planning_;
  std::vector<std::filesystem::path> never_;
  MovingTarget target_ = MovingTarget::kFile;
  QComboBox* units_;
  QComboBox* codePages_;
  QLabel* summary_;
  ListTableModel cells_;
  QTableView* table_;
  QCheckBox* skips_;
  QPushButton* make_ = nullptr;
  QPushButton* makeOnServer_ = nullptr;
};

}  // namespace qorhost

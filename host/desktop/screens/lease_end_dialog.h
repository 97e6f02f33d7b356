// The day on which leases end, and whether their cards are free at once.
#pragma once

#include <QCheckBox>
#include <QDateEdit>
#include <QDialog>

#include "frame/value.h"

namespace qorhost {

class LeaseEndDialog final : public QDialog {
  Q_OBJECT

 public:
  LeaseEndDialog(QWidget* parent, const QString& whose, qorcred::Date today);

  /// The last day, "2026-01-31".
  [[nodiscard]] QString day() const { return day_->date().toString(Qt::ISODate); }
  [[nodiscard]] bool freesCards() const { return frees_->isChecked(); }

 private:
  QDateEdit* day_;
  QCheckBox* frees_;
};

}  // namespace qorhost

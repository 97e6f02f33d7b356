// What is wrong in a store, as a list that can be copied.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QTableView>

#include "host/desktop/screens/list_table_model.h"
#include "host/files/table.h"

namespace qorhost {

class FaultsDialog final : public QDialog {
  Q_OBJECT

 public:
  FaultsDialog(QWidget* parent, const Table& faults);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Copy() const;
  void TellWhole(int row);

  ListTableModel rows_;
  QTableView* table_;
  QLabel* whole_;  // of the row that is looked at: a line of the table may be too short
};

}  // namespace qorhost

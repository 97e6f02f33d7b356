// What an operation on many rows would change, shown before it is done.
#pragma once

#include <QDialog>
#include <QString>

#include "host/desktop/screens/list_table_model.h"
#include "host/files/table.h"

namespace qorhost {

/// A table of the changes, and the buttons that have them made or not.
class ChangesDialog final : public QDialog {
  Q_OBJECT

 public:
  /// `what` tells in a sentence what will happen; `go` is on the button that has it done.
  ChangesDialog(QWidget* parent, const QString& what, const Table& changes, const QString& go);

  /// True when it is to be done.
  [[nodiscard]] static bool Ask(QWidget* parent, const QString& what, const Table& changes,
                                const QString& go);

 private:
  ListTableModel rows_;
};

}  // namespace qorhost

#include "host/desktop/screens/changes_dialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "host/desktop/screens/fitted_table.h"

namespace qorhost {

namespace {
constexpr QSize kChangesSize(720, 420);
}

ChangesDialog::ChangesDialog(QWidget* parent, const QString& what, const Table& changes,
                             const QString& go)
    : QDialog(parent) {
  setWindowTitle(QCoreApplication::applicationName());
  auto* column = new QVBoxLayout(this);
  auto* sentence = new QLabel(what, this);
  sentence->setTextFormat(Qt::PlainText);
  sentence->setWordWrap(true);
  column->addWidget(sentence);
  auto* table = new QTableView(this);
  table->setObjectName(QStringLiteral("changes"));
  table->setAccessibleName(tr("What will be changed"));
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setAlternatingRowColors(true);
  table->setShowGrid(false);
  table->setTabKeyNavigation(false);
  table->setWordWrap(false);
  table->setSortingEnabled(true);
  SetUp(*table, rows_);
  rows_.Show(changes);
  FitColumns(*table);
  column->addWidget(table, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* done = buttons->addButton(go, QDialogButtonBox::AcceptRole);
  done->setObjectName(QStringLiteral("goButton"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(buttons);
  resize(kChangesSize);
  buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
  buttons->button(QDialogButtonBox::Cancel)->setFocus();
}

bool ChangesDialog::Ask(QWidget* parent, const QString& what, const Table& changes,
                        const QString& go) {
  ChangesDialog dialog(parent, what, changes, go);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace qorhost

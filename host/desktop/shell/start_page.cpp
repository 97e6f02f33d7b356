#include "host/desktop/shell/start_page.h"

#include <QLabel>
#include <QVBoxLayout>

#include "host/desktop/screens/heading.h"

namespace qorhost {

namespace {

/// A button with a line under it that says what it is good for.
QPushButton* AddChoice(QVBoxLayout& column, const QString& name, const QString& text,
                       const QString& what) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAccessibleDescription(what);
  auto* label = new QLabel(what);
  label->setWordWrap(true);
  column.addWidget(button);
  column.addWidget(label);
  column.addSpacing(label->fontMetrics().height());
  return button;
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  auto* column = new QVBoxLayout;
  row->addStretch(1);
  row->addLayout(column, 2);
  row->addStretch(1);
  column->addStretch();
  auto* welcome = new Heading(tr("No store is open."));
  column->addWidget(welcome);
  column->addSpacing(welcome->fontMetrics().height());
  demo_ = AddChoice(*column, QStringLiteral("demoButton"), tr("Try the &demo building"),
                    tr("Three units with tenants, credentials and directory codes, in memory: "
                       "nothing of it is kept."));
  open_ = AddChoice(*column, QStringLiteral("openButton"), tr("&Open a store…"),
                    tr("The file of a building that was set up before."));
  new_ = AddChoice(*column, QStringLiteral("newButton"), tr("Make a &new store…"),
                   tr("An empty file for a building, or one with the demo building in it."));
  existing_ =
      AddChoice(*column, QStringLiteral("existingButton"), tr("New from an &existing building…"),
                tr("A store of what another application keeps in a desktop database file."));
  column->addStretch();
}

}  // namespace qorhost

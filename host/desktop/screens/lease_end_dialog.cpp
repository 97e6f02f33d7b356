#include "host/desktop/screens/lease_end_dialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include "host/desktop/binding/qt_text.h"

namespace qorhost {

LeaseEndDialog::LeaseEndDialog(QWidget* parent, const QString& whose, qorcred::Date today)
    : QDialog(parent), day_(new QDateEdit(this)), frees_(new QCheckBox(this)) {
  setWindowTitle(QCoreApplication::applicationName());
  day_->setObjectName(QStringLiteral("lastDay"));
  day_->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
  day_->setCalendarPopup(true);
  day_->setDate(ToQtDay(today));
  frees_->setObjectName(QStringLiteral("freesCards"));
  frees_->setText(tr("&Free the cards at once"));
  auto* form = new QFormLayout(this);
  auto* sentence = new QLabel(whose, this);
  sentence->setTextFormat(Qt::PlainText);
  form->addRow(sentence);
  form->addRow(tr("&Last day:"), day_);
  form->addRow(frees_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* done = buttons->addButton(tr("&End lease…"), QDialogButtonBox::AcceptRole);
  done->setObjectName(QStringLiteral("goButton"));
  done->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(buttons);
}

}  // namespace qorhost

#include "host/desktop/running/messages.h"

#include <QCoreApplication>
#include <QMessageBox>

#include "host/desktop/binding/qt_text.h"

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;

MessageButton ShowMessageBox(QWidget* parent, std::string_view text, MessageStyle style,
                             std::string_view title) {
  QMessageBox box(parent);
  box.setWindowTitle(ToQt(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text));
  box.setIcon(style == MessageStyle::kNotice ? QMessageBox::Information : QMessageBox::Warning);
  if (style != MessageStyle::kQuestion) {
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
    (void)box.exec();
    return MessageButton::kOk;
  }
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.setDefaultButton(QMessageBox::Yes);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes ? MessageButton::kYes : MessageButton::kNo;
}

void TellFailure(QWidget* parent, const QString& what, const QString& why) {
  QMessageBox box(parent);
  box.setWindowTitle(QCoreApplication::applicationName());
  box.setTextFormat(Qt::PlainText);
  box.setText(what);
  box.setInformativeText(why);
  box.setIcon(QMessageBox::Critical);
  box.setStandardButtons(QMessageBox::Ok);
  (void)box.exec();
}

bool AskToGoOn(QWidget* parent, const QString& question) {
  QMessageBox box(parent);
  box.setWindowTitle(QCoreApplication::applicationName());
  box.setTextFormat(Qt::PlainText);
  box.setText(question);
  box.setIcon(QMessageBox::Warning);
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
  box.setDefaultButton(QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

}  // namespace qorhost

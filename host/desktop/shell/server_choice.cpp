#include "host/desktop/shell/server_choice.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QRegularExpression>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/store/server_name.h"

namespace qorhost {

namespace {

struct Server {
  Q_DECLARE_TR_FUNCTIONS(Server)
};

}  // namespace

QString WithoutPassword(QString name) {
  static const QRegularExpression inAddress(QStringLiteral("(://[^/:@]*):.*@"));
  static const QRegularExpression asOption(
      QStringLiteral("((?:ssl)?password\\s*=\\s*)('[^']*'?|[^\\s&]+)"),
      QRegularExpression::CaseInsensitiveOption);
  return name.replace(inAddress, QStringLiteral("\\1@")).replace(asOption, QStringLiteral("\\1"));
}

QString AskForServer(QWidget& window, const QString& last, const QString& title) {
  QString name = last.isEmpty() ? QStringLiteral("postgresql://") : last;
  for (;;) {
    bool isChosen = false;
    name = QInputDialog::getText(
               &window, title.isEmpty() ? Server::tr("Open a store on a server") : title,
               Server::tr("Its name, postgresql://HOST/DATABASE or service=NAME. A password does "
                          "not belong here: it is asked for where the server wants one."),
               QLineEdit::Normal, name, &isChosen)
               .trimmed();
    if (!isChosen) {
      return {};
    }
    if (IsServerName(FromQt(name))) {
      return name;
    }
    TellFailure(&window, Server::tr("%1 is no store on a server.").arg(WithoutPassword(name)),
                Server::tr("Its name begins with postgresql:// or service=."));
    name = WithoutPassword(name);
  }
}

std::optional<std::string> AskForPassword(QWidget& window, const QString& store) {
  bool isGiven = false;
  const QString password = QInputDialog::getText(
      &window, Server::tr("Password"),
      Server::tr("%1 wants a password. It is kept until the program ends, and written nowhere.")
          .arg(WithoutPassword(store)),
      QLineEdit::Password, {}, &isGiven);
  return isGiven ? std::optional(FromQt(password)) : std::nullopt;
}

}  // namespace qorhost

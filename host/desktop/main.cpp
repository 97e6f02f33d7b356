#include <QApplication>
#include <QSettings>
#include <filesystem>
#include <iostream>

#include "host/desks/author.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/main_window.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("qordesk"));
  QApplication::setOrganizationName(QStringLiteral("qorCred"));
  try {
    QSettings settings;
    qorhost::WorkSurroundings surroundings;
    surroundings.author = qorhost::AuthorOfProcess("qordesk");
    qorhost::MainWindow window(settings, std::move(surroundings));
    window.show();
    const QStringList given = QApplication::arguments();
    if (given.size() > 1) {
      window.OpenStore(std::filesystem::path(qorhost::FromQt(given.at(1))));
    } else {
      window.OpenLastStore();
    }
    return QApplication::exec();
  } catch (const std::exception& failure) {
    std::cerr << "qordesk: " << failure.what() << '\n';
  }
  return 1;
}

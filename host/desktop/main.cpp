#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <filesystem>
#include <iostream>

#include "host/desks/author.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/language.h"
#include "host/desktop/shell/main_window.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("qordesk"));
  QApplication::setOrganizationName(QStringLiteral("qorCred"));
  QSettings settings;
  const qorhost::Language language(qorhost::Remembered(settings).language());
  QCommandLineParser words;
  words.setApplicationDescription(QApplication::translate("main", "Looks after a building."));
  words.addHelpOption();
  words.addPositionalArgument(
      QStringLiteral("store"),
      QApplication::translate("main", "The store to open; else that of the last time."),
      QStringLiteral("[store]"));
  words.process(application);
  const QStringList given = words.positionalArguments();
  try {
    qorhost::WorkSurroundings surroundings;
    surroundings.author = qorhost::AuthorOfProcess("qordesk");
    qorhost::MainWindow window(settings, std::move(surroundings));
    window.show();
    if (!given.isEmpty()) {
      window.OpenStore(std::filesystem::path(qorhost::FromQt(given.front())));
    } else {
      window.OpenLastStore();
    }
    return QApplication::exec();
  } catch (const std::exception& failure) {
    std::cerr << "qordesk: " << failure.what() << '\n';
  }
  return 1;
}

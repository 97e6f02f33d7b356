#include "host/desktop/shell/program.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "host/desks/author.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/language.h"

namespace qorhost {

namespace {

/// The store that is named: behind the program's name, with --db, or in the environment as the
/// command line has it; "" for none.
QString StoreGiven(const QCoreApplication& application) {
  QCommandLineParser words;
  words.setApplicationDescription(QApplication::translate("main", "Looks after a building."));
  words.addHelpOption();
  words.addVersionOption();
  words.addPositionalArgument(
      QStringLiteral("store"),
      QApplication::translate("main",
                              "The store to open, a file or postgresql://HOST/DATABASE; else that "
                              "of QORHOST_DB, else that of the last time."),
      QStringLiteral("[store]"));
  const QCommandLineOption store(
      QStringLiteral("db"),
      QApplication::translate("main", "The store to open, as the argument names it."),
      QStringLiteral("store"));
  words.addOption(store);
  words.process(application);
  if (words.isSet(store)) {
    return words.value(store);
  }
  const QStringList given = words.positionalArguments();
  return given.isEmpty() ? qEnvironmentVariable("QORHOST_DB") : given.front();
}

void Name() {
  QCoreApplication::setApplicationName(QStringLiteral("qordesk"));
  QCoreApplication::setApplicationVersion(QStringLiteral(QORHOST_VERSION));
  QCoreApplication::setOrganizationName(QStringLiteral("qorCred"));
}

/// Help and version are asked for where there may be no screen, too.
bool IsAskedAlone(int argc, char** argv) {
  return std::any_of(argv + 1, argv + argc, [](std::string_view word) {
    return word == "-h" || word == "--help" || word == "--help-all" || word == "-v" ||
           word == "--version";
  });
}

/// Prints what is asked for, and ends the process.
void Answer(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  Name();
  QSettings settings;
  const Language language(Remembered(settings).language());
  (void)StoreGiven(application);
}

}  // namespace

int RunProgram(int argc, char** argv, const std::function<void(MainWindow& window)>& shown) {
  if (IsAskedAlone(argc, argv)) {
    Answer(argc, argv);
  }
  const QApplication application(argc, argv);
  Name();
  QSettings settings;
  const Language language(Remembered(settings).language());
  const QString given = StoreGiven(application);
  try {
    WorkSurroundings surroundings;
    surroundings.author = AuthorOfProcess("qordesk");
    MainWindow window(settings, std::move(surroundings));
    window.show();
    if (shown) {
      shown(window);
    }
    if (!given.isEmpty()) {
      window.OpenStore(std::filesystem::path(FromQt(given)));
    } else {
      window.OpenLastStore();
    }
    return QApplication::exec();
  } catch (const std::exception& failure) {
    std::cerr << "qordesk: " << failure.what() << '\n';
  }
  return 1;
}

}  // namespace qorhost

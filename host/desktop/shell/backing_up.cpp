#include "host/desktop/shell/backing_up.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QLocale>
#include <filesystem>

#include "host/desks/store_backup.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"

namespace qorhost {

namespace {

QString BackupText(const char* text) {
  return QCoreApplication::translate("BackUp", text);
}

}  // namespace

void BackUpStore(Workplace& place) {
  QWidget* window = place.window();
  if (place.file().empty()) {
    TellFailure(window, BackupText("There is nothing to back up."),
                BackupText("The demo building is in memory alone: nothing of it is kept."));
    return;
  }
  // The dialog asks before it names a file that exists.
  const QString file =
      QFileDialog::getSaveFileName(window, BackupText("Back up the store"),
                                   QStringLiteral("backup.db"), BackupText("Stores (*.db)"));
  if (file.isEmpty()) {
    return;
  }
  try {
    BackedUp made;
    const bool ran = place.runner().Run(BackupText("Backing up"), [&] {
      made = BackUp(place.file(), std::filesystem::path(FromQt(file)), Standing::kReplaced,
                    place.runner().patience());
    });
    if (ran) {
      place.Tell(BackupText("Backed up to %1 (%2), and read back.")
                     .arg(file, QLocale().formattedDataSize(static_cast<qint64>(made.bytes))));
    }
  } catch (const std::exception& failure) {
    TellFailure(window, BackupText("The store is not backed up."), ToQt(failure.what()));
  }
}

}  // namespace qorhost

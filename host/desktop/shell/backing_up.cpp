#include "host/desktop/shell/backing_up.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QLocale>
#include <filesystem>

#include "host/desks/store_backup.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/words/desk_words.h"

namespace qorhost {

namespace {

struct BackUps {
  Q_DECLARE_TR_FUNCTIONS(BackUp)
};

}  // namespace

void BackUpStore(Workplace& place) {
  QWidget* window = place.window();
  if (place.file().empty()) {
    TellFailure(window, BackUps::tr("There is nothing to back up."),
                BackUps::tr("The demo building is in memory alone: nothing of it is kept."));
    return;
  }
  // The dialog asks before it names a file that exists.
  const QString file =
      QFileDialog::getSaveFileName(window, BackUps::tr("Back up the store"),
                                   QStringLiteral("backup.db"), BackUps::tr("Stores (*.db)"));
  if (file.isEmpty()) {
    return;
  }
  try {
    BackedUp made;
    const bool ran = place.runner().Run(BackUps::tr("Backing up"), [&] {
      made = BackUp(place.file(), std::filesystem::path(FromQt(file)), Standing::kReplaced,
                    place.runner().patience());
    });
    if (ran) {
      place.Tell(BackUps::tr("Backed up to %1 (%2), and read back.")
                     .arg(file, QLocale().formattedDataSize(static_cast<qint64>(made.bytes))));
    }
  } catch (const std::exception& failure) {
    if (place.runner().cancelled()) {
      place.Tell(BackUps::tr("Cancelled. The store is not backed up."));
      return;
    }
    TellFailure(window, BackUps::tr("The store is not backed up."), Told(failure.what()));
  }
}

}  // namespace qorhost

#include "host/desktop/shell/backing_up.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QLocale>
#include <filesystem>

#include "host/desks/store_backup.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/words/desk_words.h"
#include "host/store/server_name.h"

namespace qorhost {

namespace {

struct BackUps {
  Q_DECLARE_TR_FUNCTIONS(BackUps)
};

QString StoreFilter() {
  return BackUps::tr("Stores (*.db)");
}

QString FileName(const std::filesystem::path& file) {
  return ToQt(file.filename().string());
}

/// "monday.db of 26/01/2026 18:00"
QString NameWithDay(const QString& backup) {
  const QFileInfo file(backup);
  return BackUps::tr("%1 of %2")
      .arg(file.fileName(), QLocale().toString(file.lastModified(), QLocale::ShortFormat));
}

std::filesystem::path AskForPlace(QWidget& window) {
  // A store that stands there is kept: the next question says so.
  const QString question = BackUps::tr("Which store is it a backup of?");
  return {FromQt(AskForNewStore(&window, question))};
}

QString QuestionFor(const Restoring& restoring) {
  const QString backup = NameWithDay(ToQt(restoring.backup.string()));
  return IsServerName(restoring.store.string())
             ? BackUps::tr(
                   "Put the backup %1 into the store on the server? A server takes one into "
                   "a new store only: what is in use there stays as it is.")
                   .arg(backup)
             : BackUps::tr(
                   "Put the backup %1 in the place of %2? What was done since then is not "
                   "in it. The store as it is now is kept beside it under another name; "
                   "whoever has it open must open it again.")
                   .arg(backup, FileName(restoring.store));
}

QString ToldOf(const Restoring& restoring, const Restored& restored) {
  const QString done = BackUps::tr("Restored from %1.").arg(FileName(restoring.backup));
  return restored.kept
             ? BackUps::tr("%1 The store as it was is %2.").arg(done, FileName(*restored.kept))
             : done;
}

}  // namespace

void BackUpStore(Workplace& place) {
  QWidget* window = place.window();
  if (place.file().empty()) {
    TellFailure(window, BackUps::tr("There is nothing to back up."),
                BackUps::tr("The demo building is in memory alone: nothing of it is kept."));
    return;
  }
  // The dialog asks before it names a file that exists.
  const QString file = AskWhereTo(window, BackUps::tr("Back up the store"),
                                  QStringLiteral("backup.db"), StoreFilter());
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

std::optional<Restoring> AskWhatToRestore(QWidget& window, const std::filesystem::path& open) {
  const QString backup = AskForStore(&window, BackUps::tr("Restore which backup?"));
  if (backup.isEmpty()) {
    return {};
  }
  Restoring restoring{FromQt(backup), open.empty() ? AskForPlace(window) : open};
  std::error_code unreadable;
  const bool isThere = IsServerName(restoring.store.string()) ||
                       std::filesystem::exists(restoring.store, unreadable);
  if (restoring.store.empty() || (isThere && !AskToGoOn(&window, QuestionFor(restoring)))) {
    return {};
  }
  return restoring;
}

RestoreEnding PutBackupInPlace(QWidget& window, OperationRunner& runner, const Restoring& restoring,
                               qorcred::Date now) {
  try {
    Restored restored;
    const bool ran = runner.Run(BackUps::tr("Restoring the backup"), [&] {
      restored = Restore(restoring.store, restoring.backup, now, runner.patience());
    });
    return ran ? RestoreEnding{true, ToldOf(restoring, restored)} : RestoreEnding{};
  } catch (const std::exception& failure) {
    if (runner.cancelled()) {
      return {false, BackUps::tr("Cancelled. The store is as it was.")};
    }
    TellFailure(&window, BackUps::tr("The backup is not restored."), Told(failure.what()));
  }
  return {};
}

}  // namespace qorhost

#include "host/store/sqlite/unit_of_work.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <utility>

#include "host/store/sqlite/schema.h"
#include "host/store/sqlite/session.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

UnitOfWork::UnitOfWork(Session& session)
    : WorkCourse(session.timeStamp(), session.buffer(), log_),
      session_(session),
      log_(session.database()) {}

UnitOfWork::~UnitOfWork() {
  Undo();
}

UnitVersion UnitOfWork::VersionOf(std::int32_t unitKey) {
  const StatementUse read(session_.Own("SELECT Entry, Mark FROM CurrentVersions WHERE UnitKey=?1"));
  read->BindNumber(1, unitKey);
  return read->Step() ? UnitVersion{read->Number(0), read->Number(1)} : UnitVersion{};
}

bool UnitOfWork::isInTransaction() const noexcept {
  return session_.database().inTransaction();
}

void UnitOfWork::RequireInPlace() {
  const Database& database = session_.database();
  if (HasMoved(database)) {
    Void(VoidReason::kReplaced);
    throw StoreError(
        fmt::format("The store '{}' was moved or replaced while it was open: open it "
                    "again",
                    database.name()));
  }
  const StatementUse version(session_.Own("PRAGMA user_version"));
  if (version->Step() && version->Number(0) > SchemaVersion()) {
    throw StoreError(
        fmt::format("The store '{}' was brought up to date by a newer version of this program "
                    "while it was open: nothing was stored; use that version",
                    database.name()));
  }
}

std::optional<UnitVersion> UnitOfWork::TakeRight() {
  Database& database = session_.database();
  if (order().inParts) {
    database.KeepSavepoints(SavepointRoom::kOneBlock);
  }
  begin_.Run(database);
  RequireInPlace();
  if (!database.RequireOwnLog()) {
    database.Run("ROLLBACK");
    database.ForgetPages();
    begin_.Run(database);
    database.RequireOwnLog();
  }
  return std::nullopt;
}

WorkCourse::Versions UnitOfWork::Store(WorkEntry entry, std::int64_t previous) {
  Versions raised =
      RaiseVersions(session_.audit().Append(std::move(entry), previous, log_.changes()));
  session_.database().RequireSameFile();
  commit_.Run(session_.database());
  return raised;
}

WorkCourse::Versions UnitOfWork::RaiseVersions(std::int64_t entry) {
  if (order().units.size() == 1) {
    return RaiseVersion(order().units.front(), entry);
  }
  // The seal first: the version that stands with it goes where the others are raised.
  const StatementUse seal(session_.Own(
      "UPDATE StoreSeal SET Previous=Mark, Mark=randomblob(16), UnitKey=NULL WHERE rowid=1"));
  seal->Step();
  const StatementUse raise(
      session_.Own("INSERT INTO UnitVersions (UnitKey, Entry, Mark) "
                   "SELECT UnitKey, ?1, random() FROM Units WHERE true "
                   "UNION SELECT UnitKey, ?1, random() FROM UnitVersions WHERE true "
                   "ON CONFLICT (UnitKey) DO UPDATE SET Entry=excluded.Entry, Mark=excluded.Mark "
                   "RETURNING UnitKey, Entry, Mark"));
  raise->BindNumber(1, entry);
  Versions raised;
  while (raise->Step()) {
    raised[static_cast<std::int32_t>(raise->Number(0))] = {raise->Number(1), raise->Number(2)};
  }
  return raised;
}

/// Most operations are meant for one unit: its version and the seal are one row.
WorkCourse::Versions UnitOfWork::RaiseVersion(std::int32_t unitKey, std::int64_t entry) {
  UnitVersion version{entry, 0};
  sqlite3_randomness(sizeof version.mark, &version.mark);
  const StatementUse raise(
      session_.Own("UPDATE StoreSeal SET Previous=Mark, Mark=randomblob(16), UnitKey=?1, Entry=?2, "
                   "UnitMark=?3 WHERE rowid=1"));
  raise->BindNumber(1, unitKey);
  raise->BindNumber(2, version.entry);
  raise->BindNumber(3, version.mark);
  raise->Step();
  return {{unitKey, version}};
}

void UnitOfWork::GiveRightBack() noexcept {
  session_.database().UndoWhatIsOpen();
  if (order().inParts) {
    session_.database().KeepSavepoints(SavepointRoom::kPieces);
  }
}

}  // namespace qorhost::sqlite

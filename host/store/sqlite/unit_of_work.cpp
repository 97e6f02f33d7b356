#include "host/store/sqlite/unit_of_work.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <utility>

#include "host/dialect/canonical_date.h"
#include "host/store/sqlite/schema.h"
#include "host/store/sqlite/session.h"
#include "host/store/statement_rules.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

UnitOfWork::UnitOfWork(Session& session) : session_(session), log_(session.database()) {}

UnitOfWork::~UnitOfWork() {
  Undo();
}

UnitVersion UnitOfWork::VersionOf(std::int32_t unitKey) {
  const StatementUse read(session_.Own("SELECT Entry, Mark FROM CurrentVersions WHERE UnitKey=?1"));
  read->BindNumber(1, unitKey);
  return read->Step() ? UnitVersion{read->Number(0), read->Number(1)} : UnitVersion{};
}

void UnitOfWork::SignAs(Author author) {
  author_ = std::move(author);
}

void UnitOfWork::Begin(WorkOrder order) {
  if (open_ || session_.database().inTransaction()) {
    throw StoreError("An operation is under way already: end it first");
  }
  order_ = std::move(order);
  committed_.clear();
  void_ = VoidReason::kNone;
  open_ = true;
}

void UnitOfWork::Lock() {
  if (locked_) {
    return;
  }
  order_.filled.reset();
  TakeRightToWrite();
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
}

void UnitOfWork::TakeRightToWrite() {
  Database& database = session_.database();
  try {
    if (order_.inParts) {
      database.KeepSavepoints(SavepointRoom::kOneBlock);
    }
    begin_.Run(database);
    locked_ = true;
    RequireInPlace();
    if (!database.RequireOwnLog()) {
      database.Run("ROLLBACK");
      database.ForgetPages();
      begin_.Run(database);
      database.RequireOwnLog();
    }
    before_ = order_.units.empty() ? UnitVersion{} : VersionOf(order_.units.front());
    if (order_.filled.has_value() && before_ != *order_.filled) {
      Void(VoidReason::kStale);
      throw StoreError(std::string(WordsOf(VoidReason::kStale)));
    }
    log_.Start();
  } catch (const StoreError&) {
    Void(VoidReason::kFailed);
    ReleaseRightToWrite();
    throw;
  }
}

void UnitOfWork::RequireUsable() {
  if (!open_) {
    return;
  }
  if (locked_ && !session_.database().inTransaction()) {
    Void(VoidReason::kFailed);  // SQLite gave it up by itself (a full disk, for example)
  }
  if (void_ != VoidReason::kNone) {
    throw StoreError(std::string(WordsOf(void_)));
  }
}

void UnitOfWork::BeforeWrite() {
  RequireUsable();
  if (open_ && !locked_) {
    TakeRightToWrite();
  }
}

void UnitOfWork::AfterFailedWrite() noexcept {
  if (open_) {
    Void(VoidReason::kFailed);
  }
}

void UnitOfWork::WriteHeld() {
  try {
    session_.buffer().Write();
  } catch (...) {
    AfterFailedWrite();
    throw;
  }
}

void UnitOfWork::DropHeld() noexcept {
  session_.buffer().Discard();
}

std::int64_t UnitOfWork::written() const noexcept {
  return locked_ ? log_.touched() + session_.buffer().held() : 0;
}

std::int64_t UnitOfWork::stepsQueued() const noexcept {
  const HeldRows* const steps = session_.buffer().RowsOf("ProgramSteps");
  return log_.steps() + (steps == nullptr ? 0 : static_cast<std::int64_t>(steps->count()));
}

void UnitOfWork::KeepCounts(std::int32_t unitKey, const UnitCounts& now) {
  if (!locked_) {
    throw StoreError("Counts are kept while nobody else can write: take the right to write first");
  }
  log_.counts().Follow(unitKey, now);
}

void UnitOfWork::Void(VoidReason reason) noexcept {
  if (void_ == VoidReason::kNone) {
    void_ = reason;
  }
}

void UnitOfWork::Forgive() noexcept {
  // What SQLite gave up as a whole is lost for every part of it.
  if (locked_ && session_.database().inTransaction()) {
    void_ = VoidReason::kNone;
  }
}

bool UnitOfWork::Commit() {
  if (!open_) {
    throw StoreError("There is no operation to store: begin one first");
  }
  try {
    RequireUsable();
    WriteHeld();
    const bool stored = locked_ && written() > 0;
    if (stored) {
      log_.RequireComplete();
      log_.Stop();
      if (onlyTried_) {
        tried_.insert(tried_.end(), log_.changes().begin(), log_.changes().end());
      } else {
        StoreAll();
      }
    }
    Undo();
    return stored;
  } catch (...) {
    Undo();
    throw;
  }
}

void UnitOfWork::StoreAll() {
  StoreEntry();
  session_.database().RequireSameFile();
  commit_.Run(session_.database());
}

void UnitOfWork::StoreEntry() {
  const qorcred::Date now = author_.utc ? author_.utc() : session_.timeStamp().Clocked();
  WorkEntry entry;
  entry.at = dialect::CanonicalDate(now);
  entry.who = author_.who;
  entry.origin = author_.origin;
  if (order_.units.size() == 1) {
    entry.unitKey = order_.units.front();
  }
  entry.what = order_.what;
  RaiseVersions(session_.audit().Append(std::move(entry), before_.entry, log_.changes()));
}

std::optional<UnitVersion> UnitOfWork::Committed(std::int32_t unitKey) const {
  const auto found = committed_.find(unitKey);
  return found == committed_.end() ? std::nullopt : std::optional(found->second);
}

void UnitOfWork::RaiseVersions(std::int64_t entry) {
  if (order_.units.size() == 1) {
    RaiseVersion(order_.units.front(), entry);
    return;
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
  while (raise->Step()) {
    committed_[static_cast<std::int32_t>(raise->Number(0))] = {raise->Number(1), raise->Number(2)};
  }
}

/// Most operations are meant for one unit: its version and the seal are one row.
void UnitOfWork::RaiseVersion(std::int32_t unitKey, std::int64_t entry) {
  UnitVersion version{entry, 0};
  sqlite3_randomness(sizeof version.mark, &version.mark);
  const StatementUse raise(
      session_.Own("UPDATE StoreSeal SET Previous=Mark, Mark=randomblob(16), UnitKey=?1, Entry=?2, "
                   "UnitMark=?3 WHERE rowid=1"));
  raise->BindNumber(1, unitKey);
  raise->BindNumber(2, version.entry);
  raise->BindNumber(3, version.mark);
  raise->Step();
  committed_[unitKey] = version;
}

void UnitOfWork::Undo() noexcept {
  if (!open_) {
    return;
  }
  ReleaseRightToWrite();
  open_ = false;
}

void UnitOfWork::ReleaseRightToWrite() noexcept {
  log_.Stop();
  locked_ = false;
  DropHeld();
  session_.database().UndoWhatIsOpen();
  if (order_.inParts) {
    session_.database().KeepSavepoints(SavepointRoom::kPieces);
  }
}

}  // namespace qorhost::sqlite

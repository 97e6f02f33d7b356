#include "host/store/postgres/unit_of_work.h"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "host/dialect/canonical_date.h"
#include "host/store/postgres/session.h"
#include "host/store/statement_rules.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

// A random number of 64 bits.
constexpr const char* kRandomMark =
    "('x' || left(gen_random_uuid()::text, 8) || right(gen_random_uuid()::text, 8))::bit(64)::int8";

UnitVersion VersionIn(const Result& result) {
  return result.rows() == 0 ? UnitVersion{} : UnitVersion{result.Number(0, 0), result.Number(0, 1)};
}

}  // namespace

UnitOfWork::UnitOfWork(Session& session) : session_(session), log_(session.connection()) {}

UnitOfWork::~UnitOfWork() {
  Undo();
}

UnitVersion UnitOfWork::VersionOf(std::int32_t unitKey) {
  SentValues values;
  values.AddNumber(unitKey);
  return VersionIn(session_.Own(
      R"(SELECT "Entry", "Mark" FROM "UnitVersions" WHERE "UnitKey"=$1::int4)", values));
}

void UnitOfWork::SignAs(Author author) {
  author_ = std::move(author);
}

void UnitOfWork::Begin(WorkOrder order) {
  if (open_ || session_.inTransaction()) {
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

void UnitOfWork::TakeRightToWrite() {
  try {
    session_.connection().RunAll("BEGIN");
    LockUnits();
    locked_ = true;
    // A statement of its own: it sees what was stored while the lock was waited for.
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

void UnitOfWork::LockUnits() {
  if (order_.units.size() != 1) {
    (void)session_.connection().RunWaiting(kLockStore, session_.patience());
    return;
  }
  const std::int32_t unit = order_.units.front();
  (void)session_.connection().RunWaiting(
      fmt::format(R"(INSERT INTO "UnitVersions" VALUES ({0}, 0, 0) ON CONFLICT DO NOTHING; )"
                  R"(SELECT 1 FROM "UnitVersions" WHERE "UnitKey"={0} FOR UPDATE)",
                  unit),
      session_.patience());
}

void UnitOfWork::RequireUsable() {
  if (!open_) {
    return;
  }
  if (locked_ && !session_.connection().inTransaction()) {
    Void(VoidReason::kFailed);  // the server has gone, and has undone everything
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
  log_.Follow(unitKey, now);
}

void UnitOfWork::Void(VoidReason reason) noexcept {
  if (void_ == VoidReason::kNone) {
    void_ = reason;
  }
}

void UnitOfWork::Forgive() noexcept {
  // What the server gave up as a whole is lost for every part of it.
  if (locked_ && session_.connection().inTransaction()) {
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
    committed_.clear();
    Undo();
    throw;
  }
}

void UnitOfWork::StoreAll() {
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
  session_.connection().RunAll("COMMIT");
}

std::optional<UnitVersion> UnitOfWork::Committed(std::int32_t unitKey) const {
  const auto found = committed_.find(unitKey);
  return found == committed_.end() ? std::nullopt : std::optional(found->second);
}

void UnitOfWork::RaiseVersions(std::int64_t entry) {
  SentValues values;
  values.AddNumber(entry);
  std::string which = R"(SELECT "UnitKey" FROM "Units" UNION SELECT "UnitKey" FROM "UnitVersions")";
  if (order_.units.size() == 1) {
    values.AddNumber(order_.units.front());
    which = R"(SELECT $2::int4 AS "UnitKey")";
  }
  const Result raised = session_.Own(
      fmt::format(
          R"(INSERT INTO "UnitVersions" SELECT "UnitKey", $1::int8, {} FROM ({}) AS "Raised" )"
          R"(ON CONFLICT ("UnitKey") DO UPDATE SET "Entry"=excluded."Entry", )"
          R"("Mark"=excluded."Mark" RETURNING "UnitKey", "Entry", "Mark")",
          kRandomMark, which),
      values);
  for (int row = 0; row < raised.rows(); ++row) {
    committed_[static_cast<std::int32_t>(raised.Number(row, 0))] = {raised.Number(row, 1),
                                                                    raised.Number(row, 2)};
  }
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
  session_.DropHeld();
  session_.connection().UndoWhatIsOpen();
}

}  // namespace qorhost::postgres

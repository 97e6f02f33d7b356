#include "host/store/postgres/unit_of_work.h"

#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

#include "host/store/postgres/schema.h"
#include "host/store/postgres/session.h"

namespace qorhost::postgres {

namespace {

// A random number of 64 bits.
constexpr const char* kRandomMark =
    "('x' || left(gen_random_uuid()::text, 8) || right(gen_random_uuid()::text, 8))::bit(64)::int8";

// What an operation on one unit needs when it begins to write: the unit's row locked, and behind
// the lock the number of the entry to come and the hash of the last one. Who has waited for the
// lock gets no hash: the statement does not see the entry that was added meanwhile.
constexpr const char* kLockUnitBegin =
    R"(WITH "Locked" AS MATERIALIZED (SELECT "Entry", "Mark" FROM "UnitVersions" )"
    R"(WHERE "UnitKey"=$1::int4 FOR UPDATE) SELECT pg_current_xact_id(), "Entry", "Mark", )"
    R"(nextval('"AuditNumbers"'), session_user, (SELECT "Hash" FROM "AuditEntries" )"
    R"(WHERE "HomeUnit"=$1::int4 AND "RID"="Locked"."Entry"), ()";
constexpr const char* kLockUnitEnd = R"()::int4 FROM "Locked")";

const std::string& LockUnitText() {
  static const std::string text =
      std::string(kLockUnitBegin).append(kIsNewerByNow).append(kLockUnitEnd);
  return text;
}

UnitVersion VersionIn(const Result& result) {
  return result.rows() == 0 ? UnitVersion{} : UnitVersion{result.Number(0, 0), result.Number(0, 1)};
}

}  // namespace

UnitOfWork::UnitOfWork(Session& session)
    : WorkCourse(session.timeStamp(), session.buffer(), log_),
      session_(session),
      log_(session.connection()) {}

UnitOfWork::~UnitOfWork() {
  Undo();
}

UnitVersion UnitOfWork::VersionOf(std::int32_t unitKey) {
  SentValues values;
  values.AddNumber(unitKey);
  return VersionIn(session_.Own(
      R"(SELECT "Entry", "Mark" FROM "UnitVersions" WHERE "UnitKey"=$1::int4)", values));
}

bool UnitOfWork::isInTransaction() const noexcept {
  return session_.connection().inTransaction();
}

std::optional<UnitVersion> UnitOfWork::TakeRight() {
  known_ = {};
  if (order().units.size() == 1) {
    return LockUnit(order().units.front());
  }
  session_.connection().Begin();
  number_ = LockStore(session_.connection(), session_.patience());
  return std::nullopt;
}

/// One message for all. Who has waited for the lock is told the version that was stored meanwhile,
/// and what comes behind sees all that was.
std::optional<UnitVersion> UnitOfWork::LockUnit(std::int32_t unitKey) {
  SentValues values;
  values.AddNumber(unitKey);
  std::vector<Step> steps;
  steps.push_back(session_.OwnStep(LockUnitText(), values));
  for (Step& asked : session_.StepsWithTheRight()) {
    steps.push_back(std::move(asked));
  }
  std::vector<Result> answers =
      session_.connection().BeginWaiting(std::move(steps), session_.patience());
  const Result& locked = answers.front();
  if (locked.rows() == 0) {
    LockNewUnit(unitKey);
    return std::nullopt;
  }
  RequireSameVersion(session_.connection(), locked.Number(0, 6) != 0);
  number_ = locked.Text(0, 0);
  known_.number = locked.Number(0, 3);
  known_.login = locked.Text(0, 4);
  if (!locked.IsNull(0, 5)) {
    known_.hashOfPrevious = locked.Text(0, 5);
  }
  session_.KeepAnswers(std::span(answers).subspan(1));
  return UnitVersion{locked.Number(0, 1), locked.Number(0, 2)};
}

/// One that nobody has changed yet has no row to be locked.
void UnitOfWork::LockNewUnit(std::int32_t unitKey) {
  const Result number = session_.connection().RunWaiting(
      fmt::format(
          R"(INSERT INTO "UnitVersions" VALUES ({0}, 0, 0) ON CONFLICT DO NOTHING; )"
          R"(SELECT pg_current_xact_id(), ({1})::int4 FROM "UnitVersions" WHERE "UnitKey"={0} )"
          "FOR UPDATE",
          unitKey, kIsNewerByNow),
      session_.patience());
  RequireSameVersion(session_.connection(), number.Number(0, 1) != 0);
  number_ = number.Text(0, 0);
}

WorkCourse::Versions UnitOfWork::Store(WorkEntry entry, std::int64_t previous) {
  const AuditLog::Added added =
      session_.audit().Append(std::move(entry), previous, known_, log_.changes());
  Versions raised = RaiseVersions(added.entry);
  // Whoever has lost the connection finds the entry by all of it: another one may have come to have
  // its number.
  session_.connection().Commit(
      {number_, fmt::format(R"(SELECT 1 FROM "AuditEntries" WHERE "RID"={} AND "Hash"='{}' )"
                            "AND xmin='{}'::xid8::xid",
                            added.entry, added.hash, number_)});
  return raised;
}

WorkCourse::Versions UnitOfWork::RaiseVersions(std::int64_t entry) {
  if (order().units.size() == 1) {
    return RaiseVersion(order().units.front(), entry);
  }
  SentValues values;
  values.AddNumber(entry);
  const Result read = session_.Own(
      fmt::format(
          R"(INSERT INTO "UnitVersions" SELECT "UnitKey", $1::int8, {} FROM )"
          R"((SELECT "UnitKey" FROM "Units" UNION SELECT "UnitKey" FROM "UnitVersions") AS "Raised" )"
          R"(ON CONFLICT ("UnitKey") DO UPDATE SET "Entry"=excluded."Entry", )"
          R"("Mark"=excluded."Mark" RETURNING "UnitKey", "Entry", "Mark")",
          kRandomMark),
      values);
  Versions raised;
  for (int row = 0; row < read.rows(); ++row) {
    raised[static_cast<std::int32_t>(read.Number(row, 0))] = {read.Number(row, 1),
                                                              read.Number(row, 2)};
  }
  return raised;
}

/// The row is there: it is what was locked.
WorkCourse::Versions UnitOfWork::RaiseVersion(std::int32_t unitKey, std::int64_t entry) {
  const std::uint64_t high = random_();
  const UnitVersion version{entry, static_cast<std::int64_t>(high << 32U | random_())};
  SentValues values;
  values.AddNumber(unitKey);
  values.AddNumber(version.entry);
  values.AddNumber(version.mark);
  session_.OwnLater(
      R"(UPDATE "UnitVersions" SET "Entry"=$2::int8, "Mark"=$3::int8 WHERE "UnitKey"=$1::int4)",
      values);
  return {{unitKey, version}};
}

void UnitOfWork::DropHeld() noexcept {
  session_.DropHeld();
}

void UnitOfWork::GiveRightBack() noexcept {
  session_.connection().UndoWhatIsOpen();
}

}  // namespace qorhost::postgres

#include "host/store/postgres/unit_of_work.h"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "host/store/postgres/session.h"

namespace qorhost::postgres {

namespace {

// A random number of 64 bits.
constexpr const char* kRandomMark =
    "('x' || left(gen_random_uuid()::text, 8) || right(gen_random_uuid()::text, 8))::bit(64)::int8";

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

void UnitOfWork::TakeRight() {
  Connection& connection = session_.connection();
  connection.Begin();
  if (order().units.size() != 1) {
    number_ = LockStore(connection, session_.patience());
    return;
  }
  const std::int32_t unit = order().units.front();
  const Result number = connection.RunWaiting(
      fmt::format(
          R"(INSERT INTO "UnitVersions" VALUES ({0}, 0, 0) ON CONFLICT DO NOTHING; )"
          R"(SELECT pg_current_xact_id() FROM "UnitVersions" WHERE "UnitKey"={0} FOR UPDATE)",
          unit),
      session_.patience());
  number_ = number.Text(0, 0);
}

WorkCourse::Versions UnitOfWork::Store(WorkEntry entry, std::int64_t previous) {
  const AuditLog::Added added = session_.audit().Append(std::move(entry), previous, log_.changes());
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
  SentValues values;
  values.AddNumber(entry);
  std::string which = R"(SELECT "UnitKey" FROM "Units" UNION SELECT "UnitKey" FROM "UnitVersions")";
  if (order().units.size() == 1) {
    values.AddNumber(order().units.front());
    which = R"(SELECT $2::int4 AS "UnitKey")";
  }
  const Result read = session_.Own(
      fmt::format(
          R"(INSERT INTO "UnitVersions" SELECT "UnitKey", $1::int8, {} FROM ({}) AS "Raised" )"
          R"(ON CONFLICT ("UnitKey") DO UPDATE SET "Entry"=excluded."Entry", )"
          R"("Mark"=excluded."Mark" RETURNING "UnitKey", "Entry", "Mark")",
          kRandomMark, which),
      values);
  Versions raised;
  for (int row = 0; row < read.rows(); ++row) {
    raised[static_cast<std::int32_t>(read.Number(row, 0))] = {read.Number(row, 1),
                                                              read.Number(row, 2)};
  }
  return raised;
}

void UnitOfWork::DropHeld() noexcept {
  session_.DropHeld();
}

void UnitOfWork::GiveRightBack() noexcept {
  session_.connection().UndoWhatIsOpen();
}

}  // namespace qorhost::postgres

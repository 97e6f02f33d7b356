#include "host/store/sqlite/kept_counts.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <string_view>

#include "frame/row_state.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

/// Rows that are counted: those of a table that meet a condition, {0} being the row and {1} the
/// state of a deleted one.
struct CountedRows {
  std::string_view table;
  std::string_view condition;
};
constexpr std::array kCounted{
    CountedRows{"CredentialBank", "1"},
    CountedRows{"DirectoryCode",
                "coalesce({0}DIRECTORYCODE>=0 AND coalesce({0}MODIFIED,0)<>{1},0)"},
    CountedRows{"ProgramSteps", "coalesce({0}Sent=0,0)"},
};

std::string Condition(const CountedRows& rows, std::string_view row) {
  return fmt::format(fmt::runtime(rows.condition), row, qorcred::row_state::kDeleted);
}

std::int64_t CountRows(Session& session, const CountedRows& rows, std::int32_t unitKey) {
  const StatementUse count(session.Own(fmt::format(
      "SELECT count(*) FROM {} WHERE UnitKey=?1 AND {}", rows.table, Condition(rows, ""))));
  count->BindNumber(1, unitKey);
  count->Step();
  return count->Number(0);
}

UnitCounts CountUnit(Session& session, std::int32_t unitKey) {
  return {CountRows(session, kCounted[0], unitKey), CountRows(session, kCounted[1], unitKey),
          CountRows(session, kCounted[2], unitKey)};
}

bool AreKept(Session& session) {
  const StatementUse find(session.Own("SELECT 1 FROM temp.sqlite_schema WHERE name='kept_counts'"));
  return find->Step();
}

/// "Adds" a row to the count of its unit, or with "-" takes it away.
std::string CountOne(const CountedRows& rows, char sign, std::string_view row) {
  return fmt::format("UPDATE kept_counts SET {0}={0}{1}{2} WHERE UnitKey={3}UnitKey;", rows.table,
                     sign, Condition(rows, row), row);
}

std::string Trigger(const CountedRows& rows, std::string_view event, const std::string& body) {
  return fmt::format("CREATE TEMP TRIGGER kept_{0}_{1} AFTER {1} ON main.{0} BEGIN {2} END;",
                     rows.table, event, body);
}

}  // namespace

KeptCounts::KeptCounts(Session& session) : session_(session) {
  // What a temporary table holds is undone together with the rows that it counts.
  std::string sql =
      "CREATE TEMP TABLE kept_counts (UnitKey INTEGER PRIMARY KEY, CredentialBank, DirectoryCode, "
      "ProgramSteps);";
  for (const CountedRows& rows : kCounted) {
    const std::string add = CountOne(rows, '+', "NEW.");
    const std::string take = CountOne(rows, '-', "OLD.");
    sql += Trigger(rows, "INSERT", add) + Trigger(rows, "DELETE", take) +
           Trigger(rows, "UPDATE", take + add);
  }
  session_.database().Run(sql);
}

KeptCounts::~KeptCounts() {
  std::string sql;
  for (const CountedRows& rows : kCounted) {
    for (const std::string_view event : {"INSERT", "DELETE", "UPDATE"}) {
      sql += fmt::format("DROP TRIGGER IF EXISTS temp.kept_{}_{};", rows.table, event);
    }
  }
  try {
    session_.database().Run(sql + "DROP TABLE IF EXISTS temp.kept_counts");
  } catch (const StoreError&) {
    // They go with the connection.
    return;
  }
}

void KeptCounts::Follow(std::int32_t unitKey) {
  const UnitCounts now = CountUnit(session_, unitKey);
  session_.database().Run(fmt::format("INSERT INTO temp.kept_counts VALUES ({},{},{},{})", unitKey,
                                      now.credentials, now.directoryCodes, now.pendingSteps));
}

UnitCounts ReadUnitCounts(Session& session, std::int32_t unitKey) {
  if (AreKept(session)) {
    const StatementUse kept(
        session.Own("SELECT CredentialBank, DirectoryCode, ProgramSteps FROM temp.kept_counts "
                    "WHERE UnitKey=?1"));
    kept->BindNumber(1, unitKey);
    if (kept->Step()) {
      return {kept->Number(0), kept->Number(1), kept->Number(2)};
    }
  }
  return CountUnit(session, unitKey);
}

}  // namespace qorhost::sqlite

#include "host/store/sqlite/kept_counts.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <new>

#include "frame/row_state.h"
#include "host/store/sqlite/session.h"

namespace qorhost::sqlite {

namespace {

bool IsNumber(sqlite3_value* value) {
  const int type = sqlite3_value_type(value);
  return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}

bool CountsAlways(sqlite3_value* /*none*/, sqlite3_value* /*none*/) {
  return true;
}

bool IsListedCode(sqlite3_value* code, sqlite3_value* modified) {
  return IsNumber(code) && sqlite3_value_double(code) >= 0 &&
         sqlite3_value_int64(modified) != qorcred::row_state::kDeleted;  // Null reads as 0
}

bool IsPendingStep(sqlite3_value* sent, sqlite3_value* /*none*/) {
  return IsNumber(sent) && sqlite3_value_int64(sent) == 0;
}

/// The rows of a table that count: by a condition on at most two of its columns, which is told
/// twice: to the engine for all rows, {} being the state of deleted ones, and here for one.
struct CountedRows {
  std::string_view table;
  std::int64_t UnitCounts::*count;
  std::string_view condition;
  std::string_view first;
  std::string_view second;
  bool (*counts)(sqlite3_value* first, sqlite3_value* second);
};

constexpr std::array kCounted{
    CountedRows{"CredentialBank", &UnitCounts::credentials, "true", "", "", &CountsAlways},
    CountedRows{"DirectoryCode", &UnitCounts::directoryCodes,
                "DIRECTORYCODE>=0 AND coalesce(MODIFIED,0)<>{}", "DIRECTORYCODE", "MODIFIED",
                &IsListedCode},
    CountedRows{"ProgramSteps", &UnitCounts::pendingSteps, "Sent=0", "Sent", "", &IsPendingStep},
};

int ColumnOf(const Database& database, std::string_view table, std::string_view column) {
  Statement find(database,
                 "SELECT cid FROM pragma_table_info(?1) WHERE name=?2 COLLATE NOCASE LIMIT 1");
  find.BindText(1, table);
  find.BindText(2, column);
  return find.Step() ? static_cast<int>(find.Number(0)) : -1;
}

}  // namespace

UnitCounts CountUnit(Session& session, std::int32_t unitKey) {
  UnitCounts counts;
  for (const CountedRows& rows : kCounted) {
    const StatementUse count(session.Own(
        fmt::format("SELECT count(*) FROM {} WHERE UnitKey=?1 AND {}", rows.table,
                    fmt::format(fmt::runtime(rows.condition), qorcred::row_state::kDeleted))));
    count->BindNumber(1, unitKey);
    count->Step();
    counts.*rows.count = count->Number(0);
  }
  return counts;
}

void KeptCounts::ReadColumns() {
  if (!columns_.empty()) {
    return;
  }
  std::vector<Columns> columns;
  for (const CountedRows& rows : kCounted) {
    columns.push_back({ColumnOf(database_, rows.table, "UnitKey"),
                       ColumnOf(database_, rows.table, rows.first),
                       ColumnOf(database_, rows.table, rows.second)});
  }
  columns_ = std::move(columns);
}

void KeptCounts::OnChange(int operation, std::string_view table) {
  if (units_.empty()) {
    return;
  }
  if (table == "Units" || table == "UnitSettings") {
    units_.ForgetFacts();
    return;
  }
  for (std::size_t at = 0; at < kCounted.size(); ++at) {
    if (kCounted.at(at).table != table) {
      continue;
    }
    if (operation != SQLITE_INSERT) {
      Add(at, false, -1);
    }
    if (operation != SQLITE_DELETE) {
      Add(at, true, 1);
    }
    return;
  }
}

/// Adds a number to the count of the unit that the row before the change, or behind it, is of.
void KeptCounts::Add(std::size_t table, bool isNew, int number) {
  const CountedRows& rows = kCounted.at(table);
  const auto cell = [&](int column) -> sqlite3_value* {
    sqlite3_value* value = nullptr;
    if (column >= 0 &&
        (isNew ? sqlite3_preupdate_new(database_.handle(), column, &value)
               : sqlite3_preupdate_old(database_.handle(), column, &value)) != SQLITE_OK) {
      throw std::bad_alloc();
    }
    return value;
  };
  const Columns& columns = columns_.at(table);
  sqlite3_value* const unit = cell(columns.unit);
  if (!IsNumber(unit)) {
    return;
  }
  const auto unitKey = static_cast<std::int32_t>(sqlite3_value_int64(unit));
  if (units_.CountsOf(unitKey) != nullptr &&
      rows.counts(cell(columns.first), cell(columns.second))) {
    units_.Add(unitKey, rows.count, number);
  }
}

}  // namespace qorhost::sqlite

#include "host/desks/carried_store.h"

#include <algorithm>

#include "frame/convert.h"
#include "host/desks/copied_rows.h"
#include "host/desks/copy_progress.h"
#include "host/desks/desk_error.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

constexpr std::string_view kFields = "TenantSelectionFields";

/// In the place of the fields that a new store has for its report come those of the other one.
void RemoveUsualFields(SqlSession& to) {
  const QueryResult fields = to.Select("SELECT RID FROM TenantSelectionFields");
  for (const ResultRow row : fields.rows()) {
    to.DeleteRow(kFields, qorcred::ToLong(row[0]));
  }
}

void CarryHistory(SqlSession& from, SqlSession& to) {
  CarriedHistory& history = to.carriedHistory();
  from.carriedHistory().EachEntry([&](const CarriedEntry& entry) { history.Add(entry); });
  for (const auto& [unit, version] : from.carriedHistory().Versions()) {
    history.AddVersion(unit, version);
  }
}

void RequireSameHistory(SqlSession& from, SqlSession& to) {
  if (from.audit().Heads() != to.audit().Heads() || from.audit().Check() != to.audit().Check()) {
    throw StoreError("The copy is not what was copied, and nothing of it was stored: the history");
  }
}

std::int64_t RowsOf(SqlSession& session) {
  std::int64_t rows = 0;
  for (const CopiedTable& table : CopiedTables()) rows += CountRows(session, table, {});
  return rows;
}

}  // namespace

bool IsNewStore(SqlSession& session) {
  const std::span<const CopiedTable> tables = CopiedTables();
  return session.audit().After(0, std::nullopt).empty() &&
         std::all_of(tables.begin(), tables.end(), [&](const CopiedTable& table) {
           return table.name == kFields || CountRows(session, table, {}) == 0;
         });
}

void CarryStore(SqlSession& from, SqlSession& to, const Progress& progress, Trial trial) {
  const Undoable oneState(from.look());
  Undoable whole(to.transaction());
  if (!IsNewStore(to)) {
    throw RefusedError("a whole store comes into a new one, and this one has rows already");
  }
  RemoveUsualFields(to);
  CopyProgress told(progress, RowsOf(from));
  for (const CopiedTable& table : CopiedTables()) {
    const std::vector<std::string_view> columns = CopiedColumns(table);
    RowPages pages(from, table, {});
    for (auto page = pages.Next(); !page.empty(); page = pages.Next()) {
      (void)to.AddRows(table.name, columns, page);
      told.Add(page.size());
    }
  }
  CarryHistory(from, to);
  for (const CopiedTable& table : CopiedTables()) {
    RequireSameRows({from, table, {}}, {to, table, {}}, table, [&told](RowCells row) {
      told.Add(1);
      return row;
    });
  }
  RequireSameHistory(from, to);
  if (trial == Trial::kNo) whole.Keep();
}

}  // namespace qorhost

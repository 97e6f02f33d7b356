#include "host/desks/copied_units.h"

#include <fmt/format.h>

#include <map>
#include <optional>
#include <set>

#include "frame/convert.h"
#include "host/desks/copy_progress.h"
#include "host/desks/desk_error.h"
#include "host/dialect/folding.h"
#include "host/store/audited_tables.h"

namespace qorhost {

namespace {

bool IsOfUnits(const CopiedTable& table) {
  return !table.unit.empty();
}

void RequireUnits(SqlSession& from, const UnitKeys& units) {
  if (units.empty()) {
    throw RefusedError("there are no units to copy");
  }
  for (const std::int32_t unit : units) {
    if (!from.units().Find(unit)) {
      throw RefusedError(fmt::format("there is no unit {} to copy", unit));
    }
  }
}

/// Counters, backups and steps are left of a unit that an undo of the history took away, for the
/// history does not follow them: they are no unit's.
bool MayBeLeftOver(const CopiedTable& table) {
  return !IsAudited(table.name);
}

void RemoveLeftovers(SqlSession& to, const UnitKeys& units) {
  for (const CopiedTable& table : CopiedTables()) {
    if (!IsOfUnits(table) || !MayBeLeftOver(table)) continue;
    for (const std::int32_t unit : units) {
      (void)to.Change(fmt::format("DELETE FROM {} WHERE {}={}", table.name, table.unit, unit), {});
    }
  }
}

/// What belongs to a key would become the copied unit's, whether or not its unit is there.
void RequireFree(SqlSession& to, const UnitKeys& units) {
  const std::set<std::int32_t> wanted(units.begin(), units.end());
  for (const CopiedTable& table : CopiedTables()) {
    if (!IsOfUnits(table) || MayBeLeftOver(table)) continue;
    const QueryResult taken =
        to.Select(fmt::format("SELECT DISTINCT {0} FROM {1} ORDER BY {0}", table.unit, table.name));
    for (const ResultRow row : taken.rows()) {
      const auto* unit = row[0].As<std::int32_t>();
      if (unit == nullptr || !wanted.contains(*unit)) continue;
      const std::optional<UnitFacts> other = to.units().Find(*unit);
      throw RefusedError(
          other ? fmt::format("the other store has a unit {} already, '{}': a unit is copied where "
                              "its key is free",
                              *unit, other->name)
                : fmt::format("the other store has rows of a unit {} in {}, although there is no "
                              "such unit: a unit is copied where its key is free",
                              *unit, table.name));
    }
  }
}

/// Types of units by their names as the store compares them.
using Types = std::map<std::u32string, qorcred::Value>;

Types TypesIn(SqlSession& session) {
  const QueryResult rows = session.Select("SELECT DESCRIPTION, TOTAL FROM UNITTYPES ORDER BY RID");
  Types types;
  for (const ResultRow row : rows.rows()) {
    types.emplace(dialect::Folded(qorcred::TextOrEmpty(row[0])), row[1]);
  }
  return types;
}

class Copying {
 public:
  Copying(SqlSession& from, SqlSession& to, const UnitKeys& units, const Progress& progress)
      : from_(from), to_(to), units_(units), told_(progress, RowsToCopy()) {}

  CopiedUnits Run() {
    CopyTypes();
    for (const CopiedTable& table : CopiedTables()) {
      if (IsOfUnits(table)) copied_.rows.emplace_back(table.name, Copy(table));
    }
    for (const CopiedTable& table : CopiedTables()) {
      if (IsOfUnits(table)) Compare(table);
    }
    return std::move(copied_);
  }

 private:
  [[nodiscard]] std::int64_t RowsToCopy() const {
    std::int64_t rows = 0;
    for (const CopiedTable& table : CopiedTables()) {
      if (IsOfUnits(table)) rows += CountRows(from_, table, units_);
    }
    return rows;
  }

  /// The types that the units are of, where the other store does not have them.
  void CopyTypes() {
    const Types own = TypesIn(from_);
    Types there = TypesIn(to_);
    for (const std::int32_t unit : units_) {
      const std::string name = from_.units().Find(unit)->type;
      const auto type = own.find(dialect::Folded(name));
      if (type == own.end()) continue;  // of no known type, as it was
      const auto [same, isNew] = there.try_emplace(type->first, type->second);
      if (isNew) {
        const std::vector<Field> fields{{"DESCRIPTION", name}, {"TOTAL", type->second}};
        to_.AddRow("UNITTYPES", fields);
      } else if (qorcred::TextOrEmpty(same->second) != qorcred::TextOrEmpty(type->second)) {
        throw RefusedError(fmt::format(
            "unit {} is of the type '{}', which has another capacity in the other store: make them "
            "equal with 'units edit {} --capacity'",
            unit, name, unit));
      }
    }
  }

  [[nodiscard]] RowCells Mapped(const CopiedTable& table, RowCells row,
                                std::vector<LostLink>& lost) const {
    return Linked(table, std::move(row), map_, lost);
  }

  std::int64_t Copy(const CopiedTable& table) {
    std::vector<std::string_view> columns = CopiedColumns(table);
    columns.erase(columns.begin());  // the identity is a new one
    std::int64_t rows = 0;
    RowPages pages(from_, table, units_);
    for (auto page = pages.Next(); !page.empty(); page = pages.Next()) {
      std::vector<std::int32_t> before;
      for (RowCells& row : page) {
        before.push_back(qorcred::ToLong(row.front()));
        row = Mapped(table, std::move(row), copied_.lost);
        row.erase(row.begin());
      }
      const std::vector<std::int32_t> after = to_.AddRows(table.name, columns, page);
      for (std::size_t at = 0; at < before.size(); ++at) {
        map_.Add(table.name, before[at], after[at]);
      }
      rows += static_cast<std::int64_t>(page.size());
      told_.Add(page.size());
    }
    return rows;
  }

  void Compare(const CopiedTable& table) {
    RequireSameRows({from_, table, units_}, {to_, table, units_}, table, [&](RowCells row) {
      told_.Add(1);
      std::vector<LostLink> known;
      RowCells wanted = Mapped(table, std::move(row), known);
      wanted.front() = map_.Find(table.name, qorcred::ToLong(wanted.front())).value_or(0);
      return wanted;
    });
  }

  SqlSession& from_;
  SqlSession& to_;
  const UnitKeys& units_;
  CopyProgress told_;
  IdentityMap map_;
  CopiedUnits copied_;
};

}  // namespace

CopiedUnits CopyUnits(SqlSession& from, SqlSession& to, const UnitKeys& units,
                      const std::string& what, const Progress& progress) {
  const Undoable oneState(from.look());
  RequireUnits(from, units);
  WorkGuard whole(to.work(), {{}, what, {}});
  to.work().Lock();
  RequireFree(to, units);
  RemoveLeftovers(to, units);
  CopiedUnits copied = Copying(from, to, units, progress).Run();
  whole.Commit();
  return copied;
}

}  // namespace qorhost

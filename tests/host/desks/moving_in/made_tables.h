// Tables that are put together in a test, and what is settled of them.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desks/moving_in/moving_plan.h"

namespace qorhost::test {

/// A table as the reader of a file would tell it.
inline DesktopTable TableOf(std::string name, std::vector<std::string> columns,
                            std::vector<std::vector<DesktopCell>> rows) {
  DesktopTable table;
  table.name = std::move(name);
  for (std::string& column : columns) {
    table.columns.push_back({std::move(column), DesktopType::kLong, false, 4});
  }
  table.rows = std::move(rows);
  table.count = table.rows.size();
  return table;
}

inline DesktopCell N(std::int64_t number) {
  return number;
}

/// With one row for each key.
inline DesktopTable UnitTable(std::vector<std::int64_t> keys) {
  DesktopTable units = TableOf("Units", {"RID", "UnitKey", "UnitName"}, {});
  for (const std::int64_t key : keys) {
    units.rows.push_back({N(key), N(key), DesktopText{"Gate", true}});
  }
  units.count = units.rows.size();
  return units;
}

/// Each settled cell of a table: "adjusted row 2 TenantID 7 -> 2 [other-tenant-id]"
inline std::vector<std::string> ToldOf(const MovingPlan& plan, std::string_view table) {
  std::vector<std::string> told;
  for (const SettledCell& cell : plan.settled().named()) {
    if (cell.table != table) continue;
    told.push_back(fmt::format("{} row {} {} {}{} [{}]", WordFor(cell.settlement), cell.row,
                               cell.column, cell.value,
                               cell.instead.empty() ? "" : " -> " + cell.instead, cell.kind));
  }
  return told;
}

}  // namespace qorhost::test

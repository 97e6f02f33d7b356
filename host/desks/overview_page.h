// A store at a glance: as a list of its units, and as a page with charts.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/files/html_page.h"

namespace qorhost {

/// How full a unit is.
struct UnitUse {
  UnitName unit;
  std::int64_t codesInUse = 0;
  std::optional<std::int32_t> capacity;  ///< nothing where it is unknown
};

/// Units as they were when they were read.
struct StoreOverview {
  /// A row for each unit: its tenants, its codes in use and its capacity, the steps that wait and
  /// since when, and how much AttentionList() has for the next `within` days: tenants whose lease
  /// is over or ends, cards that nobody holds.
  List list;
  std::vector<UnitUse> use;
  /// The leases and codes that are over or end soon, of several units with the unit in front.
  List endings;
  std::int32_t within = 0;
};

[[nodiscard]] StoreOverview OverviewOf(DeskSession& session, const std::vector<UnitName>& units,
                                       std::int32_t within);

/// The overview as a page: codes in use against the capacity as bars, what was done in the last
/// half year as columns, and what is over or ends soon. `rows` is the answer to what was asked of
/// its list; `unit` is the only one that it is of, or nothing.
[[nodiscard]] HtmlPage PageOfOverview(DeskSession& session, const StoreOverview& overview,
                                      const std::optional<UnitName>& unit, List rows,
                                      const ListQuery& asked);

}  // namespace qorhost

// A store at a glance: as a list of its units, and as a page with charts.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/files/html_page.h"

namespace qorhost {

/// A row for each unit: its tenants, its codes in use and its capacity, the steps that wait and
/// since when, and what AttentionList() has for the next `within` days: tenants whose lease is over
/// or ends, cards that nobody holds.
[[nodiscard]] List OverviewList(DeskSession& session, const std::vector<UnitName>& units,
                                std::int32_t within);

/// The same as a page: codes in use against the capacity as bars, what was done in the last half
/// year as columns, and the leases and codes that are over or end soon. `rows` is the answer to
/// what was asked of OverviewList(); `unit` is the only one of `units`, or nothing.
[[nodiscard]] HtmlPage OverviewPage(DeskSession& session, const std::vector<UnitName>& units,
                                    const std::optional<UnitName>& unit, std::int32_t within,
                                    List rows, const ListQuery& asked);

}  // namespace qorhost

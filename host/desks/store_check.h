// Looks a store over for what must not be in it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/progress.h"
#include "host/desks/session.h"
#include "host/files/table.h"

namespace qorhost {

/// Something that is not as it must be.
struct Finding {
  std::int32_t unitKey = 0;
  std::string what;    ///< a sentence without its end
  std::string advice;  ///< how to mend it; a front end adds where
  friend bool operator==(const Finding&, const Finding&) = default;
};

/// What is wrong with the rows of a unit: numbers and codes that are there twice, links (to
/// credentials, codes, groups, doors, schedules) that point nowhere or to another unit's rows,
/// which those of steps and backup rows must not either, credentials with two holders, more codes
/// than the unit takes, periods that end before they begin, settings out of their bounds. Takes
/// time linear in the rows.
[[nodiscard]] std::vector<Finding> FindingsIn(DeskSession& session, std::int32_t unitKey);

/// Everything: the file itself, the rows of these units, and the history. A row for each finding,
/// without a unit for what concerns the whole store. The progress counts the file, the units and
/// the history; raises CancelledError where it says so.
[[nodiscard]] Table WholeCheck(DeskSession& session, const std::vector<UnitName>& units,
                               const Progress& progress = {});

}  // namespace qorhost

// How much was done in a store, week by week.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "frame/date.h"
#include "host/desks/session.h"

namespace qorhost {

struct WeekOfWork {
  qorcred::Date monday;      ///< on which it begins
  std::int64_t entries = 0;  ///< of the history; days are of UTC, as there
};

/// The last `weeks` weeks, oldest first, the one of the session's day being the last; those in
/// which nothing was done are among them. Entries from later days count for the last. Of one unit,
/// the entries of the whole store among them, or of all. Takes time linear in the history.
[[nodiscard]] std::vector<WeekOfWork> ActivityByWeek(DeskSession& session,
                                                     std::optional<std::int32_t> unitKey,
                                                     std::size_t weeks);

}  // namespace qorhost

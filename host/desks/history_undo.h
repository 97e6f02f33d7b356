// Takes back what an entry of the history did.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// Rows that are no more as the entry left them, or others that build on them by now.
class ChangedSince : public RefusedError {
 public:
  using RefusedError::RefusedError;
};

struct UndoneWork {
  WorkEntry entry;       ///< that was undone
  std::size_t rows = 0;  ///< that are as they were before it
  bool written = true;   ///< false for a trial: nothing was changed
};

/// Writes the rows back as they were before the entry, queues the steps that program them, and
/// leaves an entry of its own, all as one unit of work. What the unit holds is the unit's: states
/// and former codes of directory codes are not put back. Raises InputFault when there is no such
/// entry, and ChangedSince, which says which row, who and what, or what would be wrong then:
/// nothing was changed.
[[nodiscard]] UndoneWork UndoEntry(DeskSession& session, std::string_view number, Trial trial);

/// The same of several as one unit of work, the latest first, for what came later builds on what
/// was there: all of them or none. An entry that is named twice is undone once.
[[nodiscard]] std::vector<UndoneWork> UndoEntries(DeskSession& session,
                                                  const std::vector<std::string>& numbers,
                                                  Trial trial);

}  // namespace qorhost

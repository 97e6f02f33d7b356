// Takes back what an entry of the history did.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

struct UndoneWork {
  WorkEntry entry;       ///< that was undone
  std::size_t rows = 0;  ///< that are as they were before it
};

/// What came of undoing entries; refused when one of them cannot be undone.
struct Undoing : Outcome {
  std::vector<UndoneWork> entries;  ///< of one that was done, the latest first
  bool written = true;              ///< false for a trial: nothing was changed
  std::string reason;  ///< of a refused one: which row is no more as it was left, since whose work,
                       ///< or what would be wrong then
};

/// Writes the rows back as they were before the entry, queues the steps that program them, and
/// leaves an entry of its own, all as one unit of work; all of it or nothing. What the unit holds
/// is the unit's: states and former codes of directory codes are not put back. Raises InputFault
/// when there is no such entry.
[[nodiscard]] Undoing UndoEntry(DeskSession& session, std::string_view number, Trial trial);

/// The same of several as one unit of work, the latest first, for what came later builds on what
/// was there: all of them or none. An entry that is named twice is undone once.
[[nodiscard]] Undoing UndoEntries(DeskSession& session, const std::vector<std::string>& numbers,
                                  Trial trial);

}  // namespace qorhost

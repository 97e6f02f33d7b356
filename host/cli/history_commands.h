// The commands that look at what was done, and take it back.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/desks/history.h"

namespace qorhost {

struct HistoryOptions {
  ListOptions asked;                 ///< of list
  HistoryQuery query;                ///< without the unit, which is a global option
  std::vector<std::string> entries;  ///< to show or to undo
  bool trial = false;                ///< of undo: tells what it would do
  std::vector<std::string> heads;    ///< of check: that were noted
};

/// Lists the entries.
ExitStatus RunHistoryList(const GlobalOptions& global, const HistoryOptions& options,
                          Console& console);
/// Shows what each did to the rows, field by field.
ExitStatus RunHistoryShow(const GlobalOptions& global, const HistoryOptions& options,
                          Console& console);
/// Takes them back, all or none.
ExitStatus RunHistoryUndo(const GlobalOptions& global, const HistoryOptions& options,
                          Console& console);
/// Looks for entries that are missing or not as they were written, and prints the heads.
ExitStatus RunHistoryCheck(const GlobalOptions& global, const HistoryOptions& options,
                           Console& console);

}  // namespace qorhost

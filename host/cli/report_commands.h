// The commands that print reports, and delete what a report shows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"

namespace qorhost {

struct ReportOptions {
  ListOptions asked;                    ///< but conditions
  std::vector<std::string> conditions;  ///< "FIELD OPERATOR VALUE [AND VALUE2]"
  std::optional<std::string> toDelete;  ///< "rid:" and RIDs with commas between them
  bool trial = false;                   ///< of a deletion: tells what it would do
};

/// `report dircodes`.
ExitStatus RunDirCodeReport(const GlobalOptions& global, const ReportOptions& options,
                            Console& console);
/// `report credentials`, with and without --delete.
ExitStatus RunCredentialReport(const GlobalOptions& global, const ReportOptions& options,
                               Console& console);

}  // namespace qorhost

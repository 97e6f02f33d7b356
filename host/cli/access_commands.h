// The command that tells who may go in where.
#pragma once

#include <string>

#include "host/cli/commands.h"
#include "host/cli/list_options.h"

namespace qorhost {

struct AccessOptions {
  ListOptions asked;
  std::string on;  ///< a day or a moment; "" for today
};

/// Adds `access`. `global` and `options` must outlive the parsing and the run.
void DescribeAccess(CommandPlace place, const GlobalOptions& global, AccessOptions& options);

}  // namespace qorhost

// The command that shows a store at a glance.
#pragma once

#include <cstdint>

#include "host/cli/commands.h"
#include "host/cli/list_options.h"
#include "host/desks/attention_list.h"

namespace qorhost {

struct OverviewOptions {
  ListOptions asked;
  std::int32_t within = kUsualSoon;  ///< days
};

/// Adds `overview`. `global` and `options` must outlive the parsing and the run.
void DescribeOverview(CommandPlace place, const GlobalOptions& global, OverviewOptions& options);

}  // namespace qorhost

// The commands about what somebody should look at: leases and codes that end, cards that nobody
// holds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/cli/commands.h"
#include "host/cli/list_options.h"
#include "host/desks/attention_list.h"

namespace qorhost {

struct AttentionOptions {
  ListOptions asked;                    ///< of list
  std::int32_t within = kUsualSoon;     ///< days
  std::vector<std::string> conditions;  ///< of the steps
  bool trial = false;                   ///< of the steps: tells what they would do
};

/// Adds `attention` with its commands. `global` and `options` must outlive the parsing and the run.
void DescribeAttention(CommandPlace place, const GlobalOptions& global, AttentionOptions& options);

/// Adds --within, which says how many days count as soon; `days` must outlive the parsing.
void DescribeWithin(CLI::App& command, std::int32_t& days);

}  // namespace qorhost

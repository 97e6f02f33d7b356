// The command that looks for people and what they hold.
#pragma once

#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"

namespace qorhost {

struct FindOptions {
  std::vector<std::string> words;
  ListOptions asked;
};

/// Looks in all units, or in that of --unit. Nothing that matches is no failure.
ExitStatus RunFind(const GlobalOptions& global, const FindOptions& options, Console& console);

}  // namespace qorhost

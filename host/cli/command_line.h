// The command line of qorhost.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "host/terminal/console.h"

namespace qorhost {

/// Runs one command. `args` are the words behind the program's name. Rows go to `out`, messages and
/// transcripts to `err`. Returns an ExitStatus as a number and lets no exception out.
int RunCommandLine(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
                   std::ostream& err, const Environment& environment);

}  // namespace qorhost

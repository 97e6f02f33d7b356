// Scripts by which shells complete the words of a command line.
#pragma once

#include <ostream>
#include <string_view>
#include <vector>

#include "host/cli/word_list.h"

namespace qorhost {

/// "bash", "zsh", "fish"
[[nodiscard]] const std::vector<std::string>& Shells();

/// Writes the script for one of them: it completes commands, options and their values: known words,
/// what a list of the store has (units, schedules), and files.
void WriteCompletion(std::ostream& out, std::string_view shell,
                     const std::vector<CommandWords>& commands);

}  // namespace qorhost

// The manual page, in the language of man.
#pragma once

#include <ostream>
#include <string_view>
#include <vector>

#include "host/cli/word_list.h"

namespace qorhost {

/// Writes one page with every command, its arguments, options and examples.
void WriteManualPage(std::ostream& out, std::string_view version,
                     const std::vector<CommandWords>& commands);

}  // namespace qorhost

// Who signs what is stored.
#pragma once

#include <string_view>

#include "host/store/unit_of_work.h"

namespace qorhost {

/// The person who runs the process, as the system calls them (by number where it has no name for
/// them), and the program with the machine: "qorhost on lobby". The entries have the time of UTC.
[[nodiscard]] Author AuthorOfProcess(std::string_view program);

}  // namespace qorhost

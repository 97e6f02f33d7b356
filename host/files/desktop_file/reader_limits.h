// What a process that reads a hostile file may use.
#pragma once

#include <sys/resource.h>

namespace qorhost::desktop_file {

/// Limits this process to so much memory and processor time; it writes no file and no dump from
/// then on. False where the system does not take that: then nothing may be read.
[[nodiscard]] bool LimitThisProcess(rlim_t mebibytes, rlim_t seconds);

}  // namespace qorhost::desktop_file

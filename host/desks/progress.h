// How far long work at a desk has come.
#pragma once

#include <cstdint>
#include <functional>

namespace qorhost {

/// Told how many of how many parts of the work are done; called for every part. False cancels the
/// work: nothing of it is kept then. May be empty.
using Progress = std::function<bool(std::int64_t done, std::int64_t total)>;

}  // namespace qorhost

// Rows that stand one behind the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace qorhost {

/// Calls `take(first, last)` for every run of rows without gaps, in their order.
template <typename Take>
void ForEachRun(std::span<const std::int32_t> rids, const Take& take) {
  for (std::size_t first = 0; first < rids.size();) {
    std::size_t last = first;
    while (last + 1 < rids.size() && rids[last + 1] == rids[last] + 1) {
      ++last;
    }
    take(rids[first], rids[last]);
    first = last + 1;
  }
}

}  // namespace qorhost

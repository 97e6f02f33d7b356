// What the running process holds of the system.
#pragma once

#include <windows.h>

#include <cstddef>

namespace qortest {

struct ProcessState {
  std::size_t blocks = 0;     ///< that are allocated on all its heaps
  std::size_t bytes = 0;      ///< in these blocks
  std::size_t handles = 0;    ///< that it has open
  std::size_t committed = 0;  ///< bytes of memory that it has claimed
};

/// From now on a freed text of automation goes back to its heap at once, instead of being kept for
/// the next one. What is allocated can be told only so.
void KeepNoFreedTexts();

[[nodiscard]] ProcessState MeasureProcess();

/// Whether every heap is in order, as the system sees it.
[[nodiscard]] bool AreHeapsSound();

}  // namespace qortest

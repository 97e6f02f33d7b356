// How often the program asked for memory.
#pragma once

#include <cstdint>

namespace qorbench {

/// The calls of operator new since the program began, in any of its forms. SQLite has its own
/// memory, which is not counted.
[[nodiscard]] std::uint64_t AllocationCount() noexcept;

}  // namespace qorbench

#include "bench/allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::uint64_t allocationCount = 0;  // the program has one thread

}  // namespace

namespace qorbench {

std::uint64_t AllocationCount() noexcept {
  return allocationCount;
}

}  // namespace qorbench

// The other forms (arrays, nothrow) call these; over-aligned types are not used.
void* operator new(std::size_t size) {
  ++allocationCount;
  // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): this is where memory comes from.
  if (void* memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);  // NOLINT(cppcoreguidelines-no-malloc)
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);  // NOLINT(cppcoreguidelines-no-malloc)
}

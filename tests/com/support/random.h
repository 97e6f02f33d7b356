// Numbers that look like chance and are the same on every machine.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qortest {

class Random {
 public:
  /// Operation `number` of the run that `seed` begins.
  Random(std::uint64_t seed, std::uint64_t number)
      : state_(seed * 0x9E3779B97F4A7C15ULL + number * 0xD1B54A32D192ED03ULL) {}

  /// A number from 0 to `bound` - 1.
  [[nodiscard]] std::size_t Below(std::size_t bound) {
    return static_cast<std::size_t>(Next() % bound);
  }

 private:
  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
    return mixed ^ (mixed >> 31U);
  }

  std::uint64_t state_;
};

}  // namespace qortest

// Numbers that somebody asks a test for: longer work, or the same once more.
#pragma once

#include <cstdlib>

namespace qorhost::test {

/// A number that somebody has put into the surroundings; else the usual one.
[[nodiscard]] inline long Asked(const char* name, long usual) {
  const char* asked = std::getenv(name);
  return asked == nullptr ? usual : std::strtol(asked, nullptr, 10);
}

}  // namespace qorhost::test

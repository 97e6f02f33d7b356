// MEMORY PROCESSOR WAY: stands in the reader's place, limits itself as it does, and goes beyond.
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/desktop_file/reader_limits.h"

int main(int count, char** words) {
  constexpr int kWithoutMemory = 4;
  constexpr std::size_t kPart = std::size_t{1} << 20;
  if (count != 5 || !qorhost::desktop_file::LimitThisProcess(std::strtoul(words[1], nullptr, 10),
                                                             std::strtoul(words[2], nullptr, 10))) {
    return 1;
  }
  if (std::string_view(words[4]) == "fills") {
    try {
      std::vector<std::string> parts;
      for (;;) parts.emplace_back(kPart, 'x');
    } catch (const std::bad_alloc&) {
      return kWithoutMemory;
    }
  }
  for (volatile bool goesOn = true; goesOn;) {
  }
  return 0;
}

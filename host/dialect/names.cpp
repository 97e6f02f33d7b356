#include "host/dialect/names.h"

#include <algorithm>
#include <cstddef>

namespace qorhost::dialect {

namespace {

constexpr char LowerAscii(char character) noexcept {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

}  // namespace

bool SameName(std::string_view one, std::string_view other) noexcept {
  return one.size() == other.size() &&
         std::equal(one.begin(), one.end(), other.begin(),
                    [](char left, char right) { return LowerAscii(left) == LowerAscii(right); });
}

std::string QuotedName(std::string_view name) {
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"') {
      quoted += '"';
    }
    quoted += character;
  }
  return quoted + '"';
}

}  // namespace qorhost::dialect

#include "host/dialect/names.h"

#include <algorithm>
#include <cstddef>

#include "frame/utf8.h"

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

bool IsUtf8(std::string_view text) noexcept {
  for (std::size_t position = 0; position < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, position);
    if (character.codePoint >= qorcred::kInvalidByte) {
      return false;
    }
    position += character.length;
  }
  return true;
}

}  // namespace qorhost::dialect

#include "frame/text.h"

#include <algorithm>
#include <array>

#include "frame/utf8.h"

namespace qorcred {
namespace {

/// How the upper-case letters of a range reach their lower-case ones.
enum class FoldRule : unsigned char {
  kShift,  // every code point by the same distance
  kEven,   // upper and lower case alternate, the upper ones even
  kOdd,    // upper and lower case alternate, the upper ones odd
};

struct FoldRange {
  char32_t first;
  char32_t last;
  FoldRule rule;
  std::int32_t distance;
};

// In ascending order. What is not listed has no case or keeps it.
constexpr std::array kFoldRanges = {
    FoldRange{'A', 'Z', FoldRule::kShift, 32},
    FoldRange{0x00B5, 0x00B5, FoldRule::kShift, 775},  // micro sign: Greek mu
    FoldRange{0x00C0, 0x00D6, FoldRule::kShift, 32},
    FoldRange{0x00D8, 0x00DE, FoldRule::kShift, 32},
    FoldRange{0x0100, 0x012F, FoldRule::kEven, 1},
    FoldRange{0x0132, 0x0137, FoldRule::kEven, 1},
    FoldRange{0x0139, 0x0148, FoldRule::kOdd, 1},
    FoldRange{0x014A, 0x0177, FoldRule::kEven, 1},
    FoldRange{0x0178, 0x0178, FoldRule::kShift, -121},  // Y with diaeresis
    FoldRange{0x0179, 0x017E, FoldRule::kOdd, 1},
    FoldRange{0x017F, 0x017F, FoldRule::kShift, -268},  // long s
    FoldRange{0x0370, 0x0373, FoldRule::kEven, 1},
    FoldRange{0x0376, 0x0376, FoldRule::kShift, 1},
    FoldRange{0x037F, 0x037F, FoldRule::kShift, 116},
    FoldRange{0x0386, 0x0386, FoldRule::kShift, 38},
    FoldRange{0x0388, 0x038A, FoldRule::kShift, 37},
    FoldRange{0x038C, 0x038C, FoldRule::kShift, 64},
    FoldRange{0x038E, 0x038F, FoldRule::kShift, 63},
    FoldRange{0x0391, 0x03A1, FoldRule::kShift, 32},
    FoldRange{0x03A3, 0x03AB, FoldRule::kShift, 32},
    FoldRange{0x03C2, 0x03C2, FoldRule::kShift, 1},  // final sigma
    FoldRange{0x03D8, 0x03EF, FoldRule::kEven, 1},
    FoldRange{0x0400, 0x040F, FoldRule::kShift, 80},
    FoldRange{0x0410, 0x042F, FoldRule::kShift, 32},
    FoldRange{0x0460, 0x0481, FoldRule::kEven, 1},
    FoldRange{0x048A, 0x04BF, FoldRule::kEven, 1},
    FoldRange{0x04C0, 0x04C0, FoldRule::kShift, 15},
    FoldRange{0x04C1, 0x04CE, FoldRule::kOdd, 1},
    FoldRange{0x04D0, 0x052F, FoldRule::kEven, 1},
    FoldRange{0x0531, 0x0556, FoldRule::kShift, 48},
    FoldRange{0x1E00, 0x1E95, FoldRule::kEven, 1},
    FoldRange{0x1E9E, 0x1E9E, FoldRule::kShift, -7615},  // capital sharp s
    FoldRange{0x1EA0, 0x1EFF, FoldRule::kEven, 1},
};

bool IsAscii(char letter) noexcept {
  return static_cast<unsigned char>(letter) < 0x80;
}

char32_t Fold(char32_t codePoint) noexcept {
  if (codePoint < 0x80) {
    return codePoint >= 'A' && codePoint <= 'Z' ? codePoint - 'A' + 'a' : codePoint;
  }
  const auto range =
      std::lower_bound(kFoldRanges.begin(), kFoldRanges.end(), codePoint,
                       [](const FoldRange& each, char32_t point) { return each.last < point; });
  if (range == kFoldRanges.end() || codePoint < range->first) return codePoint;
  const bool even = codePoint % 2 == 0;
  if (range->rule == FoldRule::kEven && !even) return codePoint;
  if (range->rule == FoldRule::kOdd && even) return codePoint;
  return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + range->distance);
}

}  // namespace

std::string_view Trim(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::size_t Utf16Length(std::string_view text) noexcept {
  if (IsAscii(text)) return text.size();
  std::size_t units = 0;
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = ReadUtf8(text, position);
    units += Utf16Units(character);
    position += character.length;
  }
  return units;
}

std::string_view LeftUtf16(std::string_view text, std::size_t units) noexcept {
  // No character takes more units than bytes.
  if (text.size() <= units) return text;
  std::size_t position = 0;
  while (position < text.size()) {
    const Utf8Character character = ReadUtf8(text, position);
    const std::size_t needed = Utf16Units(character);
    if (needed > units) break;
    units -= needed;
    position += character.length;
  }
  return text.substr(0, position);
}

std::string_view RightUtf16(std::string_view text, std::size_t units) noexcept {
  const std::size_t length = Utf16Length(text);
  return units >= length ? text : MidUtf16(text, length - units, units);
}

std::string_view MidUtf16(std::string_view text, std::size_t first, std::size_t units) noexcept {
  std::string_view before = LeftUtf16(text, first);
  std::size_t skipped = Utf16Length(before);
  if (skipped < first && before.size() < text.size()) {
    // The position lies within a pair: its character goes with what is skipped.
    before = text.substr(0, before.size() + ReadUtf8(text, before.size()).length);
    skipped = Utf16Length(before);
  }
  const std::size_t end = first + units;
  return end <= skipped ? std::string_view() : LeftUtf16(text.substr(before.size()), end - skipped);
}

bool IsDigits(std::string_view text) noexcept {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& letter : upper) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  }
  return upper;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  result.reserve(text.size());
  std::size_t copied = 0;
  for (std::size_t found = text.find(from); found != std::string_view::npos;
       found = text.find(from, copied)) {
    result.append(text.substr(copied, found - copied)).append(to);
    copied = found + from.size();
  }
  result.append(text.substr(copied));
  return result;
}

bool Contains(std::string_view text, std::string_view part) noexcept {
  return text.find(part) != std::string_view::npos;
}

int CompareIgnoringCase(std::string_view one, std::string_view other) noexcept {
  std::size_t onePosition = 0;
  std::size_t otherPosition = 0;
  while (onePosition < one.size() && otherPosition < other.size()) {
    // Most texts are ASCII: equal bytes of it need no decoding.
    const char oneByte = LowerAscii(one[onePosition]);
    if (IsAscii(oneByte) && oneByte == LowerAscii(other[otherPosition])) {
      ++onePosition;
      ++otherPosition;
      continue;
    }
    const Utf8Character oneCharacter = ReadUtf8(one, onePosition);
    const Utf8Character otherCharacter = ReadUtf8(other, otherPosition);
    const char32_t oneFolded = Fold(oneCharacter.codePoint);
    const char32_t otherFolded = Fold(otherCharacter.codePoint);
    if (oneFolded != otherFolded) return oneFolded < otherFolded ? -1 : 1;
    onePosition += oneCharacter.length;
    otherPosition += otherCharacter.length;
  }
  if (onePosition < one.size()) return 1;
  return otherPosition < other.size() ? -1 : 0;
}

}  // namespace qorcred

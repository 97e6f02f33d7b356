#include "host/dialect/folding.h"

#include <utf8proc.h>

#include <array>

#include "frame/utf8.h"

namespace qorhost::dialect {

namespace {

constexpr unsigned kFirstNonAscii = 0x80;
constexpr char32_t kSharpS = 0xDF;

char32_t FoldBySystem(char32_t point) noexcept {
  // The longest folding of one code point has three; only the one-to-one foldings count here, so
  // that one character stays one character in patterns.
  std::array<utf8proc_int32_t, 4> folded{};
  int boundary = 0;
  const auto number = static_cast<utf8proc_int32_t>(point);
  const utf8proc_ssize_t count =
      utf8proc_decompose_char(number, folded.data(), static_cast<utf8proc_ssize_t>(folded.size()),
                              UTF8PROC_CASEFOLD, &boundary);
  return static_cast<char32_t>(count == 1 ? folded[0] : utf8proc_tolower(number));
}

// Latin, Greek, Cyrillic, Armenian and Hebrew, worked out once.
using FoldTable = std::array<char32_t, 0x600>;

const FoldTable& CommonFolds() noexcept {
  static const FoldTable table = [] {
    FoldTable folds{};
    for (char32_t point = 0; point < folds.size(); ++point) {
      folds[point] = FoldBySystem(point);
    }
    return folds;
  }();
  return table;
}

unsigned ByteAt(std::string_view text, std::size_t index) noexcept {
  return static_cast<unsigned char>(text[index]);
}

constexpr unsigned FoldAscii(unsigned byte) noexcept {
  return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

std::string MapPoints(std::string_view text, char32_t (*map)(char32_t) noexcept) {
  std::string mapped;
  mapped.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, position);
    if (character.codePoint < qorcred::kInvalidByte) {
      std::array<utf8proc_uint8_t, 4> bytes{};
      const utf8proc_ssize_t count = utf8proc_encode_char(
          static_cast<utf8proc_int32_t>(map(character.codePoint)), bytes.data());
      mapped.append(bytes.begin(), bytes.begin() + count);
    } else {
      mapped += text[position];
    }
    position += character.length;
  }
  return mapped;
}

}  // namespace

char32_t FoldPoint(char32_t point) noexcept {
  const FoldTable& common = CommonFolds();
  if (point < common.size()) {
    return common[point];
  }
  return point < qorcred::kInvalidByte ? FoldBySystem(point) : point;
}

int CompareFolded(std::string_view one, std::string_view other) noexcept {
  std::size_t left = 0;
  std::size_t right = 0;
  while (left < one.size() && right < other.size()) {
    const unsigned leftByte = ByteAt(one, left);
    const unsigned rightByte = ByteAt(other, right);
    if (leftByte < kFirstNonAscii && rightByte < kFirstNonAscii) {
      const unsigned leftFolded = FoldAscii(leftByte);
      const unsigned rightFolded = FoldAscii(rightByte);
      if (leftFolded != rightFolded) {
        return leftFolded < rightFolded ? -1 : 1;
      }
      ++left;
      ++right;
      continue;
    }
    const qorcred::Utf8Character leftCharacter = qorcred::ReadUtf8(one, left);
    const qorcred::Utf8Character rightCharacter = qorcred::ReadUtf8(other, right);
    const char32_t leftFolded = FoldPoint(leftCharacter.codePoint);
    const char32_t rightFolded = FoldPoint(rightCharacter.codePoint);
    if (leftFolded != rightFolded) {
      return leftFolded < rightFolded ? -1 : 1;
    }
    left += leftCharacter.length;
    right += rightCharacter.length;
  }
  if (left < one.size()) {
    return 1;
  }
  return right < other.size() ? -1 : 0;
}

std::u32string Folded(std::string_view text) {
  std::u32string folded;
  folded.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, position);
    folded += FoldPoint(character.codePoint);
    position += character.length;
  }
  return folded;
}

char32_t UpperPoint(char32_t point) noexcept {
  // The sharp s has no capital in common use.
  return point == kSharpS
             ? point
             : static_cast<char32_t>(utf8proc_toupper(static_cast<utf8proc_int32_t>(point)));
}

char32_t LowerPoint(char32_t point) noexcept {
  return static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(point)));
}

std::string UpperText(std::string_view text) {
  return MapPoints(text, UpperPoint);
}

std::string LowerText(std::string_view text) {
  return MapPoints(text, LowerPoint);
}

}  // namespace qorhost::dialect

#include "host/dialect/folding.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <vector>

#include "frame/utf8.h"

namespace qorhost::dialect {

namespace {

constexpr unsigned kFirstNonAscii = 0x80;
constexpr utf8proc_int32_t kSharpS = 0xDF;
constexpr char32_t kAnyRun = U'%';
constexpr char32_t kAnyOne = U'_';

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

std::string MapPoints(std::string_view text, utf8proc_int32_t (*map)(utf8proc_int32_t)) {
  std::string mapped;
  mapped.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, position);
    if (character.codePoint < qorcred::kInvalidByte) {
      std::array<utf8proc_uint8_t, 4> bytes{};
      const utf8proc_ssize_t count = utf8proc_encode_char(
          map(static_cast<utf8proc_int32_t>(character.codePoint)), bytes.data());
      mapped.append(bytes.begin(), bytes.begin() + count);
    } else {
      mapped += text[position];
    }
    position += character.length;
  }
  return mapped;
}

// Where `part`, which holds no wildcards, first stands in `text`; npos when nowhere. Knuth, Morris
// and Pratt's search, so that repetitive texts cost no more than others.
std::size_t FindPlain(std::u32string_view text, std::u32string_view part) {
  std::vector<std::size_t> fallback(part.size(), 0);
  for (std::size_t index = 1, matched = 0; index < part.size(); ++index) {
    while (matched > 0 && part[index] != part[matched]) {
      matched = fallback[matched - 1];
    }
    matched += part[index] == part[matched] ? 1 : 0;
    fallback[index] = matched;
  }
  for (std::size_t index = 0, matched = 0; index < text.size(); ++index) {
    while (matched > 0 && text[index] != part[matched]) {
      matched = fallback[matched - 1];
    }
    matched += text[index] == part[matched] ? 1 : 0;
    if (matched == part.size()) {
      return index + 1 - matched;
    }
  }
  return std::u32string_view::npos;
}

bool MatchesAt(std::u32string_view text, std::size_t position, std::u32string_view part) {
  return std::equal(
      part.begin(), part.end(), text.begin() + static_cast<std::ptrdiff_t>(position),
      [](char32_t wanted, char32_t found) { return wanted == kAnyOne || wanted == found; });
}

std::size_t FindPart(std::u32string_view text, std::u32string_view part) {
  if (part.size() > text.size()) {
    return std::u32string_view::npos;
  }
  if (part.find(kAnyOne) == std::u32string_view::npos) {
    return FindPlain(text, part);
  }
  for (std::size_t position = 0; position + part.size() <= text.size(); ++position) {
    if (MatchesAt(text, position, part)) {
      return position;
    }
  }
  return std::u32string_view::npos;
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

bool MatchesPattern(std::u32string_view text, std::u32string_view pattern) {
  constexpr auto kNowhere = std::u32string_view::npos;
  std::size_t run = pattern.find(kAnyRun);
  if (run == kNowhere) {
    return text.size() == pattern.size() && MatchesAt(text, 0, pattern);
  }
  // The part before the first % stands at the start; each further part as early as it can; the part
  // after the last % at the end.
  if (text.size() < run || !MatchesAt(text, 0, pattern.substr(0, run))) {
    return false;
  }
  text.remove_prefix(run);
  pattern.remove_prefix(run + 1);
  for (run = pattern.find(kAnyRun); run != kNowhere; run = pattern.find(kAnyRun)) {
    const std::u32string_view part = pattern.substr(0, run);
    if (!part.empty()) {
      const std::size_t position = FindPart(text, part);
      if (position == kNowhere) {
        return false;
      }
      text.remove_prefix(position + part.size());
    }
    pattern.remove_prefix(run + 1);
  }
  return text.size() >= pattern.size() && MatchesAt(text, text.size() - pattern.size(), pattern);
}

std::string UpperText(std::string_view text) {
  return MapPoints(text, [](utf8proc_int32_t point) {
    // The sharp s has no capital in common use.
    return point == kSharpS ? point : utf8proc_toupper(point);
  });
}

std::string LowerText(std::string_view text) {
  return MapPoints(text, utf8proc_tolower);
}

}  // namespace qorhost::dialect

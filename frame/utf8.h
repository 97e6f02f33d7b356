// Reading and writing single characters of UTF-8 text that may hold anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace qorcred {

/// Whether all characters are ASCII, as most texts are. There is no exit in the middle, so that
/// many bytes are looked at a time.
[[nodiscard]] inline bool IsAscii(std::string_view text) noexcept {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t bits = 0;
  std::size_t position = 0;
  for (; position + sizeof bits <= text.size(); position += sizeof bits) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data() + position, sizeof eight);
    bits |= eight;
  }
  for (; position < text.size(); ++position) bits |= static_cast<unsigned char>(text[position]);
  return (bits & kHighBits) == 0;
}

/// One character read from a text: its code point and its length in bytes. A byte that does not
/// begin a well-formed sequence is read alone, as kInvalidByte plus the byte, a value above every
/// code point, so that it never equals a character.
struct Utf8Character {
  char32_t codePoint = 0;
  std::size_t length = 1;
};

inline constexpr char32_t kInvalidByte = 0x110000;
inline constexpr char32_t kFirstSupplementary = 0x10000;

/// The character at `position`, which must lie inside the text.
[[nodiscard]] inline Utf8Character ReadUtf8(std::string_view text, std::size_t position) noexcept {
  const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char lead = byteAt(position);
  if (lead < 0x80) return {lead, 1};

  const Utf8Character invalid{kInvalidByte + lead, 1};
  std::size_t length = 0;
  char32_t codePoint = 0;
  char32_t smallest = 0;  // shorter code points in that many bytes are not well-formed
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    codePoint = lead & 0x1FU;
    smallest = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    codePoint = lead & 0x0FU;
    smallest = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    codePoint = lead & 0x07U;
    smallest = kFirstSupplementary;
  } else {
    return invalid;
  }
  if (text.size() - position < length) return invalid;
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = byteAt(position + i);
    if ((next & 0xC0U) != 0x80U) return invalid;
    codePoint = (codePoint << 6U) | (next & 0x3FU);
  }
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  if (codePoint < smallest || codePoint > 0x10FFFF || surrogate) return invalid;
  return {codePoint, length};
}

/// Whether the text is well-formed UTF-8.
[[nodiscard]] inline bool IsUtf8(std::string_view text) noexcept {
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = ReadUtf8(text, position);
    if (character.codePoint >= kInvalidByte) return false;
    position += character.length;
  }
  return true;
}

/// How many UTF-16 units the character takes; an invalid byte counts as one.
[[nodiscard]] inline std::size_t Utf16Units(Utf8Character character) noexcept {
  return character.codePoint >= kFirstSupplementary && character.codePoint < kInvalidByte ? 2 : 1;
}

/// Appends a code point below U+10000 that is not a surrogate.
inline void AppendUtf8(std::string& text, char32_t codePoint) {
  if (codePoint < 0x80) {
    text.push_back(static_cast<char>(codePoint));
  } else if (codePoint < 0x800) {
    text.push_back(static_cast<char>(0xC0U | (codePoint >> 6U)));
    text.push_back(static_cast<char>(0x80U | (codePoint & 0x3FU)));
  } else {
    text.push_back(static_cast<char>(0xE0U | (codePoint >> 12U)));
    text.push_back(static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU)));
    text.push_back(static_cast<char>(0x80U | (codePoint & 0x3FU)));
  }
}

}  // namespace qorcred

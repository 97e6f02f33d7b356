#include "frame/host.h"

#include <algorithm>
#include <array>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/utf8.h"

namespace qorcred {
namespace {

// Bytes 0x80 to 0x9F of code page 1252. The five that the page leaves open stand for the control
// characters of the same number, so that every byte survives the way to text and back.
constexpr std::size_t kFirstSpecial = 0x80;
constexpr std::array<char32_t, 32> kSpecialBytes = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsSpecial(std::size_t byte) noexcept {
  return byte >= kFirstSpecial && byte < kFirstSpecial + kSpecialBytes.size();
}

std::uint8_t ToAnsiByte(char32_t codePoint) noexcept {
  if (codePoint <= 0xFF && !IsSpecial(codePoint)) return static_cast<std::uint8_t>(codePoint);
  const auto found = std::find(kSpecialBytes.begin(), kSpecialBytes.end(), codePoint);
  if (found == kSpecialBytes.end()) return '?';
  return static_cast<std::uint8_t>(kFirstSpecial +
                                   static_cast<std::size_t>(found - kSpecialBytes.begin()));
}

}  // namespace

std::string Host::DateText(Date date) {
  return qorcred::DateText(date);
}

std::vector<std::uint8_t> Host::TextToAnsi(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = ReadUtf8(text, position);
    bytes.insert(bytes.end(), Utf16Units(character), ToAnsiByte(character.codePoint));
    position += character.length;
  }
  return bytes;
}

std::string Host::AnsiToText(std::span<const std::uint8_t> bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const std::uint8_t byte : bytes) {
    AppendUtf8(text, IsSpecial(byte) ? kSpecialBytes[byte - kFirstSpecial] : byte);
  }
  return text;
}

std::string TextOf(Host& host, const Value& value) {
  const Date* date = value.As<Date>();
  return date != nullptr ? host.DateText(*date) : TextOrEmpty(value);
}

}  // namespace qorcred

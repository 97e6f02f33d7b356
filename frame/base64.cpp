#include "frame/base64.h"

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr std::size_t kGroupBytes = 4;
constexpr std::size_t kDecodedBytes = 3;
constexpr std::uint8_t kOutside = 64;

Base64Decoder::Table TableOf(std::span<const std::uint8_t> alphabet) {
  if (alphabet.size() < kBase64Alphabet.size()) throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  Base64Decoder::Table table{};
  table.fill(kOutside);
  for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i) {
    table[alphabet[i]] = static_cast<std::uint8_t>(i);
  }
  return table;
}

std::uint8_t CheckedByte(unsigned value) {
  if (value > std::numeric_limits<std::uint8_t>::max()) {
    throw RuntimeError(ErrorNumber::kOverflow);
  }
  return static_cast<std::uint8_t>(value);
}

/// How many bytes at the end of the output stand for padding. A first "=" in the last place but
/// one counts for both, whatever follows it.
std::size_t PaddingOf(std::span<const std::uint8_t> input) {
  if (input[input.size() - 2] == '=') return 2;
  return input.back() == '=' ? 1 : 0;
}

}  // namespace

std::string EncodeBase64(std::string_view bytes) {
  constexpr unsigned kBitsOfPlace = 6;
  constexpr std::uint32_t kPlaceMask = 63;
  std::string text;
  for (std::size_t start = 0; start < bytes.size(); start += kDecodedBytes) {
    const std::string_view group = bytes.substr(start, kDecodedBytes);
    std::uint32_t bits = 0;
    for (std::size_t at = 0; at < kDecodedBytes; ++at) {
      bits = bits << 8U | (at < group.size() ? static_cast<std::uint8_t>(group[at]) : 0U);
    }
    // n bytes fill n + 1 places; the rest of the group is padding.
    for (std::size_t place = 0; place < kGroupBytes; ++place) {
      const auto shift = static_cast<unsigned>(kBitsOfPlace * (kDecodedBytes - place));
      text += place <= group.size() ? kBase64Alphabet[bits >> shift & kPlaceMask] : '=';
    }
  }
  return text;
}

std::string Base64Decoder::Decode(Host& host, std::string_view text) {
  if (!table_.has_value()) table_ = TableOf(host.TextToAnsi(kBase64Alphabet));
  const Table& table = *table_;

  std::vector<std::uint8_t> bytes = host.TextToAnsi(text);
  const std::size_t length = Utf16Length(text);
  const std::size_t room = length / kGroupBytes * kDecodedBytes;
  // Nothing, or less than one group, leaves no room for output at all.
  if (room == 0) throw RuntimeError(ErrorNumber::kIndexOutOfRange);

  // Decoded in their own place: what is written stays behind what is read.
  const std::size_t size = bytes.size();
  const std::size_t padding = size >= kGroupBytes ? PaddingOf(bytes) : 0;
  std::size_t written = 0;
  for (std::size_t i = 0; i < size; i += kGroupBytes) {
    // An incomplete last group runs past the end of the input or of the output. It is out of
    // range whatever it holds, also where its first byte would overflow as well.
    if (size - i < kGroupBytes || written == room) {
      throw RuntimeError(ErrorNumber::kIndexOutOfRange);
    }
    const unsigned first = table[bytes[i]];
    const unsigned second = table[bytes[i + 1]];
    const unsigned third = table[bytes[i + 2]];
    const unsigned fourth = table[bytes[i + 3]];
    // Only the first of the three can be too large for a byte.
    bytes[written++] = CheckedByte((first * 4) | (second >> 4U));
    bytes[written++] = static_cast<std::uint8_t>(((second & 15U) * 16) | (third >> 2U));
    bytes[written++] = static_cast<std::uint8_t>(((third & 3U) * 64) | fourth);
  }
  // A code page without a byte for every character: the end of the text has none to look at.
  if (size < length) throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  bytes.resize(written - padding);
  return host.AnsiToText(bytes);
}

}  // namespace qorcred

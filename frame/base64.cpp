#include "frame/base64.h"

#include <array>
#include <cstddef>
#include <limits>
#include <span>

#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kGroupBytes = 4;
constexpr std::size_t kDecodedBytes = 3;
constexpr std::uint8_t kOutside = 64;

using DecodingTable = std::array<std::uint8_t, 256>;

DecodingTable TableOf(std::span<const std::uint8_t> alphabet) {
  DecodingTable table{};
  table.fill(kOutside);
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
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

std::uint8_t ByteAt(std::span<const std::uint8_t> bytes, std::size_t index) {
  if (index >= bytes.size()) throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  return bytes[index];
}

/// How many bytes at the end of the output stand for padding. A first "=" in the last place but
/// one counts for both, whatever follows it.
std::size_t PaddingOf(std::span<const std::uint8_t> input, std::size_t length) {
  if (ByteAt(input, length - 2) == '=') return 2;
  return ByteAt(input, length - 1) == '=' ? 1 : 0;
}

}  // namespace

std::string Base64Decoder::Decode(Host& host, std::string_view text) {
  if (alphabet_.empty()) alphabet_ = host.TextToAnsi(kAlphabet);
  if (alphabet_.size() < kAlphabet.size()) throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  const DecodingTable table = TableOf(alphabet_);

  const std::vector<std::uint8_t> input = host.TextToAnsi(text);
  const std::size_t length = Utf16Length(text);
  std::vector<std::uint8_t> output(length / kGroupBytes * kDecodedBytes);
  // Nothing, or less than one group, leaves no room for output at all.
  if (output.empty()) throw RuntimeError(ErrorNumber::kIndexOutOfRange);

  std::size_t written = 0;
  for (std::size_t i = 0; i < input.size(); i += kGroupBytes) {
    // An incomplete last group runs past the end of the input or of the output. It is out of
    // range whatever it holds, also where its first byte would overflow as well.
    if (input.size() - i < kGroupBytes || written == output.size()) {
      throw RuntimeError(ErrorNumber::kIndexOutOfRange);
    }
    const unsigned first = table[input[i]];
    const unsigned second = table[input[i + 1]];
    const unsigned third = table[input[i + 2]];
    const unsigned fourth = table[input[i + 3]];
    // Only the first of the three can be too large for a byte.
    output[written++] = CheckedByte((first * 4) | (second >> 4U));
    output[written++] = static_cast<std::uint8_t>(((second & 15U) * 16) | (third >> 2U));
    output[written++] = static_cast<std::uint8_t>(((third & 3U) * 64) | fourth);
  }
  output.resize(output.size() - PaddingOf(input, length));
  return host.AnsiToText(output);
}

}  // namespace qorcred

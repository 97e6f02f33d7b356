// Decodes any text, and the encoded form of any bytes.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/base64.h"
#include "frame/text.h"
#include "tests/frame/plain_host.h"
#include "tests/fuzz/check.h"

namespace {

using qorcred::ErrorNumber;
using qortest::Check;

struct Decoded {
  std::optional<std::string> text;
  ErrorNumber error{};
};

Decoded Decode(qorcred::Host& host, std::string_view text) {
  qorcred::Base64Decoder decoder;
  try {
    return {decoder.Decode(host, text), {}};
  } catch (const qorcred::RuntimeError& failure) {
    return {std::nullopt, failure.number()};
  }
}

void CheckAnyText(qorcred::Host& host, std::string_view text) {
  const Decoded decoded = Decode(host, text);
  const std::size_t length = qorcred::Utf16Length(text);
  if (decoded.text) {
    Check(length > 0 && length % 4 == 0, "only whole groups are decoded");
    const std::size_t missing = length / 4 * 3 - qorcred::Utf16Length(*decoded.text);
    Check(missing <= 2, "padding drops two bytes at most");
  } else {
    Check(decoded.error == ErrorNumber::kOverflow ||
              (decoded.error == ErrorNumber::kIndexOutOfRange && (length == 0 || length % 4 != 0)),
          "whole groups only overflow");
  }
}

void CheckEncodedBytes(qorcred::Host& host, std::span<const std::uint8_t> bytes) {
  const std::string text(bytes.begin(), bytes.end());
  const Decoded decoded = Decode(host, qorcred::EncodeBase64(text));
  if (bytes.empty()) {
    Check(decoded.error == ErrorNumber::kIndexOutOfRange, "no bytes are out of range");
  } else {
    Check(decoded.text == host.AnsiToText(bytes), "encoded bytes come back");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  const std::string text(bytes.begin(), bytes.end());
  qortest::PlainHost host;
  CheckAnyText(host, text);
  CheckEncodedBytes(host, bytes);
  return 0;
}

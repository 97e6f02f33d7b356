#include "host/files/desktop_file/reader_message.h"

#include <algorithm>

namespace qorhost::desktop_file {

namespace {

constexpr int kBitsInByte = 8;

void AddNumberTo(std::string& bytes, std::uint64_t number, int count) {
  for (int at = 0; at < count; ++at) {
    bytes.push_back(static_cast<char>(number >> (at * kBitsInByte) & 0xFF));
  }
}

std::uint64_t NumberIn(std::string_view bytes) {
  std::uint64_t number = 0;
  for (std::size_t at = bytes.size(); at > 0; --at) {
    number = number << kBitsInByte | static_cast<unsigned char>(bytes[at - 1]);
  }
  return number;
}

}  // namespace

bool IsMagic(std::string_view begin) {
  constexpr std::string_view kMarkOfPage0("\0\1\0\0", 4);
  const std::string_view name = begin.substr(std::min(begin.size(), kMarkOfPage0.size()));
  return begin.starts_with(kMarkOfPage0) &&
         (name.starts_with("Standard Jet DB") || name.starts_with("Standard ACE DB"));
}

void Payload::AddNumber(std::uint32_t number) {
  AddNumberTo(bytes_, number, sizeof number);
}

void Payload::AddLarge(std::uint64_t number) {
  AddNumberTo(bytes_, number, sizeof number);
}

void Payload::AddText(std::string_view text) {
  AddNumber(static_cast<std::uint32_t>(text.size()));
  bytes_.append(text);
}

std::string_view PayloadReader::Take(std::size_t count) {
  if (count > rest_.size()) {
    whole_ = false;
    rest_ = {};
    return {};
  }
  const std::string_view taken = rest_.substr(0, count);
  rest_.remove_prefix(count);
  return taken;
}

std::uint8_t PayloadReader::Byte() {
  return static_cast<std::uint8_t>(NumberIn(Take(1)));
}

std::uint32_t PayloadReader::Number() {
  return static_cast<std::uint32_t>(NumberIn(Take(sizeof(std::uint32_t))));
}

std::uint64_t PayloadReader::Large() {
  return NumberIn(Take(sizeof(std::uint64_t)));
}

std::string_view PayloadReader::Text() {
  return Take(Number());
}

std::optional<std::string_view> PayloadReader::Cell() {
  const std::uint32_t length = Number();
  if (length == kNullCell) {
    return std::nullopt;
  }
  return Take(length);
}

std::string FrameHeaderOf(FrameKind kind, std::size_t length) {
  std::string header(1, static_cast<char>(kind));
  AddNumberTo(header, length, sizeof(std::uint32_t));
  return header;
}

void RunningSum::Add(std::string_view bytes) {
  constexpr std::uint64_t kPrime = 0x100000001B3U;
  for (const char byte : bytes) {
    sum_ = (sum_ ^ static_cast<unsigned char>(byte)) * kPrime;
  }
}

}  // namespace qorhost::desktop_file

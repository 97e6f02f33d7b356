#include "host/files/desktop_file/desktop_text.h"

#include <fmt/format.h>
#include <iconv.h>

#include <cstdint>
#include <string>
#include <utility>

namespace qorhost::desktop_file {

namespace {

constexpr std::string_view kMarkOfShortForm = "\xFF\xFE";
constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";  // U+FFFD
constexpr std::uint32_t kFirstHighHalf = 0xD800;
constexpr std::uint32_t kFirstLowHalf = 0xDC00;
constexpr std::uint32_t kEndOfHalves = 0xE000;
constexpr std::uint32_t kFirstBeyond = 0x10000;

void AddCharacter(std::string& utf8, std::uint32_t character) {
  const auto add = [&utf8](std::uint32_t byte) { utf8.push_back(static_cast<char>(byte)); };
  const auto rest = [&](int shift) { add(0x80U | (character >> shift & 0x3FU)); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0U | character >> 6U);
    rest(0);
  } else if (character < kFirstBeyond) {
    add(0xE0U | character >> 12U);
    rest(6);
    rest(0);
  } else {
    add(0xF0U | character >> 18U);
    rest(12);
    rest(6);
    rest(0);
  }
}

/// Takes UTF-16 units one by one.
class Utf16Text {
 public:
  void Add(std::uint32_t unit) {
    const bool isLow = unit >= kFirstLowHalf && unit < kEndOfHalves;
    if (high_ != 0 && isLow) {
      AddCharacter(text_.utf8,
                   kFirstBeyond + ((high_ - kFirstHighHalf) << 10U) + (unit - kFirstLowHalf));
      high_ = 0;
      return;
    }
    EndHalf();
    if (unit >= kFirstHighHalf && unit < kFirstLowHalf) {
      high_ = unit;
    } else if (isLow) {
      AddNone();
    } else {
      AddCharacter(text_.utf8, unit);
    }
  }
  void AddNone() {
    text_.utf8.append(kNoCharacter);
    text_.isWhole = false;
  }
  DesktopText Ended() {
    EndHalf();
    return std::move(text_);
  }

 private:
  void EndHalf() {
    if (high_ != 0) {
      high_ = 0;
      AddNone();
    }
  }

  DesktopText text_;
  std::uint32_t high_ = 0;  // the first half of a character that waits for the second
};

std::uint32_t ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

DesktopText TextOfShortForm(std::string_view bytes) {
  Utf16Text text;
  bool isShort = true;
  for (std::size_t at = 0; at < bytes.size();) {
    if (bytes[at] == '\0') {
      isShort = !isShort;
      ++at;
    } else if (isShort) {
      text.Add(ByteAt(bytes, at));
      ++at;
    } else if (at + 1 < bytes.size()) {
      text.Add(ByteAt(bytes, at) | ByteAt(bytes, at + 1) << 8U);
      at += 2;
    } else {
      text.AddNone();
      ++at;
    }
  }
  return text.Ended();
}

/// A conversion of the system, closed with its object.
class Conversion {
 public:
  explicit Conversion(unsigned codePage)
      : handle_(iconv_open("UTF-8", fmt::format("CP{}", codePage).c_str())) {}
  ~Conversion() {
    if (open()) iconv_close(handle_);
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;

  [[nodiscard]] bool open() const {
    // The system tells a failure by this pointer. The analyser ends itself at a bit_cast here.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    return reinterpret_cast<std::intptr_t>(handle_) != -1;
  }

  /// Appends what the bytes say; how many of them it took.
  std::size_t Take(std::string_view bytes, std::string& utf8) {
    std::string in(bytes);
    char* from = in.data();
    std::size_t left = in.size();
    std::string out(in.size() * 4, '\0');
    char* to = out.data();
    std::size_t room = out.size();
    iconv(handle_, &from, &left, &to, &room);
    utf8.append(out, 0, out.size() - room);
    return in.size() - left;
  }

 private:
  iconv_t handle_;
};

}  // namespace

DesktopText TextOfUtf16(std::string_view bytes) {
  if (bytes.starts_with(kMarkOfShortForm)) {
    return TextOfShortForm(bytes.substr(kMarkOfShortForm.size()));
  }
  Utf16Text text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    text.Add(ByteAt(bytes, at) | ByteAt(bytes, at + 1) << 8U);
  }
  if (bytes.size() % 2 != 0) {
    text.AddNone();
  }
  return text.Ended();
}

bool IsKnownCodePage(unsigned codePage) {
  return Conversion(codePage).open();
}

DesktopText TextOfCodePage(std::string_view bytes, unsigned codePage) {
  DesktopText text;
  Conversion conversion(codePage);
  while (!bytes.empty()) {
    bytes.remove_prefix(conversion.Take(bytes, text.utf8));
    if (!bytes.empty()) {
      text.utf8.append(kNoCharacter);
      text.isWhole = false;
      bytes.remove_prefix(1);
    }
  }
  return text;
}

}  // namespace qorhost::desktop_file

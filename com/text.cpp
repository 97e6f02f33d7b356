#include "com/text.h"

#include <cstddef>

#include "frame/runtime_error.h"
#include "frame/text.h"
#include "frame/utf8.h"

namespace qorcred::com {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(wchar_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(wchar_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Most texts are ASCII from end to end. The loops over them have no exit in the middle, so that
// they take many characters at a time.

bool IsAsciiOnly(std::wstring_view text) {
  unsigned bits = 0;
  for (const wchar_t unit : text) bits |= unit;
  return bits < 0x80;
}

bool IsSameAscii(std::wstring_view text, std::string_view other) {
  if (text.size() != other.size()) return false;
  unsigned difference = 0;
  unsigned bits = 0;
  for (std::size_t at = 0; at < other.size(); ++at) {
    difference |= text[at] ^ static_cast<unsigned>(static_cast<unsigned char>(other[at]));
    bits |= text[at];
  }
  return difference == 0 && bits < 0x80;
}

void WriteAscii(std::string_view text, wchar_t* out) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    out[at] = static_cast<unsigned char>(text[at]);
  }
}

// Writes UTF-16 units; returns behind the last. There is room for one unit a byte.
wchar_t* WriteWide(std::string_view text, wchar_t* out) {
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Character character = ReadUtf8(text, position);
    position += character.length;
    const char32_t codePoint =
        character.codePoint >= kInvalidByte ? kReplacement : character.codePoint;
    if (codePoint < kFirstSupplementary) {
      *out++ = static_cast<wchar_t>(codePoint);
    } else {
      const char32_t offset = codePoint - kFirstSupplementary;
      *out++ = static_cast<wchar_t>(0xD800U + (offset >> 10U));
      *out++ = static_cast<wchar_t>(0xDC00U + (offset & 0x3FFU));
    }
  }
  return out;
}

void AppendSupplementary(std::string& text, char32_t codePoint) {
  text.push_back(static_cast<char>(0xF0U | (codePoint >> 18U)));
  text.push_back(static_cast<char>(0x80U | ((codePoint >> 12U) & 0x3FU)));
  text.push_back(static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU)));
  text.push_back(static_cast<char>(0x80U | (codePoint & 0x3FU)));
}

}  // namespace

std::wstring ToWide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  if (IsAscii(text)) {
    WriteAscii(text, wide.data());
    return wide;
  }
  const wchar_t* end = WriteWide(text, wide.data());
  wide.resize(static_cast<std::size_t>(end - wide.data()));
  return wide;
}

std::string ToUtf8(std::wstring_view text) {
  if (IsAsciiOnly(text)) {
    std::string ascii(text.size(), '\0');
    for (std::size_t at = 0; at < text.size(); ++at) ascii[at] = static_cast<char>(text[at]);
    return ascii;
  }
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t position = 0; position < text.size(); ++position) {
    const wchar_t unit = text[position];
    if (IsHighSurrogate(unit) && position + 1 < text.size() && IsLowSurrogate(text[position + 1])) {
      const auto high = static_cast<char32_t>(unit) - 0xD800U;
      const auto low = static_cast<char32_t>(text[position + 1]) - 0xDC00U;
      AppendSupplementary(utf8, kFirstSupplementary + (high << 10U) + low);
      ++position;
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendUtf8(utf8, kReplacement);
    } else {
      AppendUtf8(utf8, unit);
    }
  }
  return utf8;
}

BSTR NewBstr(std::string_view text) {
  const bool isAscii = IsAscii(text);
  const std::size_t length = isAscii ? text.size() : Utf16Length(text);
  BSTR bstr = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  if (bstr == nullptr) throw RuntimeError(ErrorNumber::kOutOfMemory);
  if (isAscii) {
    WriteAscii(text, bstr);
  } else {
    WriteWide(text, bstr);
  }
  return bstr;
}

std::string FromBstr(BSTR text) {
  return text == nullptr ? std::string() : ToUtf8({text, SysStringLen(text)});
}

bool SameText(BSTR text, std::string_view other) {
  const std::wstring_view wide =
      text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
  return IsSameAscii(wide, other) || ToUtf8(wide) == other;
}

}  // namespace qorcred::com

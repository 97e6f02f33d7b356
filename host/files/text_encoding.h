// Texts from outside in whatever encoding a spreadsheet has saved them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qorhost {

enum class TextEncoding : std::uint8_t {
  kUtf8,
  kCp1252,  ///< of older programs in Western countries
  kUtf16,   ///< little-endian, unless a byte order mark says otherwise
};

/// The text as UTF-8, without a byte order mark. A mark says what the encoding is, whatever
/// `encoding` says; a text that is to be UTF-8 is handed back as it is, bytes that are none
/// included. Raises FileError, kUnusable, with the place of the first byte that the encoding does
/// not have, and for a workbook (.xlsx, .ods, .xls). Time and memory are linear.
[[nodiscard]] std::string TextAsUtf8(std::string text, TextEncoding encoding);

/// Whether a text begins with a mark that says its encoding.
[[nodiscard]] bool HasByteOrderMark(std::string_view text);

/// What speaks against a text's being UTF-8, a byte order mark apart.
struct EncodingDoubt {
  bool isLikeUtf16 = false;  ///< its first line has zero bytes between its letters
  std::size_t badLine = 0;   ///< else the first line with bytes that are no UTF-8; 0 without one
};
/// Raises FileError as TextAsUtf8() does.
[[nodiscard]] EncodingDoubt DoubtAbout(const std::string& text);

/// Before anything of a text is taken in of which nobody said the encoding: one in another than
/// UTF-8 would lose every line with an accent, one by one. Raises FileError, kLikeUtf16 or
/// kNotUtf8, to which a front end adds how the encoding is said.
void RequireUndoubted(const std::string& text);

}  // namespace qorhost

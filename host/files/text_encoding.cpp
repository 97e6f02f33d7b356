#include "host/files/text_encoding.h"

#include <fmt/format.h>
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

#include "frame/utf8.h"
#include "host/files/file_error.h"

namespace qorhost {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

/// One way to read bytes, as the system's converter calls it.
struct Source {
  const char* name;
  std::string_view called;  // for people
};

constexpr Source kCp1252Source{"CP1252", "Windows-1252"};
constexpr Source kLittleEndian{"UTF-16LE", "UTF-16"};
constexpr Source kBigEndian{"UTF-16BE", "UTF-16"};

class Converter {
 public:
  explicit Converter(const Source& source)
      : source_(source), handle_(iconv_open("UTF-8", source.name)) {
    // The number -1 in the place of a pointer says that it failed.
    std::intptr_t number = 0;
    std::memcpy(&number, &handle_, sizeof number);
    if (number == -1) {
      throw FileError(FileProblem::kUnreachable,
                      fmt::format("this system cannot read {}: {}; save the file as UTF-8",
                                  source.called, std::generic_category().message(errno)));
    }
  }
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  [[nodiscard]] std::string Convert(std::string& text) {
    constexpr std::size_t kPart = 65536;
    std::string converted;
    converted.reserve(text.size());
    std::string part(kPart, '\0');
    char* in = text.data();
    std::size_t left = text.size();
    while (left > 0) {
      char* out = part.data();
      std::size_t room = part.size();
      const std::size_t status = iconv(handle_, &in, &left, &out, &room);
      const int reason = errno;
      converted.append(part.data(), part.size() - room);
      if (status == static_cast<std::size_t>(-1) && reason != E2BIG) {
        throw FileError(FileProblem::kUnusable,
                        fmt::format("byte {} of the file is no {}: it has another encoding, or was "
                                    "cut off; nothing was imported",
                                    text.size() - left + 1, source_.called));
      }
    }
    return converted;
  }

 private:
  Source source_;
  iconv_t handle_;
};

/// The number of the first line with bytes that are no UTF-8; 0 without one.
std::size_t FirstBadLine(std::string_view text) {
  std::size_t line = 0;
  while (!text.empty()) {
    ++line;
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (!qorcred::IsUtf8(text.substr(0, end))) {
      return line;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return 0;
}

/// What a spreadsheet program keeps for itself looks like a text in no encoding.
void RequireNoWorkbook(std::string_view bytes) {
  constexpr std::string_view kZip = "PK\x03\x04";                             // .xlsx, .ods
  constexpr std::string_view kCompound = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";  // .xls
  if (bytes.starts_with(kZip) || bytes.starts_with(kCompound)) {
    throw FileError(FileProblem::kUnusable,
                    "the file is a workbook of a spreadsheet program and no text, so nothing was "
                    "imported: save the sheet as CSV there, and import that");
  }
}

}  // namespace

bool HasByteOrderMark(std::string_view text) {
  return text.starts_with(kUtf8Mark) || text.starts_with(kLittleEndianMark) ||
         text.starts_with(kBigEndianMark);
}

EncodingDoubt DoubtAbout(const std::string& text) {
  if (qorcred::IsUtf8(text) && text.find('\0') == std::string::npos) {
    return {};
  }
  const std::string read = TextAsUtf8(text, TextEncoding::kUtf8);
  const std::string_view firstLine = std::string_view(read).substr(0, read.find('\n'));
  if (firstLine.find('\0') != std::string_view::npos) {
    return {true, 0};
  }
  return {false, FirstBadLine(read)};
}

void RequireUndoubted(const std::string& text) {
  const EncodingDoubt doubt = DoubtAbout(text);
  if (doubt.isLikeUtf16) {
    throw FileError(FileProblem::kLikeUtf16,
                    "line 1 has zero bytes between its letters, as UTF-16 has, so nothing was "
                    "imported");
  }
  if (doubt.badLine != 0) {
    throw FileError(FileProblem::kNotUtf8,
                    fmt::format("line {} is not UTF-8, so nothing was imported", doubt.badLine));
  }
}

std::string TextAsUtf8(std::string text, TextEncoding encoding) {
  const std::string_view bytes = text;
  RequireNoWorkbook(bytes);
  if (bytes.starts_with(kUtf8Mark)) {
    return text.erase(0, kUtf8Mark.size());
  }
  for (const auto& [mark, source] :
       {std::pair(kLittleEndianMark, kLittleEndian), std::pair(kBigEndianMark, kBigEndian)}) {
    if (bytes.starts_with(mark)) {
      text.erase(0, mark.size());
      return Converter(source).Convert(text);
    }
  }
  switch (encoding) {
    case TextEncoding::kCp1252:
      return Converter(kCp1252Source).Convert(text);
    case TextEncoding::kUtf16:
      return Converter(kLittleEndian).Convert(text);
    case TextEncoding::kUtf8:
      break;
  }
  return text;
}

}  // namespace qorhost

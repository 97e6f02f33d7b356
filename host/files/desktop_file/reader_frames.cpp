#include "host/files/desktop_file/reader_frames.h"

#include <fmt/format.h>

#include <bit>
#include <cstring>
#include <optional>
#include <utility>

#include "host/files/desktop_file/desktop_text.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/file_error.h"

namespace qorhost::desktop_file {

namespace {

constexpr unsigned kUsualCodePage = 1252;

template <typename Number>
Number NumberOf(std::string_view bytes) {
  // The pages have the lowest byte first, as every machine has that this is built for.
  static_assert(std::endian::native == std::endian::little);
  if (bytes.size() != sizeof(Number)) throw BrokenFrames();
  Number number{};
  std::memcpy(&number, bytes.data(), sizeof number);
  return number;
}

/// What the frames of one file say.
class FrameReader {
 public:
  FrameReader(std::string_view frames, std::string_view file, const DesktopReading& reading)
      : rest_(frames), file_(file), reading_(reading) {}

  DesktopFile Read() {
    RequireEnd();
    while (!rest_.empty()) {
      const Frame frame = Next();
      PayloadReader payload(frame.payload);
      switch (frame.kind) {
        case FrameKind::kFile:
          ReadFile(payload);
          break;
        case FrameKind::kTable:
          ReadTable(payload);
          break;
        case FrameKind::kRow:
          ReadRow(payload);
          break;
        case FrameKind::kFault:
          Refuse(payload);
        case FrameKind::kEnd:
          return std::move(read_);
        default:
          throw BrokenFrames();
      }
      if (!payload.IsAtItsEnd()) throw BrokenFrames();
    }
    throw BrokenFrames();
  }

 private:
  struct Frame {
    FrameKind kind = FrameKind::kEnd;
    std::string_view payload;
  };

  Frame Next() {
    PayloadReader header(rest_);
    const auto kind = static_cast<FrameKind>(header.Byte());
    const std::uint32_t length = header.Number();
    if (!header.whole() || length > rest_.size() - kFrameHeader) throw BrokenFrames();
    const Frame frame{kind, rest_.substr(kFrameHeader, length)};
    rest_.remove_prefix(kFrameHeader + length);
    return frame;
  }

  /// All of it is there, and as it was written, before anything of it is believed.
  void RequireEnd() {
    const std::string_view all = rest_;
    RunningSum sum;
    for (std::uint64_t count = 0; !rest_.empty(); ++count) {
      const std::string_view before = rest_;
      const Frame frame = Next();
      if (frame.kind != FrameKind::kEnd) {
        sum.Add(before.substr(0, before.size() - rest_.size()));
        continue;
      }
      PayloadReader payload(frame.payload);
      if (payload.Large() != count || payload.Large() != sum.sum() || !payload.IsAtItsEnd() ||
          !rest_.empty()) {
        throw BrokenFrames();
      }
      rest_ = all;
      return;
    }
    throw BrokenFrames();
  }

  void ReadFile(PayloadReader& payload) {
    if (payload.Number() != kFormNumber) throw BrokenFrames();
    const bool hasCodePage = payload.Number() == kOldestFormat;
    const std::uint32_t told = payload.Number();
    if (hasCodePage) {
      read_.codePage = CodePage(told);
    } else if (reading_.codePage != 0) {
      throw FileError(
          FileProblem::kUnusable,
          fmt::format(
              "'{}' has its texts in Unicode: name no code page, which would change nothing",
              file_));
    }
  }

  [[nodiscard]] DesktopCodePage CodePage(unsigned told) const {
    if (reading_.codePage != 0) return {reading_.codePage, false};
    return IsKnownCodePage(told) ? DesktopCodePage{told, false}
                                 : DesktopCodePage{kUsualCodePage, true};
  }

  /// What a row or a table takes, before it is taken.
  void CountCells(std::string_view table, std::size_t columns) {
    cells_ += columns + 1;
    if (cells_ <= reading_.mostCells) return;
    throw FileError(
        FileProblem::kUnusable,
        fmt::format(
            "'{}' has more than the {} cells, empty ones among them, that are read of one "
            "file: they end within its table '{}', which has {} columns. Delete rows or columns "
            "that nobody needs any more in a copy, and name that",
            file_, reading_.mostCells, table, columns));
  }

  void ReadTable(PayloadReader& payload) {
    DesktopTable table;
    table.name = payload.Text();
    table.isLinked = payload.Byte() != 0;
    table.count = payload.Number();
    const std::uint32_t columns = payload.Number();
    CountCells(table.name, columns);
    for (std::uint32_t at = 0; at < columns && payload.whole(); ++at) {
      DesktopColumn column;
      column.name = payload.Text();
      column.type = DesktopTypeOf(payload.Byte());
      column.isAutoNumber = payload.Byte() != 0;
      column.size = payload.Number();
      table.columns.push_back(std::move(column));
    }
    read_.tables.push_back(std::move(table));
  }

  void ReadRow(PayloadReader& payload) {
    if (read_.tables.empty()) throw BrokenFrames();
    DesktopTable& table = read_.tables.back();
    CountCells(table.name, table.columns.size());
    std::vector<DesktopCell> row;
    row.reserve(table.columns.size());
    for (const DesktopColumn& column : table.columns) {
      const std::optional<std::string_view> bytes = payload.Cell();
      row.push_back(bytes ? CellOf(column.type, *bytes) : DesktopCell(DesktopNull{}));
    }
    table.rows.push_back(std::move(row));
  }

  [[nodiscard]] DesktopCell CellOf(DesktopType type, std::string_view bytes) const {
    switch (type) {
      case DesktopType::kYesNo:
        return NumberOf<std::uint8_t>(bytes) != 0;
      case DesktopType::kByte:
        return std::int64_t{NumberOf<std::uint8_t>(bytes)};
      case DesktopType::kInteger:
        return std::int64_t{NumberOf<std::int16_t>(bytes)};
      case DesktopType::kLong:
        return std::int64_t{NumberOf<std::int32_t>(bytes)};
      case DesktopType::kCurrency:
        return DesktopCurrency{NumberOf<std::int64_t>(bytes)};
      case DesktopType::kSingle:
        return double{NumberOf<float>(bytes)};
      case DesktopType::kDouble:
        return NumberOf<double>(bytes);
      case DesktopType::kDateTime:
        return DesktopDate{NumberOf<double>(bytes)};
      case DesktopType::kText:
      case DesktopType::kMemo:
        return read_.codePage ? TextOfCodePage(bytes, read_.codePage->number) : TextOfUtf16(bytes);
      default:
        return DesktopBytes{std::string(bytes)};
    }
  }

  [[noreturn]] void Refuse(PayloadReader& payload) const {
    const auto fault = static_cast<ReadFault>(payload.Byte());
    const std::string_view table = payload.Text();
    const std::uint64_t read = payload.Large();
    const std::uint64_t counted = payload.Large();
    if (!payload.IsAtItsEnd()) throw BrokenFrames();
    throw FileError(FileProblem::kUnusable, InWords(fault, table, read, counted));
  }

  [[nodiscard]] std::string InWords(ReadFault fault, std::string_view table, std::uint64_t read,
                                    std::uint64_t counted) const {
    const std::string_view name = file_;
    constexpr std::string_view kMend =
        "have the program that it comes from repair it, or take an older copy";
    switch (fault) {
      case ReadFault::kEmpty:
        return fmt::format("'{}' is empty: name another file", name);
      case ReadFault::kForeign:
        return fmt::format("'{}' is no desktop database (.mdb, .accdb): name another file", name);
      case ReadFault::kFormat:
        return fmt::format(
            "'{}' is a desktop database of a format that is not known: save it as "
            "an .mdb or .accdb of another version",
            name);
      case ReadFault::kCut:
        return fmt::format(
            "'{}' is cut off: it ends within a page. Copy it again from where it "
            "comes from",
            name);
      case ReadFault::kPassword:
        return fmt::format(
            "'{}' has a password: open it in the program that it comes from, take "
            "the password away in a copy, and name that",
            name);
      case ReadFault::kCatalogue:
        return fmt::format("'{}' is damaged: the list of its tables cannot be read; {}", name,
                           kMend);
      case ReadFault::kDefinition:
        return fmt::format("'{}' is damaged: the definition of its table '{}' cannot be read; {}",
                           name, table, kMend);
      case ReadFault::kRow:
        return fmt::format("'{}' is damaged: a row of its table '{}' cannot be read; {}", name,
                           table, kMend);
      case ReadFault::kLongValue:
        return fmt::format("'{}' is damaged: a long text of its table '{}' is not all there; {}",
                           name, table, kMend);
      case ReadFault::kCount:
        return fmt::format(
            "'{}' is damaged: its table '{}' says that it has {} rows, and {} can "
            "be read; {}",
            name, table, counted, read > counted ? std::string("more") : std::to_string(read),
            kMend);
      case ReadFault::kTooLarge:
        if (!table.empty()) {
          return fmt::format(
              "'{}' has a text of more than {} MB in its table '{}': shorten it in a "
              "copy, and name that",
              name, kLongestText >> 20U, table);
        }
        return fmt::format(
            "'{}' holds more than the {} MB that are read of one file: delete what "
            "nobody needs any more in a copy, and name that",
            name, reading_.mostBytes >> 20U);
    }
    throw BrokenFrames();
  }

  std::string_view rest_;
  std::string_view file_;
  const DesktopReading& reading_;
  std::size_t cells_ = 0;
  DesktopFile read_;
};

}  // namespace

DesktopFile TablesIn(std::string_view frames, std::string_view file,
                     const DesktopReading& reading) {
  return FrameReader(frames, file, reading).Read();
}

}  // namespace qorhost::desktop_file

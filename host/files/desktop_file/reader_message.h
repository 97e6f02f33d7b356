// What the reader of desktop database files tells the program that started it: frames of bytes on a
// pipe, counted and summed up at the end, so that a part of them is never taken for the whole. Both
// sides use this; it needs the standard library alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qorhost::desktop_file {

/// A frame is its kind, the length of its payload in four bytes, lowest first, and the payload.
enum class FrameKind : std::uint8_t {
  kFile = 'H',   ///< form number, format, code page
  kTable = 'T',  ///< name, whether it is linked, rows by its own count, columns
  kRow = 'R',    ///< of the table before it: its cells
  kFault = 'F',  ///< why there is nothing more; nothing but the end follows
  kEnd = 'E',    ///< frames before it, and their sum
};

/// Raised by one number with every change of the frames.
inline constexpr std::uint32_t kFormNumber = 1;
/// The longest payload: a row with its long texts.
inline constexpr std::size_t kLongestFrame = std::size_t{32} << 20;
/// The longest text of a cell.
inline constexpr std::size_t kLongestText = kLongestFrame / 2;
/// In the place of a cell's length: Null.
inline constexpr std::uint32_t kNullCell = 0xFFFFFFFF;

/// Why a file cannot be read.
enum class ReadFault : std::uint8_t {
  kEmpty = 1,   ///< it holds nothing
  kForeign,     ///< it is no database of this kind
  kFormat,      ///< it is one, in a format that the reader does not know
  kCut,         ///< it ends within a page
  kPassword,    ///< it needs a password
  kCatalogue,   ///< the list of its tables cannot be read
  kDefinition,  ///< a table's definition cannot be read
  kRow,         ///< a row of a table cannot be taken apart
  kLongValue,   ///< a long text of a table is not all there
  kCount,       ///< a table has more or fewer rows than it says
  kTooLarge,    ///< it holds more than is ever read, or a table a text that does
};
inline constexpr auto kLastFault = ReadFault::kTooLarge;

/// How such a file begins, and whether bytes do so.
inline constexpr std::size_t kMagicLength = 19;
[[nodiscard]] bool IsMagic(std::string_view begin);

/// The formats by the number in the file.
inline constexpr std::uint32_t kOldestFormat = 0;  ///< texts in a code page; later ones in UTF-16

/// Puts a payload together.
class Payload {
 public:
  void AddByte(std::uint8_t number) { bytes_.push_back(static_cast<char>(number)); }
  void AddNumber(std::uint32_t number);
  void AddLarge(std::uint64_t number);
  /// Its length and its bytes.
  void AddText(std::string_view text);
  void AddNullCell() { AddNumber(kNullCell); }
  void Clear() { bytes_.clear(); }

  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

/// Takes one apart. What goes beyond its end gives zeros and empty texts, and ends whole().
class PayloadReader {
 public:
  explicit PayloadReader(std::string_view bytes) : rest_(bytes) {}

  [[nodiscard]] std::uint8_t Byte();
  [[nodiscard]] std::uint32_t Number();
  [[nodiscard]] std::uint64_t Large();
  /// Valid as long as the payload.
  [[nodiscard]] std::string_view Text();
  /// The same; nothing for Null.
  [[nodiscard]] std::optional<std::string_view> Cell();

  /// Whether everything asked for was there, and nothing is left.
  [[nodiscard]] bool IsAtItsEnd() const { return whole_ && rest_.empty(); }
  [[nodiscard]] bool whole() const { return whole_; }

 private:
  [[nodiscard]] std::string_view Take(std::size_t count);

  std::string_view rest_;
  bool whole_ = true;
};

/// The bytes before a payload.
inline constexpr std::size_t kFrameHeader = 5;
[[nodiscard]] std::string FrameHeaderOf(FrameKind kind, std::size_t length);

/// The sum of all bytes so far; which part of them came when does not count.
class RunningSum {
 public:
  void Add(std::string_view bytes);
  [[nodiscard]] std::uint64_t sum() const { return sum_; }

 private:
  std::uint64_t sum_ = 0xCBF29CE484222325U;
};

}  // namespace qorhost::desktop_file

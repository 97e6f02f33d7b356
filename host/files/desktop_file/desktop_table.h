// The tables of database files of desktop applications (.mdb, .accdb), with every value as the file
// has it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace qorhost {

/// What a column of such a file holds, by the number in the file.
enum class DesktopType : std::uint8_t {
  kYesNo = 1,
  kByte = 2,
  kInteger = 3,  ///< 16 bits
  kLong = 4,     ///< 32 bits
  kCurrency = 5,
  kSingle = 6,
  kDouble = 7,
  kDateTime = 8,
  kBinary = 9,
  kText = 10,
  kOle = 11,
  kMemo = 12,
  kGuid = 15,
  kDecimal = 16,
  kUnknown = 0,  ///< any other
};

/// How people call it: "Yes/No", "Date/Time".
[[nodiscard]] std::string_view NameOf(DesktopType type);
/// The type of that number.
[[nodiscard]] DesktopType DesktopTypeOf(std::uint8_t number);

/// Days since 30 December 1899. Before that day the fraction counts forward from the whole day:
/// -1.25 is six hours into 29 December 1899.
struct DesktopDate {
  double serial = 0;
  friend bool operator==(const DesktopDate&, const DesktopDate&) = default;
};

/// Ten-thousandths.
struct DesktopCurrency {
  std::int64_t parts = 0;
  friend bool operator==(const DesktopCurrency&, const DesktopCurrency&) = default;
};

struct DesktopText {
  std::string utf8;     ///< U+FFFD in the place of what is no character; it may hold U+0000
  bool isWhole = true;  ///< there was no such place
  friend bool operator==(const DesktopText&, const DesktopText&) = default;
};

/// Of types that no table of a store has.
struct DesktopBytes {
  std::string bytes;
  friend bool operator==(const DesktopBytes&, const DesktopBytes&) = default;
};

struct DesktopNull {
  friend bool operator==(const DesktopNull&, const DesktopNull&) = default;
};

/// A cell: an empty text is not Null, and Yes/No never is. Byte, Integer and Long are whole
/// numbers.
using DesktopCell = std::variant<DesktopNull, bool, std::int64_t, double, DesktopCurrency,
                                 DesktopDate, DesktopText, DesktopBytes>;

struct DesktopColumn {
  std::string name;
  DesktopType type = DesktopType::kUnknown;
  bool isAutoNumber = false;
  std::size_t size = 0;  ///< bytes of a value; of long ones 0
};

struct DesktopTable {
  std::string name;
  bool isLinked = false;  ///< its rows stand in another file
  std::size_t count = 0;  ///< rows by its own count
  std::vector<DesktopColumn> columns;
  std::vector<std::vector<DesktopCell>> rows;  ///< in the order of the file
};

/// In which the texts of a file are read.
struct DesktopCodePage {
  unsigned number = 0;
  bool isGuessed = false;  ///< the file tells none that is known here, and nobody else did
  friend bool operator==(const DesktopCodePage&, const DesktopCodePage&) = default;
};

struct DesktopFile {
  std::vector<DesktopTable> tables;  ///< that people made, in the order of the file
  /// Of the oldest format alone, later ones have UTF-16.
  std::optional<DesktopCodePage> codePage = std::nullopt;
};

}  // namespace qorhost

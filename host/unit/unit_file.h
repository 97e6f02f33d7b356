// A simulated unit: a text file with the directory codes that the unit holds. The format is
// described in docs/unit-file.md.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "host/unit/unit_code.h"

namespace qorhost {

struct UnitFile {
  std::string firmware{kFirmwareWithDisplay};
  std::vector<UnitCode> codes;  ///< in canonical form, in the file's order
};

/// A line that was not taken over.
struct LineFault {
  std::size_t line = 0;  ///< from 1
  std::string reason;
};

struct UnitReading {
  UnitFile file;
  std::vector<LineFault> faults;  ///< by line
  bool isUnitFile = true;         ///< it begins as a unit file
  bool isCounted = false;         ///< its end line counts its codes; files of version 1 have none
  std::vector<std::size_t> lines{};  ///< of the file's codes, from 1

  /// The line of a code, by its place in the file; 0 when it comes from no file.
  [[nodiscard]] std::size_t LineOf(std::size_t code) const {
    return code < lines.size() ? lines[code] : 0;
  }
};

/// The longest line that is read, in bytes. Every code without fault fits into one.
inline constexpr std::size_t kLongestUnitLine = 4096;

/// The largest unit file that is read, in bytes, and the most faults that are told.
inline constexpr std::size_t kLargestUnitFile = std::size_t{256} << 20;
inline constexpr std::size_t kMostUnitFaults = 1000;

/// Reads a unit file. Whatever is wrong with a line is told in its fault, and the line left out; a
/// file that does not begin as a unit file has one fault and no codes. Where the stream fails, the
/// end line is missing or counts otherwise, or a bound is met, the line is told and nothing behind
/// it is read: a reading with a fault is not the whole unit. At most `largest` bytes are read.
[[nodiscard]] UnitReading ReadUnitFile(std::istream& in, std::size_t largest = kLargestUnitFile);

/// Why a unit file cannot hold the firmware's name; "" when it can.
[[nodiscard]] std::string FaultInFirmware(std::string_view firmware);

/// Writes a unit file with its end line. The firmware must be without fault. Codes go out as they
/// are: reading them back gives their canonical form. The caller looks at the stream's state.
void WriteUnitFile(std::ostream& out, const UnitFile& file);

}  // namespace qorhost

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
};

/// The longest line that is read, in bytes. Every code without fault fits into one.
inline constexpr std::size_t kLongestUnitLine = 4096;

/// Reads a unit file. Whatever is wrong with a line is told in its fault, and the line left out; a
/// file that does not begin as a unit file has one fault and no codes. Where the stream fails, the
/// line is told and nothing behind it is read: such a reading is not the whole unit.
[[nodiscard]] UnitReading ReadUnitFile(std::istream& in);

/// Why a unit file cannot hold the firmware's name; "" when it can.
[[nodiscard]] std::string FaultInFirmware(std::string_view firmware);

/// Writes a unit file. The firmware must be without fault. Codes go out as they are: reading them
/// back gives their canonical form. The caller looks at the stream's state.
void WriteUnitFile(std::ostream& out, const UnitFile& file);

}  // namespace qorhost

// The tables that the frames of a reader tell of.
#pragma once

#include <string_view>

#include "host/files/desktop_file/desktop_reading.h"
#include "host/files/desktop_file/desktop_table.h"

namespace qorhost::desktop_file {

/// Raised for frames that are not all there, not as they were written, or none.
class BrokenFrames {};

/// Takes nothing of them for true before their end and sum are right. `file` is its name, for
/// messages. Raises FileError, kUnusable, with the reader's own reason not to read the file or for
/// a code page of a format that has none, and BrokenFrames.
[[nodiscard]] DesktopFile TablesIn(std::string_view frames, std::string_view file,
                                   const DesktopReading& reading);

}  // namespace qorhost::desktop_file

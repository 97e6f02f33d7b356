// The process that reads a desktop database file, with its limits.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "host/files/desktop_file/desktop_reading.h"

namespace qorhost::desktop_file {

/// The program that this one starts; an empty path where there is none.
[[nodiscard]] std::filesystem::path ReaderProgram(const DesktopReading& reading);

/// What a reader left behind.
struct ReaderOutput {
  std::string frames;
  bool endedWell = false;  ///< it said itself that it was done
  bool ranOutOfTime = false;
  bool ranOutOfProcessorTime = false;  ///< or was killed, which is seldom anything else
  bool ranOutOfMemory = false;
};

/// Copies the file to a place without a name, starts the reader on the copy and waits for its end,
/// which comes within the limits. Raises FileError, kUnreachable where the file cannot be copied or
/// no process be started, kUnusable when others change it meanwhile.
[[nodiscard]] ReaderOutput RunReader(const std::filesystem::path& file,
                                     const DesktopReading& reading);

}  // namespace qorhost::desktop_file

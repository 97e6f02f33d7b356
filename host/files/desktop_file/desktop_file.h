// Reading database files of desktop applications (.mdb, .accdb).
#pragma once

#include <filesystem>

#include "host/files/desktop_file/desktop_reading.h"
#include "host/files/desktop_file/desktop_table.h"

namespace qorhost {

/// Whether a file begins as one of these; false also where it cannot be looked at.
[[nodiscard]] bool IsDesktopFile(const std::filesystem::path& file);

/// Reads a file in a process of its own, from a copy that nobody writes; the file is opened for
/// reading alone. Every row that a wanted table says it has is there. Raises FileError, which says
/// what is wrong and what to do: for a file that is none of these, that has a password, is damaged,
/// cut or too large, or that others write meanwhile, and where no reader is installed.
[[nodiscard]] DesktopFile ReadDesktopFile(const std::filesystem::path& file,
                                          const DesktopReading& reading);

}  // namespace qorhost

// In which form rows are printed, and where to.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <string>

#include "host/cli/command_session.h"
#include "host/terminal/console.h"

namespace qorhost {

struct OutputOptions {
  std::optional<std::string> format;  ///< "table", "csv", "json" or "html"; of reports also "sql"
  std::string to;                     ///< a file; "" or "-": standard output
  bool force = false;                 ///< replaces a file that is there

  [[nodiscard]] bool toFile() const { return !to.empty() && to != kStandardStream; }
};

/// The format of --format or of --json; else that of the file's ending, or the table. Raises
/// UsageError where two are said, or none that can be told from the file's name.
[[nodiscard]] std::string FormatOf(const GlobalOptions& global, const OutputOptions& output);

/// Prints to standard output, or to the file, and tells then how many rows that were. Raises
/// RefusedError for a file that is there and may not be replaced, and FileError.
void PrintTo(const GlobalOptions& global, const OutputOptions& output, std::size_t rows,
             Console& console, const std::function<void(std::ostream&)>& print);

}  // namespace qorhost

// `init --from`, and `copy` of such a file: a store of a building that another application has kept
// so far.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/cli/new_store.h"

namespace qorhost {

struct MovingOptions {
  std::optional<std::string> from;    ///< the desktop database file
  std::optional<std::string> report;  ///< as text, or as CSV when it is called so
  std::optional<unsigned> codePage;   ///< of texts of the oldest format
  bool skipBadRows = false;
  std::vector<std::filesystem::path> never;  ///< no report is written over them
};

/// Adds --from and what goes with it to `init`.
void DescribeMoving(CLI::App& init, MovingOptions& options);
/// Adds what goes with such a file to a command whose --from may name one. `when` begins what is
/// said of each option: "With --from".
void DescribeMovingChoices(CLI::App& command, std::string_view when, MovingOptions& options);

/// Whether something is asked for that only goes with such a file.
[[nodiscard]] bool HasMovingChoices(const MovingOptions& options);
/// Whether a building is to be brought in. Raises UsageError for options that only go with --from.
[[nodiscard]] bool RunsMoving(const MovingOptions& options);

/// Reads the file, settles its rows and makes the store of them, with --unit of one unit alone.
/// Rows that cannot be brought in end it, unless they are to be skipped. With --report all that was
/// odd is written to a file, in a trial, too.
ExitStatus RunMoving(const GlobalOptions& global, const MovingOptions& options,
                     const NewStorePlace& place, Console& console);

}  // namespace qorhost

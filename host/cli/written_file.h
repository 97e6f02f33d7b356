// Files that a command writes: what may stand in their places, and what to do about it.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

#include "host/cli/command_session.h"
#include "host/desks/desk_error.h"
#include "host/files/file_error.h"
#include "host/files/fresh_file.h"

namespace qorhost {

/// What --force says of a file that is there.
[[nodiscard]] inline Standing StandingOf(bool force) {
  return force ? Standing::kReplaced : Standing::kStays;
}

/// Runs `work`. A file that stands in the way, and may not be replaced without being asked for, is
/// a RefusedError with `advice` behind it: "name another file, or replace it with --force".
template <typename Work>
auto AdvisingOnExisting(std::string_view advice, Work&& work) {
  try {
    return work();
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kExists) {
      throw;
    }
    throw RefusedError(std::string(failure.what()).append(": ").append(advice));
  }
}

/// Stands behind what is said of the file of --to.
inline constexpr std::string_view kAdviceOnTo =
    "name another file with --to, or replace it with --force";

/// Raises UsageError where the trace would take the place of the file that `option` names.
void RequireNoTraceIn(const std::string& file, std::string_view option,
                      const GlobalOptions& global);

/// A file that a command was told to write.
struct FileToWrite {
  std::string place;
  bool force = false;
  bool trial = false;
};

/// Has `write` write it. In a trial nothing is written, and what stands in the way is refused all
/// the same.
void WriteUnlessTried(const FileToWrite& file, std::string_view advice, const GlobalOptions& global,
                      const std::function<void(Standing)>& write);

/// Writes the file of --to, whole or not at all, and over nothing of the store. Raises UsageError,
/// RefusedError for a file that is there and may not be replaced, and FileError.
void WriteFileOfTo(const FileToWrite& file, const GlobalOptions& global,
                   const std::function<void(std::ostream&)>& print);

}  // namespace qorhost

// What to do about a file that is there already.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "host/desks/desk_error.h"
#include "host/files/file_error.h"

namespace qorhost {

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

/// The same of a file that a trial would write, which writes nothing that could stand in the way.
inline void RequireNoFile(const std::string& file, std::string_view advice) {
  std::error_code unreachable;
  if (std::filesystem::exists(std::filesystem::symlink_status(file, unreachable))) {
    throw RefusedError("'" + file + "' is there already: " + std::string(advice));
  }
}

}  // namespace qorhost

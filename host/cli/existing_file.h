// What to do about a file that is there already.
#pragma once

#include <string>
#include <string_view>

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

}  // namespace qorhost

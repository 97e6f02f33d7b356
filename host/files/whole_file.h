// Writing a file so that there is never half of it, and never over something that it may not
// replace.
#pragma once

#include <filesystem>
#include <functional>
#include <ostream>
#include <vector>

#include "host/files/fresh_file.h"

namespace qorhost {

struct Writing {
  Standing existing = Standing::kStays;  ///< what becomes of a file that is there already
  /// Files that are never replaced, under whatever name, and names where none is put.
  std::vector<std::filesystem::path> never;
};

/// Whether both are one file, or would be one: one name in one folder.
[[nodiscard]] bool AreOneFile(const std::filesystem::path& one, const std::filesystem::path& other);

/// Raises FileError where no file may be put, before anything is made for it: kExists for a file
/// that stays, kOccupied for a link, for what is no file and for what is never replaced,
/// kUnreachable where there is no folder.
void RequirePlace(const std::filesystem::path& to, const Writing& writing);

/// Has the file written beside its place and moves it there when it is whole: a new one readable by
/// its owner alone, a replaced one with the rights it had. Raises FileError, and leaves what was
/// there: what RequirePlace() raises, kUnreachable with the system's reason when it cannot be
/// written.
void WriteWholeFile(const std::filesystem::path& to, const Writing& writing,
                    const std::function<void(std::ostream&)>& write);

}  // namespace qorhost

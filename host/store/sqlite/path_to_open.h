// What is looked at, and put in order, before the engine opens a file.
#pragma once

#include <filesystem>
#include <string>

#include "host/store/store.h"

namespace qorhost::sqlite {

/// The file as SQLite is to open it, as a path or a URI. A new one is made, empty and readable by
/// its owner alone. What other users' reading left beside a file is taken away where it would keep
/// the owner out. Raises StoreError for what is no file, and says clearly what SQLite would only
/// call "unable to open database file".
[[nodiscard]] std::string PathToOpen(const std::filesystem::path& file, OpenMode mode);

/// Raises StoreError for a name that is too long: the engine puts files beside a store whose names
/// are longer than its own.
void RequireNameThatFits(const std::filesystem::path& file);

}  // namespace qorhost::sqlite

// The store's tables and how older files come up to date.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "host/store/sqlite/database.h"

namespace qorhost::sqlite {

/// Marks a file as one of ours (SQLite's application id).
inline constexpr std::int64_t kApplicationId = 0x714F5253;

/// One step forward: SQLite text that turns version - 1 into version.
struct Migration {
  int version;
  std::string_view sql;
};

/// All steps, oldest first. A step that was released is never changed again.
[[nodiscard]] std::span<const Migration> Migrations();

/// The version that this program reads and writes.
[[nodiscard]] int SchemaVersion();

/// Opens a store and brings its schema up to date; kCreate makes an empty one when there is none.
/// Raises StoreError for a file that is no store, is damaged, is newer than this program, or is
/// older and was opened for reading only. A file that makes room for another one meanwhile is left
/// for that one.
[[nodiscard]] Database OpenDatabase(const std::filesystem::path& file, OpenMode mode,
                                    const Patience& patience = {});

/// Whether a file holds a store, whole or damaged and of any version, or nothing at all: what may
/// be replaced without a loss of anything else. Only reads the file. Raises StoreError when it
/// cannot.
[[nodiscard]] bool IsStoreOrEmpty(const std::filesystem::path& file);

/// Whether a file holds a store of a later version than SchemaVersion(), and whether a database's
/// pages are damaged. They only read the file, and raise StoreError when they cannot.
[[nodiscard]] bool IsNewerStore(const std::filesystem::path& file);
[[nodiscard]] bool IsDamaged(const std::filesystem::path& file);

/// Whether a file holds a store of an earlier version than SchemaVersion(). Only reads the file.
/// Raises StoreError when it cannot, or when the file is damaged or no database.
[[nodiscard]] bool IsOlderStore(const std::filesystem::path& file);

/// The log, index and journal that SQLite may keep beside a database.
[[nodiscard]] std::vector<std::filesystem::path> SideFilesOf(const std::filesystem::path& file);

/// Whether the file that was opened stands under its name no more.
[[nodiscard]] bool HasMoved(const Database& database) noexcept;

/// An empty store in memory.
[[nodiscard]] Database OpenMemoryDatabase();

}  // namespace qorhost::sqlite

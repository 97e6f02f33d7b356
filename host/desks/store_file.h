// The file of a store: opening it, making it, putting a new one in its place.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/store/store.h"

namespace qorhost {

enum class Access : bool { kRead, kChange };

/// Opens a store; an older one is brought up to date first, whatever the access. Raises StoreError.
[[nodiscard]] std::unique_ptr<Store> OpenStoreFile(const std::filesystem::path& file, Access access,
                                                   const Patience& patience = {});

/// What stands where a store is to be; a link is something else, wherever it leads.
enum class StorePlace : std::uint8_t { kFree, kFile, kFolder, kOther };
[[nodiscard]] StorePlace LookAt(const std::filesystem::path& file);

/// The store's file and those that belong to it, under its own name and under that of a link: what
/// nothing else may be written over.
[[nodiscard]] std::vector<std::filesystem::path> FilesOfStore(const std::filesystem::path& file);

/// A file that is to make room for a store and is none.
class ForeignFile : public RefusedError {
 public:
  using RefusedError::RefusedError;
};

/// Creates a store, empty or with the demo building, readable by its owner alone: made under a name
/// of its own and put in its place when it is whole. Raises StoreError, and FileError where
/// something stands already, also what appeared there meanwhile (kExists); nothing is left behind
/// then. The demo building's rows carry the clock's time.
void CreateStore(const std::filesystem::path& file, bool demo, const Clock& clock,
                 const Author& author = {});

/// The same in the place of a store, whose rights it takes over. Nobody writes to the old one
/// meanwhile, and it stays as it was when the new one cannot be made. Raises ForeignFile for a file
/// that is no store: it is never replaced.
void ReplaceStore(const std::filesystem::path& file, bool demo, const Clock& clock,
                  Patience patience = {}, const Author& author = {});

/// Why a store is not what it seems before it is replaced: a sentence without its end, "" for one
/// that this program can use. A file that is no store counts as one that it can.
[[nodiscard]] std::string WhatIsWrongWith(const std::filesystem::path& file);

}  // namespace qorhost

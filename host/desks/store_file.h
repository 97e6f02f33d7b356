// The file of a store: opening it, making it, putting a new one in its place.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/trial.h"
#include "host/files/fresh_file.h"
#include "host/store/server_place.h"
#include "host/store/store.h"
#include "host/store/store_roles.h"

namespace qorhost {

enum class Access : bool { kRead, kChange };

/// A name under which there is no store, nor anything else.
class MissingStore : public FailureError {
 public:
  using FailureError::FailureError;
};

/// Opens a store; an older one is brought up to date first, whatever the access. Raises
/// MissingStore, and StoreError.
[[nodiscard]] std::unique_ptr<Store> OpenStoreFile(const std::filesystem::path& file, Access access,
                                                   const Patience& patience = {});

/// A store in memory that holds the demo building; the clock dates its rows. Raises StoreError when
/// the patience ends it.
[[nodiscard]] std::unique_ptr<Store> DemoStoreInMemory(const Clock& clock,
                                                       const Patience& patience = {});

/// The store's file and those that belong to it, under its own name and under that of a link: what
/// nothing else may be written over.
[[nodiscard]] std::vector<std::filesystem::path> FilesOfStore(const std::filesystem::path& file);

/// A file that is to make room for a store and is none.
class ForeignFile : public RefusedError {
 public:
  using RefusedError::RefusedError;
};

/// Raises ForeignFile for a file that holds something else than a store.
void RequireStore(const std::filesystem::path& file);

/// Creates a store, empty or with the demo building, readable by its owner alone: made under a name
/// of its own and put in its place when it is whole. Raises StoreError, and FileError where
/// something stands already, also what appeared there meanwhile (kExists); nothing is left behind
/// then. The demo building's rows carry the clock's time. Of a trial it is made and goes again.
void CreateStore(const std::filesystem::path& file, bool demo, const Clock& clock,
                 const Author& author = {}, Trial trial = Trial::kNo);

/// The same in the place of a store, whose rights it takes over. Nobody writes to the old one
/// meanwhile, and it stays as it was when the new one cannot be made. Raises ForeignFile for a file
/// that is no store: it is never replaced.
void ReplaceStore(const std::filesystem::path& file, bool demo, const Clock& clock,
                  Patience patience = {}, const Author& author = {}, Trial trial = Trial::kNo);

/// A new store.
struct NewStore {
  bool demo = false;         ///< with the demo building; else empty
  Clock clock;               ///< dates the demo building's rows
  Author author;             ///< signs what is stored
  Trial trial = Trial::kNo;  ///< of one it is made and goes again
  /// Stores what else it is to hold; none: nothing. What it raises ends the making.
  std::function<void(SqlSession&)> contents = {};
  bool distributed = false;  ///< on a server that spreads its tables over several
  StoreRoles roles = {};     ///< on a server: are granted rights on it, or it is not made
};

/// A store that may be all that is left of somebody's data, a damaged one or a newer program's, and
/// was not replaced.
class DoubtfulStore : public RefusedError {
 public:
  using RefusedError::RefusedError;
};

/// Asked before such a store is replaced; it is told what is the matter with it, a sentence without
/// its end.
using ReplacementConsent = std::function<bool(const std::string& found)>;

/// Makes a store where nothing stands, and in the place of another one where `existing` lets it;
/// the patience is asked while it is made, too, and may end that with nothing left behind.
/// On a server the one that was replaced may be left, beside the new one, for somebody reads it.
/// Raises FileError, kExists for a file that stays and kOccupied for a folder, a link or anything
/// else that is no file; DoubtfulStore without consent; and what the two above raise.
Replaced PutStore(const std::filesystem::path& file, const NewStore& made, Standing existing,
                  Patience patience = {}, const ReplacementConsent& consent = {});

}  // namespace qorhost

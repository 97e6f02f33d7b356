// A store that is made in a file of a name of its own, to be put in its place when it is whole.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "host/desks/trial.h"
#include "host/files/fresh_file.h"
#include "host/store/patience.h"
#include "host/store/store_error.h"

namespace qorhost {

/// Makes a store in an empty file.
using StoreFilling = std::function<void(const std::filesystem::path& emptyFile)>;

/// What the engine put beside it goes with it.
class FreshStore {
 public:
  /// Raises FileError, and what `fill` raises: a StoreError names the place.
  FreshStore(const std::filesystem::path& place, const StoreFilling& fill);
  ~FreshStore();
  FreshStore(const FreshStore&) = delete;
  FreshStore& operator=(const FreshStore&) = delete;

  [[nodiscard]] FreshFile& file() { return file_; }

 private:
  [[nodiscard]] std::string InWordsOf(const StoreError& failure,
                                      const std::filesystem::path& place) const;
  void RemoveSideFiles();

  FreshFile file_;
};

/// Puts a store that `fill` makes where nothing stands; of a trial it is made and goes again.
/// Raises StoreError, FileError (kExists for what appeared there meanwhile), RefusedError beside a
/// log of another store, and what `fill` raises; nothing is left behind then.
void PutFreshStore(const std::filesystem::path& file, const StoreFilling& fill,
                   Trial trial = Trial::kNo);

/// Puts one in the place of a store, whose rights it takes over; of a trial it is made and goes
/// again. Nobody writes to the old one meanwhile, and it stays as it was when the new one cannot be
/// made. `whole` is called when it is made, before it is put in place; it may be empty. Raises what
/// BeginReplacement() and `fill` raise, and FileError.
void ReplaceByFreshStore(const std::filesystem::path& file, const StoreFilling& fill,
                         Patience patience, Trial trial, const std::function<void()>& whole = {});

}  // namespace qorhost

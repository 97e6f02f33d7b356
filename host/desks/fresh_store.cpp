#include "host/desks/fresh_store.h"

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "host/desks/desk_error.h"
#include "host/files/file_kind.h"
#include "host/store/engines/opening.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

/// Refuses a place beside which a log of another store lies: it may be all that is left of that.
void RequireNoRemains(const fs::path& file) {
  const std::optional<fs::path> left = RemainsBeside(file);
  if (left && KindOf(file, Links::kAreSeen) == FileKind::kNone) {
    throw RefusedError(fmt::format(
        "'{}' was left behind by a store that is gone: move it away first", left->string()));
  }
}

}  // namespace

FreshStore::FreshStore(const fs::path& place, const StoreFilling& fill) : file_(place) {
  try {
    fill(file_.path());
  } catch (const StoreError& failure) {
    RemoveSideFiles();
    throw StoreError(InWordsOf(failure, place), failure.fault());
  } catch (...) {
    RemoveSideFiles();
    throw;
  }
}

FreshStore::~FreshStore() {
  RemoveSideFiles();
}

/// A failure with the name that people know in the place of the one that nobody does.
std::string FreshStore::InWordsOf(const StoreError& failure, const fs::path& place) const {
  std::string words = failure.what();
  const std::string own = file_.path().string();
  if (const std::size_t at = words.find(own); at != std::string::npos) {
    words.replace(at, own.size(), place.string());
  }
  return words;
}

void FreshStore::RemoveSideFiles() {
  std::error_code ignored;
  for (const fs::path& beside : SideFilesOf(file_.path())) {
    fs::remove(beside, ignored);
  }
}

void PutFreshStore(const fs::path& file, const StoreFilling& fill, Trial trial) {
  RequireNoRemains(file);
  FreshStore fresh(file, fill);
  if (trial == Trial::kNo) {
    PutWhereNoneIs(file, fresh.file().path(),
                   [&fresh] { fresh.file().PutInPlace(Standing::kStays); });
  }
}

void ReplaceByFreshStore(const fs::path& file, const StoreFilling& fill, Patience patience,
                         Trial trial, const std::function<void()>& whole) {
  const std::unique_ptr<Replacement> replacement = BeginReplacement(file, std::move(patience));
  FreshStore fresh(file, fill);
  fresh.file().TakeRightsOf(file);
  if (trial == Trial::kYes) {
    return;
  }
  if (whole) {
    whole();
  }
  replacement->Put(fresh.file().path(), [&fresh] { fresh.file().PutInPlace(Standing::kReplaced); });
}

}  // namespace qorhost

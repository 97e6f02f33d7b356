#include "host/desks/fresh_store.h"

#include <fmt/format.h>

#include <optional>
#include <system_error>

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

void PutFreshStore(const fs::path& file, const StoreFilling& fill) {
  RequireNoRemains(file);
  FreshStore fresh(file, fill);
  PutWhereNoneIs(file, fresh.file().path(),
                 [&fresh] { fresh.file().PutInPlace(Standing::kStays); });
}

}  // namespace qorhost

#include "host/desks/store_file.h"

#include <fmt/format.h>

#include <system_error>

#include "host/components/store_host.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

void RemoveStore(const fs::path& file) {
  std::error_code ignored;
  fs::remove(file, ignored);
  for (const fs::path& beside : SideFilesOf(file)) {
    fs::remove(beside, ignored);
  }
}

void FillNewStore(const fs::path& file, bool demo) {
  const std::unique_ptr<Store> store = OpenStore(file, OpenMode::kCreate);
  if (demo) {
    CreateDemoData(*store->StartSession(SystemClock()));
  }
}

/// Refuses to write over a file that holds something else than a store.
void RequireStore(const fs::path& file) {
  if (!IsStoreOrEmpty(file)) {
    throw ForeignFile(
        fmt::format("'{}' is no store of this program and is not replaced", file.string()));
  }
}

}  // namespace

std::unique_ptr<Store> OpenStoreFile(const fs::path& file, Access access) {
  if (access == Access::kRead && IsOlderStore(file)) {
    // Brought up to date by whatever is asked of it first.
    (void)OpenStore(file, OpenMode::kReadWrite);
  }
  return OpenStore(file, access == Access::kRead ? OpenMode::kReadOnly : OpenMode::kReadWrite);
}

StorePlace LookAt(const fs::path& file) {
  std::error_code ignored;
  if (fs::is_directory(file, ignored)) {
    return StorePlace::kFolder;
  }
  return fs::exists(file, ignored) ? StorePlace::kFile : StorePlace::kFree;
}

std::vector<fs::path> FilesOfStore(const fs::path& file) {
  std::error_code ignored;
  std::vector<fs::path> files{file, fs::weakly_canonical(file, ignored)};
  for (const fs::path& name : std::vector<fs::path>(files)) {
    for (const fs::path& beside : SideFilesOf(name)) {
      files.push_back(beside);
    }
  }
  return files;
}

void CreateStore(const fs::path& file, bool demo) {
  try {
    FillNewStore(file, demo);
  } catch (...) {
    RemoveStore(file);
    throw;
  }
}

void ReplaceStore(const fs::path& file, bool demo) {
  RequireStore(file);
  // Made beside the old one and put in its place when it is whole.
  fs::path fresh = file;
  fresh += ".new";
  if (fs::exists(fresh)) {
    RequireStore(fresh);  // or what an earlier run left behind
  }
  RemoveStore(fresh);
  try {
    FillNewStore(fresh, demo);
    for (const fs::path& beside : SideFilesOf(file)) {
      fs::remove(beside);
    }
    fs::rename(fresh, file);
  } catch (...) {
    RemoveStore(fresh);
    throw;
  }
}

}  // namespace qorhost

#include "host/desks/store_file.h"

#include <fmt/format.h>

#include <system_error>
#include <utility>

#include "host/files/file_error.h"
#include "host/files/file_kind.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

/// A store that is made in a file of a name of its own. What the engine put beside it goes with it.
class FreshStore {
 public:
  FreshStore(const fs::path& place, bool demo, const Clock& clock, const Author& author)
      : file_(place) {
    try {
      Fill(demo, clock, author);
    } catch (const StoreError& failure) {
      RemoveSideFiles();
      throw StoreError(InWordsOf(failure, place), failure.fault());
    } catch (...) {
      RemoveSideFiles();
      throw;
    }
  }
  ~FreshStore() { RemoveSideFiles(); }
  FreshStore(const FreshStore&) = delete;
  FreshStore& operator=(const FreshStore&) = delete;

  [[nodiscard]] FreshFile& file() { return file_; }

 private:
  /// A failure with the name that people know in the place of the one that nobody does.
  [[nodiscard]] std::string InWordsOf(const StoreError& failure, const fs::path& place) const {
    std::string words = failure.what();
    const std::string own = file_.path().string();
    if (const std::size_t at = words.find(own); at != std::string::npos) {
      words.replace(at, own.size(), place.string());
    }
    return words;
  }

  void Fill(bool demo, const Clock& clock, const Author& author) {
    const std::unique_ptr<Store> store = OpenStore(file_.path(), OpenMode::kReadWrite);
    if (demo) {
      const std::unique_ptr<SqlSession> session = store->StartSession(clock);
      session->work().SignAs(author);
      CreateDemoData(*session);
    }
    store->GatherInFile();
  }

  void RemoveSideFiles() {
    std::error_code ignored;
    for (const fs::path& beside : SideFilesOf(file_.path())) {
      fs::remove(beside, ignored);
    }
  }

  FreshFile file_;
};

/// Refuses a place beside which another store's files lie: its log would be taken for the new
/// one's.
void RequireNoSideFiles(const fs::path& file) {
  std::error_code ignored;
  for (const fs::path& beside : SideFilesOf(file)) {
    if (fs::exists(fs::symlink_status(beside, ignored)) &&
        KindOf(file, Links::kAreSeen) == FileKind::kNone) {
      throw RefusedError(fmt::format(
          "'{}' was left behind by a store that is gone: move it away first", beside.string()));
    }
  }
}

/// Refuses to write over a file that holds something else than a store.
void RequireStore(const fs::path& file) {
  if (!IsStoreOrEmpty(file)) {
    throw ForeignFile(
        fmt::format("'{}' is no store of this program and is not replaced", file.string()));
  }
}

/// Why a store is not what it seems; "" for one that this program can use.
std::string WhatIsWrongWith(const fs::path& file) {
  switch (ConditionOf(file)) {
    case StoreCondition::kNewer:
      return "was written by a newer version of this program";
    case StoreCondition::kDamaged:
      return "is damaged";
    case StoreCondition::kUsable:
      break;
  }
  return {};
}

void CreateAlone(const fs::path& file, const NewStore& made) {
  try {
    CreateStore(file, made.demo, made.clock, made.author);
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kExists) throw;
    throw FileError(FileProblem::kExists,
                    fmt::format("'{}' was made by somebody else meanwhile, and is left as it is",
                                file.string()));
  }
}

}  // namespace

std::unique_ptr<Store> OpenStoreFile(const fs::path& file, Access access,
                                     const Patience& patience) {
  if (KindOf(file, Links::kAreSeen) == FileKind::kNone) {
    throw MissingStore(fmt::format("there is no database '{}'", file.string()));
  }
  if (access == Access::kRead && IsOlderStore(file)) {
    // Brought up to date by whatever is asked of it first.
    (void)OpenStore(file, OpenMode::kReadWrite, patience);
  }
  return OpenStore(file, access == Access::kRead ? OpenMode::kReadOnly : OpenMode::kReadWrite,
                   patience);
}

std::unique_ptr<Store> DemoStoreInMemory(const Clock& clock) {
  std::unique_ptr<Store> store = OpenMemoryStore();
  CreateDemoData(*store->StartSession(clock));
  return store;
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

void CreateStore(const fs::path& file, bool demo, const Clock& clock, const Author& author) {
  RequireNoSideFiles(file);
  FreshStore fresh(file, demo, clock, author);
  fresh.file().PutInPlace(Standing::kStays);
}

void ReplaceStore(const fs::path& file, bool demo, const Clock& clock, Patience patience,
                  const Author& author) {
  RequireStore(file);
  const std::unique_ptr<Replacement> replacement = BeginReplacement(file, std::move(patience));
  FreshStore fresh(file, demo, clock, author);
  fresh.file().TakeRightsOf(file);
  replacement->Put(fresh.file().path(), [&fresh] { fresh.file().PutInPlace(Standing::kReplaced); });
}

void PutStore(const fs::path& file, const NewStore& made, Standing existing, Patience patience,
              const ReplacementConsent& consent) {
  switch (const FileKind kind = KindOf(file, Links::kAreSeen)) {
    case FileKind::kNone:
      CreateAlone(file, made);
      return;
    case FileKind::kFile:
      if (existing == Standing::kStays) {
        throw FileError(FileProblem::kExists, fmt::format("'{}' exists already", file.string()));
      }
      if (const std::string wrong = IsStoreOrEmpty(file) ? WhatIsWrongWith(file) : std::string();
          !wrong.empty()) {
        const std::string found = fmt::format("'{}' {}", file.string(), wrong);
        if (!consent || !consent(found)) {
          throw DoubtfulStore(found + " and was not replaced");
        }
      }
      ReplaceStore(file, made.demo, made.clock, std::move(patience), made.author);
      return;
    default:
      throw FileError(FileProblem::kOccupied,
                      fmt::format("'{}' is {}", file.string(), NameOf(kind)));
  }
}

}  // namespace qorhost

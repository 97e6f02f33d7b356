#include "host/desks/store_file.h"

#include <fmt/format.h>

#include <optional>
#include <system_error>
#include <utility>

#include "host/desks/fresh_store.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

void Fill(Store& store, const NewStore& made, const Patience& patience) {
  if (!made.demo && !made.contents) return;
  const std::unique_ptr<SqlSession> session = store.StartSession(made.clock);
  session->work().SignAs(made.author);
  if (made.demo) CreateDemoData(*session, patience.working);
  if (made.contents) made.contents(*session);
}

StoreFilling FillingOf(const NewStore& made, const Patience& patience = {}) {
  return [made, patience](const fs::path& file) {
    const std::unique_ptr<Store> store = OpenStore(file, OpenMode::kReadWrite, patience);
    Fill(*store, made, patience);
    store->GatherInFile();
  };
}

/// Asks before a store on a server makes room, for others may be working on it.
void RequireConsentFor(const fs::path& name, const ReplacementConsent& consent) {
  const std::string found =
      fmt::format("'{}' is a store on a server, on which others may be working", name.string());
  if (!consent || !consent(found)) {
    throw DoubtfulStore(found + ", and was not replaced");
  }
}

/// Makes a store on a server, which nobody else sees before it is whole.
Replaced PutOnServer(const fs::path& name, const NewStore& made, Standing existing,
                     const Patience& patience, const ReplacementConsent& consent) {
  const bool stands = IsStoreOnServer(name);
  if (stands && existing == Standing::kStays) {
    throw FileError(FileProblem::kExists,
                    fmt::format("There is a store in '{}' already", name.string()));
  }
  if (stands) {
    RequireConsentFor(name, consent);
  }
  const ServerPlaceOrder order{
      .replace = stands, .distributed = made.distributed, .roles = made.roles};
  if (made.trial == Trial::kYes) {
    RequirePlaceOnServer(name, order, patience);
    Fill(*OpenMemoryStore(), made, patience);  // nothing is made on a server to be tried
    return Replaced::kIsGone;
  }
  const std::unique_ptr<ServerPlace> place = BeginOnServer(name, order, patience);
  Fill(place->store(), made, patience);
  return place->Keep();
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

void CreateAlone(const fs::path& file, const NewStore& made, const Patience& patience) {
  try {
    PutFreshStore(file, FillingOf(made, patience), made.trial);
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kExists) throw;
    throw FileError(FileProblem::kExists,
                    fmt::format("'{}' was made by somebody else meanwhile, and is left as it is",
                                file.string()));
  }
}

void ReplaceWith(const fs::path& file, const NewStore& made, Patience patience) {
  RequireStore(file);
  const StoreFilling filling = FillingOf(made, patience);
  ReplaceByFreshStore(file, filling, std::move(patience), made.trial);
}

}  // namespace

std::unique_ptr<Store> OpenStoreFile(const fs::path& file, Access access,
                                     const Patience& patience) {
  if (IsOnServer(file)) {
    return OpenStore(file, access == Access::kRead ? OpenMode::kReadOnly : OpenMode::kReadWrite,
                     patience);
  }
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

std::unique_ptr<Store> DemoStoreInMemory(const Clock& clock, const Patience& patience) {
  std::unique_ptr<Store> store = OpenMemoryStore();
  store->SetPatience(patience);
  CreateDemoData(*store->StartSession(clock), patience.working);
  return store;
}

std::vector<fs::path> FilesOfStore(const fs::path& file) {
  if (IsOnServer(file)) {
    return {};
  }
  std::error_code ignored;
  std::vector<fs::path> files{file, fs::weakly_canonical(file, ignored)};
  for (const fs::path& name : std::vector<fs::path>(files)) {
    for (const fs::path& beside : SideFilesOf(name)) {
      files.push_back(beside);
    }
  }
  return files;
}

void RequireStore(const fs::path& file) {
  if (!IsStoreOrEmpty(file)) {
    throw ForeignFile(
        fmt::format("'{}' is no store of this program and is not replaced", file.string()));
  }
}

void CreateStore(const fs::path& file, bool demo, const Clock& clock, const Author& author,
                 Trial trial) {
  PutFreshStore(file, FillingOf({demo, clock, author, trial}), trial);
}

void ReplaceStore(const fs::path& file, bool demo, const Clock& clock, Patience patience,
                  const Author& author, Trial trial) {
  ReplaceWith(file, {demo, clock, author, trial}, std::move(patience));
}

Replaced PutStore(const fs::path& file, const NewStore& made, Standing existing, Patience patience,
                  const ReplacementConsent& consent) {
  if (made.distributed) {
    RequireDistribution(file);
  }
  if (IsOnServer(file)) {
    return PutOnServer(file, made, existing, patience, consent);
  }
  switch (const FileKind kind = KindOf(file, Links::kAreSeen)) {
    case FileKind::kNone:
      CreateAlone(file, made, patience);
      return Replaced::kIsGone;
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
      ReplaceWith(file, made, std::move(patience));
      return Replaced::kIsGone;
    default:
      throw FileError(FileProblem::kOccupied,
                      fmt::format("'{}' is {}", file.string(), NameOf(kind)));
  }
}

}  // namespace qorhost

#include "host/desks/store_backup.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include "host/components/store_host.h"
#include "host/desks/carried_store.h"
#include "host/desks/fresh_store.h"
#include "host/dialect/canonical_date.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"
#include "host/files/input_file.h"
#include "host/files/whole_file.h"
#include "host/store/engines/opening.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

/// Whoever waits may end the work, too.
Progress GoingOn(const Patience& patience) {
  if (!patience.working) return {};
  return [working = patience.working](std::int64_t, std::int64_t) { return working(); };
}

/// Reads a store as a whole. Raises StoreError for one that is damaged.
std::vector<ChainHead> ReadThrough(const fs::path& file, const fs::path& shownAs,
                                   const Patience& patience) {
  const std::unique_ptr<Store> store = OpenStore(file, OpenMode::kReadOnly, patience);
  if (const std::vector<std::string> damages = store->Damages(); !damages.empty()) {
    throw StoreError(fmt::format("'{}' is damaged: {}", shownAs.string(), damages.front()),
                     StoreFault::kDamaged);
  }
  return store->StartSession(SystemClock())->audit().Heads();
}

void CopyBytes(const fs::path& from, std::ostream& out) {
  InputFile in(from, "store");
  if (in.peek() != std::ifstream::traits_type::eof()) {
    out << in.rdbuf();
  }
}

/// A store of an earlier version is brought up to date in its copy: it stays as it is itself.
void CopyOlder(const fs::path& from, const fs::path& emptyFile) {
  if (const auto log = RemainsBeside(from)) {
    throw RefusedError(fmt::format(
        "'{}' is in an older form and has a log beside it: open it once as a store, which "
        "brings it up to date",
        from.string()));
  }
  std::ofstream out(emptyFile, std::ios::binary);
  CopyBytes(from, out);
  out.close();
  OpenStore(emptyFile, OpenMode::kReadWrite)->GatherInFile();
}

/// The store of a server, as it is at one moment.
void CarryFromServer(const fs::path& from, const fs::path& emptyFile, const Patience& patience) {
  const std::unique_ptr<Store> source = OpenStoreFile(from, Access::kRead, patience);
  const std::unique_ptr<Store> copy = OpenStore(emptyFile, OpenMode::kReadWrite, patience);
  CarryStore(*source->StartSession(SystemClock()), *copy->StartSession(SystemClock()),
             GoingOn(patience));
  copy->GatherInFile();
}

/// Copies a store and reads the copy back.
class CopyOf {
 public:
  CopyOf(fs::path from, fs::path shownAs, Patience patience)
      : from_(std::move(from)), shownAs_(std::move(shownAs)), patience_(std::move(patience)) {}

  void operator()(const fs::path& emptyFile) {
    if (IsOnServer(from_)) {
      CarryFromServer(from_, emptyFile, patience_);
    } else if (IsOlderStore(from_)) {
      CopyOlder(from_, emptyFile);
    } else {
      OpenStoreFile(from_, Access::kRead, patience_)->CopyInto(emptyFile);
    }
    made_->heads = ReadThrough(emptyFile, shownAs_, patience_);
    made_->bytes = fs::file_size(emptyFile);
  }

  [[nodiscard]] const BackedUp& made() const { return *made_; }

 private:
  fs::path from_;
  fs::path shownAs_;
  Patience patience_;
  std::shared_ptr<BackedUp> made_ = std::make_shared<BackedUp>();  // one for all copies of this
};

/// A backup comes into a store on a server that is new: what others work on is not replaced
/// under them by a file of some day.
void RestoreOnServer(const fs::path& name, const fs::path& backup, const Patience& patience,
                     Trial trial) {
  const std::unique_ptr<Store> source = OpenStoreFile(backup, Access::kRead, patience);
  const std::unique_ptr<SqlSession> from = source->StartSession(SystemClock());
  if (!IsStoreOnServer(name)) {
    NewStore made{false, SystemClock(), {}, trial, [&](SqlSession& to) {
                    CarryStore(*from, to, GoingOn(patience));
                  }};
    PutStore(name, made, Standing::kStays, patience);
    return;
  }
  const std::unique_ptr<Store> store = OpenStoreFile(name, Access::kChange, patience);
  const std::unique_ptr<SqlSession> to = store->StartSession(SystemClock());
  if (!IsNewStore(*to)) {
    throw RefusedError(fmt::format(
        "the store in '{}' is not a new one, and a backup is put into a new one on a server: make "
        "it anew with 'init --force', or name another database",
        name.string()));
  }
  CarryStore(*from, *to, GoingOn(patience), trial);
}

void RequireNotOneOf(const fs::path& file, const fs::path& store) {
  const std::vector<fs::path> own = FilesOfStore(store);
  if (std::any_of(own.begin(), own.end(),
                  [&file](const fs::path& one) { return AreOneFile(one, file); })) {
    throw RefusedError(
        fmt::format("'{}' belongs to the store itself: name another file", file.string()));
  }
}

/// "building.db.before-restore-20260131-140509"
fs::path NameToKeep(const fs::path& store, qorcred::Date now) {
  std::string moment = dialect::CanonicalDate(now);
  std::erase_if(moment, [](char one) { return one == '-' || one == ':'; });
  std::replace(moment.begin(), moment.end(), ' ', '-');
  fs::path name = store;
  name += ".before-restore-" + moment;
  return name;
}

/// Byte by byte a store that cannot be read as a whole, with its log: changes may be in that alone.
void KeepBytes(const fs::path& store, const fs::path& kept) {
  const auto keep = [](const fs::path& from, const fs::path& to) {
    WriteWholeFile(to, {}, [&from](std::ostream& out) { CopyBytes(from, out); });
  };
  keep(store, kept);
  const std::vector<fs::path> beside = SideFilesOf(store);
  const std::vector<fs::path> besideKept = SideFilesOf(kept);
  for (std::size_t at = 0; at < beside.size(); ++at) {
    // The index tells nothing that the log does not, and closing it would give up locks on it.
    const bool isIndex = beside[at].string().ends_with("-shm");
    if (!isIndex && KindOf(beside[at], Links::kAreSeen) == FileKind::kFile) {
      keep(beside[at], besideKept[at]);
    }
  }
}

void Keep(const fs::path& store, const fs::path& kept, const Patience& patience) {
  try {
    PutFreshStore(kept, CopyOf(store, kept, patience));
  } catch (const StoreError& failure) {
    // Whose header is damaged is none for the engine: that it is one was looked at before.
    if (failure.fault() != StoreFault::kDamaged && failure.fault() != StoreFault::kNoStore) {
      throw;
    }
    KeepBytes(store, kept);
  }
}

/// A link would become a file, and what it leads to would stay as it is.
void RequireNoLink(const fs::path& store) {
  if (KindOf(store, Links::kAreSeen) == FileKind::kLink) {
    throw FileError(FileProblem::kOccupied,
                    fmt::format("'{}' is a link: name the store that it leads to", store.string()));
  }
}

void RequireFile(const fs::path& backup) {
  if (IsOnServer(backup)) {
    throw RefusedError(
        fmt::format("a backup is a file, and '{}' is a store on a server: 'copy' copies to one",
                    backup.string()));
  }
}

}  // namespace

BackedUp BackUp(const fs::path& store, const fs::path& to, Standing existing,
                const Patience& patience, Trial trial) {
  RequireFile(to);
  RequireNotOneOf(to, store);
  CopyOf copy(store, to, patience);
  switch (const FileKind kind = KindOf(to, Links::kAreSeen)) {
    case FileKind::kNone:
      PutFreshStore(to, copy, trial);
      return copy.made();
    case FileKind::kFile:
      break;
    default:
      throw FileError(FileProblem::kOccupied, fmt::format("'{}' is {}", to.string(), NameOf(kind)));
  }
  if (existing == Standing::kStays) {
    throw FileError(FileProblem::kExists, fmt::format("'{}' exists already", to.string()));
  }
  RequireStore(to);
  ReplaceByFreshStore(to, copy, patience, trial);
  return copy.made();
}

Restored Restore(const fs::path& store, const fs::path& backup, qorcred::Date now,
                 const Patience& patience, Trial trial) {
  RequireFile(backup);
  if (!IsOnServer(store)) RequireNoLink(store);
  RequireNotOneOf(backup, store);
  if (KindOf(backup, Links::kAreFollowed) == FileKind::kNone) {
    throw MissingStore(fmt::format("there is no backup '{}'", backup.string()));
  }
  if (!IsStoreOrEmpty(backup)) {
    throw ForeignFile(
        fmt::format("'{}' is no store of this program: nothing was changed", backup.string()));
  }
  Restored restored;
  if (IsOnServer(store)) {
    restored.heads = ReadThrough(backup, backup, patience);
    RestoreOnServer(store, backup, patience, trial);
    return restored;
  }
  CopyOf copy(backup, backup, patience);
  if (KindOf(store, Links::kAreSeen) == FileKind::kNone) {
    PutFreshStore(store, copy, trial);
  } else {
    RequireStore(store);
    restored.kept = NameToKeep(store, now);
    ReplaceByFreshStore(store, copy, patience, trial,
                        [&] { Keep(store, *restored.kept, patience); });
  }
  restored.heads = copy.made().heads;
  return restored;
}

}  // namespace qorhost

#include "host/store/sqlite/path_to_open.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "frame/text.h"
#include "host/store/sqlite/file_lock.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace fs = std::filesystem;

namespace {

bool MayBeWritten(const fs::path& place) {
  return faccessat(AT_FDCWD, place.c_str(), W_OK, AT_EACCESS) == 0;
}

fs::path Beside(const fs::path& file, const char* ending) {
  fs::path beside = file;
  beside += ending;
  return beside;
}

fs::path WholePathOf(const fs::path& file) {
  std::error_code failed;
  fs::path whole = fs::absolute(file, failed);
  if (failed) {
    throw StoreError(fmt::format("The store '{}' cannot be found from here: the current folder is "
                                 "gone, so name the store by its whole path",
                                 file.string()),
                     StoreFault::kCannotOpen);
  }
  return whole;
}

bool IsMissingOrEmpty(const fs::path& file) {
  std::error_code missing;
  const std::uintmax_t size = fs::file_size(file, missing);
  return missing || size == 0;
}

bool IsForeign(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(file, ignored) && !MayBeWritten(file);
}

// Makes an empty file that its owner alone can read; what SQLite puts beside it gets its rights.
void MakeFile(const fs::path& file) {
  const int made = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  const int reason = errno;
  if (made >= 0) {
    close(made);
  } else if (fs::is_symlink(file)) {
    throw StoreError(fmt::format("'{}' is a link that leads nowhere: name a file", file.string()),
                     StoreFault::kCannotOpen);
  } else if (reason != EEXIST) {
    throw StoreError(fmt::format("Cannot create the store '{}': {}", file.string(),
                                 std::generic_category().message(reason)),
                     StoreFault::kCannotOpen);
  }
}

void RequireFolder(const fs::path& file) {
  std::error_code ignored;
  const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  if (!fs::is_directory(folder, ignored)) {
    throw StoreError(fmt::format("The folder '{}' does not exist: create it or choose another one",
                                 folder.string()),
                     StoreFault::kCannotOpen);
  }
}

// Looks before anything is opened: that would wait for somebody at the other end of a pipe, and do
// something to many a device.
void RequireFile(const fs::path& file, OpenMode mode) {
  std::error_code ignored;
  if (fs::is_directory(file, ignored)) {
    throw StoreError(fmt::format("'{}' is a folder: name a file in it", file.string()),
                     StoreFault::kCannotOpen);
  }
  if (fs::exists(file, ignored)) {
    if (!fs::is_regular_file(file, ignored)) {
      throw StoreError(
          fmt::format("'{}' is a pipe, a socket or a device: name a file", file.string()),
          StoreFault::kCannotOpen);
    }
    // Each name has a log of its own: two programs would write past each other.
    if (mode != OpenMode::kReadOnly && fs::hard_link_count(file, ignored) > 1 && !ignored) {
      throw StoreError(
          fmt::format("'{}' has a second name (a hard link): a store may have one name only, so "
                      "remove the other or make a copy",
                      file.string()),
          StoreFault::kCannotOpen);
    }
  } else if (mode == OpenMode::kCreate) {
    MakeFile(file);
  } else {
    throw StoreError(
        fmt::format("There is no store '{}': create it first or name another file", file.string()),
        StoreFault::kCannotOpen);
  }
}

// The engine would wait at a pipe beside the store, and go through a link.
void RequireFilesBeside(const fs::path& place) {
  for (const char* ending : {"-wal", "-shm", "-journal"}) {
    const fs::path beside = Beside(place, ending);
    std::error_code ignored;
    const fs::file_status status = fs::symlink_status(beside, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
      throw StoreError(
          fmt::format("'{}' is no file, and stands where the store '{}' has one of its "
                      "own: move it away",
                      beside.string(), place.string()),
          StoreFault::kCannotOpen);
    }
  }
}

// A user who only reads leaves an index and an empty log that are his own: SQLite cannot take them
// away on a file that it may not write. They keep the owner out, and tell nothing.
void RemoveWhatOthersLeft(const fs::path& place) {
  const fs::path log = Beside(place, "-wal");
  const fs::path index = Beside(place, "-shm");
  const bool logIsForeign = IsForeign(log);
  if (!(logIsForeign || IsForeign(index)) || (logIsForeign && !IsMissingOrEmpty(log))) {
    return;
  }
  const FileLock lock(place, LockedBytes::kUse);
  if (!lock.locked()) {
    throw StoreError(fmt::format("Another user's program has the store '{}' open: let it finish, "
                                 "then try again",
                                 place.string()),
                     StoreFault::kBusy);
  }
  std::error_code ignored;  // what stays is told when the store is opened
  fs::remove(index, ignored);
  if (logIsForeign && IsMissingOrEmpty(log)) {
    fs::remove(log, ignored);
  }
}

// Whether the file is all that there is to read, and nothing can or should be put beside it.
bool IsReadAlone(const fs::path& place) {
  std::error_code ignored;
  return IsMissingOrEmpty(Beside(place, "-wal")) && !fs::exists(Beside(place, "-shm"), ignored) &&
         !fs::exists(Beside(place, "-journal"), ignored);
}

// A log that holds something is read by an index beside it: without one, that has to be made.
void RequireIndexOrRoom(const fs::path& place) {
  std::error_code ignored;
  if (IsMissingOrEmpty(Beside(place, "-wal")) || fs::exists(Beside(place, "-shm"), ignored) ||
      MayBeWritten(place.parent_path())) {
    return;
  }
  const int reason = errno;
  throw StoreError(
      fmt::format("The store '{0}' cannot be read: changes stand in its log '{0}-wal' alone, and "
                  "the index that reading takes cannot be made beside it: {1} (copy both to a "
                  "folder that you may write)",
                  place.string(), std::generic_category().message(reason)),
      StoreFault::kCannotOpen);
}

// A URI that tells SQLite that nobody writes the file and nothing stands beside it.
std::string ReadAloneUri(const fs::path& place) {
  std::string uri = "file:";
  for (const char character : place.string()) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte == '/' || qorcred::IsDigit(character) || (byte >= 'a' && byte <= 'z') ||
        (byte >= 'A' && byte <= 'Z')) {
      uri.push_back(character);
    } else {
      uri += fmt::format("%{:02X}", byte);
    }
  }
  return uri + "?immutable=1";
}

}  // namespace

void RequireNameThatFits(const fs::path& file) {
  constexpr std::size_t kLongestName = 247;  // 255 bytes with "-journal" behind it
  constexpr std::size_t kLongestPath = 504;  // the engine's own bound
  if (const std::size_t size = file.filename().string().size(); size > kLongestName) {
    throw StoreError(
        fmt::format("The name of the store '{}' has {} bytes: it may have {}, so rename it",
                    file.string(), size, kLongestName),
        StoreFault::kCannotOpen);
  }
  std::error_code failed;
  const fs::path place = fs::weakly_canonical(WholePathOf(file), failed);
  if (const std::size_t size = place.string().size(); !failed && size > kLongestPath) {
    throw StoreError(fmt::format("The store '{}' stands too deep: its whole path has {} bytes and "
                                 "may have {}; move its folder, or a part of the way to it",
                                 file.string(), size, kLongestPath),
                     StoreFault::kCannotOpen);
  }
}

std::string PathToOpen(const fs::path& file, OpenMode mode) {
  RequireFolder(file);
  RequireNameThatFits(file);
  RequireFile(file, mode);
  std::error_code failed;
  const fs::path place = fs::canonical(file, failed);
  if (!failed) {
    RequireFilesBeside(place);
    if (MayBeWritten(place) && MayBeWritten(place.parent_path())) {
      RemoveWhatOthersLeft(place);
    } else if (mode == OpenMode::kReadOnly && IsReadAlone(place)) {
      return ReadAloneUri(place);
    } else if (mode == OpenMode::kReadOnly) {
      RequireIndexOrRoom(place);
    }
  }
  // Whole, because a bare name may read like a URI or ":memory:".
  return WholePathOf(file).string();
}

}  // namespace qorhost::sqlite

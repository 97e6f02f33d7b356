#include "host/files/fresh_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>   // renameat2
#include <cstdlib>  // mkostemp
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "host/files/file_error.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kAllRights = 0777;
constexpr mode_t kRightsOfGroup = 0070;

/// Renames unless something has the new name; 0 or the reason.
int RenameToFreeName(const fs::path& from, const fs::path& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
    return 0;
  }
  if (errno != EINVAL && errno != ENOSYS) {
    return errno;
  }
  // A file system that cannot rename so: a second name is never given over a first one either.
  if (link(from.c_str(), to.c_str()) != 0) {
    return errno;
  }
  unlink(from.c_str());
  return 0;
}

constexpr std::string_view kOwnPrefix = ".qorhost-";
constexpr std::size_t kOwnLetters = 6;

bool IsOwnName(std::string_view name) {
  return name.size() == kOwnPrefix.size() + kOwnLetters && name.starts_with(kOwnPrefix) &&
         std::all_of(name.begin() + kOwnPrefix.size(), name.end(),
                     [](unsigned char letter) { return std::isalnum(letter) != 0; });
}

/// Removes a file that no living process holds, and what stands beside it under its name.
void RemoveIfLeft(const fs::path& file) {
  const int descriptor = open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) {
    return;
  }
  struct stat left {};
  if (fstat(descriptor, &left) == 0 && S_ISREG(left.st_mode) && left.st_uid == geteuid() &&
      flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    for (const char* ending : {"-wal", "-shm", "-journal", ""}) {
      unlink((file.string() + ending).c_str());
    }
  }
  close(descriptor);
}

void RemoveLeftOnes(const fs::path& folder) {
  std::error_code failed;  // a folder that cannot be listed keeps them
  for (fs::directory_iterator one(folder, failed), end; !failed && one != end;
       one.increment(failed)) {
    if (IsOwnName(one->path().filename().string())) {
      RemoveIfLeft(one->path());
    }
  }
}

}  // namespace

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

int SyncFile(const fs::path& file) noexcept {
  const int descriptor = open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
  if (descriptor < 0) {
    return errno;
  }
  const int reason = fsync(descriptor) == 0 ? 0 : errno;
  close(descriptor);
  return reason;
}

void SyncFolder(const fs::path& folder) noexcept {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
}

void RequireFolderOf(const fs::path& file) {
  std::error_code ignored;
  if (!fs::is_directory(FolderOf(file), ignored)) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot write '{}': there is no folder '{}'", file.string(),
                                FolderOf(file).string()));
  }
}

FreshFile::FreshFile(fs::path place) : place_(std::move(place)) {
  RequireFolderOf(place_);
  RemoveLeftOnes(FolderOf(place_));
  Make();
}

void FreshFile::Make() {
  constexpr int kMostTries = 100;
  for (int tries = 1;; ++tries) {
    std::string name = (FolderOf(place_) / (std::string(kOwnPrefix) + "XXXXXX")).string();
    descriptor_ = mkostemp(name.data(), O_CLOEXEC);  // exclusively, with mode 0600
    if (descriptor_ < 0) {
      Fail(errno);
    }
    // As long as it is open, it is nobody's leaving. One who looks for such may have been faster.
    const bool taken = flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat made {};
    if ((!taken && fstat(descriptor_, &made) == 0 && made.st_nlink == 1) || tries == kMostTries) {
      path_ = name;
      return;
    }
    close(descriptor_);
  }
}

FreshFile::~FreshFile() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
  if (!placed_ && !path_.empty()) {
    unlink(path_.c_str());
  }
}

void FreshFile::TakeRightsOf(const fs::path& other) const {
  struct stat former {};
  if (lstat(other.c_str(), &former) != 0) {
    Fail(errno);
  }
  mode_t rights = former.st_mode & kAllRights;
  if (fchown(descriptor_, former.st_uid, former.st_gid) != 0 &&
      fchown(descriptor_, static_cast<uid_t>(-1), former.st_gid) != 0) {
    rights &= ~kRightsOfGroup;  // they were another group's
  }
  if (fchmod(descriptor_, rights) != 0) {
    Fail(errno);
  }
}

void FreshFile::PutInPlace(Standing standing) {
  if (fsync(descriptor_) != 0) {
    Fail(errno);
  }
  if (standing == Standing::kStays) {
    if (const int reason = RenameToFreeName(path_, place_); reason != 0) {
      Fail(reason);
    }
  } else if (rename(path_.c_str(), place_.c_str()) != 0) {
    Fail(errno);
  }
  placed_ = true;
  SyncFolder(FolderOf(place_));
}

void FreshFile::Fail(int reason) const {
  if (reason == EEXIST) {
    throw FileError(FileProblem::kExists, fmt::format("'{}' exists already", place_.string()));
  }
  throw FileError(FileProblem::kUnreachable, fmt::format("cannot write '{}': {}", place_.string(),
                                                         std::generic_category().message(reason)));
}

}  // namespace qorhost

#include "host/files/desktop_file/unwritten_copy.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/files/desktop_file/nameless_file.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"

namespace qorhost::desktop_file {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void CannotRead(const fs::path& file, std::string_view why) {
  throw FileError(FileProblem::kUnreachable,
                  fmt::format("cannot read the file '{}': {}", file.string(), why));
}

std::string Reason() {
  return std::generic_category().message(errno);
}

bool AreSame(const timespec& one, const timespec& other) {
  return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

/// How large a file is, and when it was changed last: its contents, or anything else of it, for the
/// former time can be set by whoever writes.
struct Look {
  std::uintmax_t size = 0;
  timespec written{};
  timespec changed{};

  explicit Look(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) == 0) {
      size = static_cast<std::uintmax_t>(status.st_size);
      written = status.st_mtim;
      changed = status.st_ctim;
    }
  }
  friend bool operator==(const Look& one, const Look& other) {
    return one.size == other.size && AreSame(one.written, other.written) &&
           AreSame(one.changed, other.changed);
  }
};

Descriptor OpenToRead(const fs::path& file) {
  const FileKind stands = KindOf(file, Links::kAreFollowed);
  if (stands == FileKind::kNone) {
    throw FileError(FileProblem::kUnreachable, fmt::format("there is no file '{}'", file.string()));
  }
  if (stands != FileKind::kFile) {
    CannotRead(file, fmt::format("it is {}", NameOf(stands)));
  }
  Descriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat status {};
  if (opened.number() < 0) {
    CannotRead(file, Reason());
  }
  if (fstat(opened.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    CannotRead(file, "it is no file");
  }
  return opened;
}

void RequireSize(const Look& look, std::uintmax_t largest, const fs::path& file) {
  constexpr int kMegabyte = 20;
  if (look.size > largest) {
    throw FileError(FileProblem::kUnusable,
                    fmt::format("'{}' has {} MB, and a desktop database has {} MB at most: name "
                                "another file",
                                file.string(), look.size >> kMegabyte, largest >> kMegabyte));
  }
}

/// To the end, but not for ever behind one who writes: what is longer than it was is refused.
void CopyAll(int from, int to, const Look& before, const fs::path& file) {
  const std::string purpose = fmt::format("make a copy of '{}' to read", file.string());
  std::vector<char> part(std::size_t{1} << 20);
  for (std::uintmax_t copied = 0; copied <= before.size;) {
    const ssize_t count = read(from, part.data(), part.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) CannotRead(file, Reason());
    if (count == 0) return;
    AppendAll(to, {part.data(), static_cast<std::size_t>(count)}, purpose);
    copied += static_cast<std::uintmax_t>(count);
  }
}

}  // namespace

Descriptor UnwrittenCopy(const fs::path& file, std::uintmax_t largest,
                         const std::function<void()>& copied) {
  const Descriptor original = OpenToRead(file);
  const Look before(original.number());
  RequireSize(before, largest, file);
  const Descriptor copy = NamelessFile("make a copy to read");
  CopyAll(original.number(), copy.number(), before, file);
  if (copied) copied();
  if (!(Look(original.number()) == before) || Look(copy.number()).size != before.size) {
    throw FileError(FileProblem::kUnusable,
                    fmt::format("'{}' was written while it was read: close the program that has it "
                                "open, then try again",
                                file.string()));
  }
  Descriptor readOnly(
      open(fmt::format("/proc/self/fd/{}", copy.number()).c_str(), O_RDONLY | O_CLOEXEC));
  if (readOnly.number() < 0) {
    CannotRead(file, Reason());
  }
  return readOnly;
}

}  // namespace qorhost::desktop_file

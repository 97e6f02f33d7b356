#include "host/files/whole_file.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <system_error>

#include "host/files/descriptor_buffer.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(const fs::path& to, std::string_view why) {
  throw FileError(FileProblem::kOccupied,
                  fmt::format("'{}' {}: name another file", to.string(), why));
}

}  // namespace

void RequirePlace(const fs::path& to, const Writing& writing) {
  if (to.filename().empty()) {
    Refuse(to, "is no name of a file");
  }
  if (std::any_of(writing.never.begin(), writing.never.end(),
                  [&to](const fs::path& file) { return AreOneFile(to, file); })) {
    Refuse(to, "belongs to the store and is never replaced");
  }
  switch (const FileKind kind = KindOf(to, Links::kAreSeen)) {
    case FileKind::kNone:
      return RequireFolderOf(to);
    case FileKind::kFile:
      if (writing.existing == Standing::kStays) {
        throw FileError(FileProblem::kExists, fmt::format("'{}' exists already", to.string()));
      }
      return;
    default:
      Refuse(to, fmt::format("is {}, no file that can be replaced", NameOf(kind)));
  }
}

bool AreOneFile(const fs::path& one, const fs::path& other) {
  std::error_code ignored;
  return fs::equivalent(one, other, ignored) ||
         (one.filename() == other.filename() &&
          fs::equivalent(FolderOf(one), FolderOf(other), ignored));
}

void WriteWholeFile(const fs::path& to, const Writing& writing,
                    const std::function<void(std::ostream&)>& write) {
  RequirePlace(to, writing);
  FreshFile fresh(to);
  if (KindOf(to, Links::kAreSeen) == FileKind::kFile) {
    fresh.TakeRightsOf(to);
  }
  DescriptorBuffer buffer(fresh.descriptor());
  std::ostream out(&buffer);
  write(out);
  out.flush();
  if (buffer.failure() || !out) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot write '{}'{}{}", to.string(), buffer.failure() ? ": " : "",
                                buffer.failure() ? buffer.failure().message() : ""));
  }
  fresh.PutInPlace(writing.existing);
}

}  // namespace qorhost

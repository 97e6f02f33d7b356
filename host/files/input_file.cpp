#include "host/files/input_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ios>
#include <system_error>

#include "host/files/file_error.h"
#include "host/files/file_kind.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

[[noreturn]] void CannotRead(const fs::path& file, std::string_view kind, std::string_view why) {
  throw FileError(FileProblem::kUnreachable,
                  fmt::format("cannot read the {} '{}': {}", kind, file.string(), why));
}

int Open(const fs::path& file, std::string_view kind) {
  // Looked at before it is opened: opening alone does something to many a device.
  const FileKind stands = KindOf(file, Links::kAreFollowed);
  if (stands != FileKind::kFile && stands != FileKind::kNone) {
    CannotRead(file, kind, fmt::format("it is {} (- stands for standard input)", NameOf(stands)));
  }
  // Without waiting, because a pipe may have come in its place.
  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) {
    CannotRead(file, kind, std::generic_category().message(errno));
  }
  struct stat status {};
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
    close(descriptor);
    CannotRead(file, kind, "it is no file");
  }
  return descriptor;
}

}  // namespace

InputFile::InputFile(const fs::path& file, std::string_view kind)
    : std::istream(nullptr), descriptor_(Open(file, kind)), buffer_(descriptor_) {
  rdbuf(&buffer_);
}

InputFile::~InputFile() {
  close(descriptor_);
}

std::string ReadWholeText(std::istream& in, std::string_view name) {
  std::string text;
  std::string part(kMegabyte, '\0');
  const auto failed = [name](std::string_view why) {
    return FileError(FileProblem::kUnreachable,
                     fmt::format("cannot read '{}' to its end{}{}; nothing was imported", name,
                                 why.empty() ? "" : ": ", why));
  };
  if (in.bad()) {
    throw failed("");
  }
  try {
    std::streamsize count = 0;
    while ((count = in.rdbuf()->sgetn(part.data(), static_cast<std::streamsize>(part.size()))) >
           0) {
      text.append(part, 0, static_cast<std::size_t>(count));
      if (text.size() > kLargestText) {
        throw FileError(FileProblem::kUnusable,
                        fmt::format("'{}' is larger than {} MB: split it, with the headings in "
                                    "each part; nothing was imported",
                                    name, kLargestText / kMegabyte));
      }
    }
  } catch (const std::ios_base::failure& failure) {
    throw failed(failure.code().message());
  }
  return text;
}

std::string ReadWholeFile(const fs::path& file) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) {
    throw FileError(FileProblem::kUnreachable, fmt::format("there is no file '{}'", file.string()));
  }
  InputFile in(file);
  return ReadWholeText(in, file.string());
}

}  // namespace qorhost

#include "host/files/desktop_file/nameless_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "host/files/file_error.h"

namespace qorhost::desktop_file {

namespace fs = std::filesystem;

Descriptor NamelessFile(std::string_view purpose) {
  std::error_code failed;
  const fs::path temporary = fs::temp_directory_path(failed);
  const fs::path folder = failed ? fs::path("/tmp") : temporary;
  std::string name = (folder / "qorhost-reading-XXXXXX").string();
  Descriptor made(mkostemp(name.data(), O_CLOEXEC));
  if (made.number() < 0) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot {} in '{}': {}", purpose, folder.string(),
                                std::generic_category().message(errno)));
  }
  unlink(name.c_str());
  return made;
}

void AppendAll(int file, std::string_view bytes, std::string_view purpose) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) {
      throw FileError(
          FileProblem::kUnreachable,
          fmt::format("cannot {}: {}", purpose, std::generic_category().message(errno)));
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace qorhost::desktop_file

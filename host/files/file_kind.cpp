#include "host/files/file_kind.h"

#include <system_error>

namespace qorhost {

namespace fs = std::filesystem;

FileKind KindOf(const fs::path& file, Links links) {
  std::error_code ignored;
  const fs::file_status status =
      links == Links::kAreSeen ? fs::symlink_status(file, ignored) : fs::status(file, ignored);
  switch (status.type()) {
    case fs::file_type::regular:
      return FileKind::kFile;
    case fs::file_type::directory:
      return FileKind::kFolder;
    case fs::file_type::symlink:
      return FileKind::kLink;
    case fs::file_type::fifo:
      return FileKind::kPipe;
    case fs::file_type::socket:
      return FileKind::kSocket;
    case fs::file_type::block:
    case fs::file_type::character:
      return FileKind::kDevice;
    default:
      return FileKind::kNone;
  }
}

std::string_view NameOf(FileKind kind) {
  switch (kind) {
    case FileKind::kFile:
      return "a file";
    case FileKind::kFolder:
      return "a folder";
    case FileKind::kLink:
      return "a link";
    case FileKind::kPipe:
      return "a pipe";
    case FileKind::kSocket:
      return "a socket";
    case FileKind::kDevice:
      return "a device";
    case FileKind::kNone:
      break;
  }
  return "nothing";
}

}  // namespace qorhost

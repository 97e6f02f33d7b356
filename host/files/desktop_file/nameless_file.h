// Files of one process, which have no name for others and go with it.
#pragma once

#include <string_view>

#include "host/files/desktop_file/descriptor.h"

namespace qorhost::desktop_file {

/// An empty one, in the folder for temporary files (TMPDIR). Raises FileError, kUnreachable: it
/// "cannot `purpose` in 'folder': reason".
[[nodiscard]] Descriptor NamelessFile(std::string_view purpose);

/// Writes all of the bytes at the file's end. Raises FileError, kUnreachable: it "cannot `purpose`:
/// reason".
void AppendAll(int file, std::string_view bytes, std::string_view purpose);

}  // namespace qorhost::desktop_file

// A copy of a file that nobody writes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

#include "host/files/desktop_file/descriptor.h"

namespace qorhost::desktop_file {

/// Copies the file, which is opened for reading alone, to a place without a name, and gives the
/// copy, open for reading alone. `copied` is called when the bytes are there, before the file is
/// looked at again. Raises FileError: kUnreachable where the file cannot be read or no copy be
/// made; kUnusable for one of more than `largest` bytes, of which nothing is copied, and for one
/// that others have written meanwhile.
[[nodiscard]] Descriptor UnwrittenCopy(const std::filesystem::path& file, std::uintmax_t largest,
                                       const std::function<void()>& copied = {});

}  // namespace qorhost::desktop_file

// Writing a file so that there is never half of it.
#pragma once

#include <filesystem>
#include <functional>
#include <ostream>

namespace qorhost {

/// Whether a file can be put there: nothing is there, or a file that can be replaced.
[[nodiscard]] bool CanBeWritten(const std::filesystem::path& to);

/// Has the file written beside its place and moves it there when it is whole. A link stays: what it
/// leads to is replaced. Raises FileError, and leaves what was there, when it cannot be written.
void WriteWholeFile(const std::filesystem::path& to,
                    const std::function<void(std::ostream&)>& write);

}  // namespace qorhost

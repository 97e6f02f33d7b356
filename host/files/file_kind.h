// What stands under a name in the file system, without opening it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace qorhost {

enum class FileKind : std::uint8_t { kNone, kFile, kFolder, kLink, kPipe, kSocket, kDevice };

/// Whether a link is what stands there, or what it leads to.
enum class Links : bool { kAreSeen, kAreFollowed };

/// kNone also where the system does not let it be looked at.
[[nodiscard]] FileKind KindOf(const std::filesystem::path& file, Links links);

/// "a folder", "a pipe", ... for messages.
[[nodiscard]] std::string_view NameOf(FileKind kind);

}  // namespace qorhost

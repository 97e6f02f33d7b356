// Files from outside: opened and read, with a reason when that is not possible.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <istream>
#include <string>
#include <string_view>

namespace qorhost {

/// The largest text that ReadWholeText() takes, in bytes.
inline constexpr std::size_t kLargestText = std::size_t{256} << 20;

/// Opens a file; `kind` ("file", "unit file") is for the message. Raises FileError for a folder and
/// for a file that cannot be opened.
[[nodiscard]] std::ifstream OpenInputFile(const std::filesystem::path& file,
                                          std::string_view kind = "file");

/// All that a stream holds; `name` is for messages. Raises FileError when it cannot be read to its
/// end and when it is larger than kLargestText.
[[nodiscard]] std::string ReadWholeText(std::istream& in, std::string_view name);

/// All that a file holds. Raises FileError also when there is none.
[[nodiscard]] std::string ReadWholeFile(const std::filesystem::path& file);

}  // namespace qorhost

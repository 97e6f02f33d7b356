// Files from outside: opened and read, with a reason when that is not possible.
#pragma once

#include <cstddef>
#include <filesystem>
#include <istream>
#include <string>
#include <string_view>

#include "host/files/descriptor_buffer.h"

namespace qorhost {

/// The largest text that ReadWholeText() takes, in bytes.
inline constexpr std::size_t kLargestText = std::size_t{256} << 20;

/// A file as a stream. Its end is where reading finds it, whatever size it claims; whoever reads it
/// has a bound.
class InputFile final : public std::istream {
 public:
  /// `kind` ("file", "unit file") is for the message. Raises FileError for a folder, a pipe, a
  /// device or a socket, which are never waited for, and for a file that cannot be opened.
  explicit InputFile(const std::filesystem::path& file, std::string_view kind = "file");
  ~InputFile() override;
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

 private:
  int descriptor_;
  DescriptorBuffer buffer_;
};

/// All that a stream holds; `name` is for messages. Raises FileError when it cannot be read to its
/// end and when it is larger than kLargestText.
[[nodiscard]] std::string ReadWholeText(std::istream& in, std::string_view name);

/// All that a file holds. Raises FileError also when there is none.
[[nodiscard]] std::string ReadWholeFile(const std::filesystem::path& file);

}  // namespace qorhost

#include "host/files/input_file.h"

#include <fmt/format.h>

#include <system_error>

#include "host/files/file_error.h"

namespace qorhost {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

}  // namespace

std::ifstream OpenInputFile(const fs::path& file, std::string_view kind) {
  std::error_code ignored;
  std::ifstream in(file, std::ios::binary);
  if (!in || fs::is_directory(file, ignored)) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot read the {} '{}'", kind, file.string()));
  }
  return in;
}

std::string ReadWholeText(std::istream& in, std::string_view name) {
  std::string text;
  std::string part(kMegabyte, '\0');
  while (in.good()) {
    in.read(part.data(), static_cast<std::streamsize>(part.size()));
    text.append(part, 0, static_cast<std::size_t>(in.gcount()));
    if (text.size() > kLargestText) {
      throw FileError(FileProblem::kUnusable,
                      fmt::format("'{}' is larger than {} MB: split it, with the headings in each "
                                  "part; nothing was imported",
                                  name, kLargestText / kMegabyte));
    }
  }
  if (in.bad()) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot read '{}' to its end; nothing was imported", name));
  }
  return text;
}

std::string ReadWholeFile(const fs::path& file) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) {
    throw FileError(FileProblem::kUnreachable, fmt::format("there is no file '{}'", file.string()));
  }
  std::ifstream in = OpenInputFile(file);
  return ReadWholeText(in, file.string());
}

}  // namespace qorhost

#include "host/files/whole_file.h"

#include <fmt/format.h>

#include <fstream>
#include <system_error>

#include "host/files/file_error.h"

namespace qorhost {

namespace fs = std::filesystem;

bool CanBeWritten(const fs::path& to) {
  std::error_code ignored;
  return !fs::exists(to, ignored) || fs::is_regular_file(to, ignored);
}

void WriteWholeFile(const fs::path& to, const std::function<void(std::ostream&)>& write) {
  std::error_code error;
  const fs::path place = fs::is_symlink(to, error) ? fs::weakly_canonical(to) : to;
  fs::path fresh = place;
  fresh += ".new";
  std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
  if (file) {
    write(file);
    file.close();
  }
  if (file) {
    fs::rename(fresh, place, error);
  }
  if (!file || error) {
    std::error_code ignored;
    fs::remove(fresh, ignored);
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot write '{}'{}{}", to.string(), error ? ": " : "",
                                error ? error.message() : ""));
  }
}

}  // namespace qorhost

// A folder of a test's own, removed with what is in it.
#pragma once

#include <stdlib.h>  // mkdtemp

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qorhost::test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "qorhost-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::filesystem::path File(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace qorhost::test

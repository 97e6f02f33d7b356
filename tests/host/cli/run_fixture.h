// Runs qorhost in this process on a demo store of its own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {

/// What a command printed and how it ended.
struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

class RunFixture : public testing::Test {
 protected:
  /// The words behind the program's name; --db names the fixture's file unless it is among them.
  [[nodiscard]] Outcome Run(std::vector<std::string> words, const std::string& input = "",
                            bool terminal = false);
  /// The rows that a command prints with --json.
  [[nodiscard]] nlohmann::json Rows(std::vector<std::string> words);
  /// Makes the demo store, as a copy of one that is made once.
  void InitDemo();

  std::optional<std::string> storeOfEnvironment_;  // QORHOST_DB
  std::optional<std::string> unitOfEnvironment_;   // QORHOST_UNIT
  std::optional<std::string> desktopReader_;       // in the place of the one that was built
  bool outputIsTerminal_ = false;
  bool outputFails_ = false;  // as on a full disk
  bool readerIsGone_ = false;
  std::size_t columns_ = 80;  // of the terminal

  [[nodiscard]] std::string File(const std::string& name) const {
    return (folder_.path() / name).string();
  }
  [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }
  static void CopyFiles(const std::filesystem::path& from, const std::filesystem::path& to);

 private:
  TemporaryFolder folder_;
};

}  // namespace qorhost::test

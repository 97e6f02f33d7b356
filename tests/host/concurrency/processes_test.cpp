// Programs on a store file that are started by a shell, among others who use its folder.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/store/sqlite/schema.h"
#include "tests/host/concurrency/racing_processes.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using Arguments = std::vector<std::string>;

class ShellLines : public testing::Test {
 protected:
  void SetUp() override { MakeBuilding(file_, kRoomy); }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
};

/// A line of the shell, in the folder of the store.
std::vector<Arguments> InShell(const std::filesystem::path& folder, const std::string& line) {
  return {{"-c", fmt::format("cd '{}' && {}", folder.string(), line)}};
}

// The trace's file got the number of the stream, and all messages.
TEST_F(ShellLines, MessagesToAStreamThatIsClosedGetIntoNoFile) {
  const std::string command = fmt::format("'{}' --db building.db --trace", QORHOST_PROGRAM);
  const Finished run =
      Race("/bin/sh", InShell(folder_.path(), command +
                                                  " --trace-file open.txt dircodes list "
                                                  "> list.txt 2> trace.txt; " +
                                                  command +
                                                  " --trace-file closed.txt dircodes list "
                                                  "> list.txt 2>&-; "
                                                  "wc -l < open.txt; wc -l < closed.txt"))[0];
  const std::size_t end = run.said.find('\n');
  ASSERT_NE(end, std::string::npos) << run.said;
  EXPECT_GT(end, 1U) << run.said;
  EXPECT_EQ(run.said, run.said.substr(0, end + 1) + run.said.substr(0, end + 1));
}

// It was told as refused, as if nothing had been done.
TEST_F(ShellLines, AChangeWhoseTraceFindsItsPlaceTakenIsToldAsStored) {
  const std::string taken =
      "until ls .qorhost-?????? > /dev/null 2>&1; do :; done; echo mine > calls.txt";
  const Finished run =
      Race("/bin/sh",
           InShell(folder_.path(),
                   fmt::format("{{ {}; echo 'Directory Code,Phone No.'; echo 301,5; }} | '{}' --db "
                               "building.db --unit 1 --trace-file calls.txt dircodes import -",
                               taken, QORHOST_PROGRAM)))[0];
  EXPECT_EQ(run.status, 3) << run.said;
  EXPECT_NE(run.said.find("'calls.txt' exists already; the change is stored"), std::string::npos)
      << run.said;
  EXPECT_EQ(sqlite::OpenDatabase(file_, OpenMode::kReadWrite)
                .Number("SELECT count(*) FROM DirectoryCode"),
            4);
  EXPECT_EQ(std::filesystem::file_size(folder_.File("calls.txt")), 5U);
}

}  // namespace
}  // namespace qorhost::test

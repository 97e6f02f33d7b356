// Files that are there whole or not at all.
#include "host/files/whole_file.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "host/files/file_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

class WholeFile : public testing::Test {
 protected:
  [[nodiscard]] fs::path File(const char* name) const { return folder_.path() / name; }
  [[nodiscard]] static std::string Read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  TemporaryFolder folder_;
};

TEST_F(WholeFile, ReplacesWhatWasThereAndLeavesNothingBeside) {
  std::ofstream(File("unit.txt")) << "old";
  WriteWholeFile(File("unit.txt"), [](std::ostream& out) { out << "new"; });
  EXPECT_EQ(Read(File("unit.txt")), "new");
  EXPECT_FALSE(fs::exists(File("unit.txt.new")));
}

TEST_F(WholeFile, KeepsALinkAndReplacesWhatItLeadsTo) {
  std::ofstream(File("unit.txt")) << "old";
  fs::create_symlink("unit.txt", File("link.txt"));
  WriteWholeFile(File("link.txt"), [](std::ostream& out) { out << "new"; });
  EXPECT_TRUE(fs::is_symlink(File("link.txt")));
  EXPECT_EQ(Read(File("unit.txt")), "new");
}

TEST_F(WholeFile, StaysAsItWasWhenTheNewOneCannotBeWritten) {
  std::ofstream(File("unit.txt")) << "old";
  EXPECT_THROW(WriteWholeFile(File("unit.txt"),
                              [](std::ostream& out) {
                                out << "half";
                                out.setstate(std::ios::badbit);
                              }),
               FileError);
  EXPECT_EQ(Read(File("unit.txt")), "old");
  EXPECT_FALSE(fs::exists(File("unit.txt.new")));
  EXPECT_THROW(WriteWholeFile(File("nowhere/unit.txt"), [](std::ostream&) {}), FileError);
}

TEST_F(WholeFile, CanStandWhereNothingOrAFileIs) {
  std::ofstream(File("unit.txt")) << "old";
  EXPECT_TRUE(CanBeWritten(File("unit.txt")));
  EXPECT_TRUE(CanBeWritten(File("fresh.txt")));
  EXPECT_FALSE(CanBeWritten(folder_.path()));
  EXPECT_FALSE(CanBeWritten("/dev/null"));
}

}  // namespace
}  // namespace qorhost::test

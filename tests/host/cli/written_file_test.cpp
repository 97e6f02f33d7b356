// Where the commands put files: a trial refuses the places that the work itself refuses.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using Words = std::vector<std::string>;

class WrittenFiles : public ImportFixture {
 protected:
  void SetUp() override {
    ImportFixture::SetUp();
    fs::create_directory(File("folder"));
    fs::create_symlink(File("building.db"), File("link"));
    fs::create_symlink(File("nowhere"), File("dangling"));
    std::ofstream(File("old.txt")) << "old";
  }
  Outcome Do(const Words& command, const std::string& place, const Words& more) {
    Words words{"--unit", "2"};
    words.insert(words.end(), command.begin(), command.end());
    words.push_back(File(place));
    words.insert(words.end(), more.begin(), more.end());
    return Run(words);
  }
};

TEST_F(WrittenFiles, ATrialRefusesThePlacesThatTheWorkRefuses) {
  for (const Words& command : {Words{"dircodes", "export", "--to"},
                               Words{"tenants", "export", "--to"}, Words{"steps", "export"}}) {
    for (const char* place :
         {"building.db", "building.db-wal", "link", "dangling", "folder", "no/file.txt"}) {
      for (const Words& force : {Words{}, Words{"--force"}}) {
        SCOPED_TRACE(testing::Message() << command[0] << " to " << place << " " << force.size());
        Words trial = force;
        trial.emplace_back("-n");
        const Outcome tried = Do(command, place, trial);
        const Outcome done = Do(command, place, force);
        EXPECT_NE(done.status, 0);
        EXPECT_EQ(tried.status, done.status);
        EXPECT_EQ(tried.err, done.err);
        EXPECT_EQ(tried.out, "");
      }
    }
    const Outcome tried = Do(command, "old.txt", {"-n"});
    EXPECT_EQ(tried.status, 1);
    EXPECT_EQ(tried.err, Do(command, "old.txt", {}).err);
    EXPECT_EQ(Do(command, "old.txt", {"-n", "--force"}).status, 0);
  }
  EXPECT_TRUE(fs::is_symlink(File("link")));
}

TEST_F(WrittenFiles, APlaceThatRefusedLinesCannotHaveIsToldBeforeAnythingIsImported) {
  const std::string file = Write("Last Name\nOne\n\"T\x01wo\"\n");
  const std::size_t tenants = CountOf("Tenants");
  for (const char* place : {"folder", "dangling", "link", "no/mend.csv", "building.db-wal"}) {
    const Outcome outcome =
        Run({"--unit", "2", "tenants", "import", file, "--rejects", File(place), "--force"});
    EXPECT_NE(outcome.status, 0) << place;
    EXPECT_THAT(outcome.err, HasSubstr("--rejects")) << place;
    EXPECT_EQ(outcome.out, "") << place;
    EXPECT_EQ(CountOf("Tenants"), tenants) << place;
  }
  EXPECT_EQ(Run({"--unit", "2", "tenants", "import", file, "--rejects", File("old.txt")}).status,
            1);
  EXPECT_EQ(CountOf("Tenants"), tenants);
}

}  // namespace
}  // namespace qorhost::test

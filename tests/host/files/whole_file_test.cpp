// Files that are there whole or not at all, and never in the place of something that has to stay.
#include "host/files/whole_file.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>

#include "host/files/file_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;

const auto kWriteNew = [](std::ostream& out) { out << "new"; };
const Writing kForced{Standing::kReplaced, {}};

struct Failure {
  std::optional<FileProblem> problem;
  std::string words;
};

class WholeFile : public testing::Test {
 protected:
  [[nodiscard]] fs::path File(const char* name) const { return folder_.path() / name; }
  void Make(const char* name) const { std::ofstream(File(name)) << "old"; }
  [[nodiscard]] static std::string Read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  [[nodiscard]] std::string Read(const char* name) const { return Read(File(name)); }
  [[nodiscard]] static Failure FailureOf(
      const fs::path& to, const Writing& writing = {},
      const std::function<void(std::ostream&)>& write = kWriteNew) {
    try {
      WriteWholeFile(to, writing, write);
    } catch (const FileError& failure) {
      return {failure.problem(), failure.what()};
    }
    return {std::nullopt, "written"};
  }
  [[nodiscard]] std::ptrdiff_t Count() const {
    return std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator());
  }
  [[nodiscard]] static fs::perms RightsOf(const fs::path& file) {
    return fs::status(file).permissions();
  }

  TemporaryFolder folder_;
};

TEST_F(WholeFile, IsReadableByItsOwnerAlone) {
  const mode_t before = umask(0);
  WriteWholeFile(File("unit.txt"), {}, kWriteNew);
  umask(before);
  EXPECT_EQ(Read("unit.txt"), "new");
  EXPECT_EQ(RightsOf(File("unit.txt")), fs::perms(0600));
  EXPECT_EQ(Count(), 1) << "something was left beside it";
}

TEST_F(WholeFile, ReplacesAFileOnlyWhenAskedAndKeepsItsRights) {
  Make("unit.txt");
  fs::permissions(File("unit.txt"), fs::perms(0640));
  const Failure failure = FailureOf(File("unit.txt"));
  EXPECT_EQ(failure.problem, FileProblem::kExists);
  EXPECT_THAT(failure.words, HasSubstr("unit.txt' exists already"));
  EXPECT_EQ(Read("unit.txt"), "old");

  WriteWholeFile(File("unit.txt"), kForced, kWriteNew);
  EXPECT_EQ(Read("unit.txt"), "new");
  EXPECT_EQ(RightsOf(File("unit.txt")), fs::perms(0640));
  EXPECT_EQ(Count(), 1);
}

TEST_F(WholeFile, KeepsTheOwnerOfAReplacedFile) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  Make("unit.txt");
  constexpr uid_t kNobody = 65534;
  ASSERT_EQ(chown(File("unit.txt").c_str(), kNobody, kNobody), 0);
  WriteWholeFile(File("unit.txt"), kForced, kWriteNew);
  struct stat status {};
  ASSERT_EQ(stat(File("unit.txt").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, kNobody);
  EXPECT_EQ(status.st_gid, kNobody);
}

TEST_F(WholeFile, NeverGoesThroughALink) {
  Make("unit.txt");
  fs::create_symlink("unit.txt", File("link.txt"));
  fs::create_symlink("nowhere", File("dangling.txt"));
  for (const char* name : {"link.txt", "dangling.txt"}) {
    for (const Writing& writing : {Writing{}, kForced}) {
      const Failure failure = FailureOf(File(name), writing);
      EXPECT_EQ(failure.problem, FileProblem::kOccupied) << name;
      EXPECT_THAT(failure.words, HasSubstr("is a link")) << name;
      EXPECT_TRUE(fs::is_symlink(File(name)));
    }
  }
  EXPECT_EQ(Read("unit.txt"), "old");
  EXPECT_FALSE(fs::exists(File("nowhere")));
}

TEST_F(WholeFile, TakesThePlaceOfNothingButAFile) {
  ASSERT_EQ(mkfifo(File("pipe").c_str(), 0600), 0);
  const struct {
    fs::path to;
    const char* what;
  } rows[] = {{folder_.path(), "is a folder"},
              {File("pipe"), "is a pipe"},
              {"/dev/full", "is a device"},
              {File("unit.txt") / "", "is no name of a file"}};
  for (const auto& row : rows) {
    const Failure failure = FailureOf(row.to, kForced);
    EXPECT_EQ(failure.problem, FileProblem::kOccupied) << row.to;
    EXPECT_THAT(failure.words, HasSubstr(row.what)) << row.to;
  }
}

TEST_F(WholeFile, IsNeverPutOverAProtectedFileWhateverItsName) {
  Make("building.db");
  fs::create_hard_link(File("building.db"), File("hard.db"));
  fs::create_symlink("building.db", File("soft.db"));
  fs::create_directory(File("deeper"));
  fs::create_directory_symlink(folder_.path(), File("deeper") / "up");
  const Writing writing{Standing::kReplaced, {File("building.db"), File("building.db-wal")}};
  for (const fs::path& to :
       {File("building.db"), File("deeper") / ".." / "building.db", File("hard.db"),
        File("soft.db"), File("deeper") / "up" / "building.db", File("building.db-wal"),
        File("deeper") / "up" / "building.db-wal"}) {
    const Failure failure = FailureOf(to, writing);
    EXPECT_EQ(failure.problem, FileProblem::kOccupied) << to;
    EXPECT_THAT(failure.words, HasSubstr("belongs to the store")) << to;
  }
  EXPECT_EQ(Read("building.db"), "old");
  EXPECT_FALSE(fs::exists(File("building.db-wal")));
}

// Somebody else's file appears between the look at the place and the last step.
TEST_F(WholeFile, NeverReplacesWhatAppearsWhileItIsWritten) {
  const Failure failure = FailureOf(File("unit.txt"), {}, [this](std::ostream& out) {
    out << "new";
    Make("unit.txt");
  });
  EXPECT_EQ(failure.problem, FileProblem::kExists);
  EXPECT_EQ(Read("unit.txt"), "old");
  EXPECT_EQ(Count(), 1);
}

TEST_F(WholeFile, NeverFollowsALinkThatAppearsWhileItIsWritten) {
  Make("other.txt");
  const auto putLink = [this](std::ostream& out) {
    out << "new";
    fs::create_symlink("other.txt", File("unit.txt"));
  };
  EXPECT_EQ(FailureOf(File("unit.txt"), {}, putLink).problem, FileProblem::kExists);
  EXPECT_EQ(Read("other.txt"), "old");
  fs::remove(File("unit.txt"));
  EXPECT_EQ(FailureOf(File("unit.txt"), kForced, putLink).problem, std::nullopt);
  EXPECT_EQ(Read("other.txt"), "old") << "the link was followed";
  EXPECT_EQ(Read("unit.txt"), "new");
}

TEST_F(WholeFile, DisturbsNoOtherWriterOfTheSameFile) {
  EXPECT_EQ(FailureOf(File("unit.txt"), {},
                      [this](std::ostream& out) {
                        out << "outer";
                        WriteWholeFile(File("unit.txt"), {}, kWriteNew);
                      })
                .problem,
            FileProblem::kExists);
  EXPECT_EQ(Read("unit.txt"), "new");
}

TEST_F(WholeFile, StaysAsItWasWhenTheNewOneCannotBeWritten) {
  Make("unit.txt");
  EXPECT_EQ(FailureOf(File("unit.txt"), kForced,
                      [](std::ostream& out) {
                        out << "half";
                        out.setstate(std::ios::badbit);
                      })
                .problem,
            FileProblem::kUnreachable);
  EXPECT_EQ(Read("unit.txt"), "old");
  EXPECT_EQ(Count(), 1);
  EXPECT_THAT(FailureOf(File("nowhere/unit.txt")).words,
              AllOf(HasSubstr("there is no folder '"), HasSubstr("nowhere'")));
}

// As on a full disk: writing ends in the middle.
TEST_F(WholeFile, TellsTheSystemsReasonWhenItCannotGrow) {
  EXPECT_EXIT(
      {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit most{};
        most.rlim_cur = most.rlim_max = 1000;
        const bool limited = setrlimit(RLIMIT_FSIZE, &most) == 0;
        const Failure failure = FailureOf(
            File("unit.txt"), {}, [](std::ostream& out) { out << std::string(300'000, 'x'); });
        std::fprintf(stderr, "%s", failure.words.c_str());
        _exit(limited ? 0 : 1);
      },
      testing::ExitedWithCode(0), "cannot write '.*unit.txt': File too large");
  EXPECT_EQ(Count(), 0);
}

TEST_F(WholeFile, TellsTheSystemsReasonWhenTheFolderIsClosed) {
  fs::permissions(folder_.path(), fs::perms(0555));
  constexpr uid_t kNobody = 65534;
  EXPECT_EXIT(
      {
        const bool dropped = geteuid() != 0 || setuid(kNobody) == 0;
        std::fprintf(stderr, "%s", FailureOf(File("unit.txt")).words.c_str());
        _exit(dropped ? 0 : 1);
      },
      testing::ExitedWithCode(0), "cannot write '.*unit.txt': Permission denied");
  fs::permissions(folder_.path(), fs::perms(0755));
}

}  // namespace
}  // namespace qorhost::test

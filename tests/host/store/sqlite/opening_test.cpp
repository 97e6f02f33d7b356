#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/store/sql_session.h"
#include "host/store/sqlite/engine_error.h"
#include "host/store/sqlite/schema.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::sqlite {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class OpeningTest : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path File(const char* name = "building.db") const {
    return folder_.File(name);
  }
  [[nodiscard]] std::string FailureOf(const std::filesystem::path& file, OpenMode mode) const {
    try {
      const Database opened = OpenDatabase(file, mode);
    } catch (const StoreError& failure) {
      return failure.what();
    }
    return "opened";
  }

  test::TemporaryFolder folder_;
};

TEST_F(OpeningTest, CreatesAStoreThatOpensAgain) {
  { const Database created = OpenDatabase(File(), OpenMode::kCreate); }
  Database again = OpenDatabase(File(), OpenMode::kReadWrite);
  EXPECT_EQ(again.Number("PRAGMA user_version"), SchemaVersion());
  EXPECT_EQ(again.Number("PRAGMA application_id"), kApplicationId);
  EXPECT_EQ(again.Number("PRAGMA foreign_keys"), 1);
}

/// A program that has had it open since before a newer one brought it up to date.
TEST_F(OpeningTest, AStoreOfALaterSchemaIsNotWrittenByThoseWhoHadItOpen) {
  Store store(OpenDatabase(File(), OpenMode::kCreate));
  const auto session = store.StartSession([] {
    return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
  });
  session->AddRow("Units", std::vector<Field>{{"UnitKey", 1}});
  OpenDatabase(File(), OpenMode::kReadWrite)
      .Run(fmt::format("PRAGMA user_version={}", SchemaVersion() + 1));
  {
    WorkGuard guard(session->work(), {{1}, "add a door", {}});
    try {
      session->AddRow("DOORS", std::vector<Field>{{"UNITKEY", 1}});
      ADD_FAILURE() << "an older program has written to it";
    } catch (const StoreError& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("was brought up to date by a newer version"));
    }
    EXPECT_THROW((void)guard.Commit(), StoreError);
  }
  EXPECT_EQ(session->Scalar("SELECT Count(*) FROM DOORS"), qorcred::Value(0));
}

TEST_F(OpeningTest, WritesAheadIntoALog) {
  const Database store = OpenDatabase(File(), OpenMode::kCreate);
  Statement mode(store, "PRAGMA journal_mode");
  ASSERT_TRUE(mode.Step());
  EXPECT_EQ(mode.Text(0), "wal");
}

TEST_F(OpeningTest, OpensANameWithoutAFolder) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  EXPECT_EQ(FailureOf("plain.db", OpenMode::kCreate), "opened");
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::exists(File("plain.db")));
}

TEST_F(OpeningTest, AStoreUnderTwoNamesIsOnlyRead) {
  { const Database created = OpenDatabase(File(), OpenMode::kCreate); }
  std::filesystem::create_hard_link(File(), File("other.db"));
  for (const char* name : {"building.db", "other.db"}) {
    EXPECT_THAT(FailureOf(File(name), OpenMode::kReadWrite), HasSubstr("has a second name"));
    EXPECT_EQ(FailureOf(File(name), OpenMode::kReadOnly), "opened");
  }
  std::filesystem::remove(File("other.db"));
  EXPECT_EQ(FailureOf(File(), OpenMode::kReadWrite), "opened");
}

TEST_F(OpeningTest, SaysThatTheFolderIsMissing) {
  EXPECT_THAT(FailureOf(folder_.File("none") / "a.db", OpenMode::kCreate),
              AllOf(HasSubstr("none' does not exist"), HasSubstr("create it")));
}

TEST_F(OpeningTest, SaysThatTheStoreIsMissing) {
  for (const OpenMode mode : {OpenMode::kReadWrite, OpenMode::kReadOnly}) {
    EXPECT_THAT(FailureOf(File(), mode), AllOf(HasSubstr("There is no store"),
                                               HasSubstr("building.db"), HasSubstr("create it")));
  }
  EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(OpeningTest, SaysThatTheNameIsAFolder) {
  EXPECT_THAT(FailureOf(folder_.path(), OpenMode::kCreate), HasSubstr("is a folder"));
}

TEST_F(OpeningTest, RefusesAFileThatIsNoDatabaseAndLeavesItAlone) {
  const std::string content(5000, 'x');
  std::ofstream(File()) << content;
  for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite, OpenMode::kCreate}) {
    EXPECT_THAT(FailureOf(File(), mode), HasSubstr("the file is not a store"));
  }
  std::ifstream file(File());
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), content);
}

TEST_F(OpeningTest, RefusesTheDatabaseOfAnotherProgramAndLeavesItAlone) {
  {
    Database other(File(), OpenMode::kCreate);
    other.Run("CREATE TABLE notes (text); PRAGMA user_version=7");
  }
  EXPECT_THAT(FailureOf(File(), OpenMode::kCreate), HasSubstr("another program"));
  Database other(File(), OpenMode::kReadOnly);
  EXPECT_EQ(other.Number("PRAGMA user_version"), 7);
  EXPECT_EQ(other.Number("SELECT count(*) FROM sqlite_schema"), 1);
}

TEST_F(OpeningTest, KnowsAStoreOfAnyStateFromOtherFiles) {
  const struct {
    const char* name;
    std::function<void()> make;
    bool isStore;
  } rows[] = {
      {"Store", [this] { const Database made = OpenDatabase(File(), OpenMode::kCreate); }, true},
      {"NewerStore",
       [this] {
         Database made = OpenDatabase(File(), OpenMode::kCreate);
         made.Run("PRAGMA user_version=" + std::to_string(SchemaVersion() + 1));
       },
       true},
      {"DamagedStore",
       [this] {
         { const Database made = OpenDatabase(File(), OpenMode::kCreate); }
         std::fstream file(File(), std::ios::in | std::ios::out | std::ios::binary);
         constexpr std::streamoff kBehindTheHeader = 100;
         file.seekp(kBehindTheHeader);
         file << std::string(20000, 'x');
       },
       true},
      {"EmptyFile", [this] { std::ofstream(File()).close(); }, true},
      {"EmptyDatabase",
       [this] {
         Database made(File(), OpenMode::kCreate);
         made.Run("PRAGMA user_version=1");
       },
       true},
      {"OtherDatabase",
       [this] {
         Database made(File(), OpenMode::kCreate);
         made.Run("CREATE TABLE notes (text)");
       },
       false},
      {"OtherApplication",
       [this] {
         Database made(File(), OpenMode::kCreate);
         made.Run("PRAGMA application_id=77; CREATE TABLE notes (text)");
       },
       false},
      {"Text", [this] { std::ofstream(File()) << std::string(5000, 'x'); }, false},
      {"SingleCharacter", [this] { std::ofstream(File()) << 'x'; }, false},
      {"ShortText", [this] { std::ofstream(File()) << "a few words"; }, false},
      {"DamagedOtherDatabase",
       [this] {
         {
           Database made(File(), OpenMode::kCreate);
           made.Run("CREATE TABLE notes (text)");
         }
         std::fstream file(File(), std::ios::in | std::ios::out | std::ios::binary);
         constexpr std::streamoff kBehindTheHeader = 100;
         file.seekp(kBehindTheHeader);
         file << std::string(4000, 'x');
       },
       false},
      {"Folder", [this] { std::filesystem::create_directory(File()); }, false},
      {"Pipe", [this] { ASSERT_EQ(mkfifo(File().c_str(), 0600), 0); }, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    row.make();
    EXPECT_EQ(IsStoreOrEmpty(File()), row.isStore);
    std::filesystem::remove_all(File());
  }
}

TEST_F(OpeningTest, SaysThatAFileCannotBeReadForItsKind) {
  { const Database made = OpenDatabase(File(), OpenMode::kCreate); }
  std::filesystem::permissions(folder_.path(), std::filesystem::perms(0755));
  std::filesystem::permissions(File(), std::filesystem::perms(0));
  constexpr uid_t kNobody = 65534;
  EXPECT_EXIT(
      {
        const bool dropped = geteuid() != 0 || setuid(kNobody) == 0;
        try {
          static_cast<void>(IsStoreOrEmpty(File()));
        } catch (const StoreError& failure) {
          std::fprintf(stderr, "%s", failure.what());
        }
        _exit(dropped ? 0 : 1);
      },
      testing::ExitedWithCode(0), "Cannot open the store");
}

TEST_F(OpeningTest, RefusesANewerSchema) {
  {
    Database store = OpenDatabase(File(), OpenMode::kCreate);
    store.Run("PRAGMA user_version=" + std::to_string(SchemaVersion() + 1));
  }
  for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite}) {
    EXPECT_THAT(FailureOf(File(), mode), HasSubstr("newer version of this program"));
  }
}

TEST_F(OpeningTest, BringsAnOlderFileUpToDateWhenItMayWrite) {
  {
    Database empty(File(), OpenMode::kCreate);
    empty.Run("PRAGMA application_id=" + std::to_string(kApplicationId));
    empty.Run("CREATE TABLE placeholder (a)");
  }
  EXPECT_THAT(FailureOf(File(), OpenMode::kReadOnly), HasSubstr("older form"));
  Database store = OpenDatabase(File(), OpenMode::kReadWrite);
  EXPECT_EQ(store.Number("PRAGMA user_version"), SchemaVersion());
  EXPECT_EQ(store.Number("SELECT count(*) FROM CredentialBank"), 0);
}

TEST_F(OpeningTest, AMigrationThatFailsLeavesTheFileAsItWas) {
  {
    Database clash(File(), OpenMode::kCreate);
    clash.Run("PRAGMA application_id=" + std::to_string(kApplicationId));
    clash.Run("CREATE TABLE Tenants (mine)");
  }
  EXPECT_THAT(FailureOf(File(), OpenMode::kReadWrite), HasSubstr("already exists"));
  Database after(File(), OpenMode::kReadOnly);
  EXPECT_EQ(after.Number("PRAGMA user_version"), 0);
  EXPECT_EQ(after.Number("SELECT count(*) FROM sqlite_schema"), 1);
}

TEST_F(OpeningTest, AnEmptyFileBecomesAStoreOnlyWhenItMayBeWritten) {
  std::ofstream(File()).close();
  EXPECT_THAT(FailureOf(File(), OpenMode::kReadOnly), HasSubstr("is empty"));
  EXPECT_EQ(FailureOf(File(), OpenMode::kReadWrite), "opened");
}

TEST_F(OpeningTest, ReadingOnlyReadsAndRefusesToWrite) {
  {
    Database store = OpenDatabase(File(), OpenMode::kCreate);
    store.Run("INSERT INTO Units (UnitKey) VALUES (5)");
  }
  Database store = OpenDatabase(File(), OpenMode::kReadOnly);
  EXPECT_EQ(store.Number("SELECT UnitKey FROM Units"), 5);
  try {
    store.Run("DELETE FROM Units");
    FAIL() << "the delete went through";
  } catch (const StoreError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("cannot be written"));
    EXPECT_EQ(failure.fault(), StoreFault::kReadOnly);
  }
}

// In a process of its own, because the tests may run as a user who may write everything.
TEST_F(OpeningTest, SaysThatTheFileMayNotBeWritten) {
  { const Database store = OpenDatabase(File(), OpenMode::kCreate); }
  namespace fs = std::filesystem;
  fs::permissions(folder_.path(), fs::perms(0755));
  fs::permissions(File(), fs::perms(0444));
  constexpr uid_t kNobody = 65534;
  EXPECT_EXIT(
      {
        const bool dropped = geteuid() != 0 || setuid(kNobody) == 0;
        const std::string failure = FailureOf(File(), OpenMode::kReadWrite);
        std::fprintf(stderr, "%s", failure.c_str());
        _exit(dropped ? 0 : 1);
      },
      testing::ExitedWithCode(0), "cannot be written: check the rights on the file");
}

// Somebody would have to stand at the other end of the pipe.
TEST_F(OpeningTest, RefusesWhatIsNoFileAtOnce) {
  ASSERT_EQ(mkfifo(File("pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("pipe", File("link"));
  for (const std::filesystem::path& file : {File("pipe"), File("link"), {"/dev/zero"}}) {
    for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite, OpenMode::kCreate}) {
      EXPECT_THAT(FailureOf(file, mode), HasSubstr("a pipe, a socket or a device")) << file;
    }
  }
}

// A pipe in the place of the journal was waited for without end.
TEST_F(OpeningTest, RefusesAtOnceWhatIsNoFileBesideAStore) {
  { const Database made = OpenDatabase(File(), OpenMode::kCreate); }
  for (const char* name : {"building.db-wal", "building.db-shm", "building.db-journal"}) {
    const std::filesystem::path beside = File(name);
    for (const char* kind : {"pipe", "folder", "link"}) {
      std::filesystem::remove(beside);
      if (kind == std::string_view("pipe")) {
        ASSERT_EQ(mkfifo(beside.c_str(), 0600), 0);
      } else if (kind == std::string_view("folder")) {
        std::filesystem::create_directory(beside);
      } else {
        std::filesystem::create_symlink("nowhere", beside);
      }
      for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite}) {
        EXPECT_THAT(FailureOf(File(), mode), AllOf(HasSubstr(name), HasSubstr("move it away")))
            << kind;
      }
    }
    std::filesystem::remove(beside);
  }
  EXPECT_EQ(FailureOf(File(), OpenMode::kReadWrite), "opened");
}

TEST_F(OpeningTest, AClosedStoreIsOneFile) {
  const auto files = [this] {
    const std::filesystem::directory_iterator all(folder_.path());
    return std::distance(begin(all), end(all));
  };
  { const Database made = OpenDatabase(File(), OpenMode::kCreate); }
  EXPECT_EQ(files(), 1);
  {
    Database writer = OpenDatabase(File(), OpenMode::kReadWrite);
    Database reader = OpenDatabase(File(), OpenMode::kReadOnly);
    EXPECT_EQ(reader.Number("SELECT count(*) FROM Units"), 0);
    {
      Database other = OpenDatabase(File(), OpenMode::kReadOnly);
      EXPECT_EQ(other.Number("SELECT count(*) FROM Units"), 0);
    }
    EXPECT_EQ(files(), 3) << "who still reads needs them";
    writer.Run("INSERT INTO Units (UnitKey) VALUES (5)");
    EXPECT_EQ(reader.Number("SELECT count(*) FROM Units"), 1);
  }
  EXPECT_EQ(files(), 1);
  for (int readers = 0; readers < 2; ++readers) {
    const Database alone = OpenDatabase(File(), OpenMode::kReadOnly);
  }
  EXPECT_EQ(files(), 1);
  Database reader = OpenDatabase(File(), OpenMode::kReadOnly);
  EXPECT_EQ(reader.Number("SELECT count(*) FROM Units"), 1);
}

TEST_F(OpeningTest, MakesNothingThroughALinkThatLeadsNowhere) {
  std::filesystem::create_symlink("nowhere", File());
  EXPECT_THAT(FailureOf(File(), OpenMode::kCreate), HasSubstr("is a link that leads nowhere"));
  EXPECT_TRUE(std::filesystem::is_symlink(File()));
  EXPECT_FALSE(std::filesystem::exists(File("nowhere")));
}

TEST_F(OpeningTest, ANewStoreAndWhatStandsBesideItAreItsOwnersAlone) {
  const mode_t before = umask(0);
  Database store = OpenDatabase(File(), OpenMode::kCreate);
  store.Run("INSERT INTO Units (UnitKey) VALUES (5)");
  umask(before);
  for (const char* name : {"building.db", "building.db-wal", "building.db-shm"}) {
    EXPECT_EQ(std::filesystem::status(File(name)).permissions(), std::filesystem::perms(0600))
        << name;
  }
}

constexpr uid_t kOwner = 65533;
constexpr uid_t kReader = 65534;

/// A store of one user that another one reads. Both have to be made out of root.
class TwoUsersTest : public OpeningTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can be two users";
    {
      Database store = OpenDatabase(File(), OpenMode::kCreate);
      store.Run("INSERT INTO Units (UnitKey) VALUES (5)");
    }
    std::filesystem::permissions(File(), std::filesystem::perms(0644));
    ASSERT_EQ(chown(File().c_str(), kOwner, kOwner), 0);
    ASSERT_EQ(chown(folder_.path().c_str(), kOwner, kOwner), 0);
  }
  void LetFolder(int rights) const {
    std::filesystem::permissions(folder_.path(), static_cast<std::filesystem::perms>(rights));
  }
  /// What `work` says as that user, in a process of its own.
  static void As(uid_t user, const std::function<std::string()>& work, const std::string& says) {
    EXPECT_EXIT(
        {
          const bool became = setgid(user) == 0 && setuid(user) == 0;
          std::string said;
          try {
            said = work();
          } catch (const StoreError& failure) {
            said = failure.what();
          }
          std::fprintf(stderr, "%s", said.c_str());
          _exit(became ? 0 : 1);
        },
        testing::ExitedWithCode(0), says);
  }
  [[nodiscard]] std::string Read() const {
    Database store = OpenDatabase(File(), OpenMode::kReadOnly);
    return "unit " + std::to_string(store.Number("SELECT max(UnitKey) FROM Units"));
  }
  [[nodiscard]] std::string Write() const {
    Database store = OpenDatabase(File(), OpenMode::kReadWrite);
    store.Run("INSERT INTO Units (UnitKey) VALUES (6)");
    return "written";
  }
  [[nodiscard]] std::ptrdiff_t Files() const {
    return std::distance(std::filesystem::directory_iterator(folder_.path()),
                         std::filesystem::directory_iterator());
  }
};

TEST_F(TwoUsersTest, AStoreInAFolderThatMayNotBeWrittenIsRead) {
  LetFolder(0755);
  As(
      kReader, [this] { return Read(); }, "unit 5");
  LetFolder(0555);
  std::filesystem::permissions(File(), std::filesystem::perms(0444));
  As(
      kOwner, [this] { return Read(); }, "unit 5");
  As(
      kOwner, [this] { return Write(); }, "cannot be written: check the rights");
  EXPECT_EQ(Files(), 1);
}

// It was said that there is no such file.
TEST_F(TwoUsersTest, ALogThatCannotBeReadWhereNothingMayBeWrittenIsNamed) {
  {
    Database open = OpenDatabase(File(), OpenMode::kReadWrite);
    open.Run("INSERT INTO Units (UnitKey) VALUES (6)");
    std::filesystem::copy_file(File(), File("left.db"));
    std::filesystem::copy_file(File("building.db-wal"), File("left.db-wal"));
  }
  std::filesystem::permissions(File("left.db-wal"), std::filesystem::perms(0644));
  LetFolder(0755);
  As(
      kReader,
      [this] {
        const Database store = OpenDatabase(File("left.db"), OpenMode::kReadOnly);
        return std::string("read");
      },
      "changes stand in its log '.*left.db-wal' alone, .*: Permission denied .copy both");
}

TEST_F(TwoUsersTest, AnothersReadingLeavesNothingBeside) {
  LetFolder(0777);
  As(
      kReader, [this] { return Read(); }, "unit 5");
  EXPECT_EQ(Files(), 1);
  As(
      kOwner, [this] { return Write(); }, "written");
}

// The engine itself leaves an empty log and an index that are the reader's, as other programs do.
TEST_F(TwoUsersTest, WhatAnothersReadingLeftBesideDoesNotKeepTheOwnerOut) {
  for (const bool writes : {true, false}) {
    LetFolder(0777);
    As(
        kReader,
        [this] {
          sqlite3* database = nullptr;
          sqlite3_open_v2(File().c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
          sqlite3_exec(database, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
          sqlite3_close(database);
          return std::string("read");
        },
        "read");
    ASSERT_EQ(Files(), 3) << "the engine leaves nothing any more: this is needed no longer";
    LetFolder(0755);
    As(
        kOwner, [this, writes] { return writes ? Write() : Read(); },
        writes ? "written" : "unit 6");
  }
}

TEST_F(TwoUsersTest, RootsWorkLeavesNothingThatKeepsTheOwnerOut) {
  LetFolder(0755);
  const Database open = OpenDatabase(File(), OpenMode::kReadWrite);
  EXPECT_EQ(Read(), "unit 5");
  EXPECT_EQ(Files(), 3);
  As(
      kOwner, [this] { return Write(); }, "written");
}

TEST_F(OpeningTest, AFileThatClaimsAYearFarAwayIsOpenedAndWritten) {
  { const Database created = OpenDatabase(File(), OpenMode::kCreate); }
  constexpr time_t kLate = 15'000'000'000;  // in the year 2445
  const timespec times[] = {{kLate, 0}, {kLate, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, File().c_str(), times, 0), 0);
  Database store = OpenDatabase(File(), OpenMode::kReadWrite);
  store.Run("INSERT INTO Units (UnitKey) VALUES (6)");
  EXPECT_EQ(store.Number("SELECT count(*) FROM Units"), 1);
}

TEST_F(OpeningTest, TakesANameThatReadsLikeAUriAsAName) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  EXPECT_EQ(FailureOf("file:odd?mode=memory", OpenMode::kCreate), "opened");
  EXPECT_EQ(FailureOf(":memory:", OpenMode::kCreate), "opened");
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::exists(File("file:odd?mode=memory")));
  EXPECT_TRUE(std::filesystem::exists(File(":memory:")));
}

TEST_F(OpeningTest, RunsNoTriggerCodeThatAFileBringsAlong) {
  Database store = OpenDatabase(File(), OpenMode::kCreate);
  EXPECT_THROW(store.Run("ATTACH 'x.db' AS x"), StoreError);
  EXPECT_THROW(store.Run("SELECT load_extension('x')"), StoreError);
  EXPECT_THROW(store.Run("PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql=''"), StoreError);
}

TEST_F(OpeningTest, ADamagedFileIsReportedAndNotRead) {
  { const Database store = OpenDatabase(File(), OpenMode::kCreate); }
  {
    std::fstream file(File(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(100);
    file << std::string(4000, '\xAB');
  }
  EXPECT_THAT(FailureOf(File(), OpenMode::kReadWrite), HasSubstr("damaged"));
}

// What the process holds open, by number.
std::size_t OpenFiles() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST_F(OpeningTest, NoFileStaysOpenWhetherOpeningSucceedsOrFails) {
  { const Database store = OpenDatabase(File(), OpenMode::kCreate); }
  std::ofstream(File("other.db")) << std::string(5000, 'x');
  const std::size_t before = OpenFiles();
  { const Database store = OpenDatabase(File(), OpenMode::kReadWrite); }
  EXPECT_NE(FailureOf(File("other.db"), OpenMode::kReadWrite), "opened");
  EXPECT_NE(FailureOf(File("none.db"), OpenMode::kReadWrite), "opened");
  EXPECT_EQ(OpenFiles(), before);
}

TEST_F(OpeningTest, ANameIsRefusedThatIsTooLongForWhatStandsBesideIt) {
  EXPECT_EQ(FailureOf(File(std::string(247, 'a').c_str()), OpenMode::kCreate), "opened");
  EXPECT_THAT(FailureOf(File(std::string(248, 'a').c_str()), OpenMode::kCreate),
              HasSubstr("has 248 bytes: it may have 247"));
  EXPECT_FALSE(std::filesystem::exists(File(std::string(248, 'a').c_str())));
}

// It was called a file that does not exist.
TEST_F(OpeningTest, APathThatIsTooLongForTheEngineIsCalledSo) {
  constexpr std::size_t kLongest = 504;
  std::filesystem::path folder = std::filesystem::canonical(folder_.path());
  while (folder.string().size() < kLongest - 210) {
    folder /= std::string(200, 'd');
  }
  std::filesystem::create_directories(folder);
  const std::size_t left = kLongest - folder.string().size() - 1;
  EXPECT_EQ(FailureOf(folder / std::string(left, 'a'), OpenMode::kCreate), "opened");
  EXPECT_THAT(FailureOf(folder / std::string(left + 1, 'a'), OpenMode::kCreate),
              HasSubstr("its whole path has 505 bytes and may have 504"));
}

TEST_F(OpeningTest, FromAFolderThatIsGoneAStoreNeedsItsWholePath) {
  { const Database created = OpenDatabase(File(), OpenMode::kCreate); }
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::create_directory(File("gone"));
  std::filesystem::current_path(File("gone"));
  std::filesystem::remove(File("gone"));
  const std::string failure = FailureOf("../building.db", OpenMode::kReadWrite);
  const std::string whole = FailureOf(File(), OpenMode::kReadWrite);
  std::filesystem::current_path(before);
  EXPECT_THAT(failure,
              HasSubstr("the current folder is gone, so name the store by its whole path"));
  EXPECT_EQ(whole, "opened");
}

/// A store without a log, as it is left when the program that writes to it is killed: with half of
/// a unit of work in it, and a journal that undoes it.
void MakeCutOff(const std::filesystem::path& from, const std::filesystem::path& cut) {
  { const Database made = OpenDatabase(from, OpenMode::kCreate); }
  Database store(from, OpenMode::kReadWrite);
  store.Run("PRAGMA journal_mode=DELETE; INSERT INTO Units (UnitKey) VALUES (1)");
  store.Run("BEGIN; INSERT INTO Units (UnitKey) VALUES (2)");
  ASSERT_EQ(sqlite3_db_cacheflush(store.handle()), SQLITE_OK);
  std::filesystem::copy_file(from, cut);
  std::filesystem::copy_file(from.string() + "-journal", cut.string() + "-journal");
}

// Looking at it was refused, as if there were no rights to write, until somebody changed it.
TEST_F(OpeningTest, WorkThatWasCutOffWithoutALogIsUndoneAlsoForOneWhoOnlyLooks) {
  MakeCutOff(File("whole.db"), File());
  {
    Database store = OpenDatabase(File(), OpenMode::kReadOnly);
    EXPECT_EQ(store.Number("SELECT sum(UnitKey) FROM Units"), 1);
  }
  EXPECT_FALSE(std::filesystem::exists(File("building.db-journal")));
  MakeCutOff(File("other.db"), File("cut.db"));
  EXPECT_FALSE(IsOlderStore(File("cut.db")));
  EXPECT_FALSE(std::filesystem::exists(File("cut.db-journal")));
}

// It kept whoever wanted to write waiting as if somebody wrote.
TEST_F(OpeningTest, AFileWithoutALogOverAStoreThatIsOpenIsToldAndNotWaitedForLong) {
  { const Database made = OpenDatabase(File(), OpenMode::kCreate); }
  const Database open = OpenDatabase(File(), OpenMode::kReadWrite);
  {
    { const Database made = OpenDatabase(File("bare.db"), OpenMode::kCreate); }
    Database(File("bare.db"), OpenMode::kReadWrite).Run("PRAGMA journal_mode=DELETE");
  }
  std::ofstream over(File(), std::ios::binary | std::ios::in);
  over << std::ifstream(File("bare.db"), std::ios::binary).rdbuf();
  over.close();
  try {
    const Database late =
        OpenDatabase(File(), OpenMode::kReadWrite, {std::chrono::hours(1), nullptr});
    FAIL() << "opened";
  } catch (const StoreError& failure) {
    EXPECT_EQ(failure.fault(), StoreFault::kBusy);
    EXPECT_THAT(failure.what(), HasSubstr("close every program that has it open"));
  }
}

// Of several who open such a store at once each waits for the one who is faster.
TEST_F(OpeningTest, AFileWithoutALogIsWaitedForWhileAnotherOneWrites) {
  { const Database made = OpenDatabase(File(), OpenMode::kCreate); }
  Database(File(), OpenMode::kReadWrite).Run("PRAGMA journal_mode=DELETE");
  Database faster(File(), OpenMode::kReadWrite);
  faster.Run("BEGIN IMMEDIATE");
  int asked = 0;
  const Patience patience{std::chrono::hours(1), [&](std::chrono::milliseconds) {
                            if (++asked == 2) {
                              faster.Run("COMMIT");
                            }
                            return true;
                          }};
  const Database opened = OpenDatabase(File(), OpenMode::kReadWrite, patience);
  Statement mode(opened, "PRAGMA journal_mode");
  ASSERT_TRUE(mode.Step());
  EXPECT_EQ(mode.Text(0), "wal");
  EXPECT_EQ(asked, 2);
}

// It was told to check the disk.
TEST_F(OpeningTest, ALimitOnTheSizeOfFilesIsCalledSo) {
  Database store = OpenDatabase(File(), OpenMode::kCreate);
  store.Run("CREATE TABLE Texts (text)");
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto signalBefore = std::signal(SIGXFSZ, SIG_IGN);
  rlimit tight = before;
  tight.rlim_cur = 512 * 1024;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
  std::string failure;
  try {
    store.Run("INSERT INTO Texts VALUES (zeroblob(4000000))");
  } catch (const StoreError& refused) {
    failure = refused.what();
  }
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  (void)std::signal(SIGXFSZ, signalBefore);
  EXPECT_THAT(failure, HasSubstr("File too large (a limit on the size of files is reached"));
  EXPECT_EQ(store.Number("SELECT count(*) FROM Texts"), 0);
}

struct Advice {
  const char* name;
  int code;
  const char* part;
};

class AdviceTest : public testing::TestWithParam<Advice> {};

TEST_P(AdviceTest, SaysWhatToDo) {
  EXPECT_THAT(AdviceFor(FaultOf(GetParam().code)), HasSubstr(GetParam().part));
}

INSTANTIATE_TEST_SUITE_P(
    Codes, AdviceTest,
    testing::Values(Advice{"Busy", SQLITE_BUSY, "another program is writing"},
                    Advice{"BusySnapshot", SQLITE_BUSY_SNAPSHOT, "another program is writing"},
                    Advice{"Locked", SQLITE_LOCKED, "another program is writing"},
                    Advice{"ReadOnlyFile", SQLITE_READONLY, "check the rights"},
                    Advice{"NoRights", SQLITE_PERM, "check the rights"},
                    Advice{"ReadOnlyFolder", SQLITE_READONLY_DIRECTORY, "its folder"},
                    Advice{"DiskFull", SQLITE_FULL, "make room"},
                    Advice{"DiskError", SQLITE_IOERR_WRITE, "check it"},
                    Advice{"NoDatabase", SQLITE_NOTADB, "choose another one"},
                    Advice{"Damaged", SQLITE_CORRUPT, "put back a copy"},
                    Advice{"CannotOpen", SQLITE_CANTOPEN, "check its name"},
                    Advice{"NoMemory", SQLITE_NOMEM, "close other programs"},
                    Advice{"TooLong", SQLITE_TOOBIG, "use a shorter one"},
                    Advice{"ForeignKey", SQLITE_CONSTRAINT_FOREIGNKEY,
                           "a unit that does not exist"},
                    Advice{"Constraint", SQLITE_CONSTRAINT, ""}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace qorhost::sqlite

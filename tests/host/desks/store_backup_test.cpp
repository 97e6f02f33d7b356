// Copies of stores and their way back.
#include "host/desks/store_backup.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>
#include <iterator>

#include "host/files/file_error.h"
#include "host/store/sqlite/database.h"
#include "host/store/store_error.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class StoreBackupTest : public testing::Test {
 protected:
  void SetUp() override { CreateStore(store_, true, Noon); }

  static qorcred::Date Noon() { return qorcred::FromCivil({2026, 1, 31, 12, 0, 0}); }

  [[nodiscard]] fs::path File(const std::string& name) const { return folder_.File(name); }
  /// How many files there are, without the logs and indexes of stores.
  [[nodiscard]] std::size_t Files() const {
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_.path())) {
      const std::string ending = entry.path().extension().string();
      count += ending == ".db-wal" || ending == ".db-shm" ? 0U : 1U;
    }
    return count;
  }
  [[nodiscard]] static std::string BytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  static void Write(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }
  /// The name of the tenant in the row 62.
  [[nodiscard]] static std::string NameIn(const fs::path& file) {
    DeskSession session(OpenStoreFile(file, Access::kRead), {});
    return qorcred::TextOrEmpty(session.sql().Scalar("SELECT LastName FROM Tenants WHERE RID=62"));
  }
  static void Rename(const fs::path& file, const std::string& name) {
    DeskSession session(OpenStoreFile(file, Access::kChange), {});
    WorkGuard guard(session.sql().work(), {{2}, "rename", {}});
    (void)session.sql().Change("UPDATE Tenants SET LastName='" + name + "' WHERE RID=62",
                               std::nullopt);
    guard.Commit();
  }
  static FileProblem ProblemOf(const std::function<void()>& work) {
    try {
      work();
    } catch (const FileError& failure) {
      return failure.problem();
    }
    ADD_FAILURE() << "nothing was raised";
    return FileProblem::kUnusable;
  }

  TemporaryFolder folder_;
  fs::path store_ = folder_.File("building.db");
  fs::path backup_ = folder_.File("backup.db");
};

TEST_F(StoreBackupTest, ACopyHoldsWhatTheStoreHeld) {
  Rename(store_, "Berg");
  const BackedUp made = BackUp(store_, backup_, Standing::kStays);
  Rename(store_, "Cole");
  EXPECT_EQ(NameIn(backup_), "Berg");
  EXPECT_EQ(made.bytes, fs::file_size(backup_));
  ASSERT_EQ(made.heads.size(), 3U);
  DeskSession session(OpenStoreFile(backup_, Access::kRead), {});
  EXPECT_EQ(session.sql().audit().Heads(), made.heads);
}

TEST_F(StoreBackupTest, OthersGoOnWritingMeanwhile) {
  DeskSession other(OpenStoreFile(store_, Access::kChange), {});
  WorkGuard guard(other.sql().work(), {{2}, "rename", {}});
  const std::string before =
      qorcred::TextOrEmpty(other.sql().Scalar("SELECT LastName FROM Tenants WHERE RID=62"));
  (void)other.sql().Change("UPDATE Tenants SET LastName='Berg' WHERE RID=62", std::nullopt);
  BackUp(store_, backup_, Standing::kStays);
  guard.Commit();
  EXPECT_EQ(NameIn(backup_), before);
  EXPECT_EQ(NameIn(store_), "Berg");
}

TEST_F(StoreBackupTest, WhatIsThereIsReplacedOnRequestAlone) {
  BackUp(store_, backup_, Standing::kStays);
  Rename(store_, "Berg");
  EXPECT_EQ(ProblemOf([&] { BackUp(store_, backup_, Standing::kStays); }), FileProblem::kExists);
  EXPECT_NE(NameIn(backup_), "Berg");
  BackUp(store_, backup_, Standing::kReplaced);
  EXPECT_EQ(NameIn(backup_), "Berg");
  EXPECT_EQ(Files(), 2U) << "something was left beside them";
}

TEST_F(StoreBackupTest, WhatIsNoStoreIsNeverReplaced) {
  Write(backup_, "a letter");
  EXPECT_THROW(BackUp(store_, backup_, Standing::kReplaced), ForeignFile);
  EXPECT_EQ(BytesOf(backup_), "a letter");
  fs::create_directory(File("folder"));
  EXPECT_EQ(ProblemOf([&] { BackUp(store_, File("folder"), Standing::kReplaced); }),
            FileProblem::kOccupied);
}

TEST_F(StoreBackupTest, TheStoresOwnFilesAreNoPlace) {
  for (const char* name : {"building.db", "building.db-wal", "building.db-shm"}) {
    EXPECT_THROW(BackUp(store_, File(name), Standing::kReplaced), RefusedError) << name;
  }
  fs::create_hard_link(store_, File("second.db"));
  EXPECT_ANY_THROW(BackUp(store_, File("second.db"), Standing::kReplaced));
}

TEST_F(StoreBackupTest, ARestoreBringsBackAndKeepsWhatWasThere) {
  Rename(store_, "Berg");
  BackUp(store_, backup_, Standing::kStays);
  Rename(store_, "Cole");
  const std::string bytes = BytesOf(backup_);
  const Restored restored = Restore(store_, backup_, Noon());
  EXPECT_EQ(NameIn(store_), "Berg");
  ASSERT_TRUE(restored.kept);
  EXPECT_EQ(restored.kept->filename(), "building.db.before-restore-20260131-120000");
  EXPECT_EQ(NameIn(*restored.kept), "Cole");
  EXPECT_EQ(BytesOf(backup_), bytes);
  EXPECT_EQ(Files(), 3U) << "something was left beside them";
}

TEST_F(StoreBackupTest, WhoHasTheStoreOpenWritesNothingMoreToIt) {
  BackUp(store_, backup_, Standing::kStays);
  DeskSession other(OpenStoreFile(store_, Access::kChange), {});
  (void)other.Units();
  Restore(store_, backup_, Noon());
  WorkGuard guard(other.sql().work(), {{2}, "rename", {}});
  EXPECT_THROW((void)other.sql().Change("UPDATE Tenants SET LastName='Berg'", std::nullopt),
               StoreError);
}

TEST_F(StoreBackupTest, ARestoreWithoutAStoreMakesOne) {
  BackUp(store_, backup_, Standing::kStays);
  const Restored restored = Restore(File("new.db"), backup_, Noon());
  EXPECT_FALSE(restored.kept);
  EXPECT_EQ(NameIn(File("new.db")), NameIn(store_));
}

TEST_F(StoreBackupTest, ADamagedBackupChangesNothing) {
  BackUp(store_, backup_, Standing::kStays);
  const std::string bytes = BytesOf(backup_);
  const std::string before = BytesOf(store_);
  // A page of zeroes in the middle.
  std::string damaged = bytes;
  constexpr std::size_t kPage = 4096;
  damaged.replace(damaged.size() / kPage / 2 * kPage, kPage, kPage, '\0');
  Write(backup_, damaged);
  EXPECT_THROW(Restore(store_, backup_, Noon()), StoreError);
  Write(backup_, bytes.substr(0, bytes.size() / 2));
  EXPECT_THROW(Restore(store_, backup_, Noon()), StoreError);
  EXPECT_EQ(BytesOf(store_), before);
  EXPECT_EQ(Files(), 2U) << "something was left beside them";
}

TEST_F(StoreBackupTest, WhatIsNoBackupChangesNothing) {
  const std::string before = BytesOf(store_);
  EXPECT_THROW(Restore(store_, File("nothing.db"), Noon()), MissingStore);
  Write(backup_, "a letter");
  EXPECT_THROW(Restore(store_, backup_, Noon()), ForeignFile);
  EXPECT_THROW(Restore(store_, store_, Noon()), RefusedError);
  EXPECT_EQ(BytesOf(store_), before);
}

TEST_F(StoreBackupTest, ADamagedStoreIsKeptAsItIs) {
  BackUp(store_, backup_, Standing::kStays);
  const std::string damaged = BytesOf(store_).substr(0, fs::file_size(store_) / 2);
  Write(store_, damaged);
  const Restored restored = Restore(store_, backup_, Noon());
  ASSERT_TRUE(restored.kept);
  EXPECT_EQ(BytesOf(*restored.kept), damaged);
  EXPECT_EQ(NameIn(store_), NameIn(backup_));
}

// The log was removed: what had been stored last was kept nowhere.
TEST_F(StoreBackupTest, AStoreThatIsCutOffIsKeptWithItsLog) {
  BackUp(store_, backup_, Standing::kStays);
  const fs::path left = File("left.db");
  {
    DeskSession open(OpenStoreFile(store_, Access::kChange), {});
    Rename(store_, "Berg");
    fs::copy_file(store_, left);
    fs::copy_file(File("building.db-wal"), File("left.db-wal"));
  }
  const std::string whole = BytesOf(left);
  const std::string log = BytesOf(File("left.db-wal"));
  const std::string damaged = whole.substr(0, 5000);
  Write(left, damaged);
  const Restored restored = Restore(left, backup_, Noon());
  ASSERT_TRUE(restored.kept);
  EXPECT_TRUE(BytesOf(*restored.kept) == damaged);
  EXPECT_TRUE(BytesOf(restored.kept->string() + "-wal") == log);
  Write(*restored.kept, whole);  // as one who can mend it does
  EXPECT_EQ(NameIn(*restored.kept), "Berg");
  EXPECT_EQ(NameIn(left), NameIn(backup_));
}

// Of all damages this one could not be mended by a backup.
TEST_F(StoreBackupTest, AStoreWhoseHeaderIsDamagedIsKeptAsItIs) {
  BackUp(store_, backup_, Standing::kStays);
  std::string damaged = BytesOf(store_);
  constexpr std::size_t kPageSize = 16;
  damaged[kPageSize] = '\0';
  Write(store_, damaged);
  const Restored restored = Restore(store_, backup_, Noon());
  ASSERT_TRUE(restored.kept);
  EXPECT_TRUE(BytesOf(*restored.kept) == damaged);
  EXPECT_EQ(NameIn(store_), NameIn(backup_));
}

// The link became a file that everybody could read, and the store stayed as it was.
TEST_F(StoreBackupTest, NothingIsRestoredThroughALink) {
  BackUp(store_, backup_, Standing::kStays);
  Rename(store_, "Berg");
  fs::create_symlink("building.db", File("link.db"));
  EXPECT_EQ(ProblemOf([&] { (void)Restore(File("link.db"), backup_, Noon()); }),
            FileProblem::kOccupied);
  EXPECT_TRUE(fs::is_symlink(File("link.db")));
  EXPECT_EQ(NameIn(store_), "Berg");
  EXPECT_EQ(Files(), 3U) << "something was left beside them";
}

}  // namespace
}  // namespace qorhost::test

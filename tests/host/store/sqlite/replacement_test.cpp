// A store that makes room for another one while others have it open: each order of their steps.
#include "host/store/sqlite/replacement.h"

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/store/sqlite/schema.h"
#include "host/store/store_error.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::sqlite {
namespace {

namespace fs = std::filesystem;

class ReplacementTest : public testing::Test {
 protected:
  ReplacementTest() {
    MakeStore(file_, 1);
    MakeStore(fresh_, 2);
  }

  static void MakeStore(const fs::path& file, int unit) {
    Database store = OpenDatabase(file, OpenMode::kCreate);
    store.Run("INSERT INTO Units (UnitKey) VALUES (" + std::to_string(unit) + ")");
  }
  [[nodiscard]] static std::int64_t UnitIn(Database& database) {
    return database.Number("SELECT max(UnitKey) FROM Units");
  }
  [[nodiscard]] std::int64_t UnitIn(const fs::path& file) const {
    Database database = OpenDatabase(file, OpenMode::kReadWrite);
    EXPECT_EQ(database.Number("SELECT count(*) FROM pragma_integrity_check WHERE "
                              "integrity_check <> 'ok'"),
              0);
    return UnitIn(database);
  }
  [[nodiscard]] static int Try(const Database& database, const char* sql) {
    sqlite3_busy_timeout(database.handle(), 0);
    return sqlite3_exec(database.handle(), sql, nullptr, nullptr, nullptr);
  }
  void Put(Replacement& replacement) const {
    replacement.Put(fresh_, [this] { fs::rename(fresh_, file_); });
  }

  test::TemporaryFolder folder_;
  const fs::path file_ = folder_.File("building.db");
  const fs::path fresh_ = folder_.File("fresh.db");
};

TEST_F(ReplacementTest, PutsTheNewStoreInTheOldOnesPlace) {
  {
    Replacement replacement(file_);
    Put(replacement);
  }
  EXPECT_EQ(UnitIn(file_), 2);
  EXPECT_FALSE(fs::exists(fresh_));
}

TEST_F(ReplacementTest, LeavesTheOldStoreWhenItIsGivenUp) {
  { const Replacement replacement(file_); }
  EXPECT_EQ(UnitIn(file_), 1);
}

// What was written last stands in the log, which has to go before the new file comes.
TEST_F(ReplacementTest, LosesNothingOfTheOldStoreWhenTheNewOneCannotBePut) {
  Database open = OpenDatabase(file_, OpenMode::kReadWrite);
  open.Run("INSERT INTO Units (UnitKey) VALUES (7)");
  ASSERT_GT(fs::file_size(folder_.File("building.db-wal")), 0U);
  {
    Replacement replacement(file_);
    EXPECT_THROW(replacement.Put(fresh_, [] { throw std::runtime_error("no"); }),
                 std::runtime_error);
    EXPECT_FALSE(fs::exists(folder_.File("building.db-wal")));
  }
  // As after a crash at that moment: nothing but the file itself.
  fs::copy_file(file_, folder_.File("copy.db"));
  EXPECT_EQ(UnitIn(folder_.File("copy.db")), 7);
}

// Killed at the worst moment: the side files are gone, the new file has not come.
TEST_F(ReplacementTest, ThatIsKilledHalfWayLeavesTheOldStoreWholeAndHoldsUpNoOtherOne) {
  EXPECT_EXIT(
      {
        Database open = OpenDatabase(file_, OpenMode::kReadWrite);
        open.Run("INSERT INTO Units (UnitKey) VALUES (7)");
        Replacement replacement(file_);
        replacement.Put(fresh_, [] { _exit(5); });
      },
      testing::ExitedWithCode(5), "");
  EXPECT_EQ(UnitIn(file_), 7);
  {
    Replacement replacement(file_);
    Put(replacement);
  }
  EXPECT_EQ(UnitIn(file_), 2);
}

TEST_F(ReplacementTest, NobodyElseWritesMeanwhileAndEverybodyReads) {
  Database before = OpenDatabase(file_, OpenMode::kReadWrite);
  const Replacement replacement(file_);
  Database during = OpenDatabase(file_, OpenMode::kReadWrite);
  for (Database* other : {&before, &during}) {
    EXPECT_EQ(Try(*other, "BEGIN IMMEDIATE"), SQLITE_BUSY);
    EXPECT_EQ(UnitIn(*other), 1);
  }
}

TEST_F(ReplacementTest, IsRefusedWhileAnotherOneWrites) {
  Database writer = OpenDatabase(file_, OpenMode::kReadWrite);
  writer.Run("BEGIN IMMEDIATE; INSERT INTO Units (UnitKey) VALUES (8)");
  try {
    const Replacement replacement(file_, {std::chrono::milliseconds(0), {}});
    FAIL() << "replaced under a writer";
  } catch (const StoreError& failure) {
    EXPECT_EQ(failure.fault(), StoreFault::kBusy);
  }
  writer.Run("COMMIT");
  EXPECT_EQ(UnitIn(file_), 8);
}

TEST_F(ReplacementTest, WhoReadGoesOnReadingTheOldStoreAndFindsThatItHasMoved) {
  Database reader = OpenDatabase(file_, OpenMode::kReadWrite);
  EXPECT_EQ(UnitIn(reader), 1);
  EXPECT_FALSE(HasMoved(reader));
  {
    Replacement replacement(file_);
    Put(replacement);
  }
  Database other = OpenDatabase(file_, OpenMode::kReadWrite);
  other.Run("INSERT INTO Units (UnitKey) VALUES (3)");
  EXPECT_EQ(UnitIn(reader), 1) << "the new store's log was read with the old file";
  EXPECT_TRUE(HasMoved(reader));
  EXPECT_FALSE(HasMoved(other));
}

// The engine opens a file first and looks for its log later.
TEST_F(ReplacementTest, WhoOpenedTheOldFileAndReadNothingDoesNotHarmTheNewOne) {
  {
    Database late(file_, OpenMode::kReadWrite);
    {
      Replacement replacement(file_);
      Put(replacement);
    }
    Database other = OpenDatabase(file_, OpenMode::kReadWrite);
    other.Run("INSERT INTO Units (UnitKey) VALUES (3)");
    (void)Try(late, "SELECT max(UnitKey) FROM Units");
    EXPECT_TRUE(HasMoved(late));
    other.Run("INSERT INTO Units (UnitKey) VALUES (4)");
  }
  EXPECT_EQ(UnitIn(file_), 4);
}

TEST_F(ReplacementTest, TheLastToCloseTheOldFileLeavesTheNewOnesLog) {
  auto reader = std::make_unique<Database>(OpenDatabase(file_, OpenMode::kReadWrite));
  EXPECT_EQ(UnitIn(*reader), 1);
  {
    Replacement replacement(file_);
    Put(replacement);
  }
  Database other = OpenDatabase(file_, OpenMode::kReadWrite);
  other.Run("INSERT INTO Units (UnitKey) VALUES (3)");
  reader.reset();
  EXPECT_GT(fs::file_size(folder_.File("building.db-wal")), 0U);
  EXPECT_EQ(UnitIn(file_), 3);
}

TEST_F(ReplacementTest, MayFollowAnotherOneAtOnce) {
  const fs::path third = folder_.File("third.db");
  MakeStore(third, 3);
  {
    Replacement first(file_);
    Put(first);
  }
  {
    Replacement second(file_);
    second.Put(third, [&] { fs::rename(third, file_); });
  }
  EXPECT_EQ(UnitIn(file_), 3);
}

TEST_F(ReplacementTest, ReplacesAnEmptyFileAndADamagedStore) {
  for (const std::uintmax_t size : {std::uintmax_t{0}, std::uintmax_t{4096 + 100}}) {
    fs::resize_file(file_, size);
    {
      Replacement replacement(file_);
      Put(replacement);
    }
    EXPECT_EQ(UnitIn(file_), 2);
    MakeStore(fresh_, 2);
  }
}

}  // namespace
}  // namespace qorhost::sqlite

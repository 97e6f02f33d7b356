// A desk whose store is put back to an earlier state, or replaced by another file, while it is
// open.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "host/store/sqlite/schema.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"
#include "tests/host/store/whole_copy.h"

namespace qorhost::test {
namespace {

using testing::IsEmpty;

class ReplacedStores : public testing::Test {
 protected:
  void SetUp() override { MakeBuilding(file_, kRoomy); }

  [[nodiscard]] std::vector<std::string> Content() const {
    sqlite::Database database = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
    return ContentOf(database);
  }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
};

TEST_F(ReplacedStores, AStoreThatWasPutBackToAnEarlierStateIsNotTakenForTheOneShown) {
  Seat anna(file_, "anna");
  Seat bert(file_, "bert");
  ASSERT_TRUE(RunAt(EditPhone("102", "555-1"), bert).done());
  bert.database().Run("PRAGMA wal_checkpoint(TRUNCATE)");
  std::filesystem::copy_file(file_, folder_.File("backup.db"));
  ASSERT_TRUE(RunAt(EditPhone("102", "555-2"), bert).done());
  const PreparedDesk desk = EditPhone("102", "555-3").prepare(anna);
  // Back to the first edit in the way of a restore, and then another edit: as many as before.
  {
    Seat backup(folder_.File("backup.db"), "carl");
    ASSERT_TRUE(RunAt(EditPhone("102", "555-4"), backup).done());
    backup.database().Run("PRAGMA wal_checkpoint(TRUNCATE)");
  }
  sqlite::Database source(folder_.File("backup.db"), OpenMode::kReadWrite);
  CopyWhole(source, bert.database());
  const Told told = desk.run();
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  EXPECT_EQ(bert.database().Number("SELECT count(*) FROM DirectoryCode WHERE PHONENUMBER='555-4'"),
            1);
}

TEST_F(ReplacedStores, AStoreWhoseFileWasReplacedIsNotWrittenAndTheEntryIsKept) {
  Seat anna(file_, "anna");
  const PreparedDesk desk = EditPhone("102", "555-3").prepare(anna);
  const ScreenSnapshot entered = desk.screen();
  std::filesystem::rename(file_, folder_.File("old.db"));
  MakeBuilding(folder_.File("another.db"), kRoomy);
  std::filesystem::rename(folder_.File("another.db"), file_);
  const std::vector<std::string> before = Content();
  for (int attempt = 0; attempt < 2; ++attempt) {
    const Told told = desk.run();
    EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
    EXPECT_EQ(told.cause, StaleCause::kStoreReplaced);
    EXPECT_THAT(told.changedBy, IsEmpty());
    EXPECT_THAT(told.failures, IsEmpty());
    EXPECT_TRUE(desk.screen() == entered) << "the entry is not what it was";
    EXPECT_EQ(Content(), before);
  }
}

}  // namespace
}  // namespace qorhost::test

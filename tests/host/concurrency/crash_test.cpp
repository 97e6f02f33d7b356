// A stop, a full disk and a failing disk at every write of an operation: the store holds all of it
// or nothing, and what was told is true.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <ostream>
#include <system_error>

#include "host/desks/store_file.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/schema.h"
#include "host/store/store_error.h"
#include "tests/host/concurrency/failing_files.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

qorcred::Date AtNoon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}
using Content = std::vector<std::string>;

constexpr int kCapacity = 40;

struct Endangered {
  std::string name;
  SeatOperation operation;
  /// Whether what was stored is moved from the log to the store at once.
  bool withCheckpoint = false;
};

void PrintTo(const Endangered& one, std::ostream* out) {
  *out << one.name;
}

class Crashes : public testing::TestWithParam<Endangered> {
 protected:
  void SetUp() override {
    fs::create_directory(work_);
    MakeBuilding(folder_.File("new.db"), kCapacity);
    {
      Seat earlier(folder_.File("new.db"), "bert");
      ASSERT_TRUE(RunAt(FirstEntry(), earlier).done());
    }
    Begin();
    before_ = ContentOf(seat_->database());
    const Told told = RunAt(GetParam().operation, *seat_);
    ASSERT_TRUE(told.done()) << TextOf(told);
    after_ = ContentOf(seat_->database());
    ASSERT_NE(before_, after_);
    ASSERT_EQ(WrongIn(seat_->database(), kCapacity), Content());
  }

  void TearDown() override {
    files_.Heal();
    desk_ = {};
    seat_.reset();
  }

  /// A seat at a new building, with everything entered.
  void Begin() {
    files_.Heal();
    desk_ = {};
    seat_.reset();
    for (const char* name : {"building.db", "building.db-wal", "building.db-shm"}) {
      fs::remove(work_ / name);
    }
    fs::copy_file(folder_.File("new.db"), work_ / "building.db");
    seat_ = std::make_unique<Seat>(work_ / "building.db", "anna");
    if (GetParam().withCheckpoint) {
      seat_->database().Run("PRAGMA wal_autocheckpoint=1");
    }
  }

  /// What the next program finds in a folder. The same files are looked at once.
  Content Found(const fs::path& folder) {
    std::string files;
    for (const char* name : {"building.db", "building.db-wal"}) {
      std::error_code none;
      const std::uintmax_t size = fs::file_size(folder / name, none);
      if (!none) {
        const std::size_t before = files.size();
        files.resize(before + size);
        std::ifstream(folder / name, std::ios::binary)
            .read(files.data() + before, static_cast<std::streamsize>(size));
      }
    }
    const auto [known, isNew] = found_.try_emplace(std::move(files));
    if (isNew) {
      sqlite::Database database =
          sqlite::OpenDatabase(folder / "building.db", OpenMode::kReadWrite);
      sqlite::Statement check(database, "PRAGMA integrity_check");
      EXPECT_TRUE(check.Step());
      EXPECT_EQ(check.Text(0), "ok");
      known->second = ContentOf(database);
    }
    return known->second;
  }
  [[nodiscard]] bool IsAllOrNothing(const Content& found) const {
    return found == before_ || found == after_;
  }

  TemporaryFolder folder_;
  fs::path work_ = folder_.File("work");
  FailingFiles files_;
  std::unique_ptr<Seat> seat_;
  PreparedDesk desk_;
  Content before_;
  Content after_;
  std::map<std::string, Content> found_;  // by the bytes of the files
};

TEST_P(Crashes, AStopAtAnyWriteLeavesAllOrNothing) {
  int nth = 0;
  int nothing = 0;
  for (bool ended = false; !ended; ++nth) {
    SCOPED_TRACE(fmt::format("stopped at the write {}", nth));
    Begin();
    desk_ = GetParam().operation.prepare(*seat_);
    const fs::path killed = folder_.File("killed");
    const fs::path torn = folder_.File("torn");
    const fs::path synced = folder_.File("synced");
    bool isTorn = false;
    files_.FailAt(nth, FileFault::kStop, [&] {
      files_.CopyAsTheyAre(work_, killed);
      isTorn = files_.CopyTorn(work_, torn);
      files_.CopySynced(work_, synced);
    });
    const Told told = TellingRaised(desk_.run);
    ended = !files_.failed();
    if (ended) {
      files_.CopyAsTheyAre(work_, killed);
      files_.CopySynced(work_, synced);
      EXPECT_TRUE(told.done()) << TextOf(told);
    } else {
      EXPECT_TRUE(told.done() || told.ending == Ending::kFailed) << TextOf(told);
    }
    desk_ = {};
    seat_.reset();
    files_.Heal();
    for (const fs::path& copy : {killed, torn, synced}) {
      if (copy == torn && !isTorn) {
        continue;
      }
      SCOPED_TRACE(copy.filename().string());
      const Content found = Found(copy);
      EXPECT_TRUE(IsAllOrNothing(found));
      nothing += found == before_ ? 1 : 0;
      if (told.done()) {
        EXPECT_EQ(found, after_) << "told as done";
      }
    }
    if (HasFailure()) {
      return;
    }
  }
  EXPECT_GT(nothing, 0);
  EXPECT_GT(nth, 3);
}

TEST_P(Crashes, AFailureAtAnyWriteIsToldAndLeavesNothing) {
  // By turns, and for one operation each at every write: they differ in the engine alone.
  for (int turn = 0; turn < (GetParam().withCheckpoint ? 2 : 1); ++turn) {
    for (int nth = 0;; ++nth) {
      const FileFault fault = nth % 2 == turn ? FileFault::kFull : FileFault::kIoError;
      SCOPED_TRACE(fmt::format("{} at the write {}",
                               fault == FileFault::kFull ? "full disk" : "error", nth));
      Begin();
      desk_ = GetParam().operation.prepare(*seat_);
      files_.FailAt(nth, fault);
      const Told told = TellingRaised(desk_.run);
      if (!files_.failed()) {
        EXPECT_TRUE(told.done()) << TextOf(told);
        break;
      }
      files_.Heal();
      desk_ = {};
      if (told.done()) {
        EXPECT_EQ(ContentOf(seat_->database()), after_);
      } else {
        EXPECT_EQ(told.ending, Ending::kFailed) << TextOf(told);
        EXPECT_FALSE(told.failures.empty());
        EXPECT_EQ(ContentOf(seat_->database()), before_);
        // The seat goes on as if nothing had been.
        const Told again = RunAt(GetParam().operation, *seat_);
        EXPECT_TRUE(again.done()) << TextOf(again);
      }
      seat_.reset();
      EXPECT_EQ(Found(work_), after_);
      if (HasFailure()) {
        return;
      }
    }
  }
}

/// A new store is made beside everything that is there.
class NewStores : public testing::Test {
 protected:
  void SetUp() override { fs::create_directory(work_); }

  [[nodiscard]] bool IsThere() const { return fs::exists(work_ / "building.db"); }
  static bool IsWhole(const fs::path& store) {
    sqlite::Database database = sqlite::OpenDatabase(store, OpenMode::kReadWrite);
    return database.Number("SELECT count(*) FROM Units") == 3 &&
           database.Number("SELECT count(*) FROM AuditEntries") == 1 &&
           database.Number("SELECT count(*) FROM pragma_integrity_check") == 1;
  }
  Told Make() {
    return TellingRaised([this] {
      CreateStore(work_ / "building.db", true, AtNoon);
      return Told();
    });
  }

  TemporaryFolder folder_;
  fs::path work_ = folder_.File("work");
  FailingFiles files_;
};

// The demo building takes thousands of writes; an odd step meets all kinds of calls.
constexpr int kStep = 17;

TEST_F(NewStores, AFailureAtAWriteIsToldAndLeavesNothingBehind) {
  for (int nth = 0;; nth += kStep) {
    SCOPED_TRACE(fmt::format("at the write {}", nth));
    files_.FailAt(nth, FileFault::kIoError);
    const Told told = Make();
    const bool failed = files_.failed();
    files_.Heal();
    EXPECT_EQ(IsThere(), told.done()) << TextOf(told);
    if (told.done()) {
      EXPECT_TRUE(IsWhole(work_ / "building.db"));
    } else {
      EXPECT_TRUE(fs::is_empty(work_));
    }
    fs::remove_all(work_);
    fs::create_directory(work_);
    if (!failed) {
      EXPECT_TRUE(told.done());
      EXPECT_GT(nth, 10 * kStep);
      return;
    }
  }
}

TEST_F(NewStores, AStopAtAWriteLeavesNoneOrAllOfIt) {
  for (int nth = 0;; nth += kStep) {
    SCOPED_TRACE(fmt::format("stopped at the write {}", nth));
    const fs::path killed = folder_.File("killed");
    files_.FailAt(nth, FileFault::kStop, [&] { files_.CopyAsTheyAre(work_, killed); });
    (void)Make();
    const bool stopped = files_.failed();
    files_.Heal();
    if (!stopped) {
      EXPECT_TRUE(IsWhole(work_ / "building.db"));
      return;
    }
    const fs::path store = killed / "building.db";
    if (fs::exists(store)) {
      EXPECT_TRUE(IsWhole(store));
    }
    // Whatever was left under another name, the next one takes away.
    const bool wasThere = fs::exists(store);
    CreateStore(killed / "next.db", false, AtNoon);
    EXPECT_EQ(std::distance(fs::directory_iterator(killed), fs::directory_iterator()),
              wasThere ? 2 : 1);
    fs::remove_all(work_);
    fs::create_directory(work_);
  }
}

/// The reason that a person is told.
class FullDisks : public testing::Test {
 protected:
  void SetUp() override {
    MakeBuilding(file_, kCapacity);
    // The unit that is merged with is made once.
    MakeBuilding(folder_.File("merged.db"), kCapacity);
    Seat seat(folder_.File("merged.db"), "carl");
    ASSERT_TRUE(RunAt(MergeUnit(), seat).done());
  }

  TemporaryFolder folder_;
  fs::path file_ = folder_.File("building.db");
  FailingFiles files_;
};

TEST_F(FullDisks, AreNamedAlsoToOneWhoReads) {
  for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite}) {
    files_.LeaveNoRoomForTheIndex();
    try {
      (void)sqlite::OpenDatabase(file_, mode);
      FAIL() << "it was opened";
    } catch (const StoreError& failure) {
      EXPECT_EQ(failure.fault(), StoreFault::kFull);
      EXPECT_THAT(failure.what(), testing::HasSubstr("No space left on device"));
      EXPECT_THAT(failure.what(), testing::HasSubstr("make room"));
    }
    files_.Heal();
    EXPECT_NO_THROW((void)sqlite::OpenDatabase(file_, mode));
  }
}

TEST_F(FullDisks, AreToldInTheSameWordsByEveryOperation) {
  for (const SeatOperation& operation :
       {IssueCards("201", "203"), AssignCard("101", "Berg Bea"), EditPhone("102", "555-8888"),
        DeleteCode("101"), ImportCodes("301,555-1\n"), MergeUnit(),
        WriteByHand("UPDATE DIRECTORYCODE SET PHONENUMBER='1'")}) {
    SCOPED_TRACE(operation.name);
    Seat seat(file_, "anna");
    const PreparedDesk desk = operation.prepare(seat);
    files_.FailAt(0, FileFault::kFull);
    const Told told = TellingRaised(desk.run);
    ASSERT_TRUE(files_.failed());
    files_.Heal();
    EXPECT_EQ(told.failures, std::vector<std::string>{fmt::format(
                                 "The store '{}': database or disk is full (the disk is full: make "
                                 "room, then try again)",
                                 file_.string())});
  }
}

std::vector<Endangered> EndangeredOperations() {
  std::vector<Endangered> all{{"IssuingARangeWithACheckpoint", IssueCards("201", "203"), true}};
  for (const NamedOperation& one : OperationsOfEveryKind()) {
    all.push_back({one.name, one.operation});
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(At, Crashes, testing::ValuesIn(EndangeredOperations()),
                         [](const testing::TestParamInfo<Endangered>& one) {
                           return one.param.name;
                         });

}  // namespace
}  // namespace qorhost::test

// Another file is put over a store's own while programs have it open, or while its log is left:
// what is there then is never mixed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

#include "host/store/sqlite/schema.h"
#include "host/store/store_error.h"
#include "tests/host/concurrency/racing_processes.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"
#include "tests/host/store/whole_copy.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// Makes a store one of the schema before the seal.
const std::string kToSchema4 =
    "UPDATE StoreSeal SET UnitKey=NULL; DROP VIEW CurrentVersions; DROP TABLE StoreSeal; "
    "ALTER TABLE AuditEntries DROP COLUMN Hash; PRAGMA user_version=4";

std::string BytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// As a person does it: another process, which writes into the file that stands there.
void CopyOver(const fs::path& from, const fs::path& to) {
  const std::vector<Finished> runs = Race("/bin/cp", {{from.string(), to.string()}});
  ASSERT_EQ(runs.front().status, 0) << runs.front().said;
}

class OverwrittenStores : public testing::Test {
 protected:
  void SetUp() override {
    MakeBuilding(file_, kRoomy);
    {
      Seat carl(file_, "carl");
      ASSERT_TRUE(RunAt(EditPhone("101", "555-0"), carl).done());
    }
    fs::copy_file(file_, old_);
    Seat carl(file_, "carl");
    ASSERT_TRUE(RunAt(IssueCards("201", "210"), carl).done());
    ASSERT_TRUE(RunAt(EditPhone("101", "555-1"), carl).done());
  }

  [[nodiscard]] fs::path Log() const { return folder_.File("building.db-wal"); }
  [[nodiscard]] fs::path Index() const { return folder_.File("building.db-shm"); }
  /// What a person is told to do, and then the store must be the copy.
  void ExpectTheCopyWithoutItsLog() const {
    fs::remove(Log());
    fs::remove(Index());
    EXPECT_EQ(BytesOf(file_), BytesOf(old_)) << "the copy was written";
  }
  static void ExpectRefused(const Told& told) {
    EXPECT_EQ(told.ending, Ending::kFailed) << TextOf(told);
    EXPECT_THAT(TextOf(told), HasSubstr("do not belong together"));
  }
  /// The copy with what was done to it since.
  void ExpectTheCopyAnd(const SeatOperation& operation) const {
    sqlite::Database found = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
    EXPECT_EQ(WrongIn(found, kRoomy), std::vector<std::string>());
    Seat dora(old_, "dora");
    ASSERT_TRUE(RunAt(operation, dora).done());
    EXPECT_EQ(found.Number("SELECT count(*) FROM CredentialBank"),
              dora.database().Number("SELECT count(*) FROM CredentialBank"));
  }
  void IssueInAnotherProcess(const char* first, const char* last) const {
    const std::vector<Finished> runs =
        Race(QORHOST_PROGRAM, {{"--db", file_.string(), "credentials", "add", "--type", "card26",
                                "--start", first, "--end", last, "--facility", "7"}});
    ASSERT_EQ(runs.front().status, 0) << runs.front().said;
  }
  /// As a killed program leaves them.
  void LeaveFilesIn(const fs::path& folder) const {
    fs::create_directory(folder);
    for (const char* name : {"building.db", "building.db-wal"}) {
      fs::copy_file(folder_.File(name), folder / name);
    }
  }

  TemporaryFolder folder_;
  fs::path file_ = folder_.File("building.db");
  fs::path old_ = folder_.File("old.db");
};

TEST_F(OverwrittenStores, ACopyUnderAnOpenProgramWhoseLogIsEmptyIsToldAsAChange) {
  Seat anna(file_, "anna");
  const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
  CopyOver(old_, file_);
  const Told told = desk.run();
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  const Told next = RunAt(IssueCards("301", "303"), anna);
  EXPECT_TRUE(next.done()) << TextOf(next);
  ExpectTheCopyAnd(IssueCards("301", "303"));
}

TEST_F(OverwrittenStores, ACopyThatComesWhileOthersHaveEmptiedTheLogIsToldAsAChange) {
  Seat anna(file_, "anna");
  ASSERT_TRUE(RunAt(EditPhone("102", "555-8"), anna).done());
  Seat bert(file_, "bert");
  ASSERT_TRUE(RunAt(IssueCards("211", "213"), bert).done());
  bert.database().Run("PRAGMA wal_checkpoint(TRUNCATE)");
  const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
  CopyOver(old_, file_);
  EXPECT_EQ(desk.run().ending, Ending::kStale);
  sqlite::Database found = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
  EXPECT_EQ(WrongIn(found, kRoomy), std::vector<std::string>());
}

TEST_F(OverwrittenStores, ACopyUnderAnOpenProgramWhoseLogHoldsChangesIsNotWritten) {
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
    CopyOver(old_, file_);
    ExpectRefused(desk.run());
    ExpectRefused(RunAt(ImportCodes("301,555-1\n"), anna));
    EXPECT_EQ(BytesOf(file_), BytesOf(old_));
  }
  ExpectTheCopyWithoutItsLog();
}

TEST_F(OverwrittenStores, ACopyUnderAnOpenProgramWhoseLogIsInTheFileIsNotWritten) {
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    anna.database().Run("PRAGMA wal_checkpoint(PASSIVE)");
    const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
    CopyOver(old_, file_);
    ExpectRefused(desk.run());
  }
  ExpectTheCopyWithoutItsLog();
}

TEST_F(OverwrittenStores, WhatTheLogBeganWithIsNotTakenForWhatWasPutIntoTheFileSince) {
  Seat anna(file_, "anna");
  ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
  CopyOver(file_, old_);  // the file alone: as it was before its log
  anna.database().Run("PRAGMA wal_checkpoint(PASSIVE)");
  const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
  CopyOver(old_, file_);
  ExpectRefused(desk.run());
}

TEST_F(OverwrittenStores, TheSameFilePutBackUnderItsLogIsTheSameStore) {
  Seat anna(file_, "anna");
  ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
  CopyOver(file_, old_);
  const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
  CopyOver(old_, file_);
  EXPECT_TRUE(desk.run().done());
  EXPECT_EQ(WrongIn(anna.database(), kRoomy), std::vector<std::string>());
}

TEST_F(OverwrittenStores, ACopyThatComesDuringAnOperationIsNotWritten) {
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
    bool copied = false;
    anna.BeforeStatements([&](int) {
      if (!copied && anna.session().sql().work().written() > 0) {
        copied = true;
        CopyOver(old_, file_);
      }
    });
    ExpectRefused(desk.run());
    EXPECT_TRUE(copied);
  }
  ExpectTheCopyWithoutItsLog();
}

TEST_F(OverwrittenStores, ACopyThatComesDuringAnOperationIsNotWrittenWithAnEmptyLogEither) {
  {
    Seat anna(file_, "anna");
    const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
    bool copied = false;
    anna.BeforeStatements([&](int) {
      if (!copied && anna.session().sql().work().written() > 0) {
        copied = true;
        CopyOver(old_, file_);
      }
    });
    ExpectRefused(desk.run());
    EXPECT_TRUE(copied);
  }
  ExpectTheCopyWithoutItsLog();
}

TEST_F(OverwrittenStores, ClosingDoesNotWriteOverTheCopy) {
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    CopyOver(old_, file_);
  }
  ExpectTheCopyWithoutItsLog();
}

TEST_F(OverwrittenStores, AFileWhoseLogWasTakenAwayIsNotWrittenByThoseWhoHadItOpen) {
  for (const bool withIndex : {false, true}) {
    SCOPED_TRACE(withIndex);
    {
      Seat anna(file_, "anna");
      ASSERT_TRUE(
          RunAt(withIndex ? RenumberCard("103", 300) : IssueCards("301", "310"), anna).done());
      const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
      CopyOver(old_, file_);
      fs::remove(Log());
      if (withIndex) {
        fs::remove(Index());
        IssueInAnotherProcess("401", "402");
      }
      ExpectRefused(desk.run());
    }
    if (!withIndex) {
      ExpectTheCopyWithoutItsLog();
    }
  }
  ExpectTheCopyAnd(IssueCards("401", "402"));
}

TEST_F(OverwrittenStores, ACopyOverAStoreWhoseLogIsLeftIsRefusedUntilTheLogIsMovedAway) {
  const fs::path left = folder_.File("left");
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    LeaveFilesIn(left);
  }
  CopyOver(old_, left / "building.db");
  const std::string log = BytesOf(left / "building.db-wal");
  for (const OpenMode mode : {OpenMode::kReadOnly, OpenMode::kReadWrite, OpenMode::kCreate}) {
    try {
      (void)sqlite::OpenDatabase(left / "building.db", mode);
      FAIL() << "it was opened";
    } catch (const StoreError& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("do not belong together"));
      EXPECT_THAT(failure.what(), HasSubstr("move the log"));
    }
    EXPECT_EQ(BytesOf(left / "building.db"), BytesOf(old_));
    EXPECT_EQ(BytesOf(left / "building.db-wal"), log);
  }
  const std::vector<Finished> init =
      Race(QORHOST_PROGRAM, {{"--db", (left / "building.db").string(), "init", "--force"}});
  EXPECT_NE(init.front().status, 0);
  EXPECT_EQ(BytesOf(left / "building.db"), BytesOf(old_));
  fs::remove(left / "building.db-wal");
  fs::remove(left / "building.db-shm");
  sqlite::Database copy = sqlite::OpenDatabase(left / "building.db", OpenMode::kReadWrite);
  EXPECT_EQ(WrongIn(copy, kRoomy), std::vector<std::string>());
  EXPECT_EQ(copy.Number("SELECT count(*) FROM CredentialBank"), 4);
}

TEST_F(OverwrittenStores, ACopyThatIsRenamedBesideALeftLogIsRefused) {
  Seat anna(file_, "anna");
  ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
  const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
  fs::copy_file(old_, folder_.File("new.db"));
  fs::rename(folder_.File("new.db"), file_);
  const Told told = desk.run();
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  EXPECT_EQ(told.cause, StaleCause::kStoreReplaced);
  EXPECT_THROW((void)sqlite::OpenDatabase(file_, OpenMode::kReadWrite), StoreError);
  EXPECT_EQ(BytesOf(file_), BytesOf(old_));
}

TEST_F(OverwrittenStores, AnOlderStoreWithoutASealIsNotMixedWithALog) {
  {
    sqlite::Database older(old_, OpenMode::kReadWrite);
    older.Run("PRAGMA journal_mode=DELETE; " + kToSchema4);
  }
  const fs::path left = folder_.File("left");
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    LeaveFilesIn(left);
  }
  CopyOver(old_, left / "building.db");
  EXPECT_THROW((void)sqlite::OpenDatabase(left / "building.db", OpenMode::kReadWrite), StoreError);
  EXPECT_EQ(BytesOf(left / "building.db"), BytesOf(old_));
}

TEST_F(OverwrittenStores, AnOlderStoreIsBroughtUpToDateAndFoundAgainWithItsLogLeft) {
  const fs::path left = folder_.File("left");
  {
    sqlite::Database older(file_, OpenMode::kReadWrite);
    older.Run(kToSchema4);
  }
  {
    Seat anna(file_, "anna");
    LeaveFilesIn(left);
    EXPECT_NO_THROW((void)sqlite::OpenDatabase(left / "building.db", OpenMode::kReadWrite));
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    fs::remove_all(left);
    LeaveFilesIn(left);
  }
  EXPECT_NO_THROW((void)sqlite::OpenDatabase(left / "building.db", OpenMode::kReadWrite));
}

/// None of what the engine does with a log by itself is taken for another file.
TEST_F(OverwrittenStores, ALogThatIsCopiedAndBegunAnewStaysTheStoresOwn) {
  Seat anna(file_, "anna");
  Seat bert(file_, "bert");
  int number = 400;
  for (const char* how : {"PASSIVE", "FULL", "RESTART", "TRUNCATE"}) {
    for (Seat* who : {&anna, &bert}) {
      SCOPED_TRACE(how);
      const PreparedDesk desk = EditPhone("101", "555-" + std::to_string(number)).prepare(anna);
      const PreparedDesk other = EditPhone("102", "555-" + std::to_string(number)).prepare(bert);
      who->database().Run(std::string("PRAGMA wal_checkpoint(") + how + ")");
      EXPECT_TRUE(desk.run().done());
      who->database().Run(std::string("PRAGMA wal_checkpoint(") + how + ")");
      EXPECT_TRUE(other.run().done());
      const Told renumbered =
          RunAt(RenumberCard(number == 400 ? "103" : std::to_string(number - 1), number), *who);
      EXPECT_TRUE(renumbered.done()) << TextOf(renumbered);
      ++number;
      EXPECT_NO_THROW((void)sqlite::OpenDatabase(file_, OpenMode::kReadOnly));
    }
  }
  EXPECT_EQ(WrongIn(anna.database(), kRoomy), std::vector<std::string>());
}

TEST_F(OverwrittenStores, AReaderThatKeepsPartOfALogOutOfTheFileDisturbsNobody) {
  Seat anna(file_, "anna");
  ASSERT_TRUE(RunAt(EditPhone("101", "555-3"), anna).done());
  sqlite::Database reader = sqlite::OpenDatabase(file_, OpenMode::kReadOnly);
  reader.Run("BEGIN");
  (void)reader.Number("SELECT count(*) FROM DOORS");
  for (const char* phone : {"555-4", "555-5"}) {
    ASSERT_TRUE(RunAt(EditPhone("101", phone), anna).done());
    anna.database().Run("PRAGMA wal_checkpoint(PASSIVE)");
    Seat bert(file_, "bert");
    EXPECT_TRUE(RunAt(EditPhone("102", phone), bert).done());
  }
}

TEST_F(OverwrittenStores, ACopyFromBeforeALogThatIsPartlyInTheFileIsRefused) {
  const fs::path morning = folder_.File("morning.db");
  fs::copy_file(file_, morning);
  Seat anna(file_, "anna");
  const PreparedDesk desk = EditPhone("103", "555-2").prepare(anna);
  Seat bert(file_, "bert");
  ASSERT_TRUE(RunAt(EditPhone("101", "555-3"), bert).done());
  sqlite::Database reader = sqlite::OpenDatabase(file_, OpenMode::kReadOnly);
  reader.Run("BEGIN");
  (void)reader.Number("SELECT count(*) FROM DOORS");
  bert.database().Run("PRAGMA wal_checkpoint(PASSIVE)");
  ASSERT_TRUE(RunAt(RenumberCard("103", 300), bert).done());
  ASSERT_NE(BytesOf(file_), BytesOf(morning)) << "nothing was copied";
  EXPECT_NO_THROW((void)sqlite::OpenDatabase(file_, OpenMode::kReadWrite));
  CopyOver(morning, file_);
  EXPECT_THROW((void)sqlite::OpenDatabase(file_, OpenMode::kReadOnly), StoreError);
  ExpectRefused(desk.run());
  ExpectRefused(RunAt(EditPhone("102", "555-4"), bert));
  EXPECT_EQ(BytesOf(file_), BytesOf(morning));
}

// A VACUUM moves the tables to other pages.
TEST_F(OverwrittenStores, AVacuumIsNotTakenForAnotherFile) {
  const fs::path left = folder_.File("left");
  Seat anna(file_, "anna");
  Seat bert(file_, "bert");
  sqlite3_limit(bert.database().handle(), SQLITE_LIMIT_ATTACHED, 1);  // which VACUUM needs
  bert.database().Run("CREATE TABLE Gone (x); INSERT INTO Gone VALUES (zeroblob(100000))");
  for (const char* checkpoint : {"", "PRAGMA wal_checkpoint(PASSIVE)"}) {
    SCOPED_TRACE(checkpoint);
    for (const std::string phone : {"555-21", "555-22"}) {
      const PreparedDesk desk =
          EditPhone("101", phone + (*checkpoint == '\0' ? "8" : "9")).prepare(anna);
      ASSERT_TRUE(RunAt(EditPhone("102", phone), bert).done());
      bert.database().Run("DROP TABLE IF EXISTS Gone");
      bert.database().Run("VACUUM");
      bert.database().Run(checkpoint);
      LeaveFilesIn(left);
      EXPECT_NO_THROW((void)sqlite::OpenDatabase(left / "building.db", OpenMode::kReadWrite));
      fs::remove_all(left);
      if (phone == "555-22") {
        const Told others = RunAt(EditPhone("103", phone), bert);
        EXPECT_TRUE(others.done()) << TextOf(others);
      }
      const Told told = desk.run();
      EXPECT_TRUE(told.done()) << TextOf(told);
      EXPECT_NO_THROW((void)sqlite::OpenDatabase(file_, OpenMode::kReadWrite));
    }
  }
  EXPECT_EQ(WrongIn(anna.database(), kRoomy), std::vector<std::string>());
}

TEST_F(OverwrittenStores, ACopyFromBeforeTheFirstSealIsNotMixedWithTheLogBehindIt) {
  const fs::path unsealed = folder_.File("unsealed.db");
  const fs::path left = folder_.File("left");
  {
    sqlite::Database older(file_, OpenMode::kReadWrite);
    older.Run(kToSchema4 + "; PRAGMA wal_checkpoint(TRUNCATE)");
  }
  fs::copy_file(file_, unsealed);
  {
    Seat anna(file_, "anna");
    ASSERT_TRUE(RunAt(IssueCards("301", "310"), anna).done());
    LeaveFilesIn(left);
  }
  CopyOver(unsealed, left / "building.db");
  EXPECT_THROW((void)sqlite::OpenDatabase(left / "building.db", OpenMode::kReadWrite), StoreError);
  EXPECT_EQ(BytesOf(left / "building.db"), BytesOf(unsealed));
}

TEST_F(OverwrittenStores, AWholeStoreThatIsPutIntoAnOpenOneThroughTheEngineIsTheStore) {
  Seat anna(file_, "anna");
  const PreparedDesk desk = EditPhone("101", "555-2").prepare(anna);
  sqlite::Database source(old_, OpenMode::kReadWrite);
  Seat bert(file_, "bert");
  CopyWhole(source, bert.database());
  EXPECT_EQ(desk.run().ending, Ending::kStale);
  EXPECT_TRUE(RunAt(EditPhone("101", "555-2"), anna).done());
  EXPECT_EQ(WrongIn(anna.database(), kRoomy), std::vector<std::string>());
}

}  // namespace
}  // namespace qorhost::test

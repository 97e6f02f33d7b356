// What the commands for history, backup and check print.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class HistoryCommands : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    ASSERT_EQ(Run({"credentials", "add", "--unit", "2", "--type", "card26", "--start", "500",
                   "--end", "510", "--facility", "7"})
                  .status,
              0);
  }
};

TEST_F(HistoryCommands, ACapacityIsToldAsTheNumberThatItIs) {
  const std::vector<std::string> edit{"units", "edit", "1", "--capacity", "498", "--yes"};
  ASSERT_EQ(Run(edit).status, 0);
  const std::string entry = Rows({"history", "list"}).back()["entry"].dump();
  EXPECT_THAT(Run({"history", "show", entry}).out, testing::ContainsRegex("TOTAL +[0-9]+ +498\n"));
  bool found = false;
  for (const nlohmann::json& row : Rows({"history", "show", entry})) {
    if (row["field"] == "TOTAL") {
      found = true;
      EXPECT_TRUE(row["before"].is_number()) << row;
      EXPECT_EQ(row["after"], 498);
    }
  }
  EXPECT_TRUE(found);
  ASSERT_EQ(Run({"sql", "--write", "UPDATE UNITTYPES SET TOTAL='%'"}).status, 0);
  EXPECT_THAT(Run({"history", "show", Rows({"history", "list"}).back()["entry"].dump()}).out,
              testing::ContainsRegex("TOTAL +498 +%\n"))
      << "what is none stays as it is stored";
}

TEST_F(HistoryCommands, ListShowAndUndo) {
  const nlohmann::json rows = Rows({"history", "list", "--limit", "1"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0]["what"], "issue Standard 26-Bit Card 500 to 510");
  EXPECT_EQ(rows[0]["rows"], "CredentialBank: 11 new");
  const std::string entry = rows[0]["entry"].dump();

  EXPECT_THAT(Run({"history", "show", entry}).out, Not(HasSubstr("PINNo")));
  const nlohmann::json fields = Rows({"history", "show", entry});
  EXPECT_TRUE(std::any_of(fields.begin(), fields.end(), [](const nlohmann::json& row) {
    return row["field"] == "number" && row["after"] == 500;
  }));
  const Outcome trial = Run({"history", "undo", entry, "--dry-run"});
  EXPECT_EQ(trial.status, 0) << trial.err;
  EXPECT_THAT(trial.out, HasSubstr("11 rows; nothing was changed"));
  EXPECT_EQ(Rows({"history", "list", "--limit", "1"})[0]["entry"].dump(), entry);

  const Outcome undone = Run({"history", "undo", entry});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_THAT(undone.out, HasSubstr("11 rows as before"));
  const Outcome again = Run({"history", "undo", entry});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("cannot be undone: row"));
}

TEST_F(HistoryCommands, WrongWordsSayWhatIsWanted) {
  EXPECT_THAT(Run({"history", "undo", "999"}).err, HasSubstr("there is no entry '999'"));
  EXPECT_EQ(Run({"history", "undo", "999"}).status, 2);
  EXPECT_THAT(Run({"history", "list", "--since", "soon"}).err, HasSubstr("--since 'soon'"));
  EXPECT_THAT(Run({"history", "list", "--limit", "0"}).err, HasSubstr("whole number from 1"));
  EXPECT_THAT(Run({"history", "check", "--head", "1"}).err, HasSubstr("UNIT:ENTRY:HASH"));
}

TEST_F(HistoryCommands, AWrongInputIsNamedAndWhereToLook) {
  EXPECT_EQ(Run({"history", "undo", "9999"}).err,
            "qorhost: there is no entry '9999' in the history: 'qorhost history list' has their "
            "numbers\n");
  const Outcome head = Run({"history", "check", "--head", "2:1"});
  EXPECT_EQ(head.status, 2);
  EXPECT_EQ(head.err,
            "qorhost: --head '2:1' is no head, which is UNIT:ENTRY:HASH: 'qorhost history check' "
            "prints them\n");
  EXPECT_THAT(Run({"history", "list", "--since", "7 days"}).err,
              HasSubstr("; or how many days ago: 7d is from a week ago on"));
  const Outcome since = Run({"history", "list", "--since", "100000d"});
  EXPECT_EQ(since.status, 2);
  EXPECT_EQ(since.err, "qorhost: --since '100000d' is no number of days: write 0d to 99999d\n");
}

TEST_F(HistoryCommands, TheWholeStoreIsUndoneWithConsentAlone) {
  const std::string first = Rows({"history", "list"})[0]["entry"].dump();
  const Outcome refused = Run({"history", "undo", first});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("concerns the whole store"));
}

TEST_F(HistoryCommands, AHeadOfABackupIsComparedLater) {
  const nlohmann::json backup =
      nlohmann::json::parse(Run({"backup", File("backup.db"), "--json"}).out);
  ASSERT_EQ(backup["heads"].size(), 3U);
  const std::string head = backup["heads"][1];
  EXPECT_THAT(head, StartsWith("2:"));
  EXPECT_EQ(Run({"history", "check", "--head", head}).status, 0);
  const Outcome other = Run({"history", "check", "--head", head.substr(0, head.size() - 1) + "g"});
  EXPECT_EQ(other.status, 1);
  EXPECT_THAT(other.err, HasSubstr("of unit 2 is not the one that was noted"));
}

TEST_F(HistoryCommands, ABackupIsRestored) {
  EXPECT_EQ(Run({"backup", File("backup.db")}).status, 0);
  const Outcome again = Run({"backup", File("backup.db")});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("replace it with --force"));
  ASSERT_EQ(Run({"history", "undo", "2"}).status, 0);
  const Outcome restored = Run({"restore", File("backup.db")});
  EXPECT_EQ(restored.status, 0) << restored.err;
  EXPECT_THAT(restored.out, HasSubstr("The store as it was is "));
  EXPECT_EQ(Rows({"history", "list"}).size(), 2U);
}

TEST_F(HistoryCommands, ACheckTellsHowToMend) {
  EXPECT_THAT(Run({"check"}).out, StartsWith("Nothing is wrong"));
  ASSERT_EQ(Run({"sql", "--write", "UPDATE Tenants SET CREDENTIALID2=99999 WHERE RID=62"}).status,
            0);
  const Outcome found = Run({"check"});
  EXPECT_EQ(found.status, 1);
  EXPECT_THAT(found.out, HasSubstr("which is not there"));
  EXPECT_EQ(Run({"check", "--unit", "1"}).status, 0);
}

/// The demo building with the code 0101 of unit 2 renumbered in entry 2.
class History : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    ASSERT_EQ(Run({"--unit", "2", "dircodes", "renumber", "101", "180"}).status, 0);
  }
  [[nodiscard]] std::string Code() {
    return Rows({"sql", "SELECT DIRECTORYCODE FROM DirectoryCode WHERE RID=11"})[0].dump();
  }
};

TEST_F(History, UndoNamesTheUnitThatItChanges) {
  const Outcome trial = Run({"history", "undo", "2", "--dry-run"});
  EXPECT_EQ(trial.status, 0) << trial.err;
  EXPECT_THAT(trial.out, EndsWith(" can be undone in unit 2, Linden Park: 1 row; nothing was "
                                  "changed\n"));
  EXPECT_THAT(Code(), HasSubstr("180"));
  const Outcome undone = Run({"history", "undo", "2"});
  EXPECT_EQ(undone.status, 0) << undone.err;
  EXPECT_THAT(undone.out, EndsWith(" undone in unit 2, Linden Park: 1 row as before\n"));
  EXPECT_THAT(Code(), HasSubstr("101"));
}

TEST_F(History, UndoOfTheWholeStoreNamesNoUnit) {
  ASSERT_EQ(Run({"sql", "--write", "UPDATE Units SET UNITNAME='Annex' WHERE UNITKEY=3"}).status, 0);
  EXPECT_THAT(Run({"history", "undo", "3", "--yes"}).out,
              EndsWith(" UTC) undone: 1 row as before\n"));
}

TEST_F(History, AnEntryOfAnotherUnitThanTheNamedOneStays) {
  const Outcome outcome = Run({"--unit", "3", "history", "undo", "2"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "qorhost: entry 2 is of unit 2, not of unit 3\n");
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(Code(), HasSubstr("180"));
  EXPECT_EQ(Run({"--unit", "2", "history", "undo", "2"}).status, 0);
}

TEST_F(History, AnUndoWhoseOutputCannotBeWrittenIsToldAsStored) {
  outputFails_ = true;
  EXPECT_EQ(Run({"history", "undo", "2", "--dry-run"}).err,
            "qorhost: the output could not be written\n");
  EXPECT_EQ(Run({"history", "undo", "2"}).err,
            "qorhost: the output could not be written; the change is stored\n");
}

}  // namespace
}  // namespace qorhost::test

// Every command that writes: what it only tries, and what it does without a word.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "host/store/sqlite/database.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

using Words = std::vector<std::string>;

/// A command that writes in a demo store; FILE(x) stands for a file of the test's own.
struct WritingRow {
  const char* name;
  Words words;
};

const std::vector<WritingRow> kWriting{
    {"CredentialsAdd",
     {"credentials", "add", "--type", "card26", "--start", "500", "--end", "510", "--facility",
      "7"}},
    {"CredentialsAddWithTenants",
     {"credentials", "add", "--type", "card26", "--start", "500", "--facility", "7",
      "--with-tenants"}},
    {"CredentialsEdit", {"credentials", "edit", "9100", "--door", "1"}},
    {"CredentialsEditTwo", {"credentials", "edit", "9100", "9101", "--door", "1"}},
    {"CredentialsAssign", {"credentials", "assign", "9100", "Byrne Ana"}},
    {"CredentialsAssignTwo", {"credentials", "assign", "9100", "9101", "Byrne Ana"}},
    {"CredentialsRenumber", {"credentials", "renumber", "9100", "9109"}},
    {"CredentialsReplace", {"credentials", "replace", "9100", "9102"}},
    {"CredentialsDelete", {"credentials", "delete", "9100"}},
    {"CredentialsDeleteTwo", {"credentials", "delete", "9100", "9101"}},
    {"CredentialsImport", {"credentials", "import", "-"}},
    {"DirCodesAdd", {"dircodes", "add", "888", "--phone", "1"}},
    {"DirCodesEdit", {"dircodes", "edit", "101", "--phone", "555-9999"}},
    {"DirCodesEditTwo", {"dircodes", "edit", "101", "102", "--phone", "555-9999"}},
    {"DirCodesRenumber", {"dircodes", "renumber", "101", "181"}},
    {"DirCodesDelete", {"dircodes", "delete", "101"}},
    {"DirCodesDeleteTwo", {"dircodes", "delete", "101", "102"}},
    {"DirCodesSync", {"dircodes", "sync", "--from", "FILE(unit.txt)"}},
    {"TenantsAdd", {"tenants", "add", "--last", "Tanaka"}},
    {"TenantsEdit", {"tenants", "edit", "Byrne Ana", "--last", "Burns"}},
    {"TenantsEnd", {"tenants", "end", "Byrne Ana", "--on", "2026-06-30"}},
    {"TenantsDelete", {"tenants", "delete", "Byrne Ana"}},
    {"TenantsImport", {"tenants", "import", "-"}},
    {"ReportDelete", {"report", "credentials", "--delete", "RIDS"}},
    {"UnitsAdd", {"units", "add", "Annex", "--type", "Entry Panel 500"}},
    {"UnitsEdit", {"units", "edit", "2", "--name", "Linden Park East"}},
    {"UnitsDelete", {"units", "delete", "2"}},
    {"DoorsEdit", {"doors", "edit", "4", "--name", "Yard"}},
    {"SchedulesAdd", {"schedules", "add", "Cleaning"}},
    {"SchedulesEdit", {"schedules", "edit", "Evenings", "--name", "Nights"}},
    {"SchedulesDelete", {"schedules", "delete", "Evenings"}},
    {"SchedulesDeleteTwo", {"schedules", "delete", "Evenings", "Mornings"}},
    {"StepsDone", {"steps", "done"}},
    {"StepsDoneOne", {"steps", "done", "STEP"}},
    {"HistoryUndo", {"history", "undo", "ENTRY"}},
    {"Sql", {"sql", "--write", "UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=2 AND DOORID=4"}},
    {"SqlScript", {"sql", "--write", "--file", "FILE(changes.sql)"}},
    {"InitForce", {"init", "--demo", "--force"}},
    {"Restore", {"restore", "FILE(copy.db)"}},
};

class Writing : public RunFixture, public testing::WithParamInterface<WritingRow> {
 protected:
  static void SetUpTestSuite() { prepared_ = std::make_unique<TemporaryFolder>(); }
  static void TearDownTestSuite() { prepared_.reset(); }

  /// Every test has a copy of what the first one prepares.
  void SetUp() override {
    unitOfEnvironment_ = "2";
    if (std::filesystem::is_empty(prepared_->path())) {
      ASSERT_NO_FATAL_FAILURE(Prepare());
      CopyFiles(folder(), prepared_->path());
    } else {
      CopyFiles(prepared_->path(), folder());
    }
    Fill();
  }

  void Prepare() {
    InitDemo();
    for (const Words& words :
         std::vector<Words>{{"credentials", "add", "--type", "card26", "--start", "9100", "--end",
                             "9104", "--facility", "7"},
                            {"tenants", "add", "--last", "Byrne", "--first", "Ana"},
                            {"schedules", "add", "Evenings"},
                            {"schedules", "add", "Mornings"},
                            {"dircodes", "export", "--to", File("unit.txt")},
                            {"backup", File("copy.db")},
                            {"doors", "edit", "3", "--name", "Cellar"}}) {
      const Outcome outcome = Run(words);
      ASSERT_EQ(outcome.status, 0) << words.front() << outcome.err;
    }
    ASSERT_EQ(Run({"dircodes", "add", "889", "--phone", "2"}).status, 0) << "for sync to delete";
    std::ofstream(File("changes.sql")) << "UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=2;\n"
                                          "DELETE FROM DOORS WHERE UNITKEY=2 AND DOORID=4;\n";
  }

  /// What the row's stand-ins stand for.
  void Fill() {
    words_ = GetParam().words;
    for (std::string& word : words_) {
      if (word.starts_with("FILE(")) {
        word = File(word.substr(5, word.size() - 6));
      } else if (word == "STEP") {
        word = Rows({"steps", "list", "--unit", "2"})[0]["step"].dump();
      } else if (word == "ENTRY") {
        const nlohmann::json entries = Rows({"history", "list", "--subject", "Cellar"});
        word = std::to_string(static_cast<int>(entries.back()["entry"].get<double>()));
      } else if (word == "RIDS") {
        const nlohmann::json cards =
            Rows({"sql", "SELECT RID FROM CredentialBank WHERE UnitKey=2 AND PINNo=9100"});
        word = "rid:" + cards[0]["RID"].dump();
      }
    }
  }
  /// Every row of the store, the entries of its history too.
  [[nodiscard]] std::string Everything() {
    const sqlite::Database store(File("building.db"), OpenMode::kReadOnly);
    std::string rows;
    for (sqlite::Statement tables(store, "SELECT name FROM sqlite_schema WHERE type='table'");
         tables.Step();) {
      rows += tables.Text(0);
      rows += '\n';
      for (sqlite::Statement row(store, "SELECT * FROM " + std::string(tables.Text(0)));
           row.Step();) {
        for (int column = 0; column < row.columnCount(); ++column) {
          rows += row.IsNull(column) ? std::string_view("NULL") : row.Text(column);
          rows += '|';
        }
        rows += '\n';
      }
    }
    return rows;
  }
  [[nodiscard]] std::string Input() const {
    if (words_.at(1) != "import") {
      return {};
    }
    return words_.front() == "tenants"
               ? "Last Name,First Name\nTanaka,Yui\n"
               : "Credential Type,Card Number,Facility Code\ncard26,600,7\n";
  }

  Words words_;

 private:
  static std::unique_ptr<TemporaryFolder> prepared_;
};

std::unique_ptr<TemporaryFolder> Writing::prepared_;

TEST_P(Writing, ATrialTellsSomethingAndChangesNothing) {
  const std::string before = Everything();
  Words words = words_;
  words.emplace_back("-n");
  const Outcome outcome = Run(words, Input());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out,
              testing::AnyOf(HasSubstr("othing was changed"), HasSubstr("othing was written")))
      << outcome.err;
  EXPECT_TRUE(Everything() == before);
}

TEST_P(Writing, WhatATrialTellsAsJsonSaysThatNothingWasStored) {
  Words words = words_;
  words.insert(words.begin(), {"--json"});
  words.emplace_back("--dry-run");
  const Outcome outcome = Run(words, Input());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const nlohmann::json told = nlohmann::json::parse(outcome.out);
  EXPECT_EQ(told["dry_run"], true) << outcome.out;
  if (words_.at(1) == "import") {
    EXPECT_EQ(told["done"], 1) << "an import counts what it would take in";
    return;
  }
  EXPECT_EQ(told["stored"], false) << outcome.out;
}

TEST_P(Writing, QuietlyDoneItPrintsNothing) {
  const std::string before = Everything();
  Words words = words_;
  words.insert(words.begin(), {"--quiet", "--yes"});
  const Outcome outcome = Run(words, Input());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_FALSE(Everything() == before);
}

INSTANTIATE_TEST_SUITE_P(Commands, Writing, testing::ValuesIn(kWriting),
                         [](const auto& row) { return std::string(row.param.name); });

class Trials : public RunFixture {
 protected:
  void SetUp() override {
    InitDemo();
    unitOfEnvironment_ = "2";
  }
};

TEST_F(Trials, TellEveryFieldThatWouldChange) {
  const Outcome tried = Run({"dircodes", "edit", "101", "--phone", "555-9999", "-n", "--json"});
  const nlohmann::json told = nlohmann::json::parse(tried.out);
  EXPECT_EQ(told["changed"].size(), 1U);
  bool found = false;
  for (const nlohmann::json& change : told["changes"]) {
    found = found || (change["table"] == "DirectoryCode" && change["field"] == "phone" &&
                      change["before"] == "555-0100" && change["after"] == "555-9999");
  }
  EXPECT_TRUE(found) << tried.out;
}

TEST_F(Trials, TellHowManyStepsWouldBeQueued) {
  EXPECT_THAT(Run({"--unit", "2", "dircodes", "renumber", "101", "180", "-n"}).out,
              testing::HasSubstr("1 changed, and queued 1 programming step. This was a trial"));
  EXPECT_THAT(
      Run({"--unit", "2", "tenants", "edit", "rid:61", "rid:62", "--schedule1", "0", "-n"}).out,
      testing::EndsWith(", and queued 2 programming steps. Nothing was changed.\n"));
  // A step that waits already makes way for the new one.
  ASSERT_EQ(Run({"--unit", "2", "tenants", "edit", "rid:61", "--schedule1", "0"}).status, 0);
  EXPECT_THAT(
      Run({"--unit", "2", "tenants", "edit", "rid:61", "rid:62", "--schedule2", "0", "-n"}).out,
      testing::EndsWith(", and queued 2 programming steps. Nothing was changed.\n"));
  ASSERT_EQ(Run({"--unit", "2", "steps", "done"}).status, 0);
  EXPECT_THAT(Rows({"--unit", "2", "steps", "list"}), testing::IsEmpty());
}

TEST_F(Trials, TakeQuestionsAsAnsweredYesUnlessNoIsSaid) {
  const Outcome taken = Run({"dircodes", "delete", "101", "-n"});
  EXPECT_EQ(taken.status, 0);
  EXPECT_THAT(taken.err, HasSubstr("Do you wish to continue?\nTaken as Yes: this is a trial."));
  const Outcome refused = Run({"dircodes", "delete", "101", "-n", "--no"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
}

TEST_F(Trials, OfWhatIsStoredSoAlreadySaySo) {
  const Outcome outcome = Run({"dircodes", "renumber", "101", "101", "-n"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("nothing was changed"));
}

TEST_F(Trials, OfWhatIsRefusedAreRefused) {
  const Outcome outcome = Run({"dircodes", "renumber", "101", "102", "-n"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
}

TEST_F(Trials, OfABackupLeaveNoFile) {
  const Outcome outcome = Run({"backup", File("copy.db"), "-n"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("nothing was changed"));
  EXPECT_FALSE(std::filesystem::exists(File("copy.db")));
  EXPECT_EQ(Run({"backup", File("copy.db")}).status, 0);
  EXPECT_EQ(Run({"backup", File("copy.db"), "-n"}).status, 1) << "it is there already";
}

TEST_F(Trials, OfANewStoreLeaveNoFile) {
  const Outcome outcome = Run({"--db", File("new.db"), "init", "-n"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(File("new.db")));
}

TEST_F(Trials, OfSqlNeedNoLeaveToWrite) {
  EXPECT_EQ(Run({"sql", "DELETE FROM DOORS", "-n"}).status, 0);
  EXPECT_EQ(Rows({"sql", "SELECT DOORID FROM DOORS WHERE UNITKEY=2"}).size(), 4U);
}

TEST_F(Trials, OfSqlCountRowsOfWhichTheHistoryTellsNothing) {
  ASSERT_EQ(Run({"tenants", "edit", "rid:61", "rid:62", "--schedule1", "0"}).status, 0);
  const std::size_t steps = Rows({"sql", "SELECT RID FROM ProgramSteps"}).size();
  ASSERT_GT(steps, 1U);
  const std::string counted = std::to_string(steps) + " rows";
  EXPECT_EQ(Run({"sql", "--write", "DELETE FROM ProgramSteps", "-n"}).out,
            "Would have changed " + counted + ". This was a trial, nothing was changed.\n");
  EXPECT_EQ(Run({"sql", "--write", "DELETE FROM ProgramSteps WHERE RID=-1", "-n"}).out,
            "Would have changed 0 rows. This was a trial, nothing was changed.\n");
  EXPECT_THAT(Run({"sql", "-", "-n"},
                  "DELETE FROM ProgramSteps; UPDATE DOORS SET DOORNAME='Yard' "
                  "WHERE UNITKEY=2 AND DOORID=4;")
                  .out,
              testing::EndsWith("Would have changed DOORS: 1 changed; and " + counted +
                                " of which the history tells nothing. This was a trial, nothing "
                                "was changed.\n"));
  EXPECT_EQ(Rows({"sql", "SELECT RID FROM ProgramSteps"}).size(), steps);
}

TEST_F(Trials, QuietListsHaveTheirRowsAndNoTitle) {
  const Outcome all = Run({"dircodes", "list"});
  const Outcome quiet = Run({"-q", "dircodes", "list"});
  EXPECT_EQ("Unit 2, Linden Park\n" + quiet.out, all.out);
  EXPECT_THAT(quiet.out, HasSubstr("0101"));
}

TEST_F(Trials, QuietlyRefusedTheyTellWhy) {
  const Outcome outcome = Run({"-q", "dircodes", "add", "101", "--phone", "1"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err, "");
}

}  // namespace
}  // namespace qorhost::test

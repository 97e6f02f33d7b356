// How every command ends, and where it says why: standard output has what was asked for, standard
// error why it was not done.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "host/store/sqlite/database.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using Words = std::vector<std::string>;

enum class Ends { kDone = 0, kRefused = 1, kUsage = 2, kFailure = 3 };

struct EndRow {
  const char* name;
  Words words;
  Ends status;
};

const std::vector<EndRow> kRows{
    // What is asked for.
    {"Help", {"--help"}, Ends::kDone},
    {"Version", {"-V"}, Ends::kDone},
    {"HelpOfAWord", {"help", "tenants", "edit"}, Ends::kDone},
    {"Manual", {"manual"}, Ends::kDone},
    {"Completion", {"completion", "bash"}, Ends::kDone},
    {"Units", {"units"}, Ends::kDone},
    {"Find", {"find", "O'Brien"}, Ends::kDone},
    {"Check", {"check"}, Ends::kDone},
    {"Access", {"access", "list"}, Ends::kDone},
    {"Attention", {"attention", "list", "--all-units"}, Ends::kDone},
    {"StepAboutNobody", {"--unit", "2", "attention", "end"}, Ends::kDone},
    {"Overview", {"overview"}, Ends::kDone},
    {"Page", {"overview", "--format", "html"}, Ends::kDone},
    // Words that nobody knows, whatever follows.
    {"NoCommand", {}, Ends::kUsage},
    {"UnknownWord", {"tenant"}, Ends::kUsage},
    {"UnknownWordWithHelp", {"tenant", "--help"}, Ends::kUsage},
    {"UnknownSecondWordWithHelp", {"tenants", "remove", "--help"}, Ends::kUsage},
    {"UnknownWordBehindHelp", {"help", "tenant"}, Ends::kUsage},
    {"UnknownOption", {"tenants", "list", "--were", "x"}, Ends::kUsage},
    {"UnknownOptionWithHelp", {"tenants", "list", "--were", "--help"}, Ends::kUsage},
    {"UnknownLetterWithHelp", {"-x", "--help"}, Ends::kUsage},
    {"UnknownLetterBehindAKnownOneWithHelp", {"tenants", "edit", "-nx", "--help"}, Ends::kUsage},
    {"UnknownShell", {"completion", "tcsh"}, Ends::kUsage},
    {"NoTrialOfWhatOnlyReads", {"tenants", "list", "-n"}, Ends::kUsage},
    {"NoTrialOfAReport", {"report", "credentials", "-n"}, Ends::kUsage},
    // Units.
    {"UnknownUnit", {"--unit", "9", "tenants", "list"}, Ends::kUsage},
    {"NoUnitToChange", {"dircodes", "add", "888", "--phone", "1"}, Ends::kUsage},
    {"UnitThatIsNoNumber", {"--unit", "x", "tenants", "list"}, Ends::kUsage},
    // What is not there, or cannot be typed.
    {"CredentialNotThere", {"--unit", "2", "credentials", "delete", "9999"}, Ends::kUsage},
    {"OneCredentialNotThere",
     {"--unit", "2", "credentials", "delete", "rid:490", "9999"},
     Ends::kUsage},
    {"CredentialToNobody", {"--unit", "2", "credentials", "assign", "rid:490"}, Ends::kUsage},
    {"CredentialNumberOutOfBounds",
     {"--unit", "2", "credentials", "renumber", "rid:490", "99999"},
     Ends::kUsage},
    {"CodeNotThere", {"--unit", "2", "dircodes", "show", "999"}, Ends::kUsage},
    {"CodesNotThere", {"--unit", "2", "dircodes", "delete", "998", "999"}, Ends::kUsage},
    {"NothingToEdit", {"--unit", "2", "dircodes", "edit", "101"}, Ends::kUsage},
    {"TenantNotThere", {"--unit", "2", "tenants", "delete", "Nobody"}, Ends::kUsage},
    {"TenantsByNameAndCondition",
     {"--unit", "2", "tenants", "delete", "Byrne", "--where", "name = x"},
     Ends::kUsage},
    {"UnknownField", {"--unit", "2", "tenants", "list", "--where", "nam = x"}, Ends::kUsage},
    {"UnknownFieldOfAReport", {"report", "credentials", "--where", "Card Numbr = 1"}, Ends::kUsage},
    {"DoorNotThere", {"--unit", "2", "doors", "edit", "9", "--name", "Yard"}, Ends::kUsage},
    {"ScheduleNotThere", {"--unit", "2", "schedules", "delete", "Nights"}, Ends::kUsage},
    {"StepNotThere", {"--unit", "2", "steps", "done", "99"}, Ends::kUsage},
    {"EntryNotThere", {"history", "undo", "99"}, Ends::kUsage},
    {"HeadThatIsNone", {"history", "check", "--head", "x"}, Ends::kUsage},
    {"OneUnitAndAllOfThem", {"--unit", "2", "tenants", "list", "--all-units"}, Ends::kUsage},
    {"UnknownFieldToSortBy", {"--unit", "2", "tenants", "list", "--sort", "nam"}, Ends::kUsage},
    {"NoDay", {"access", "list", "--on", "soon"}, Ends::kUsage},
    {"NoNumberOfDays", {"attention", "list", "--within", "x"}, Ends::kUsage},
    {"NoUnitToSettle", {"attention", "end"}, Ends::kUsage},
    {"NoTrialOfAListOfMatters", {"attention", "list", "-n"}, Ends::kUsage},
    {"UnknownFormat", {"units", "list", "--format", "pdf"}, Ends::kUsage},
    {"FileWithoutAFormat", {"units", "list", "--to", "FILE(units)"}, Ends::kUsage},
    {"ForceWithoutAFile", {"units", "list", "--force"}, Ends::kUsage},
    {"NothingToImport", {"--unit", "2", "tenants", "import"}, Ends::kUsage},
    {"NothingToFind", {"find", "-"}, Ends::kUsage},
    {"SqlWithoutLeave", {"sql", "DELETE FROM DOORS"}, Ends::kUsage},
    {"SqlWithoutAStatement", {"sql"}, Ends::kUsage},
    // What is refused.
    {"CodeTwice", {"--unit", "2", "dircodes", "add", "101", "--phone", "1"}, Ends::kRefused},
    {"NobodyToAsk", {"--unit", "2", "dircodes", "delete", "101"}, Ends::kRefused},
    {"NobodyToAskAboutSeveral",
     {"--unit", "2", "dircodes", "delete", "101", "102"},
     Ends::kRefused},
    {"NoSaysNo",
     {"--no", "--unit", "2", "credentials", "delete", "rid:490", "rid:491"},
     Ends::kRefused},
    {"ScheduleInUse", {"--unit", "2", "schedules", "delete", "Night Shift"}, Ends::kRefused},
    {"StoreThatExists", {"init"}, Ends::kRefused},
    {"BackupOverTheStore", {"backup", "FILE(building.db)"}, Ends::kRefused},
    {"BackupOverAnotherFile", {"backup", "FILE(notes.txt)", "--force"}, Ends::kRefused},
    {"CopyIntoItself", {"copy", "--to", "FILE(building.db)"}, Ends::kRefused},
    {"CopyOfAUnitThatIsNotThere", {"--unit", "77", "copy", "--to", "FILE(n.db)"}, Ends::kRefused},
    {"RestoreOfAnotherFile", {"restore", "FILE(notes.txt)"}, Ends::kRefused},
    {"ExportOverAFile",
     {"--unit", "2", "dircodes", "export", "--to", "FILE(notes.txt)"},
     Ends::kRefused},
    {"TenantsOverAFile",
     {"--unit", "2", "tenants", "export", "--to", "FILE(notes.txt)"},
     Ends::kRefused},
    {"NobodyToAskAboutFreeCards", {"--unit", "2", "attention", "delete"}, Ends::kRefused},
    {"ListOverAFile", {"units", "list", "--to", "FILE(notes.txt)"}, Ends::kRefused},
    {"StepsOverAFile", {"--unit", "2", "steps", "export", "FILE(notes.txt)"}, Ends::kRefused},
    {"SyncFromAnotherFile",
     {"--unit", "2", "dircodes", "sync", "--from", "FILE(notes.txt)"},
     Ends::kRefused},
    {"UnknownSql", {"sql", "DROP TABLE DOORS"}, Ends::kRefused},
    {"UnknownSqlInAFile", {"sql", "--file", "FILE(notes.txt)"}, Ends::kRefused},
    {"TraceFileThatExists", {"--trace-file", "FILE(notes.txt)", "units"}, Ends::kRefused},
    // What fails.
    {"NoStore", {"--db", "FILE(nowhere.db)", "units"}, Ends::kFailure},
    {"NoStoreToChange",
     {"--db", "FILE(nowhere.db)", "--unit", "2", "dircodes", "delete", "101", "102"},
     Ends::kFailure},
    {"NoStoreButAFile", {"--db", "FILE(notes.txt)", "units"}, Ends::kFailure},
    {"NoFile", {"--unit", "2", "dircodes", "sync", "--from", "FILE(nowhere.txt)"}, Ends::kFailure},
    {"NoSqlFile", {"sql", "--file", "FILE(nowhere.sql)"}, Ends::kFailure},
    {"CopyOverAnotherFile", {"copy", "--to", "FILE(notes.txt)"}, Ends::kFailure},
    {"NoStoreToCopy", {"copy", "--from", "FILE(nowhere.db)", "--to", "FILE(n.db)"}, Ends::kFailure},
    {"NoBackup", {"restore", "FILE(nowhere.db)"}, Ends::kFailure},
    {"NoFolderForAList", {"units", "list", "--to", "FILE(nowhere/units.html)"}, Ends::kFailure},
    {"NoFolder", {"backup", "FILE(nowhere/copy.db)"}, Ends::kFailure},
    {"StatementThatFails",
     {"sql", "--write", "INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'x')"},
     Ends::kFailure},
};

class ExitStatuses : public RunFixture, public testing::WithParamInterface<EndRow> {
 protected:
  void SetUp() override {
    InitDemo();
    std::ofstream(File("notes.txt")) << "call the plumber\n";
  }
};

TEST_P(ExitStatuses, AreAsDocumentedAndTellWhyOnStandardError) {
  Words words = GetParam().words;
  for (std::string& word : words) {
    if (word.starts_with("FILE(")) {
      word = File(word.substr(5, word.size() - 6));
    }
  }
  const Outcome outcome = Run(words);
  EXPECT_EQ(outcome.status, static_cast<int>(GetParam().status)) << outcome.err;
  if (GetParam().status == Ends::kDone) {
    EXPECT_NE(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
  } else {
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, testing::EndsWith("\n"));
  }
}

INSTANTIATE_TEST_SUITE_P(Commands, ExitStatuses, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

class Faults : public RunFixture {
 protected:
  void SetUp() override { InitDemo(); }
};

TEST_F(Faults, OfTheStoreAreFailuresOfEveryWritingCommand) {
  sqlite::Database other(File("building.db"), OpenMode::kReadWrite);
  other.Run("BEGIN IMMEDIATE");  // somebody else writes and does not end
  for (const Words& words : std::vector<Words>{
           {"credentials", "add", "--type", "card26", "--start", "500", "--facility", "7"},
           {"credentials", "delete", "rid:490", "rid:491"},
           {"dircodes", "edit", "101", "102", "--phone", "1"},
           {"dircodes", "edit", "101", "--phone", "1"},
           {"tenants", "add", "--last", "Byrne"},
           {"doors", "edit", "4", "--name", "Yard"},
           {"steps", "done"},
           {"sql", "--write", "DELETE FROM DOORS"}}) {
    Words waiting{"--wait", "0", "--unit", "2"};
    waiting.insert(waiting.end(), words.begin(), words.end());
    const Outcome outcome = Run(waiting);
    EXPECT_EQ(outcome.status, 3) << words[0] << " " << words[1] << outcome.err;
    EXPECT_EQ(outcome.out, "") << words[0] << " " << words[1];
    EXPECT_NE(outcome.err, "") << words[0] << " " << words[1];
  }
}

TEST_F(Faults, OfTheOutputAreFailuresThatSayWhatIsStored) {
  outputFails_ = true;
  const Outcome done = Run({"--unit", "2", "doors", "edit", "4", "--name", "Yard"});
  EXPECT_EQ(done.status, 3);
  EXPECT_THAT(done.err, testing::HasSubstr("the change is stored"));
  const Outcome tried = Run({"--unit", "2", "doors", "edit", "4", "--name", "Park", "-n"});
  EXPECT_EQ(tried.status, 3);
  EXPECT_THAT(tried.err, testing::Not(testing::HasSubstr("stored")));
  const Outcome triedCode = Run({"--unit", "2", "dircodes", "edit", "101", "--phone", "1", "-n"});
  EXPECT_EQ(triedCode.status, 3);
  EXPECT_THAT(triedCode.err, testing::Not(testing::HasSubstr("stored")));
}

}  // namespace
}  // namespace qorhost::test

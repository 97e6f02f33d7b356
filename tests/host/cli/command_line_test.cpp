// The program's commands around the store, its help and its exit status.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/store/sqlite/database.h"
#include "tests/host/cli/run_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CommandLine : public RunFixture {
 protected:
  [[nodiscard]] std::string ContentOf(const std::string& name) const {
    std::ifstream file(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

TEST_F(CommandLine, InitCreatesADemoBuildingWithThreeUnits) {
  const Outcome outcome = Run({"init", "--demo"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("with the demo building"));
  const nlohmann::json units = Rows({"units"});
  ASSERT_EQ(units.size(), 3U);
  EXPECT_EQ(units[0]["name"], "Harbour Court");
  EXPECT_EQ(units[0]["capacity"], 500);
  EXPECT_EQ(units[0]["credentials"].get<int>() + units[0]["directory_codes"].get<int>(), 498);
}

TEST_F(CommandLine, InitKeepsAnExistingFileUnlessForced) {
  InitDemo();
  const Outcome refused = Run({"init"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("exists already"));
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  EXPECT_THAT(Run({"init", "--force"}).out, HasSubstr("'qorhost units add' adds one"));
  EXPECT_EQ(Rows({"units"}).size(), 0U);
  EXPECT_THAT(Run({"tenants", "list"}).err, HasSubstr("'qorhost units add' adds one"));
}

TEST_F(CommandLine, InitNeverReplacesAFileThatIsNoStore) {
  const std::string notes = "these are notes, not a database";
  for (const std::string& content : {notes, std::string(5000, 'x'), std::string("x")}) {
    std::ofstream(File("notes.txt"), std::ios::trunc) << content;
    const Outcome outcome = Run({"--db", File("notes.txt"), "init", "--demo", "--force"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("notes.txt' is no store of this program"));
    EXPECT_THAT(outcome.err, HasSubstr("--db"));
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(ContentOf("notes.txt") == content) << content.size() << " bytes";
  }
  EXPECT_FALSE(std::filesystem::exists(File("notes.txt.new")));
}

TEST_F(CommandLine, InitMakesTheNewStoreWhereNothingStands) {
  InitDemo();
  std::ofstream(File("building.db.new")) << "notes about the new building";
  EXPECT_EQ(Run({"init", "--force"}).status, 0);
  EXPECT_EQ(ContentOf("building.db.new"), "notes about the new building");
  EXPECT_EQ(Rows({"units"}).size(), 0U);
}

TEST_F(CommandLine, InitReplacesAnEmptyFile) {
  std::ofstream(File("building.db")).close();
  EXPECT_EQ(Run({"init", "--demo", "--force"}).status, 0);
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(CommandLine, InitAsksBeforeItReplacesADamagedStoreOrANewerOne) {
  const std::pair<std::string, std::string> stores[] = {
      {"newer.db", "was written by a newer version of this program"}, {"damaged.db", "is damaged"}};
  for (const auto& [name, wrong] : stores) {
    ASSERT_EQ(Run({"--db", File(name), "init", "--demo"}).status, 0);
  }
  {
    sqlite::Database store(File("newer.db"), OpenMode::kReadWrite);
    store.Run("PRAGMA user_version=99");
  }
  {
    constexpr std::streamoff kBehindTheFirstPage = 4096;
    std::fstream store(File("damaged.db"), std::ios::in | std::ios::out | std::ios::binary);
    store.seekp(kBehindTheFirstPage);
    store << std::string(40000, 'x');
  }
  for (const auto& [name, wrong] : stores) {
    const std::string before = ContentOf(name);
    const Outcome refused = Run({"--db", File(name), "init", "--force"});
    EXPECT_EQ(refused.status, 1) << name;
    EXPECT_THAT(refused.err, HasSubstr(wrong));
    EXPECT_THAT(refused.err, HasSubstr("--yes"));
    EXPECT_TRUE(ContentOf(name) == before) << name;
    EXPECT_EQ(Run({"--db", File(name), "init", "--force", "--yes"}).status, 0) << name;
    EXPECT_EQ(Run({"--db", File(name), "units"}).status, 0) << name;
  }
}

// So the file alone may be copied or moved then.
TEST_F(CommandLine, NoCommandLeavesAnythingInTheLog) {
  namespace fs = std::filesystem;
  std::ofstream(File("cards.csv")) << "Credential Type,Card Number,Facility Code\ncard26,901,7\n";
  std::ofstream(File("codes.csv")) << "Directory Code,Phone No.\n901,555-1\n";
  for (std::vector<std::string> words : std::vector<std::vector<std::string>>{
           {"init", "--demo"},
           {"init", "--demo", "--force"},
           {"units"},
           {"doors"},
           {"steps"},
           {"sql", "SELECT * FROM Units"},
           {"sql", "--write", "UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=1 AND DOORID=4"},
           {"credentials", "list"},
           {"credentials", "add", "--type", "card26", "--start", "801", "--facility", "7"},
           {"credentials", "import", File("cards.csv")},
           {"dircodes", "list"},
           {"dircodes", "show", "101"},
           {"dircodes", "add", "250", "--phone", "1"},
           {"dircodes", "edit", "250", "--phone", "2"},
           {"dircodes", "renumber", "250", "251"},
           {"dircodes", "delete", "251"},
           {"dircodes", "import", File("codes.csv")},
           {"dircodes", "export", "--to", File("unit.txt")},
           {"dircodes", "sync", "--from", File("unit.txt"), "--dry-run"},
           {"dircodes", "sync", "--from", File("unit.txt")},
           {"report", "dircodes"},
           {"report", "credentials"},
           {"history", "list"},
           {"history", "show", "1"},
           {"history", "check"},
           {"history", "undo", "2"}}) {
    const std::string name = words[0] + " " + (words.size() > 1 ? words[1] : "");
    words.insert(words.end(), {"--unit", "2", "--yes"});
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 0) << name << outcome.err;
    std::error_code none;
    const std::uintmax_t size = fs::file_size(File("building.db-wal"), none);
    EXPECT_TRUE(none || size == 0) << name;
  }
}

TEST_F(CommandLine, InitMakesNoStoreWhereALinkOrSomethingElseStands) {
  namespace fs = std::filesystem;
  InitDemo();
  fs::create_symlink("nowhere", File("dangling.db"));
  fs::create_symlink("building.db", File("link.db"));
  ASSERT_EQ(mkfifo(File("pipe.db").c_str(), 0600), 0);
  const struct {
    std::string file;
    const char* what;
  } rows[] = {{File("dangling.db"), "is a link"},
              {File("link.db"), "is a link"},
              {File("pipe.db"), "is a pipe"},
              {"/dev/null", "is a device"},
              {File("."), "is a folder"}};
  for (const auto& row : rows) {
    const fs::file_type before = fs::symlink_status(row.file).type();
    for (const bool force : {false, true}) {
      std::vector<std::string> words{"--db", row.file, "init", "--demo"};
      if (force) words.emplace_back("--force");
      const Outcome outcome = Run(words);
      EXPECT_EQ(outcome.status, 1) << row.file;
      EXPECT_THAT(outcome.err, HasSubstr(row.what)) << row.file;
    }
    EXPECT_EQ(fs::symlink_status(row.file).type(), before) << row.file;
  }
  EXPECT_FALSE(fs::exists(File("nowhere")));
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(CommandLine, AStoreOrInputThatIsNoFileIsRefusedAtOnce) {
  InitDemo();
  ASSERT_EQ(mkfifo(File("pipe").c_str(), 0600), 0);
  for (const std::string& file : {File("pipe"), std::string("/dev/zero")}) {
    const Outcome store = Run({"--db", file, "units"});
    EXPECT_EQ(store.status, 3) << file;
    EXPECT_THAT(store.err, HasSubstr("is a pipe, a socket or a device")) << file;
    EXPECT_EQ(Run({"dircodes", "sync", "--unit", "2", "--from", file}).status, 3) << file;
    EXPECT_EQ(Run({"dircodes", "import", "--unit", "2", file}).status, 3) << file;
  }
}

TEST_F(CommandLine, AUnitWithoutSettingsIsNamed) {
  InitDemo();
  ASSERT_EQ(
      Run({"sql", "--write", "INSERT INTO Units (UnitKey, UnitName) VALUES (9, 'Annex')"}).status,
      0);
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"units"},
        {"doors", "--unit", "9"},
        {"credentials", "add", "--unit", "9", "--type", "card26", "--start", "1"}}) {
    EXPECT_THAT(Run(words).err, HasSubstr("unit 9, Annex, has no settings")) << words.front();
  }
  EXPECT_EQ(Run({"units", "--unit", "2"}).err, "");
  EXPECT_THAT(Run({"units", "list", "--settings"}).out, HasSubstr("Annex"));
  EXPECT_EQ(Run({"units", "edit", "9", "--type", "Entry Panel 500"}).status, 0);
  EXPECT_EQ(Run({"units"}).err, "");
  ASSERT_EQ(
      Run({"sql", "--write", "UPDATE UnitSettings SET UNITTYPE='Entry Panel 7' WHERE UnitKey=2"})
          .status,
      0);
  EXPECT_THAT(Run({"units"}).err,
              HasSubstr("unit 2 'Linden Park' has the type 'Entry Panel 7', whose capacity is"));
  ASSERT_EQ(Run({"sql", "--write", "UPDATE UnitSettings SET UNITTYPE=Null WHERE UnitKey=2"}).status,
            0);
  EXPECT_THAT(Run({"units"}).err, HasSubstr("unit 2 'Linden Park' has no type: nothing can be"));
}

TEST_F(CommandLine, EveryCommandNamesInitWhenThereIsNoDatabase) {
  const std::vector<std::vector<std::string>> commands = {
      {"units"},
      {"doors"},
      {"steps"},
      {"sql", "SELECT UnitKey FROM Units"},
      {"credentials", "list"},
      {"credentials", "add", "--type", "card26", "--start", "1"},
      {"credentials", "edit", "1", "--release"},
      {"credentials", "assign", "1", "2"},
      {"credentials", "renumber", "1", "2"},
      {"credentials", "delete", "1"},
      {"dircodes", "list"},
      {"dircodes", "show", "101"},
      {"dircodes", "add", "101"},
      {"--unit", "1", "dircodes", "edit", "101", "--inactive"},
      {"dircodes", "renumber", "101", "102"},
      {"dircodes", "delete", "101"},
      {"dircodes", "sync", "--from", "-"},
      {"dircodes", "export", "--to", "-"},
      {"history", "list"},
      {"history", "undo", "1"}};
  for (const std::vector<std::string>& words : commands) {
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 3) << words.front();
    EXPECT_THAT(outcome.err, HasSubstr("qorhost init --demo")) << words.front();
    EXPECT_EQ(outcome.out, "");
  }
}

TEST_F(CommandLine, AFileThatIsNoDatabaseIsAFailureAndStaysAsItIs) {
  std::ofstream(File("notes.txt")) << "these are notes, not a database, and long enough to tell";
  const Outcome outcome = Run({"--db", File("notes.txt"), "units"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("notes.txt"));
  std::ifstream kept(File("notes.txt"));
  std::string word;
  kept >> word;
  EXPECT_EQ(word, "these");
}

TEST_F(CommandLine, TheTourNeedsNoStoreAndLeavesNone) {
  EXPECT_EQ(Run({"tour"}).status, 0);
  EXPECT_FALSE(std::filesystem::exists(File("building.db")));
}

TEST_F(CommandLine, HelpIsEverywhereWithExamples) {
  const std::vector<std::vector<std::string>> commands = {{},
                                                          {"init"},
                                                          {"units"},
                                                          {"doors"},
                                                          {"steps"},
                                                          {"sql"},
                                                          {"tour"},
                                                          {"credentials"},
                                                          {"credentials", "list"},
                                                          {"credentials", "add"},
                                                          {"credentials", "edit"},
                                                          {"credentials", "assign"},
                                                          {"credentials", "renumber"},
                                                          {"credentials", "delete"},
                                                          {"dircodes"},
                                                          {"dircodes", "list"},
                                                          {"dircodes", "show"},
                                                          {"dircodes", "add"},
                                                          {"dircodes", "edit"},
                                                          {"dircodes", "renumber"},
                                                          {"dircodes", "delete"},
                                                          {"dircodes", "sync"},
                                                          {"dircodes", "export"},
                                                          {"history"},
                                                          {"history", "list"},
                                                          {"history", "show"},
                                                          {"history", "undo"},
                                                          {"history", "check"}};
  for (std::vector<std::string> words : commands) {
    words.emplace_back("--help");
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("Examples:\n  qorhost ")) << words.front();
    EXPECT_EQ(outcome.err, "");
  }
}

TEST_F(CommandLine, HelpIsAlsoAWord) {
  const std::string db = File("building.db");
  EXPECT_EQ(Run({"help", "credentials", "add", "--db", db}).out,
            Run({"credentials", "add", "--help"}).out);
  EXPECT_EQ(Run({"help", "--db", db}).out, Run({"--help"}).out);
  EXPECT_THAT(Run({"help", "credentails", "--db", db}).err, HasSubstr("'credentials'?"));
}

TEST_F(CommandLine, TheVersionIsToldInTwoWays) {
  EXPECT_THAT(Run({"--version"}).out, StartsWith("qorhost "));
  EXPECT_EQ(Run({"-V"}).out, Run({"--version"}).out);
}

TEST_F(CommandLine, TheEnvironmentNamesTheStoreAndTheOptionGoesBefore) {
  InitDemo();
  storeOfEnvironment_ = File("building.db");
  EXPECT_EQ(Run({"units"}).status, 0);
  EXPECT_THAT(Run({"units", "--db", File("other.db")}).err, HasSubstr("other.db"));
  storeOfEnvironment_ = File("nowhere.db");
  EXPECT_THAT(Run({"units"}).err, HasSubstr("nowhere.db"));
}

struct UsageRow {
  std::string_view name;
  std::vector<std::string> words;
  std::string_view message;
};

class Usage : public RunFixture, public testing::WithParamInterface<UsageRow> {};

TEST_P(Usage, IsRefusedWithOneLineThatSaysWhy) {
  InitDemo();
  const Outcome outcome = Run(GetParam().words);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, StartsWith("qorhost: "));
  EXPECT_THAT(outcome.err, HasSubstr(std::string(GetParam().message)));
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  EXPECT_EQ(outcome.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Mistakes, Usage,
    testing::Values(
        UsageRow{"NoCommand", {}, "A command is needed"},
        UsageRow{"UnknownCommand", {"frobnicate"}, "frobnicate"},
        UsageRow{"UnknownOption", {"units", "--frobnicate"}, "--frobnicate"},
        UsageRow{"UnknownCredentialCommand", {"credentials", "frobnicate"}, "frobnicate"},
        UsageRow{"MisspeltCommand",
                 {"credntials", "list"},
                 "unknown word 'credntials': did you mean 'credentials'? (see 'qorhost --help')"},
        UsageRow{"CommandOfAnotherWord",
                 {"undo", "12"},
                 "unknown word 'undo': did you mean 'history undo'? (see 'qorhost --help')"},
        UsageRow{"CommandBelowAnotherWord",
                 {"tenants", "replace"},
                 "unknown word 'replace': did you mean 'credentials replace'? (see 'qorhost "
                 "tenants --help')"},
        UsageRow{"CommandOfTooManyWords", {"delete"}, "unknown word 'delete' (see"},
        UsageRow{"NoCommandOfAWord",
                 {"tenants"},
                 "A command is needed: list, show, add, edit, end, delete, import, export (see "
                 "'qorhost tenants --help')"},
        UsageRow{"MisspeltCommandWithHelp",
                 {"credentials", "lsit", "--help"},
                 "unknown word 'lsit': did you mean 'list'? (see 'qorhost credentials --help')"},
        UsageRow{"MisspeltOption",
                 {"credentials", "list", "--untt", "1"},
                 "unknown option '--untt': did you mean '--unit'?"},
        UsageRow{"MisspeltOptionWithItsValue",
                 {"credentials", "add", "--strat=1", "--help"},
                 "unknown option '--strat': did you mean '--start'?"},
        UsageRow{"HelpForNothing", {"frobnicate", "--help"}, "unknown word 'frobnicate' (see"},
        UsageRow{"NoNameOfAFile", {"--db", "", "units"}, "needs the name of a file"},
        UsageRow{"UnitThatIsNoNumber", {"--unit", "two", "credentials", "list"}, "two"},
        UsageRow{"NoUnit", {"--unit", "", "credentials", "list"}, "--unit"},
        UsageRow{"NoUnitBehindItsSign", {"--unit=", "credentials", "list"}, "--unit"},
        UsageRow{"NoTimeToWait", {"--wait=", "credentials", "list"}, "--wait"},
        UsageRow{"NegativeTimeToWait",
                 {"--wait", "-1", "credentials", "list"},
                 "'-1' must be a whole number from 0 to 86400, in digits alone"},
        UsageRow{"FlagWithAnEmptyValue", {"credentials", "list", "--json="}, "''"},
        UsageRow{"UnitThatIsNotThere", {"--unit", "77", "credentials", "list"}, "77"},
        UsageRow{"YesAndNo", {"--yes", "--no", "units"}, "--no"},
        UsageRow{"MissingType", {"credentials", "add", "--start", "1"}, "--type"},
        UsageRow{"UnknownType",
                 {"--unit", "1", "credentials", "add", "--type", "key", "--start", "1"},
                 "card30"},
        UsageRow{"UnknownCredential", {"--unit", "1", "credentials", "delete", "99999"}, "99999"},
        UsageRow{
            "NewNumberThatIsNone", {"--unit", "1", "credentials", "renumber", "1", "ten"}, "ten"},
        UsageRow{"NothingToEdit", {"credentials", "edit", "1"}, "--door"},
        UsageRow{
            "UnknownTenant", {"--unit", "1", "credentials", "assign", "rid:1", "Nobody"}, "Nobody"},
        UsageRow{"ControlCharacters",
                 {"--unit", "1", "credentials", "add", "--type", "card26", "--start", "1\n2"},
                 "--start"},
        UsageRow{"UnknownCode", {"dircodes", "show", "9999"}, "9999"},
        UsageRow{"UnknownRow", {"dircodes", "show", "rid:9999"}, "9999"},
        UsageRow{"RowOfAnotherUnit", {"dircodes", "show", "rid:11"}, "11"},
        UsageRow{"RowThatIsNoNumber", {"dircodes", "show", "rid:x"}, "x"},
        UsageRow{
            "CodeTooLong", {"--unit", "1", "dircodes", "add", "12345", "--phone", "1"}, "4 digits"},
        UsageRow{"NoChangeOfACode", {"dircodes", "edit", "101"}, "say what to change"},
        UsageRow{"UnknownSchedule",
                 {"--unit", "1", "dircodes", "edit", "101", "--dnd", "Never"},
                 "Never"},
        UsageRow{"DelayWithoutExtension",
                 {"--unit", "1", "dircodes", "edit", "101", "--delay", "5"},
                 "extension"},
        UsageRow{"PeriodOfAnInactiveCode",
                 {"--unit", "1", "dircodes", "edit", "101", "--inactive", "--to", "2026-12-31"},
                 "--active"},
        UsageRow{"SyncFromNowhere", {"dircodes", "sync"}, "--from"},
        UsageRow{"ExportToNowhere", {"dircodes", "export"}, "--to"},
        UsageRow{"FirmwareOfTwoLines",
                 {"dircodes", "export", "--to", "-", "--firmware", "A\nB"},
                 "control characters"},
        UsageRow{"NoUnitToChange",
                 {"dircodes", "delete", "101", "--yes"},
                 "say which unit to change with --unit N, or set QORHOST_UNIT: there are 1 Harbour "
                 "Court, 2 Linden Park, 3 Mill Street Lofts"},
        UsageRow{"WriteWithoutLeave", {"sql", "DELETE FROM Tenants"}, "--write"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(CommandLine, ACommandThatChangesNeedsAUnitWhenThereAreSeveral) {
  InitDemo();
  const std::vector<std::vector<std::string>> commands = {
      {"credentials", "add", "--type", "card26", "--start", "9001"},
      {"credentials", "edit", "rid:1", "--release"},
      {"credentials", "assign", "rid:1", "2"},
      {"credentials", "renumber", "rid:1", "2"},
      {"credentials", "delete", "rid:1", "--yes"},
      {"credentials", "import", QORHOST_SAMPLES "/credentials.csv"},
      {"dircodes", "add", "250", "--phone", "1"},
      {"dircodes", "edit", "101", "--phone", "1"},
      {"dircodes", "renumber", "101", "180"},
      {"dircodes", "delete", "101", "--yes"},
      {"dircodes", "sync", "--from", "-"},
      {"dircodes", "sync", "--from", "-", "--dry-run"},
      {"dircodes", "import", QORHOST_SAMPLES "/dir_codes.csv"},
      {"report", "credentials", "--delete", "rid:1"}};
  for (const auto& words : commands) {
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 2) << words[0] << ' ' << words[1];
    EXPECT_THAT(outcome.err,
                HasSubstr("--unit N, or set QORHOST_UNIT: there are 1 Harbour Court, 2 Linden "
                          "Park, 3 Mill Street Lofts"))
        << words[0] << ' ' << words[1];
    EXPECT_EQ(outcome.out, "");
  }
}

TEST_F(CommandLine, TheEnvironmentNamesTheUnitAndTheOptionGoesBefore) {
  InitDemo();
  unitOfEnvironment_ = "3";
  const std::vector<std::string> words = {"dircodes", "renumber", "101", "180"};
  EXPECT_THAT(Run(words).out, HasSubstr("in unit 3, Mill Street Lofts.\n"));
  EXPECT_THAT(Run({"--unit", "2", "dircodes", "renumber", "101", "180"}).out,
              HasSubstr("in unit 2, Linden Park.\n"));
  EXPECT_THAT(Run({"dircodes", "list"}).out, StartsWith("Unit 3, Mill Street Lofts\n"));
  EXPECT_EQ(Rows({"units"}).size(), 3U) << "a list of all units is one";
  for (const char* wrong : {"two", "2 3", "77"}) {
    unitOfEnvironment_ = wrong;
    const Outcome outcome = Run({"dircodes", "list"});
    EXPECT_EQ(outcome.status, 2) << wrong;
    EXPECT_THAT(outcome.err, HasSubstr(wrong)) << wrong;
  }
}

TEST_F(CommandLine, TheOnlyUnitNeedsNoName) {
  InitDemo();
  for (const char* table : {"Tenants", "CredentialBank", "DirectoryCode"}) {
    ASSERT_EQ(
        Run({"sql", "--write", "DELETE FROM " + std::string(table) + " WHERE UNITKEY<>2"}).status,
        0);
  }
  for (const char* table : {"Doors", "Schedules", "TenantGroup", "UnitSettings", "Units"}) {
    const Outcome outcome =
        Run({"sql", "--write", "DELETE FROM " + std::string(table) + " WHERE UNITKEY<>2"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
  EXPECT_EQ(Run({"dircodes", "renumber", "101", "180"}).out,
            "Directory code 0101 (RID 11) is 0180 now, in unit 2, Linden Park.\n");
}

TEST_F(CommandLine, TablesOfOneUnitHaveItAsTitle) {
  InitDemo();
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"credentials", "list"}, {"dircodes", "list"}, {"dircodes", "show", "101"}}) {
    EXPECT_THAT(Run(words).out, StartsWith("Unit 1, Harbour Court\n")) << words[1];
    std::vector<std::string> json = words;
    json.emplace_back("--json");
    EXPECT_THAT(Run(json).out, Not(HasSubstr("Harbour"))) << words[1];
  }
  ASSERT_EQ(Run({"sql", "--write", "UPDATE Units SET UNITNAME='a\x1B[2J' WHERE UNITKEY=1"}).status,
            0);
  EXPECT_THAT(Run({"dircodes", "list"}).out, StartsWith("Unit 1, a\\x1B[2J\n"));
}

TEST_F(CommandLine, NothingIsDoneInAUnitWithoutSettings) {
  InitDemo();
  ASSERT_EQ(Run({"sql", "--write", "DELETE FROM UnitSettings WHERE UNITKEY=2"}).status, 0);
  for (std::vector<std::string> words : std::vector<std::vector<std::string>>{
           {"dircodes", "list"},
           {"dircodes", "show", "101"},
           {"dircodes", "add", "250", "--phone", "1"},
           {"credentials", "add", "--type", "card26", "--start", "9001"},
           {"credentials", "assign", "1001", "62", "--yes"}}) {
    words.insert(words.begin(), {"--unit", "2"});
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 3) << words[2] << ' ' << words[3];
    EXPECT_EQ(
        outcome.err,
        "qorhost: unit 2, Linden Park, has no settings: give it a type ('qorhost units edit 2 "
        "--type TYPE')\n");
    EXPECT_EQ(outcome.out, "");
  }
  const std::string type = Rows({"units"}).front().at("type");
  EXPECT_EQ(Run({"units", "edit", "2", "--type", type}).status, 0);
  EXPECT_EQ(Run({"--unit", "2", "dircodes", "add", "250", "--phone", "1"}).status, 0);
}

// Every character that a terminal obeys, at the places that print a text of the store.
TEST_F(CommandLine, NothingThatIsStoredSteersATerminal) {
  InitDemo();
  const std::string steering =
      "a\x1B[2J\x7F\xC2\x9B"
      "b\xD8\x9C\xE2\x80\x8E\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\xA8z";
  for (const char* change : {"UPDATE Units SET UNITNAME='{}' WHERE UNITKEY=2",
                             "UPDATE DirectoryCode SET DISPLAYNAME='{}' WHERE UNITKEY=2",
                             "UPDATE Tenants SET LASTNAME='{}' WHERE UNITKEY=2 AND TENANTID=62",
                             "UPDATE DOORS SET DOORNAME='{}' WHERE UNITKEY=2 AND DOORID=1"}) {
    std::string statement = change;
    statement.replace(statement.find("{}"), 2, steering);
    ASSERT_EQ(Run({"sql", "--write", statement}).status, 0) << change;
  }
  const std::vector<std::vector<std::string>> commands = {
      {"units"},
      {"doors"},
      {"credentials", "list"},
      {"credentials", "assign", "1001", "62"},
      {"credentials", "edit", "rid:609", "--tenant", "62", "--yes"},
      {"dircodes", "list"},
      {"dircodes", "show", "103"},
      {"dircodes", "edit", "104", "--phone", "7"},
      {"report", "dircodes"},
      {"report", "dircodes", "--format", "json"},
      {"report", "dircodes", "--format", "csv"},
      {"report", "dircodes", "--format", "sql", "--where", "Display Name = \xE2\x80\xAE"},
      {"report", "credentials"},
      {"dircodes", "export", "--to", "-"},
      {"tenants", "list"},
      {"tenants", "show", "rid:62"},
      {"tenants", "export"},
      {"access", "list"},
      {"attention", "list", "--within", "36500"},
      {"overview"},
      {"schedules"},
      {"find", "a"},
      {"steps", "list"},
      {"steps", "export", "-"},
      {"check"},
      {"history", "check"},
      {"sql", "SELECT * FROM DirectoryCode"},
      {"history", "list"},
      {"history", "show", "4"},
      {"history", "undo", "4"}};
  outputIsTerminal_ = true;
  for (const auto& command : commands) {
    for (const char* option : {"--no-option", "--json", "--trace"}) {
      std::vector<std::string> words = {"--unit", "2"};
      if (std::string_view(option) != "--no-option") {
        words.emplace_back(option);
      }
      words.insert(words.end(), command.begin(), command.end());
      const Outcome outcome = Run(words);
      const std::string all = outcome.out + outcome.err;
      for (const char* raw : {"\x1B", "\x7F", "\xC2\x9B", "\xD8\x9C", "\xE2\x80\x8E",
                              "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x80\xA8"}) {
        EXPECT_EQ(all.find(raw), std::string::npos) << command[0] << ' ' << command.back() << ' '
                                                    << option << ' ' << testing::PrintToString(raw);
      }
    }
  }
  outputIsTerminal_ = false;
  EXPECT_THAT(Run({"--unit", "2", "report", "dircodes", "--format", "csv"}).out,
              HasSubstr(steering))
      << "a program reads what is stored";
  const nlohmann::json rows =
      Rows({"sql", "SELECT DISPLAYNAME FROM DirectoryCode WHERE UNITKEY=2 AND DIRECTORYCODE=101"});
  EXPECT_EQ(rows[0]["DISPLAYNAME"], steering) << "what is escaped is read back whole";
}

TEST_F(CommandLine, OutputThatCannotBeWrittenIsToldWithWhatIsStored) {
  InitDemo();
  outputFails_ = true;
  const Outcome changed = Run({"--unit", "2", "dircodes", "renumber", "101", "180"});
  EXPECT_EQ(changed.status, 3);
  EXPECT_EQ(changed.err, "qorhost: the output could not be written; the change is stored\n");
  const Outcome refused = Run({"--unit", "2", "dircodes", "renumber", "180", "102"});
  EXPECT_THAT(refused.err, Not(HasSubstr("is stored")));
  const Outcome looked = Run({"units"});
  EXPECT_EQ(looked.status, 3);
  EXPECT_EQ(looked.err, "qorhost: the output could not be written\n");
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"credentials", "add", "--type", "card26", "--start", "9001"},
           {"credentials", "renumber", "9001", "9002"},
           {"credentials", "edit", "9002", "--door", "1"},
           {"credentials", "delete", "9002"},
           {"dircodes", "add", "250", "--phone", "1"},
           {"dircodes", "edit", "250", "--phone", "2"},
           {"dircodes", "delete", "250", "--yes"},
           {"dircodes", "import", QORHOST_SAMPLES "/dir_codes.csv"},
           {"sql", "--write", "UPDATE Units SET UNITNAME='x' WHERE UNITKEY=3"}}) {
    std::vector<std::string> all = {"--unit", "2"};
    all.insert(all.end(), words.begin(), words.end());
    EXPECT_THAT(Run(all).err, HasSubstr("the change is stored")) << words[0] << ' ' << words[1];
  }
  EXPECT_THAT(
      Run({"--unit", "2", "dircodes", "import", QORHOST_SAMPLES "/dir_codes.csv", "--dry-run"}).err,
      Not(HasSubstr("is stored")));
  readerIsGone_ = true;
  EXPECT_EQ(Run({"units"}).status, 0) << "who has gone has read enough";
  EXPECT_EQ(Run({"units"}).err, "");
}

TEST_F(CommandLine, AStatementWithoutEndIsStoppedAndChangesNothing) {
  InitDemo();
  const Outcome outcome =
      Run({"sql", "--write",
           "UPDATE Units SET UNITNAME='x' WHERE UNITKEY IN (SELECT a.RID FROM CredentialBank AS a, "
           "CredentialBank AS b, CredentialBank AS c, CredentialBank AS d WHERE "
           "a.PINNo+b.PINNo+c.PINNo+d.PINNo<0)"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("far more work than a report")) << outcome.err;
  EXPECT_EQ(Rows({"units"})[0]["name"], "Harbour Court");
}

TEST_F(CommandLine, AResultThatIsTooLargeIsRefusedWithAWordHowToNarrowIt) {
  InitDemo();
  const Outcome outcome =
      Run({"sql", "SELECT a.RID FROM CredentialBank AS a, CredentialBank AS b, Units AS c"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err,
              HasSubstr("The result has more than 1000000 rows: narrow it with WHERE"));
  EXPECT_THAT(outcome.err, HasSubstr("Top n"));
}

TEST_F(CommandLine, SqlPrintsRowsWithTheirTypes) {
  InitDemo();
  const nlohmann::json rows =
      Rows({"sql", "SELECT Top 1 IsGroupZero, UnitKey, RID, NULL FROM TenantGroup ORDER BY RID"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_TRUE(rows[0]["IsGroupZero"].is_boolean());
  EXPECT_TRUE(rows[0]["UnitKey"].is_number_integer());
}

TEST_F(CommandLine, SqlChangesOnlyWithLeave) {
  InitDemo();
  const std::string rename = "UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=1 AND DOORID=4";
  EXPECT_EQ(Run({"sql", rename}).status, 2);
  EXPECT_EQ(Run({"sql", rename, "--write"}).status, 0);
  const nlohmann::json rows = Rows({"sql", "SELECT DOORNAME FROM DOORS WHERE DOORNAME='yard'"});
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0]["DOORNAME"], "Yard");
}

TEST_F(CommandLine, SqlRefusesWhatTheDialectDoesNotKnowWithItsPlace) {
  InitDemo();
  for (const char* statement :
       {"SELECT nope FROM Tenants", "SELECT 1 FROM sqlite_master", "DROP TABLE Tenants",
        "SELECT UnitKey FROM Units; DELETE FROM Units", "", "SELECT 'x"}) {
    const Outcome outcome = Run({"sql", statement, "--write"});
    EXPECT_EQ(outcome.status, 1) << statement;
    EXPECT_THAT(outcome.err, HasSubstr("line 1, column ")) << statement;
  }
  EXPECT_EQ(Rows({"units"}).size(), 3U);
}

TEST_F(CommandLine, DoorsShowTheirCaptionsOnTheScreen) {
  InitDemo();
  const nlohmann::json doors = Rows({"--unit", "2", "doors"});
  ASSERT_GE(doors.size(), 4U);
  EXPECT_EQ(doors[0]["caption"].get<std::string>().size(), 12U);
  EXPECT_GT(doors[0]["name"].get<std::string>().size(), 12U);
}

TEST_F(CommandLine, TracePrintsTheCallsToStandardErrorAndLeavesTheRowsAlone) {
  InitDemo();
  const Outcome plain = Run({"credentials", "list"});
  const Outcome traced = Run({"--trace", "credentials", "list"});
  EXPECT_EQ(traced.out, plain.out);
  EXPECT_EQ(plain.err, "");
  EXPECT_THAT(traced.err, HasSubstr("  CreateObject(progId: \"qorDBI.clsDBManager\") -> "));
  EXPECT_THAT(traced.err,
              testing::ContainsRegex("  cboCredentials@[0-9]+.AddItem\\(text: \"<Add New>\"\\)\n"));
  EXPECT_THAT(traced.err, Not(HasSubstr("Trapped")));
}

}  // namespace
}  // namespace qorhost::test

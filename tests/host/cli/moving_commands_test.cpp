// A building that comes from a desktop database file, at the command line.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "host/files/csv_reader.h"
#include "tests/host/cli/run_fixture.h"
#include "tests/host/files/desktop_file/refused_files.h"

namespace qorhost::test {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class MovingCommands : public RunFixture {
 protected:
  void SetUp() override {
    if (std::string_view(QORHOST_DESKTOP_READER).empty()) {
      GTEST_SKIP() << "libmdb (Debian: mdbtools-dev) was not there when this was built";
    }
  }

  static std::string Sample(const std::string& name) {
    return std::string(QORHOST_DESKTOP_SAMPLES) + "/" + name;
  }
  [[nodiscard]] Outcome Bring(const std::string& name, std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"init", "--from", Sample(name)});
    return Run(std::move(more));
  }
  [[nodiscard]] bool HasStore() const { return fs::exists(File("building.db")); }
  [[nodiscard]] std::string TextOf(const std::string& name) const {
    std::ifstream in(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
};

TEST_F(MovingCommands, ABuildingIsOneCommand) {
  const Outcome outcome = Bring("building-2000.mdb");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out,
              AllOf(HasSubstr("4 units, 120 tenants, 235 credentials, 50 directory codes"),
                    HasSubstr("0 rows left out, 3 cells adjusted, 2 kept as odd"),
                    HasSubstr("'qorhost check' tells 2 faults that the file already had"),
                    HasSubstr("Left, for a store has no such tables: AccessEvents (25 rows), Site "
                              "Notes (4 rows).\n"),
                    HasSubstr("Left, for a store has no such columns: Units.InstalledOn, "
                              "CredentialBank.Deposit, Tenants.Remarks.\n"),
                    Not(HasSubstr("The file "))));
  EXPECT_EQ(Rows({"units"}).size(), 4U);
  const nlohmann::json faults = nlohmann::json::parse(Run({"check", "--json"}).out);
  ASSERT_EQ(faults.size(), 2U);
  for (const nlohmann::json& fault : faults) {
    EXPECT_THAT(fault["fault"].get<std::string>(), HasSubstr("has the door 4, which is not there"))
        << "the unit has three doors";
  }
  EXPECT_THAT(Run({"find", "佐藤"}).out, HasSubstr("佐藤"));
}

TEST_F(MovingCommands, ABuildingWithBadRowsIsNotBroughtInUnlessTheyAreSkipped) {
  const Outcome refused = Bring("building-odd.mdb");
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_THAT(
      refused.err,
      AllOf(HasSubstr("qorhost: Units, row 8 (RID 8): UnitKey 2: a unit before it has the key "
                      "[duplicate-key]\n"),
            HasSubstr("qorhost: ... and 32 more refusals\n"),
            HasSubstr("qorhost: 52 rows of '" + Sample("building-odd.mdb") + "' cannot be brought"),
            HasSubstr("--skip-bad-rows"), HasSubstr("--report FILE lists all")));
  EXPECT_FALSE(HasStore());
  const Outcome brought = Bring("building-odd.mdb", {"--skip-bad-rows"});
  EXPECT_EQ(brought.status, 0) << brought.err;
  EXPECT_THAT(brought.out, AllOf(HasSubstr("52 rows left out, 23 cells adjusted, 34 kept as odd"),
                                 HasSubstr("The file does not have these columns: DOORS.RID, "
                                           "TenantsBackup.RID (the rows get numbers of their "
                                           "own).\n"),
                                 HasSubstr("7 faults that the file already had")));
  EXPECT_THAT(Run({"check"}).out, HasSubstr("7 rows"));
}

TEST_F(MovingCommands, TheReportIsWrittenAlsoOfARefusedFile) {
  EXPECT_EQ(Bring("building-odd.mdb", {"--report", File("odd.txt")}).status, 1);
  EXPECT_THAT(TextOf("odd.txt"),
              AllOf(HasSubstr("113 rows to bring in, 52 rows refused"),
                    HasSubstr("CredentialBank, row 28 (RID 28): DOORCODE \"99999999999\"")));
  EXPECT_EQ(Bring("building-odd.mdb", {"--report", File("odd.CSV")}).status, 1);
  const std::string text = TextOf("odd.CSV");
  CsvReader reader(text);
  CsvRecord record;
  std::size_t lines = 0;
  for (; reader.Next(record); ++lines) {
    EXPECT_EQ(record.cells.size(), 9U);
    if (lines == 0) {
      EXPECT_THAT(record.cells,
                  testing::ElementsAre("Settlement", "Table", "Row", "Identity", "Column", "Value",
                                       "Instead", "Kind", "Reason"));
    }
  }
  EXPECT_EQ(lines, 1U + 52U + 23U + 34U + 2U) << "and two columns that the file does not have";
  EXPECT_THAT(text, HasSubstr("missing,DOORS,,,RID,,,missing-column,"));
  EXPECT_FALSE(HasStore());
}

TEST_F(MovingCommands, AReportTakesNoOtherFilesPlace) {
  std::ofstream(File("odd.txt")) << "mine";
  const Outcome taken = Bring("building-2000.mdb", {"--report", File("odd.txt")});
  EXPECT_EQ(taken.status, 1);
  EXPECT_THAT(taken.err, HasSubstr("exists already"));
  EXPECT_EQ(TextOf("odd.txt"), "mine");
  EXPECT_FALSE(HasStore());
  EXPECT_EQ(Bring("building-2000.mdb", {"--report", File("building.db")}).status, 1);
  EXPECT_EQ(Bring("building-2000.mdb", {"--report", Sample("building-2000.mdb")}).status, 2);
  EXPECT_EQ(Bring("building-2000.mdb", {"--report", File("odd.txt"), "--force"}).status, 0);
  EXPECT_THAT(TextOf("odd.txt"), Not(StartsWith("mine")));
}

TEST_F(MovingCommands, WithoutItsReportNoStoreIsMade) {
  const std::string tooLong = File(std::string(300, 'n'));
  const Outcome outcome = Bring("building-2000.mdb", {"--report", tooLong});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("cannot write '"));
  EXPECT_FALSE(HasStore());
  EXPECT_EQ(Bring("building-2000.mdb", {"--report", File("odd.txt")}).status, 0) << "once more";
  EXPECT_THAT(TextOf("odd.txt"), HasSubstr("[field-order]"));
}

TEST_F(MovingCommands, AStoreThatStaysLeavesNoReport) {
  ASSERT_EQ(Run({"init", "--demo"}).status, 0);
  EXPECT_EQ(Bring("building-2000.mdb", {"--report", File("odd.txt")}).status, 1);
  EXPECT_FALSE(fs::exists(File("odd.txt")));
}

TEST_F(MovingCommands, ATrialWritesTheReportAsWell) {
  EXPECT_EQ(Bring("building-2000.mdb", {"-n", "--report", File("odd.txt")}).status, 0);
  EXPECT_THAT(TextOf("odd.txt"), HasSubstr("[field-order]"));
  EXPECT_FALSE(HasStore());
}

TEST_F(MovingCommands, ATrialTellsAllAndLeavesNothing) {
  const Outcome outcome = Bring("building-2010.accdb", {"--dry-run"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out,
              AllOf(HasSubstr("496 rows to bring in"), HasSubstr("Site Notes (4 rows)"),
                    HasSubstr("CredentialBank.Deposit"),
                    HasSubstr("This was a trial, nothing was changed.")));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder()), fs::directory_iterator()), 0);
  EXPECT_EQ(Bring("building-odd.mdb", {"-n"}).status, 1);
  EXPECT_EQ(Bring("building-odd.mdb", {"-n", "--skip-bad-rows"}).status, 0);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder()), fs::directory_iterator()), 0);
}

TEST_F(MovingCommands, OneUnitAloneMayBeBroughtIn) {
  EXPECT_EQ(Bring("building-2000.mdb", {"--unit", "7"}).status, 0);
  const json units = Rows({"units"});
  ASSERT_EQ(units.size(), 1U);
  EXPECT_EQ(units.front().at("credentials"), 68);
  const Outcome none =
      Run({"--db", File("other.db"), "init", "--from", Sample("building-2000.mdb"), "--unit", "8"});
  EXPECT_EQ(none.status, 1);
  EXPECT_THAT(none.err, HasSubstr("it has 3, 7, 12, 40"));
}

TEST_F(MovingCommands, ProgramsReadTablesAndSettledCells) {
  const Outcome outcome = Bring("building-odd.mdb", {"--skip-bad-rows", "--json"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const json told = json::parse(outcome.out);
  EXPECT_EQ(told.at("stored"), true);
  EXPECT_EQ(told.at("tables").size(), 11U);
  EXPECT_EQ(told.at("settled").size(), 52U + 23U + 34U);
  EXPECT_EQ(told.at("settled").at(1).at("kind"), "duplicate-key");
  EXPECT_EQ(told.at("missing"), json::parse(R"([{"table":"DOORS","column":"RID",
                             "means":"the rows get numbers of their own"},
                            {"table":"TenantsBackup","column":"RID",
                             "means":"the rows get numbers of their own"}])"));
  EXPECT_EQ(told.at("left"), json::array());
  const json left = json::parse(Bring("building-2000.mdb", {"--force", "--json"}).out).at("left");
  EXPECT_EQ(left.size(), 5U);
  EXPECT_EQ(left.at(0), json::parse(R"({"table":"AccessEvents","column":null,"rows":25})"));
  EXPECT_EQ(left.at(2), json::parse(R"({"table":"Units","column":"InstalledOn","rows":null})"));
}

TEST_F(MovingCommands, ATrialOfAFileWithBadRowsTellsProgramsWhich) {
  const Outcome outcome = Bring("building-odd.mdb", {"-n", "--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(json::parse(outcome.err).at("error").at("kind"), "refused");
  const json told = json::parse(outcome.out);
  EXPECT_EQ(told.at("stored"), false);
  EXPECT_EQ(told.at("dry_run"), true);
  EXPECT_EQ(told.at("added"), json::array());
  EXPECT_EQ(told.at("settled").size(), 52U + 23U + 34U);
  EXPECT_EQ(Bring("building-odd.mdb", {"--json"}).out, "")
      << "without a trial it is an error alone";
  EXPECT_FALSE(HasStore());
}

/// With another letter in the name of the table of doors, which its catalogue has behind its kind,
/// two dates and four bytes, and in that of a column.
TEST_F(MovingCommands, WhatTheFileLacksIsToldWithWhatThatMeans) {
  using namespace std::string_view_literals;
  constexpr std::size_t kBetween = 22;
  constexpr char kTable = 1;
  std::string bytes = BytesOfFile(Sample("building-2000.mdb"));
  const std::size_t column = bytes.find("D\0O\0O\0R\0S\0C\0H\0E\0D\0"sv);
  ASSERT_NE(column, std::string::npos);
  bytes[column] = 'F';
  std::size_t table = bytes.find("D\0o\0o\0r\0s\0"sv);
  while (table != std::string::npos && bytes[table - kBetween] != kTable) {
    table = bytes.find("D\0o\0o\0r\0s\0"sv, table + 1);
  }
  ASSERT_NE(table, std::string::npos);
  bytes[table] = 'F';
  std::ofstream(File("floors.mdb"), std::ios::binary) << bytes;
  const Outcome outcome = Run({"init", "--from", File("floors.mdb"), "--report", File("odd.csv")});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(
      outcome.out,
      AllOf(HasSubstr("The file does not have these tables: DOORS (the units have no doors)"),
            HasSubstr("The file does not have these columns: Tenants.DOORSCHEDULE1 (empty in "
                      "every row).\n"),
            HasSubstr("Foors (15 rows)"), HasSubstr("Tenants.FOORSCHEDULE1")));
  EXPECT_THAT(TextOf("odd.csv"),
              AllOf(HasSubstr("missing,DOORS,,,,,,missing-table,the file does not have this table"),
                    HasSubstr("missing,Tenants,,,DOORSCHEDULE1,,,missing-column,"),
                    HasSubstr("left,Foors,,,,,,unknown-table,"),
                    HasSubstr("left,Tenants,,,FOORSCHEDULE1,,,unknown-column,")));
  const json told =
      json::parse(Run({"init", "--from", File("floors.mdb"), "--force", "--json"}).out);
  EXPECT_EQ(told.at("missing"),
            json::parse(R"([{"table":"DOORS","column":null,"means":"the units have no doors"},
                            {"table":"Tenants","column":"DOORSCHEDULE1",
                             "means":"empty in every row"}])"));
}

/// A hole of five terabytes: whoever copied it would be at it for hours.
TEST_F(MovingCommands, AFileThatIsLargerThanAnyIsRefusedAtOnce) {
  fs::copy_file(Sample("building-2000.mdb"), File("huge.mdb"));
  fs::resize_file(File("huge.mdb"), std::uintmax_t{5} << 40U);
  for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
           {"init", "--from", File("huge.mdb"), "--report", File("odd.txt")},
           {"copy", "--from", File("huge.mdb"), "--to", File("building.db")}}) {
    const Outcome outcome = Run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "qorhost: '" + File("huge.mdb") +
                               "' has 5242880 MB, and a desktop database has 2048 MB at most: "
                               "name another file\n");
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder()), fs::directory_iterator()), 1);
}

TEST_F(MovingCommands, ACodePageIsRefusedOfFilesThatHaveNone) {
  for (const char* name : {"building-2000.mdb", "building-2010.accdb"}) {
    const Outcome outcome = Bring(name, {"--code-page", "1250"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("has its texts in Unicode: name no code page"));
  }
  EXPECT_FALSE(HasStore());
  EXPECT_EQ(json::parse(Bring("building-2000.mdb", {"--json"}).out).at("code_page"), nullptr);
}

TEST_F(MovingCommands, AUnitWithoutSettingsIsMendedByTheCommandThatIsNamed) {
  ASSERT_EQ(Bring("building-odd.mdb", {"--skip-bad-rows", "--report", File("odd.txt")}).status, 0);
  EXPECT_THAT(TextOf("odd.txt"), HasSubstr("before 'units edit 4 --type TYPE' gives it some"));
  const std::vector<std::string> add{"--unit", "4",      "credentials", "add",
                                     "--type", "card26", "--start",     "9001"};
  EXPECT_NE(Run(add).status, 0);
  EXPECT_EQ(Run({"units", "edit", "4", "--type", "Panel 500"}).status, 0);
  EXPECT_EQ(Run(add).status, 0);
}

TEST_F(MovingCommands, CopyBringsABuildingInAsInitDoes) {
  for (const char* name : {"building-2000.mdb", "building-odd.mdb"}) {
    SCOPED_TRACE(name);
    const Outcome made = Bring(name, {"--skip-bad-rows", "--force", "--json"});
    ASSERT_EQ(made.status, 0) << made.err;
    const Outcome copied = Run({"copy", "--from", Sample(name), "--to", File("copied.db"),
                                "--skip-bad-rows", "--force", "--json"});
    ASSERT_EQ(copied.status, 0) << copied.err;
    json here = json::parse(made.out);
    json there = json::parse(copied.out);
    EXPECT_EQ(there.at("added").at(0).at("name"), File("copied.db"));
    here.erase("added");
    there.erase("added");
    EXPECT_EQ(there, here);
    for (const std::vector<std::string>& command :
         std::vector<std::vector<std::string>>{{"tenants", "list"},
                                               {"credentials", "list"},
                                               {"dircodes", "list"},
                                               {"check"},
                                               {"history", "show", "1"}}) {
      std::vector<std::string> words{"--db", File("copied.db")};
      words.insert(words.end(), command.begin(), command.end());
      EXPECT_EQ(Run(words).out, Run(command).out) << testing::PrintToString(command);
    }
  }
}

TEST_F(MovingCommands, CopyTakesTheSameOptionsOfABuilding) {
  const auto copy = [this](const std::string& name, std::vector<std::string> more) {
    more.insert(more.begin(), {"copy", "--from", Sample(name), "--to", File("b.db")});
    return Run(std::move(more));
  };
  EXPECT_EQ(copy("building-odd.mdb", {"--report", File("odd.csv")}).status, 1);
  EXPECT_THAT(TextOf("odd.csv"), HasSubstr("duplicate-key"));
  EXPECT_THAT(copy("building-2000.mdb", {"-n"}).out, HasSubstr("Would create " + File("b.db")));
  EXPECT_EQ(copy("building-2000.mdb", {"--units", "3,7"}).status, 2);
  EXPECT_THAT(copy("building-2000.mdb", {"--code-page", "1"}).err, HasSubstr("no code page 1"));
  EXPECT_FALSE(fs::exists(File("b.db")));
  EXPECT_EQ(copy("building-2000.mdb", {"--units", "7"}).status, 0);
  EXPECT_EQ(Rows({"--db", File("b.db"), "units"}).size(), 1U);
  EXPECT_THAT(copy("building-2000.mdb", {}).err,
              AllOf(HasSubstr("exists already"),
                    HasSubstr("name another file with --to, or replace it with --force")));
  EXPECT_EQ(copy("building-2000.mdb", {"--force", "--unit", "3"}).status, 0);
  EXPECT_EQ(Rows({"--db", File("b.db"), "units"}).front().at("unit"), 3);
  EXPECT_EQ(copy("building-2000.mdb", {"--force"}).status, 0);
  EXPECT_EQ(Rows({"--db", File("b.db"), "units"}).size(), 4U);
}

TEST_F(MovingCommands, CopyWritesOverNeitherTheFileNorAStore) {
  fs::copy_file(Sample("encoded-2000.mdb"), File("building.mdb"));
  ASSERT_EQ(Run({"init", "--demo"}).status, 0);
  const std::string file = TextOf("building.mdb");
  const std::vector<std::string> onto{
      "copy", "--from", File("building.mdb"), "--to", File("building.mdb"), "--force"};
  EXPECT_EQ(Run(onto).status, 1);
  EXPECT_EQ(TextOf("building.mdb"), file);
  EXPECT_NE(Run({"copy", "--from", File("building.mdb"), "--to", File("b.db"), "--report",
                 File("building.db"), "--force"})
                .status,
            0)
      << "that is the store of --db";
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  EXPECT_FALSE(fs::exists(File("b.db")));
}

TEST_F(MovingCommands, CopyOfAStoreTakesNoOptionsOfABuilding) {
  ASSERT_EQ(Run({"init", "--demo"}).status, 0);
  for (const std::vector<std::string>& option : std::vector<std::vector<std::string>>{
           {"--force"}, {"--skip-bad-rows"}, {"--report", "odd.txt"}, {"--code-page", "1250"}}) {
    std::vector<std::string> words{"copy", "--to", File("b.db")};
    words.insert(words.end(), option.begin(), option.end());
    const Outcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 2) << option.front();
    EXPECT_THAT(outcome.err, HasSubstr("go with a desktop database in --from"));
    EXPECT_FALSE(fs::exists(File("b.db")));
  }
}

TEST_F(MovingCommands, WhatCannotBeReadLeavesNoStore) {
  std::vector<RefusedFile> files = MakeRefusedFiles(QORHOST_DESKTOP_SAMPLES, folder());
  files.push_back({Sample("README.md"), "is no desktop database"});
  files.push_back({Sample("none.mdb"), "there is no file"});
  for (const RefusedFile& refused : files) {
    const Outcome outcome = Run({"init", "--from", refused.file.string()});
    EXPECT_NE(outcome.status, 0) << refused.file;
    EXPECT_THAT(outcome.err,
                AllOf(HasSubstr(refused.file.filename().string()), HasSubstr(refused.says)));
    EXPECT_FALSE(HasStore()) << refused.file;
    const Outcome copied = Run({"copy", "--from", refused.file.string(), "--to", File("b.db")});
    EXPECT_NE(copied.status, 0) << refused.file;
    const std::string ending = refused.file.extension().string();
    if (ending == ".mdb" || ending == ".accdb") {
      EXPECT_EQ(copied.err, outcome.err);
    }
    EXPECT_FALSE(fs::exists(File("b.db"))) << refused.file;
  }
}

TEST_F(MovingCommands, AStoreThatIsThereStays) {
  ASSERT_EQ(Run({"init", "--demo"}).status, 0);
  const Outcome outcome = Bring("building-2000.mdb");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("--force"));
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  EXPECT_EQ(Bring("building-odd.mdb", {"--force"}).status, 1);
  EXPECT_EQ(Rows({"units"}).size(), 3U);
  EXPECT_EQ(Bring("building-2000.mdb", {"--force"}).status, 0);
  EXPECT_EQ(Rows({"units"}).size(), 4U);
}

TEST_F(MovingCommands, AFileThatIsOpenElsewhereIsToldOf) {
  fs::copy_file(Sample("encoded-2000.mdb"), File("building.mdb"));
  std::ofstream(File("building.ldb")) << "a seat";
  const Outcome outcome = Run({"init", "--from", File("building.mdb")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err,
              AllOf(HasSubstr("building.ldb"), HasSubstr("seems to be open elsewhere")));
  fs::remove(File("building.ldb"));
  std::ofstream(File("building.LDB")) << "a seat";
  EXPECT_THAT(Run({"init", "--from", File("building.mdb"), "--force"}).err,
              HasSubstr("building.LDB"));
  fs::remove(File("building.LDB"));
  EXPECT_EQ(Run({"init", "--from", File("building.mdb"), "--force"}).err, "");
}

TEST_F(MovingCommands, OptionsGoTogether) {
  EXPECT_EQ(Run({"init", "--skip-bad-rows"}).status, 2);
  EXPECT_EQ(Run({"init", "--report", File("odd.txt")}).status, 2);
  EXPECT_EQ(Bring("building-2000.mdb", {"--demo"}).status, 2);
  EXPECT_THAT(Bring("building-2000.mdb", {"--code-page", "1"}).err, HasSubstr("no code page 1"));
}

/// The program itself finds the one that reads such files beside it.
TEST_F(MovingCommands, TheProgramBringsItsOwnReader) {
  const std::string command = std::string(QORHOST_PROGRAM) + " --db '" + File("building.db") +
                              "' init --from '" + Sample("encoded-2000.mdb") + "' > /dev/null";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(Rows({"tenants", "list"}).size(), 8U);
}

}  // namespace
}  // namespace qorhost::test

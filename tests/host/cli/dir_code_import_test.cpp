// dircodes import: what a line enters, what is refused, and what a dry run leaves behind.
#include <gmock/gmock.h>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class DirCodeImport : public ImportFixture {
 protected:
  [[nodiscard]] nlohmann::json Row(const std::string& code) {
    const nlohmann::json rows =
        Query("SELECT * FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code);
    return rows.empty() ? nlohmann::json() : rows[0];
  }
  /// Imports one code 250 with a phone number and further cells.
  [[nodiscard]] Outcome ImportOne(const std::string& headings, const std::string& cells) {
    return Import("dircodes",
                  "Directory Code,Phone No.," + headings + "\r\n250,555-0199," + cells + "\r\n");
  }
};

TEST_F(DirCodeImport, EntersEveryColumnAndQueuesTheStep) {
  const std::size_t steps = StepCount();
  const Outcome outcome = Import(
      "dircodes",
      "Directory Code,Phone No.,Phone No. Extension,Phone No. Delay,Display Name,Directory "
      "Status,Directory Start Date,Directory End Date,Do Not Disturb,DND Schedule,Call "
      "Forwarding,CF Schedule,CF Phone No.,CF Extension,CF Time Delay,Show Display Name,Show "
      "Directory Code\r\n0250,555-0199,12,5,\"Abel, Zoë\",Active,01 Feb 2026 08:30,31 Dec 2026 "
      "18:00,True,Night Shift,True,1,'+49 30,7,4,False,False\r\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Imported 1 directory code, 0 lines refused.\n");
  EXPECT_THAT(outcome.err, IsEmpty());
  const nlohmann::json row = Row("250");
  EXPECT_EQ(row["DIRECTORYCODE"], 250);
  EXPECT_EQ(row["PHONENUMBER"], "555-0199");
  EXPECT_EQ(row["EXTENSION"], "12");
  EXPECT_EQ(row["TIMEDELAY"], 5);
  EXPECT_EQ(row["DISPLAYNAME"], "Abel, Zoë");
  EXPECT_EQ(row["ACTIVE"], true);
  EXPECT_EQ(row["STARTDATE"], "2026-02-01T08:30:00");
  EXPECT_EQ(row["ENDDATE"], "2026-12-31T18:00:00");
  EXPECT_EQ(row["ISDNDCHECKED"], true);
  EXPECT_EQ(row["DNDSCHEDULEID"], 4);
  EXPECT_EQ(row["ISCFCHECKED"], true);
  EXPECT_EQ(row["CFSCHEDULEID"], 1);
  EXPECT_EQ(row["CFPHONENUMBER"], "+49 30");
  EXPECT_EQ(row["CFEXTENSION"], "7");
  EXPECT_EQ(row["CFTIMEDELAY"], 4);
  EXPECT_EQ(row["SHOWDISPLAYNAME"], false);
  EXPECT_EQ(row["SHOWDIRECTORYCODE"], false);
  EXPECT_EQ(StepCount(), steps + 1);
}

TEST_F(DirCodeImport, NothingOfALineStaysOnTheScreenForTheNext) {
  const Outcome outcome =
      Import("dircodes",
             "Directory Code,Phone No.,Phone No. Extension,Phone No. Delay,Display Name,Directory "
             "Status,Directory Start Date,DND Schedule,CF Schedule,CF Phone No.,Show Display Name\n"
             "250,1,12,5,Abel,Inactive,,Night Shift,Full Access,2,No\n"
             "251,1,12,5,Abel,Active,1/2/2026,Night Shift,Full Access,2,No\n"
             "252,3,,,,,,,,,\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const nlohmann::json row = Row("252");
  EXPECT_EQ(row["PHONENUMBER"], "3");
  EXPECT_EQ(row["EXTENSION"], nullptr);
  EXPECT_EQ(row["TIMEDELAY"], 2);
  EXPECT_EQ(row["DISPLAYNAME"], nullptr);
  EXPECT_EQ(row["ACTIVE"], true);
  EXPECT_EQ(row["STARTDATE"], nullptr);
  EXPECT_EQ(row["ISDNDCHECKED"], false);
  EXPECT_EQ(row["DNDSCHEDULEID"], nullptr);
  EXPECT_EQ(row["ISCFCHECKED"], false);
  EXPECT_EQ(row["CFPHONENUMBER"], nullptr);
  EXPECT_EQ(row["SHOWDISPLAYNAME"], true);
}

// Unit 2 ends its codes on a fixed day.
TEST_F(DirCodeImport, TheUnitsOwnEndHoldsWithoutAColumnForIt) {
  EXPECT_EQ(Import("dircodes", "Directory Code,Phone No.\n250,1\n251,1\n").status, 0);
  EXPECT_EQ(Row("250")["ENDDATE"], "2026-12-31T23:59:59");
  EXPECT_EQ(Row("251")["ENDDATE"], "2026-12-31T23:59:59");
  EXPECT_EQ(Import("dircodes", "Directory Code,Phone No.,Directory End Date\n252,1,\n").status, 0);
  EXPECT_EQ(Row("252")["ENDDATE"], nullptr);
}

struct DateCase {
  std::string given;
  std::string stored;
};

TEST_F(DirCodeImport, AnEndAtTheLastMinuteOrWithoutATimeIsTheEndOfTheDay) {
  const std::vector<DateCase> cases{{"05 Mar 2027 23:59", "2027-03-05T23:59:59"},
                                    {"05 Mar 2027", "2027-03-05T23:59:59"},
                                    {"3/5/2027", "2027-03-05T23:59:59"},
                                    {"2027-03-05 23:58", "2027-03-05T23:58:00"},
                                    {"2027-03-05 23:59:00", "2027-03-05T23:59:00"}};
  std::string text = "Directory Code,Phone No.,Directory End Date\n";
  for (std::size_t at = 0; at < cases.size(); ++at) {
    text += std::to_string(300 + at) + ",1," + cases[at].given + "\n";
  }
  EXPECT_EQ(Import("dircodes", text).status, 0);
  for (std::size_t at = 0; at < cases.size(); ++at) {
    EXPECT_EQ(Row(std::to_string(300 + at))["ENDDATE"], cases[at].stored) << cases[at].given;
  }
}

TEST_F(DirCodeImport, ZerosInFrontDoNotCount) {
  EXPECT_EQ(Import("dircodes", "Directory Code,Phone No.\n0007,1\n12,1\n").status, 0);
  EXPECT_EQ(Row("7")["DIRECTORYCODE"], 7);
  EXPECT_EQ(Row("12")["DIRECTORYCODE"], 12);
}

struct RefusedCase {
  std::string name;
  std::string headings;
  std::string cells;
  std::string message;
};

void PrintTo(const RefusedCase& one, std::ostream* out) {
  *out << one.name;
}

class RefusedCodes : public ImportFixture, public testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedCodes, AreNamedAndTheOthersAreDone) {
  const RefusedCase& one = GetParam();
  const std::size_t codes = CountOf("DIRECTORYCODE");
  const std::size_t steps = StepCount();
  // Without further cells the good lines have nothing to say on them.
  std::string empty;
  for (const char character : one.headings) {
    empty += character == ',' ? "," : "";
  }
  const std::string text = "Directory Code,Phone No." + one.headings + "\n250,1" + empty + "\n" +
                           one.cells + "\n251,1" + empty + "\n";
  for (const bool dryRun : {true, false}) {
    const Outcome outcome =
        Import("dircodes", text,
               dryRun ? std::vector<std::string>{"--dry-run"} : std::vector<std::string>{});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qorhost: line 3: " + one.message + "\n");
    EXPECT_EQ(outcome.out,
              dryRun ? "Would import 2 directory codes, 1 line refused. Nothing was written.\n"
                     : "Imported 2 directory codes, 1 line refused.\n");
    EXPECT_EQ(CountOf("DIRECTORYCODE"), codes + (dryRun ? 0 : 2));
    EXPECT_EQ(StepCount(), steps + (dryRun ? 0 : 2));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, RefusedCodes,
    testing::Values(
        RefusedCase{"NoCode", "", ",1", "Please enter a Directory Code."},
        RefusedCase{"NegativeCode", "", "-5,1",
                    "Please enter the positive number as Directory Code."},
        RefusedCase{"NoPhone", "", "252,",
                    "Please enter a Phone No. to apply to the Directory Code."},
        RefusedCase{"StoredCode", "", "0101,1",
                    "This Directory Code already exists. Please enter a different Directory "
                    "Code."},
        RefusedCase{"CodeOfALineBefore", "", "0250,1",
                    "This Directory Code already exists. Please enter a different Directory "
                    "Code."},
        RefusedCase{"DndWithoutSchedule", ",Do Not Disturb", "252,1,True",
                    "Please select a Time Zone for the Do Not Disturb schedule."},
        RefusedCase{"DndWithTheWordForNone", ",Do Not Disturb,DND Schedule", "252,1,True,<None>",
                    "Please select a Time Zone for the Do Not Disturb schedule."},
        RefusedCase{"ForwardingWithoutSchedule", ",CF Phone No.", "252,1,2",
                    "Please select a Time Zone for the Call Forwarding schedule."},
        RefusedCase{"ForwardingWithoutPhone", ",CF Schedule", "252,1,Full Access",
                    "Please enter a Call Forwarding Phone No."},
        RefusedCase{"ForwardedToItself", ",CF Schedule,CF Phone No.", "252,1,Full Access,1",
                    "The phone numbers for the Directory Code and Call Forwarding are the same. "
                    "Do you still want to proceed? (answered No: --yes answers Yes)"},
        RefusedCase{"TextForACode", "", "abc,1",
                    "Directory Code 'abc' is no number: it would be stored as 0"},
        RefusedCase{"NumberWithAComma", "", "\"1,2\",1",
                    "Directory Code '1,2' is no number: it would be stored as 1"},
        RefusedCase{"LongCode", "", "12345,1",
                    "Directory Code '12345' is longer than the 4 digits of this unit's codes"},
        RefusedCase{"UnknownSchedule", ",DND Schedule", "252,1,Siesta",
                    "DND Schedule: there is no schedule 'Siesta' on the screen of this unit"},
        RefusedCase{"NoDate", ",Directory Start Date", "252,1,soon",
                    "Directory Start Date 'soon' is no date: write it as 2026-12-31, 12/31/2026 or "
                    "31 Dec 2026, with a time as in '2026-12-31 18:00'"},
        RefusedCase{"EarlyDate", ",Directory End Date", "252,1,1500-01-01",
                    "Directory End Date '1500-01-01' lies outside the years that the screen "
                    "offers"},
        RefusedCase{"NoDelay", ",Phone No. Extension,Phone No. Delay", "252,1,3,long",
                    "Phone No. Delay 'long' is no whole number of 32 bits"},
        RefusedCase{"NegativeDelay", ",CF Schedule,CF Phone No.,CF Extension,CF Time Delay",
                    "252,1,Full Access,2,3,-1", "CF Time Delay '-1' is below 0"},
        RefusedCase{"NoFlag", ",Show Display Name", "252,1,perhaps",
                    "Show Display Name 'perhaps' is neither True nor False"},
        RefusedCase{"NoStatus", ",Directory Status", "252,1,Retired",
                    "Directory Status 'Retired' is neither Active nor Inactive"},
        RefusedCase{"ControlCharacter", ",Display Name", "252,1,a\x1B[2Jb",
                    "Display Name 'a\\x1B[2Jb' cannot be typed into a box: it has control "
                    "characters or bytes that are not UTF-8"},
        RefusedCase{"Apostrophe", ",Display Name", "252,1,O'Neil",
                    "the display name holds an apostrophe, which would end the text in a "
                    "statement"},
        RefusedCase{"MissingCell", ",Display Name", "252,1", "2 cells, but 3 headings"},
        RefusedCase{"OneCellMore", "", "252,1,", "3 cells, but 2 headings"},
        RefusedCase{"NotUtf8", "", "252,\xFC",
                    "the line is not valid UTF-8: save the file as "
                    "UTF-8"}),
    [](const auto& one) { return one.param.name; });

TEST_F(DirCodeImport, YesLetsACodeBeForwardedToItsOwnNumber) {
  const Outcome outcome =
      Import("dircodes", "Directory Code,Phone No.,CF Schedule,CF Phone No.\n250,1,Full Access,1\n",
             {"--yes"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Row("250")["CFPHONENUMBER"], "1");
}

TEST_F(DirCodeImport, WhatASwitchedOffSettingHoldsIsLeftOutWithANote) {
  const Outcome outcome = Import(
      "dircodes",
      "Directory Code,Phone No.,Phone No. Delay,Directory Status,Directory Start Date,Do Not "
      "Disturb,DND Schedule,Call Forwarding,CF Phone No.\n"
      "250,1,7,Inactive,2026-02-01,False,Night Shift,False,2\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "qorhost: line 2: Phone No. Delay '7' was not taken over: without an extension it is "
            "2\n"
            "qorhost: line 2: DND Schedule was not taken over: Do Not Disturb is False\n"
            "qorhost: line 2: CF Phone No. was not taken over: Call Forwarding is False\n"
            "qorhost: line 2: Directory Start Date was not taken over: Directory Status is "
            "Inactive\n");
  EXPECT_EQ(Row("250")["ACTIVE"], false);
  EXPECT_EQ(Row("250")["STARTDATE"], nullptr);
}

TEST_F(DirCodeImport, ASchedulesNameCountsBeforeAnId) {
  Change("UPDATE Schedules SET ScheduleName='4' WHERE UnitKey=2 AND ScheduleID=2");
  EXPECT_EQ(Import("dircodes", "Directory Code,Phone No.,DND Schedule\n250,1,4\n251,1,5\n").status,
            0);
  EXPECT_EQ(Row("250")["DNDSCHEDULEID"], 2);
  EXPECT_EQ(Row("251")["DNDSCHEDULEID"], 5);
}

TEST_F(DirCodeImport, CapacityIsCountedThroughTheFileInADryRunToo) {
  const std::string text = "Directory Code,Phone No.\n900,1\n901,1\n902,1\n903,1\n";
  // Unit 1 takes two more codes.
  for (const char* option : {"--dry-run", "--no"}) {
    const Outcome outcome = Run({"--unit", "1", "dircodes", "import", Write(text), option});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("2 directory codes, 2 lines refused"));
    EXPECT_EQ(outcome.err,
              "qorhost: line 4: You cannot enter more than 2000 combined codes.\n"
              "qorhost: line 5: You cannot enter more than 2000 combined codes.\n");
  }
}

TEST_F(DirCodeImport, JsonHasTheCountsAndEveryRefusedLine) {
  const Outcome outcome =
      Import("dircodes", "Directory Code,Phone No.\n250,1\n\"25\n1\",1\n,\n252,1\n", {"--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, IsEmpty());
  const nlohmann::json report = nlohmann::json::parse(outcome.out);
  EXPECT_EQ(report["done"], 2);
  EXPECT_EQ(report["refused"], 2);
  EXPECT_EQ(report["lines"][0]["line"], 3);
  EXPECT_THAT(report["lines"][0]["message"], HasSubstr("is no number"));
  EXPECT_EQ(report["lines"][1],
            (nlohmann::json{{"line", 5}, {"message", "Please enter a Directory Code."}}));
}

TEST_F(DirCodeImport, AMessageAboutAHugeCellKeepsItsBeginningAndItsEnd) {
  const std::string huge(30000, 'x');
  const Outcome outcome = ImportOne("Show Display Name", huge);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_LT(outcome.err.size(), 500U);
  EXPECT_THAT(outcome.err, StartsWith("qorhost: line 2: Show Display Name 'xxx"));
  EXPECT_THAT(outcome.err, HasSubstr("xxx' is neither True nor False\n"));
}

TEST_F(DirCodeImport, AStatementThatFailsUndoesItsLineAndIsAFailure) {
  AddTrigger(
      "broken BEFORE INSERT ON ProgramSteps WHEN (SELECT DIRECTORYCODE FROM DirectoryCode WHERE "
      "RID=NEW.SubjectRID)=251 BEGIN SELECT raise(ABORT, 'no step today'); END");
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("line 3: "));
  EXPECT_THAT(outcome.err, HasSubstr("no step today"));
  EXPECT_EQ(outcome.out, "Imported 2 directory codes, 1 line refused.\n");
  EXPECT_TRUE(Row("251").is_null());
  EXPECT_FALSE(Row("252").is_null());
}

TEST_F(DirCodeImport, NothingIsImportedWhenTheStoreGivesUp) {
  AddTrigger(
      "broken BEFORE INSERT ON DirectoryCode WHEN NEW.DIRECTORYCODE=251 BEGIN SELECT "
      "raise(ROLLBACK, 'gave up'); END");
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("line 3: "));
  EXPECT_THAT(outcome.err, HasSubstr("nothing was imported"));
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_TRUE(Row("250").is_null());
  EXPECT_TRUE(Row("252").is_null());
}

TEST_F(DirCodeImport, ALongImportShowsABarOnATerminalAndNoneElsewhere) {
  std::string text = "Directory Code,Phone No.\n";
  for (int code = 1000; code < 2000; ++code) {
    text += std::to_string(code) + ",1\n";
  }
  const std::vector<std::string> words{"--unit", "2",         "dircodes",
                                       "import", Write(text), "--dry-run"};
  EXPECT_THAT(Run(words, "", true).err, HasSubstr("100 %  1000 of 1000"));
  EXPECT_THAT(Run(words).err, IsEmpty());
}

TEST_F(DirCodeImport, StandardInputIsReadToo) {
  const Outcome outcome =
      Run({"--unit", "2", "dircodes", "import", "-"}, "Directory Code,Phone No.\n250,1\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_FALSE(Row("250").is_null());
}

TEST_F(DirCodeImport, TheSampleIsImportedWhole) {
  const Outcome outcome =
      Run({"--unit", "2", "dircodes", "import", QORHOST_SAMPLES "/dircodes.csv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(outcome.out, "Imported 6 directory codes, 0 lines refused.\n");
}

}  // namespace
}  // namespace qorhost::test

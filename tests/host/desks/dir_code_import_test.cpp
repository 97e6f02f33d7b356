// Imports of directory codes: what a line enters, what is refused, and what a dry run leaves
// behind.
#include "host/desks/dir_code_import.h"

#include <gmock/gmock.h>

#include "host/desks/desk_error.h"
#include "tests/host/desks/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DirCodeImports : public DirCodeDeskFixture {
 protected:
  [[nodiscard]] ImportReport Import(const std::string& text, const ImportRules& rules = {},
                                    std::int32_t unitKey = kUnit) {
    ImportFile file(text, DirCodeImportColumns());
    return ImportDirCodes(session(), unitKey, file, rules, nullptr);
  }
  static ImportRules Rules(bool dryRun) {
    ImportRules rules;
    rules.dryRun = dryRun;
    return rules;
  }
  /// "line 3: text" for a refused line, "line 3, note: text" for a part that was left out.
  static std::vector<std::string> Told(const ImportReport& report) {
    std::vector<std::string> told;
    for (const LineRemark& remark : report.remarks) {
      told.push_back("line " + std::to_string(remark.line) + (remark.refused ? ": " : ", note: ") +
                     report.TextOf(remark));
    }
    return told;
  }
};

TEST_F(DirCodeImports, EnterEveryColumnAndQueueTheStep) {
  const std::size_t steps = Steps().size();
  const ImportReport report = Import(
      "Directory Code,Phone No.,Phone No. Extension,Phone No. Delay,Display Name,Directory "
      "Status,Directory Start Date,Directory End Date,Do Not Disturb,DND Schedule,Call "
      "Forwarding,CF Schedule,CF Phone No.,CF Extension,CF Time Delay,Show Display Name,Show "
      "Directory Code\r\n0250,555-0199,12,5,\"Abel, Zoë\",Active,01 Feb 2026 08:30,31 Dec 2026 "
      "18:00,True,Night Shift,True,1,'+49 30,7,4,False,False\r\n");
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_EQ(report.done, 1U);
  EXPECT_EQ(report.refused, 0U);
  EXPECT_THAT(Told(report), IsEmpty());
  Row row = RowOf("250");
  EXPECT_EQ(row["DIRECTORYCODE"], "250");
  EXPECT_EQ(row["PHONENUMBER"], "555-0199");
  EXPECT_EQ(row["EXTENSION"], "12");
  EXPECT_EQ(row["TIMEDELAY"], "5");
  EXPECT_EQ(row["DISPLAYNAME"], "Abel, Zoë");
  EXPECT_EQ(row["ACTIVE"], "True");
  EXPECT_EQ(row["STARTDATE"], "2/1/2026 8:30:00 AM");
  EXPECT_EQ(row["ENDDATE"], "12/31/2026 6:00:00 PM");
  EXPECT_EQ(row["ISDNDCHECKED"], "True");
  EXPECT_EQ(row["DNDSCHEDULEID"], "4");
  EXPECT_EQ(row["ISCFCHECKED"], "True");
  EXPECT_EQ(row["CFSCHEDULEID"], "1");
  EXPECT_EQ(row["CFPHONENUMBER"], "+49 30");
  EXPECT_EQ(row["CFEXTENSION"], "7");
  EXPECT_EQ(row["CFTIMEDELAY"], "4");
  EXPECT_EQ(row["SHOWDISPLAYNAME"], "False");
  EXPECT_EQ(row["SHOWDIRECTORYCODE"], "False");
  EXPECT_EQ(Steps().size(), steps + 1);
}

TEST_F(DirCodeImports, LeaveNothingOfALineOnTheScreenForTheNext) {
  const ImportReport report = Import(
      "Directory Code,Phone No.,Phone No. Extension,Phone No. Delay,Display Name,Directory "
      "Status,Directory Start Date,DND Schedule,CF Schedule,CF Phone No.,Show Display Name\n"
      "250,1,12,5,Abel,Inactive,,Night Shift,Full Access,2,No\n"
      "251,1,12,5,Abel,Active,1/2/2026,Night Shift,Full Access,2,No\n"
      "252,3,,,,,,,,,\n");
  EXPECT_EQ(report.ending, Ending::kDone);
  Row row = RowOf("252");
  EXPECT_EQ(row["PHONENUMBER"], "3");
  EXPECT_EQ(row["EXTENSION"], "Null");
  EXPECT_EQ(row["TIMEDELAY"], "2");
  EXPECT_EQ(row["DISPLAYNAME"], "Null");
  EXPECT_EQ(row["ACTIVE"], "True");
  EXPECT_EQ(row["STARTDATE"], "Null");
  EXPECT_EQ(row["ISDNDCHECKED"], "False");
  EXPECT_EQ(row["DNDSCHEDULEID"], "Null");
  EXPECT_EQ(row["ISCFCHECKED"], "False");
  EXPECT_EQ(row["CFPHONENUMBER"], "Null");
  EXPECT_EQ(row["SHOWDISPLAYNAME"], "True");
}

// Unit 2 ends its codes on a fixed day.
TEST_F(DirCodeImports, TakeTheUnitsOwnEndWithoutAColumnForIt) {
  EXPECT_EQ(Import("Directory Code,Phone No.\n250,1\n251,1\n").ending, Ending::kDone);
  EXPECT_EQ(RowOf("250")["ENDDATE"], "12/31/2026 11:59:59 PM");
  EXPECT_EQ(RowOf("251")["ENDDATE"], "12/31/2026 11:59:59 PM");
  EXPECT_EQ(Import("Directory Code,Phone No.,Directory End Date\n252,1,\n").ending, Ending::kDone);
  EXPECT_EQ(RowOf("252")["ENDDATE"], "Null");
}

struct DateCase {
  std::string given;
  std::string stored;
};

TEST_F(DirCodeImports, TakeAnEndAtTheLastMinuteOrWithoutATimeForTheEndOfTheDay) {
  const std::vector<DateCase> cases{{"05 Mar 2027 23:59", "3/5/2027 11:59:59 PM"},
                                    {"05 Mar 2027", "3/5/2027 11:59:59 PM"},
                                    {"3/5/2027", "3/5/2027 11:59:59 PM"},
                                    {"2027-03-05 23:58", "3/5/2027 11:58:00 PM"},
                                    {"2027-03-05 23:59:00", "3/5/2027 11:59:00 PM"}};
  std::string text = "Directory Code,Phone No.,Directory End Date\n";
  for (std::size_t at = 0; at < cases.size(); ++at) {
    text += std::to_string(300 + at) + ",1," + cases[at].given + "\n";
  }
  EXPECT_EQ(Import(text).ending, Ending::kDone);
  for (std::size_t at = 0; at < cases.size(); ++at) {
    EXPECT_EQ(RowOf(std::to_string(300 + at))["ENDDATE"], cases[at].stored) << cases[at].given;
  }
}

TEST_F(DirCodeImports, DoNotCountZerosInFront) {
  EXPECT_EQ(Import("Directory Code,Phone No.\n0007,1\n12,1\n").ending, Ending::kDone);
  EXPECT_EQ(RowOf("7")["DIRECTORYCODE"], "7");
  EXPECT_EQ(RowOf("12")["DIRECTORYCODE"], "12");
}

struct RefusedLine {
  std::string name;
  std::string headings;
  std::string cells;
  std::string message;
};

void PrintTo(const RefusedLine& line, std::ostream* out) {
  *out << line.name;
}

class RefusedLines : public DirCodeImports, public testing::WithParamInterface<RefusedLine> {};

TEST_P(RefusedLines, AreNamedAndTheOthersAreDone) {
  const RefusedLine& line = GetParam();
  const std::size_t steps = Steps().size();
  // Without further cells the good lines have nothing to say on them.
  std::string empty;
  for (const char character : line.headings) {
    empty += character == ',' ? "," : "";
  }
  const std::string text = "Directory Code,Phone No." + line.headings + "\n250,1" + empty + "\n" +
                           line.cells + "\n251,1" + empty + "\n";
  for (const bool dryRun : {true, false}) {
    const ImportReport report = Import(text, Rules(dryRun));
    EXPECT_EQ(report.ending, Ending::kRefused);
    EXPECT_EQ(report.dryRun, dryRun);
    EXPECT_THAT(Told(report), ElementsAre("line 3: " + line.message));
    EXPECT_EQ(report.done, 2U);
    EXPECT_EQ(report.refused, 1U);
    EXPECT_EQ(CodeCount(), 6U + (dryRun ? 0 : 2));
    EXPECT_EQ(Steps().size(), steps + (dryRun ? 0 : 2));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Imports, RefusedLines,
    testing::Values(
        RefusedLine{"NoCode", "", ",1", "Please enter a Directory Code."},
        RefusedLine{"NegativeCode", "", "-5,1",
                    "Please enter the positive number as Directory Code."},
        RefusedLine{"NoPhone", "", "252,",
                    "Please enter a Phone No. to apply to the Directory Code."},
        RefusedLine{"StoredCode", "", "0101,1",
                    "This Directory Code already exists. Please enter a different Directory "
                    "Code."},
        RefusedLine{"CodeOfALineBefore", "", "0250,1",
                    "This Directory Code already exists. Please enter a different Directory "
                    "Code."},
        RefusedLine{"DndWithoutSchedule", ",Do Not Disturb", "252,1,True",
                    "Please select a Time Zone for the Do Not Disturb schedule."},
        RefusedLine{"DndWithTheWordForNone", ",Do Not Disturb,DND Schedule", "252,1,True,<None>",
                    "Please select a Time Zone for the Do Not Disturb schedule."},
        RefusedLine{"ForwardingWithoutSchedule", ",CF Phone No.", "252,1,2",
                    "Please select a Time Zone for the Call Forwarding schedule."},
        RefusedLine{"ForwardingWithoutPhone", ",CF Schedule", "252,1,Full Access",
                    "Please enter a Call Forwarding Phone No."},
        RefusedLine{"ForwardedToItself", ",CF Schedule,CF Phone No.", "252,1,Full Access,1",
                    "The phone numbers for the Directory Code and Call Forwarding are the same. "
                    "Do you still want to proceed? (answered No)"},
        RefusedLine{"TextForACode", "", "abc,1",
                    "Directory Code 'abc' is no number: it would be stored as 0"},
        RefusedLine{"NumberWithAComma", "", "\"1,2\",1",
                    "Directory Code '1,2' is no number: it would be stored as 1"},
        RefusedLine{"FractionForACode", "", "1.5,1",
                    "Directory Code '1.5' is no whole number: write it in digits alone"},
        RefusedLine{"ExponentForACode", "", "9e9,1",
                    "Directory Code '9e9' is no whole number: write it in digits alone"},
        RefusedLine{"LongCode", "", "12345,1",
                    "Directory Code '12345' is longer than the 4 digits of this unit's codes"},
        RefusedLine{"UnknownSchedule", ",DND Schedule", "252,1,Siesta",
                    "DND Schedule: there is no schedule 'Siesta' on the screen of this unit"},
        RefusedLine{"NoDate", ",Directory Start Date", "252,1,soon",
                    "Directory Start Date 'soon' is no date: write it as 2026-12-31, 12/31/2026 or "
                    "31 Dec 2026, with a time as in '2026-12-31 18:00'"},
        RefusedLine{"EarlyDate", ",Directory End Date", "252,1,1500-01-01",
                    "Directory End Date '1500-01-01' lies outside the years that the screen "
                    "offers"},
        RefusedLine{
            "NoDelay", ",Phone No. Extension,Phone No. Delay", "252,1,3,long",
            "Phone No. Delay 'long' must be a whole number from 0 to 2147483647, in digits alone"},
        RefusedLine{"NegativeDelay", ",CF Schedule,CF Phone No.,CF Extension,CF Time Delay",
                    "252,1,Full Access,2,3,-1", "CF Time Delay '-1' is below 0"},
        RefusedLine{"NoFlag", ",Show Display Name", "252,1,perhaps",
                    "Show Display Name 'perhaps' is neither True nor False"},
        RefusedLine{"NoStatus", ",Directory Status", "252,1,Retired",
                    "Directory Status 'Retired' is neither Active nor Inactive"},
        RefusedLine{"ControlCharacter", ",Display Name", "252,1,a\x1B[2Jb",
                    "Display Name 'a\x1B[2Jb' cannot be typed into a box: it has control "
                    "characters or bytes that are not UTF-8"},
        RefusedLine{"Apostrophe", ",Display Name", "252,1,O'Neil",
                    "Display Name 'O'Neil' has an apostrophe, which would end the text in a "
                    "statement: write O’Neil"},
        RefusedLine{"MissingCell", ",Display Name", "252,1", "2 cells, but 3 headings"},
        RefusedLine{"OneCellMore", "", "252,1,", "3 cells, but 2 headings"},
        RefusedLine{"NotUtf8", "", "252,\xFC",
                    "the line is not valid UTF-8: save the file as "
                    "UTF-8, or say which encoding it has"}),
    [](const auto& line) { return line.param.name; });

TEST_F(DirCodeImports, WithYesForwardACodeToItsOwnNumber) {
  ImportRules rules;
  rules.answerYes = true;
  const std::string text =
      "Directory Code,Phone No.,CF Schedule,CF Phone No.\n250,1,Full Access,1\n";
  EXPECT_EQ(Import(text, rules).ending, Ending::kDone);
  EXPECT_EQ(RowOf("250")["CFPHONENUMBER"], "1");
}

TEST_F(DirCodeImports, LeaveOutWithANoteWhatASwitchedOffSettingHolds) {
  const ImportReport report = Import(
      "Directory Code,Phone No.,Phone No. Delay,Directory Status,Directory Start Date,Do Not "
      "Disturb,DND Schedule,Call Forwarding,CF Phone No.\n"
      "250,1,7,Inactive,2026-02-01,False,Night Shift,False,2\n");
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_THAT(
      Told(report),
      ElementsAre("line 2, note: Phone No. Delay '7' was not taken over: without an extension it "
                  "is 2",
                  "line 2, note: DND Schedule was not taken over: Do Not Disturb is False",
                  "line 2, note: CF Phone No. was not taken over: Call Forwarding is False",
                  "line 2, note: Directory Start Date was not taken over: Directory Status is "
                  "Inactive"));
  EXPECT_EQ(RowOf("250")["ACTIVE"], "False");
  EXPECT_EQ(RowOf("250")["STARTDATE"], "Null");
}

TEST_F(DirCodeImports, TakeASchedulesNameBeforeAnId) {
  Run("UPDATE Schedules SET ScheduleName='4' WHERE UnitKey=2 AND ScheduleID=2");
  EXPECT_EQ(Import("Directory Code,Phone No.,DND Schedule\n250,1,4\n251,1,5\n").ending,
            Ending::kDone);
  EXPECT_EQ(RowOf("250")["DNDSCHEDULEID"], "2");
  EXPECT_EQ(RowOf("251")["DNDSCHEDULEID"], "5");
}

TEST_F(DirCodeImports, CountTheCapacityThroughTheFileInADryRunToo) {
  constexpr std::int32_t kNearlyFull = 1;  // takes two more
  for (const bool dryRun : {true, false}) {
    const ImportReport report = Import("Directory Code,Phone No.\n900,1\n901,1\n902,1\n903,1\n",
                                       Rules(dryRun), kNearlyFull);
    EXPECT_EQ(report.ending, Ending::kRefused);
    EXPECT_EQ(report.done, 2U);
    EXPECT_THAT(Told(report),
                ElementsAre("line 4: You cannot enter more than 2000 combined codes.",
                            "line 5: You cannot enter more than 2000 combined codes."));
  }
}

TEST_F(DirCodeImports, CountTheLinesOfACellWithALineBreak) {
  const ImportReport report = Import("Directory Code,Phone No.\n250,1\n\"25\n1\",1\n,1\n252,1\n");
  EXPECT_EQ(report.done, 2U);
  EXPECT_EQ(report.refused, 2U);
  EXPECT_THAT(Told(report),
              ElementsAre(testing::AllOf(StartsWith("line 3: "), HasSubstr("is no number")),
                          "line 5: Please enter a Directory Code."));
}

TEST_F(DirCodeImports, TellOfAHugeCellItsBeginningAndItsEnd) {
  const ImportReport report = Import("Directory Code,Phone No.,Show Display Name\n250,555-0199," +
                                     std::string(30000, 'x') + "\n");
  EXPECT_EQ(report.ending, Ending::kRefused);
  ASSERT_EQ(report.texts.size(), 1U);
  EXPECT_LT(report.texts[0].size(), 450U);
  EXPECT_THAT(report.texts[0], StartsWith("Show Display Name 'xxx"));
  EXPECT_THAT(report.texts[0], testing::EndsWith("xxx' is neither True nor False"));
}

TEST_F(DirCodeImports, UndoTheLineOfAStatementThatFails) {
  Run("CREATE TRIGGER broken BEFORE INSERT ON ProgramSteps WHEN (SELECT DIRECTORYCODE FROM "
      "DirectoryCode WHERE RID=NEW.SubjectRID)=251 BEGIN SELECT raise(ABORT, 'no step today'); "
      "END");
  const ImportReport report = Import("Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
  EXPECT_EQ(report.ending, Ending::kFailed);
  EXPECT_THAT(Told(report),
              ElementsAre(testing::AllOf(StartsWith("line 3: "), HasSubstr("no step today"))));
  EXPECT_EQ(report.done, 2U);
  EXPECT_EQ(report.refused, 1U);
  EXPECT_THAT(RowOf("251"), IsEmpty());
  EXPECT_FALSE(RowOf("252").empty());
}

TEST_F(DirCodeImports, ImportNothingWhenTheStoreGivesUp) {
  Run("CREATE TRIGGER broken BEFORE INSERT ON DirectoryCode WHEN NEW.DIRECTORYCODE=251 BEGIN "
      "SELECT raise(ROLLBACK, 'gave up'); END");
  try {
    (void)Import("Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
    ADD_FAILURE() << "the import went on";
  } catch (const FailureError& failure) {
    EXPECT_THAT(failure.what(), StartsWith("line 3: "));
    EXPECT_THAT(failure.what(), HasSubstr("nothing was imported"));
  }
  EXPECT_THAT(RowOf("250"), IsEmpty());
  EXPECT_THAT(RowOf("252"), IsEmpty());
}

}  // namespace
}  // namespace qorhost::test

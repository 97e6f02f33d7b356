// The commands that drive the directory-code screen: what they print, store and refuse.
#include <gmock/gmock.h>

#include "tests/host/cli/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class DirCodes : public DirCodeFixture {};

TEST_F(DirCodes, ListShowsARowForEveryCodeInTheirOrder) {
  const nlohmann::json rows = Rows({"--unit", "1", "dircodes", "list"});
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[0]["code"], 101);
  EXPECT_EQ(rows[9]["code"], 110);
  EXPECT_EQ(rows[0]["tenants"], 1);
  EXPECT_EQ(rows[2]["forward_schedule"], "Weekdays 8 to 18");
  EXPECT_EQ(rows[0]["state"], "in the unit");
}

TEST_F(DirCodes, ShowPrintsTheCodeItsSchedulesAndItsTenants) {
  const Outcome outcome = Do({"show", "103"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("Directory code    103\n"));
  EXPECT_THAT(outcome.out, HasSubstr("Call forwarding   yes\n  schedule        Early Shift\n"));
  const nlohmann::json shown = nlohmann::json::parse(Do({"show", "0103", "--json"}).out);
  EXPECT_EQ(shown["code"], 103);
  EXPECT_EQ(shown["forward_phone"], "555-0202");
  EXPECT_EQ(shown["tenants"].size(), 1U);
}

TEST_F(DirCodes, ACodeIsNamedByItsNumberOrItsRow) {
  const std::string rid = Row("104")["RID"].dump();
  EXPECT_EQ(Do({"show", "104"}).out, Do({"show", "rid:" + rid}).out);
  EXPECT_EQ(Do({"show", "104"}).out, Do({"show", "0104"}).out);
}

TEST_F(DirCodes, ANumberThatTwoRowsHaveIsRefusedWithTheRows) {
  Change("UPDATE DIRECTORYCODE SET DIRECTORYCODE=104 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  const Outcome outcome = Do({"show", "104"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("name a row instead (rid:14, rid:15)"));
}

TEST_F(DirCodes, AddStoresWhatWasTypedAndQueuesItsStep) {
  const Outcome outcome = Do({"add",
                              "250",
                              "--phone",
                              "555-0199",
                              "--extension",
                              "12",
                              "--delay",
                              "5",
                              "--dnd",
                              "night shift",
                              "--forward-phone",
                              "555-0290",
                              "--forward-schedule",
                              "1",
                              "--display-name",
                              " Karin Abel ",
                              "--from",
                              "2026-02-01",
                              "--to",
                              "2026-12-31",
                              "--hide-code"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("Added directory code 0250 (RID "));
  const nlohmann::json row = Row("250");
  EXPECT_EQ(row["PHONENUMBER"], "555-0199");
  EXPECT_EQ(row["EXTENSION"], "12");
  EXPECT_EQ(row["TIMEDELAY"], 5);
  EXPECT_EQ(row["ISDNDCHECKED"], true);
  EXPECT_EQ(row["DNDSCHEDULEID"], 4);
  EXPECT_EQ(row["ISCFCHECKED"], true);
  EXPECT_EQ(row["CFSCHEDULEID"], 1);
  EXPECT_EQ(row["CFPHONENUMBER"], "555-0290");
  EXPECT_EQ(row["DISPLAYNAME"], "Karin Abel");
  EXPECT_EQ(row["SHOWDISPLAYNAME"], true);
  EXPECT_EQ(row["SHOWDIRECTORYCODE"], false);
  EXPECT_EQ(row["ACTIVE"], true);
  EXPECT_EQ(row["STARTDATE"], "2026-02-01T00:00:00");
  EXPECT_EQ(row["ENDDATE"], "2026-12-31T23:59:59");
  EXPECT_EQ(row["MODIFIED"], 1);
  ASSERT_EQ(Steps().size(), 1U);
  EXPECT_EQ(Steps()[0]["kind"], "program directory code");
  EXPECT_EQ(Steps()[0]["subject_rid"], row["RID"]);
}

TEST_F(DirCodes, AddReportsAsJson) {
  const nlohmann::json report =
      Rows({"--unit", "2", "dircodes", "add", "0250", "--phone", "555-0199"});
  EXPECT_EQ(report["code"], 250);
  EXPECT_EQ(report["rid"], Row("250")["RID"]);
}

TEST_F(DirCodes, AddTakesTheUnitsOwnLastDayUnlessToldOtherwise) {
  EXPECT_EQ(Do({"add", "250", "--phone", "1"}).status, 0);
  EXPECT_EQ(Row("250")["ENDDATE"], "2026-12-31T23:59:59");
  EXPECT_EQ(Do({"add", "251", "--phone", "1", "--to", "none"}).status, 0);
  EXPECT_TRUE(Row("251")["ENDDATE"].is_null());
}

struct RefusedRow {
  std::string_view name;
  std::vector<std::string> words;
  std::string_view message;
};

class RefusedCode : public DirCodes, public testing::WithParamInterface<RefusedRow> {};

TEST_P(RefusedCode, PrintsTheControllersMessageAndStoresNothing) {
  std::vector<std::string> words = GetParam().words;
  words.insert(words.begin(), "add");
  const Outcome outcome = Do(words);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "Pello RT [information]: " + std::string(GetParam().message) + "\n");
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(Rows({"--unit", "2", "dircodes", "list"}).size(), 6U);
  EXPECT_EQ(Steps().size(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, RefusedCode,
    testing::Values(
        RefusedRow{"NoCode", {"", "--phone", "1"}, "Please enter a Directory Code."},
        RefusedRow{"NegativeCode",
                   {"--phone", "1", "--", "-3"},
                   "Please enter the positive number as Directory Code."},
        RefusedRow{"NoPhone",
                   {"250", "--phone", " "},
                   "Please enter a Phone No. to apply to the Directory Code."},
        RefusedRow{"NoScheduleToForward",
                   {"250", "--phone", "1", "--forward-phone", "2"},
                   "Please select a Time Zone for the Call Forwarding schedule."},
        RefusedRow{"NoPhoneToForwardTo",
                   {"250", "--phone", "1", "--forward-schedule", "1"},
                   "Please enter a Call Forwarding Phone No."},
        RefusedRow{"PeriodBackwards",
                   {"250", "--phone", "1", "--from", "2026-05-01", "--to", "2026-04-01"},
                   "The End Date must be later than the Start Date. Please select a later End "
                   "Date."},
        RefusedRow{"CodeInUse",
                   {"0101", "--phone", "1"},
                   "This Directory Code already exists. Please enter a different Directory "
                   "Code."}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DirCodes, AddIsRefusedWhenTheUnitIsFull) {
  ASSERT_EQ(Run({"--unit", "1", "credentials", "add", "--type", "card26", "--start", "1", "--end",
                 "2", "--facility", "12"})
                .status,
            0);
  const Outcome outcome = Run({"--unit", "1", "dircodes", "add", "250", "--phone", "1"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "Pello RT [information]: You cannot enter more than 2000 combined codes.\n");
}

TEST_F(DirCodes, AFullUnitStillLetsACodeBeEdited) {
  ASSERT_EQ(Run({"--unit", "1", "credentials", "add", "--type", "card26", "--start", "1", "--end",
                 "2", "--facility", "12"})
                .status,
            0);
  EXPECT_EQ(Run({"--unit", "1", "dircodes", "edit", "101", "--phone", "9"}).status, 0);
}

TEST_F(DirCodes, AddTakesATextForItsLeadingNumberAndSaysSo) {
  const Outcome outcome = Do({"add", "25a", "--phone", "1"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "qorhost: '25a' was taken as 25.\n");
  EXPECT_THAT(outcome.out, HasSubstr("Added directory code 0025 "));
}

TEST_F(DirCodes, AddAsksWhenBothPhonesAreTheSame) {
  const std::vector<std::string> words = {
      "add", "250", "--phone", "5", "--forward-phone", "5", "--forward-schedule", "1"};
  const Outcome no = Do(words);
  EXPECT_EQ(no.status, 1);
  EXPECT_THAT(no.err, HasSubstr("are the same. Do you still want to proceed?"));
  EXPECT_TRUE(Row("250").is_null());
  std::vector<std::string> yes = words;
  yes.emplace_back("--yes");
  EXPECT_EQ(Do(yes).status, 0);
  EXPECT_FALSE(Row("250").is_null());
}

TEST_F(DirCodes, NeitherCommandLetsATextBecomeAStatement) {
  const std::string hostile = "1', MODIFIED=9, DISPLAYNAME='";
  for (const char* option : {"--phone", "--extension", "--display-name"}) {
    const Outcome added = Do({"add", "250", option, hostile});
    EXPECT_EQ(added.status, 2) << option;
    EXPECT_THAT(added.err, HasSubstr("apostrophe")) << option;
    EXPECT_EQ(Do({"edit", "101", option, hostile}).status, 2) << option;
  }
  EXPECT_NE(Do({"add", "1 OR", "--phone", "1"}).status, 3);
  EXPECT_EQ(Do({"renumber", "101", "1,MODIFIED=3"}).status, 2);
  EXPECT_EQ(Do({"delete", "101 OR 1=1", "--yes"}).status, 2);
  EXPECT_EQ(Row("101")["MODIFIED"], 0);
}

TEST_F(DirCodes, TextsThatAStatementWouldChangeAreRefused) {
  const Outcome outcome = Do({"add", "250", "--phone", "1", "--display-name", "Abel, , Karin"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("display name"));
}

TEST_F(DirCodes, EditChangesWhatIsNamedAndKeepsTheRest) {
  const nlohmann::json before = Row("103");
  const Outcome outcome = Do({"edit", "103", "--phone", "555-7777"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Changed directory code 0103 (RID 13).\n");
  EXPECT_EQ(outcome.err, "");
  nlohmann::json expected = before;
  expected["PHONENUMBER"] = "555-7777";
  expected["MODIFIED"] = 2;
  expected["LASTMODIFIEDDATE"] = "2026-01-31T14:05:09";
  EXPECT_EQ(Row("103"), expected);
  ASSERT_EQ(Steps().size(), 1U);
  EXPECT_EQ(Steps()[0]["kind"], "program directory code");
}

TEST_F(DirCodes, EditSwitchesDoNotDisturbAndForwarding) {
  EXPECT_EQ(Do({"edit", "103", "--no-forwarding", "--dnd", "Late Shift"}).status, 0);
  const nlohmann::json row = Row("103");
  EXPECT_EQ(row["ISCFCHECKED"], false);
  EXPECT_TRUE(row["CFPHONENUMBER"].is_null());
  EXPECT_EQ(row["DNDSCHEDULEID"], 3);
  EXPECT_EQ(Do({"edit", "103", "--no-dnd"}).err, "");
  EXPECT_TRUE(Row("103")["DNDSCHEDULEID"].is_null());
}

TEST_F(DirCodes, EditNamesTheIdleSettingsThatItClears) {
  Change(
      "UPDATE DIRECTORYCODE SET ISCFCHECKED=False, ACTIVE=False, ENDDATE=#12/31/2026# WHERE "
      "UNITKEY=2 AND DIRECTORYCODE=103");
  const Outcome outcome = Do({"edit", "103", "--phone", "1"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "qorhost: cleared, because it was switched off: the call forwarding, the active "
            "period.\n");
}

TEST_F(DirCodes, EditDoesNotRoundACode) {
  Change("UPDATE DIRECTORYCODE SET DIRECTORYCODE=103.5 WHERE UNITKEY=2 AND DIRECTORYCODE=103");
  const Outcome outcome = Do({"edit", "103.5", "--phone", "1"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("103.5"));
  EXPECT_EQ(Do({"renumber", "103.5", "103"}).status, 0);
  EXPECT_EQ(Do({"edit", "103", "--phone", "1"}).status, 0);
}

TEST_F(DirCodes, RenumberKeepsTheRowAndQueuesTheChange) {
  const nlohmann::json before = Row("101");
  const Outcome outcome = Do({"renumber", "101", "180"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Directory code 0101 (RID 11) is 0180 now.\n");
  EXPECT_EQ(Row("180")["RID"], before["RID"]);
  EXPECT_EQ(Row("180")["MODIFIED"], 2);
  ASSERT_EQ(Steps().size(), 1U);
  EXPECT_EQ(Steps()[0]["kind"], "change directory code");
  EXPECT_EQ(Steps()[0]["code"], "101");
}

TEST_F(DirCodes, RenumberRefusesWhatTheControllerRefuses) {
  const auto refusal = [&](const std::string& number) {
    return Do({"renumber", "101", "--", number}).err;
  };
  EXPECT_EQ(refusal(""), "Pello RT [information]: Please enter a Directory Code.\n");
  EXPECT_EQ(refusal("ten"), "Pello RT [information]: Please enter the Directory Code in number.\n");
  EXPECT_EQ(refusal("-7"),
            "Pello RT [information]: Please enter the positvie number as Directory Code.\n");
  EXPECT_THAT(refusal("102"), HasSubstr("This Directory Code already exists."));
  EXPECT_EQ(Row("101")["MODIFIED"], 0);
}

TEST_F(DirCodes, DeleteAsksTakesTheCodeFromItsTenantsAndQueuesTheStep) {
  ASSERT_EQ(TenantsOf(11).size(), 1U);
  const Outcome unasked = Do({"delete", "101"});
  EXPECT_EQ(unasked.status, 1);
  EXPECT_THAT(unasked.err, HasSubstr("This Directory Code is applied to a Tenant."));
  EXPECT_THAT(unasked.err, HasSubstr("directory code 0101 (RID 11) was not deleted"));
  ASSERT_FALSE(Row("101").is_null());

  const Outcome outcome = Do({"delete", "101", "--yes"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("Deleted directory code 0101 (RID 11).\nWithout it now: "));
  EXPECT_TRUE(Row("101").is_null());
  EXPECT_EQ(TenantsOf(11).size(), 0U);
  ASSERT_EQ(Steps().size(), 1U);
  EXPECT_EQ(Steps()[0]["kind"], "delete directory code");
}

TEST_F(DirCodes, DeletingACodeThatTheUnitNeverHadWithdrawsItsStep) {
  ASSERT_EQ(Do({"add", "250", "--phone", "1"}).status, 0);
  ASSERT_EQ(Steps().size(), 1U);
  const Outcome outcome = Do({"delete", "250", "--yes"});
  EXPECT_THAT(outcome.err, HasSubstr("Are you sure you want to delete Directory Code 250?"));
  EXPECT_EQ(Steps().size(), 0U);
}

TEST_F(DirCodes, ARowThatSomeoneElseHasChangedIsReported) {
  AddTrigger("Keep BEFORE UPDATE ON DirectoryCode BEGIN SELECT RAISE(IGNORE); END");
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"edit", "101", "--phone", "9"}, {"renumber", "101", "180"}}) {
    const Outcome outcome = Do(words);
    EXPECT_EQ(outcome.status, 1) << words.front();
    EXPECT_EQ(outcome.out, "") << words.front();
    EXPECT_THAT(outcome.err, HasSubstr("someone else has changed or deleted the directory code"));
  }
  EXPECT_EQ(Steps().size(), 0U);
}

TEST_F(DirCodes, ACodeThatCannotBeStoredLeavesNoStepBehind) {
  AddTrigger("Refuse BEFORE INSERT ON DirectoryCode BEGIN SELECT RAISE(ABORT, 'no room'); END");
  for (const char* code : {"250", "25a"}) {
    const Outcome outcome = Do({"add", code, "--phone", "1"});
    EXPECT_EQ(outcome.status, 3) << code;
    EXPECT_THAT(outcome.err, HasSubstr("no room")) << code;
    EXPECT_THAT(outcome.err, HasSubstr("the directory code was not stored")) << code;
    EXPECT_EQ(outcome.out, "") << code;
    EXPECT_EQ(Steps().size(), 0U) << code;
  }
}

TEST_F(DirCodes, TraceShowsTheScreenBeingFilled) {
  const Outcome outcome = Do({"list", "--trace"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("cbodirectorycode.AddItem \"<Add New>\"\n"));
  EXPECT_EQ(outcome.out, Do({"list"}).out);
}

}  // namespace
}  // namespace qorhost::test

// The commands that drive the directory-code screen: their words, what they print and ask.
#include <gmock/gmock.h>

#include "tests/host/cli/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class DirCodes : public DirCodeFixture {};

// Nothing but "Type mismatch" was said.
TEST_F(DirCodes, AValueThatAnotherProgramWrotePastTheChecksIsToldAsTheStores) {
  sqlite::Database(File("building.db"), OpenMode::kReadWrite)
      .Run("PRAGMA ignore_check_constraints=1; UPDATE DirectoryCode SET DNDSCHEDULEID='x'");
  const Outcome outcome = Do({"list"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(
      outcome.err,
      "qorhost: the store holds a value that cannot be used here: Type mismatch (error 13)\n");
}

TEST_F(DirCodes, ListPrintsARowForEveryCode) {
  const nlohmann::json rows = Rows({"--unit", "1", "dircodes", "list"});
  ASSERT_EQ(rows.size(), 10U);
  EXPECT_EQ(rows[0]["code"], 101);
  EXPECT_EQ(rows[0]["tenants"], nlohmann::json({"Abbott Amelia A"}));
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

TEST_F(DirCodes, AddTakesEveryOption) {
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
                              "--forward-extension",
                              "7",
                              "--forward-delay",
                              "4",
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
  EXPECT_EQ(row["DNDSCHEDULEID"], 4);
  EXPECT_EQ(row["CFPHONENUMBER"], "555-0290");
  EXPECT_EQ(row["CFEXTENSION"], "7");
  EXPECT_EQ(row["CFTIMEDELAY"], 4);
  EXPECT_EQ(row["CFSCHEDULEID"], 1);
  EXPECT_EQ(row["DISPLAYNAME"], "Karin Abel");
  EXPECT_EQ(row["SHOWDISPLAYNAME"], true);
  EXPECT_EQ(row["SHOWDIRECTORYCODE"], false);
  EXPECT_EQ(row["STARTDATE"], "2026-02-01T00:00:00");
  EXPECT_EQ(row["ENDDATE"], "2026-12-31T23:59:59");
}

TEST_F(DirCodes, AddTellsTheDatesThatTheUnitGave) {
  ASSERT_EQ(Run({"units", "edit", "2", "--default-end", "2031-05-31"}).status, 0);
  const Outcome added = Do({"add", "250", "--phone", "555-0199", "--from", "2026-02-01"});
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_THAT(added.out,
              EndsWith("By the unit's default it is active until 2031-05-31 23:59:59.\n"));
  EXPECT_THAT(
      Do({"add", "251", "--phone", "555-0199", "--from", "2026-02-01", "--to", "2026-12-31"}).out,
      Not(HasSubstr("default")));
}

TEST_F(DirCodes, AddReportsAsJson) {
  const nlohmann::json report =
      Rows({"--unit", "2", "dircodes", "add", "0250", "--phone", "555-0199"});
  EXPECT_EQ(report["code"], 250);
  EXPECT_EQ(report["unit"], 2);
  EXPECT_EQ(report["added"][0]["id"], Row("250")["RID"]);
}

TEST_F(DirCodes, ARefusalIsTheControllersMessageAlone) {
  const Outcome outcome = Do({"add", "--phone", "1", "--", "-3"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "Pello RT [information]: Please enter the positive number as Directory Code.\n");
  EXPECT_EQ(outcome.out, "");
}

TEST_F(DirCodes, AnEmptyValueBehindAnOptionIsAValue) {
  ASSERT_EQ(Do({"edit", "103", "--display-name", "Abel", "--active"}).status, 0);
  const Outcome outcome = Do({"edit", "103", "--display-name=", "--inactive"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Row("103")["DISPLAYNAME"], nullptr);
  EXPECT_EQ(Row("103")["ACTIVE"], false);
  for (const char* option :
       {"--phone=", "--extension=", "--delay=", "--dnd=", "--forward-phone=",
        "--forward-extension=", "--forward-schedule=", "--forward-delay=", "--from=", "--to="}) {
    const Outcome changed = Do({"edit", "104", option, "--inactive"});
    if (changed.status == 0) {
      EXPECT_EQ(Row("104")["ACTIVE"], false) << option;
      ASSERT_EQ(Do({"edit", "104", "--phone", "555-0104", "--active"}).status, 0) << option;
    } else {
      EXPECT_THAT(changed.err, Not(HasSubstr("--inactive"))) << option;
    }
  }
  // Behind "--" it is a word like any other.
  EXPECT_THAT(Do({"delete", "--", "--phone="}).err, HasSubstr("'--phone='"));
}

// Once the name became "--inactive", and the code stayed active.
TEST_F(DirCodes, AnOptionIsNotTheValueOfAnother) {
  const Outcome outcome = Do({"edit", "103", "--display-name", "--inactive"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "qorhost: --display-name needs a value, and '--inactive' looks like an option: if it "
            "is the value, write --display-name=--inactive\n");
  EXPECT_EQ(Run({"--unit", "--json", "dircodes", "list"}).status, 2);
  EXPECT_EQ(Run({"--unit", "2", "report", "dircodes", "--where", "--format=csv"}).status, 2);
  EXPECT_EQ(Do({"edit", "103", "--display-name=--inactive", "--phone", "-5"}).status, 0);
  EXPECT_EQ(Row("103")["DISPLAYNAME"], "--inactive");
  EXPECT_EQ(Row("103")["PHONENUMBER"], "-5");
}

TEST_F(DirCodes, WhatIsSoAlreadyIsToldAndQueuesNothing) {
  EXPECT_EQ(Do({"edit", "102", "--phone", "555-0101"}).out,
            "Directory code 0102 (RID 12) in unit 2, Linden Park, is stored so already; nothing "
            "was changed.\n");
  EXPECT_EQ(Do({"renumber", "102", "102"}).out,
            "Directory code 0102 (RID 12) in unit 2, Linden Park, has that number already; "
            "nothing was changed.\n");
  EXPECT_EQ(Rows({"steps"}).size(), 0U);
}

TEST_F(DirCodes, AddTakesWholeNumbersAlone) {
  const std::string digits = " is no whole number: write it in digits alone\n";
  EXPECT_EQ(Do({"add", "abc", "--phone", "1"}).err,
            "qorhost: the code 'abc' is no number: it would be stored as 0\n");
  for (const char* code : {"1.5", "9e9", "1e-5"}) {
    const Outcome outcome = Do({"add", code, "--phone", "1"});
    EXPECT_EQ(outcome.status, 2) << code;
    EXPECT_EQ(outcome.err, "qorhost: the code '" + std::string(code) + "'" + digits);
    EXPECT_EQ(Do({"renumber", "101", code}).status, 2) << code;
  }
}

TEST_F(DirCodes, AddAsksWhenBothPhonesAreTheSame) {
  const std::vector<std::string> words = {
      "add", "250", "--phone", "5", "--forward-phone", "5", "--forward-schedule", "1"};
  const Outcome no = Do(words);
  EXPECT_EQ(no.status, 1);
  EXPECT_THAT(no.err, HasSubstr("are the same. Do you still want to proceed?"));
  std::vector<std::string> yes = words;
  yes.emplace_back("--yes");
  EXPECT_EQ(Do(yes).status, 0);
}

TEST_F(DirCodes, WhatCannotBeEnteredIsAMistakeInTheCommandLine) {
  for (const char* option : {"--phone", "--extension", "--display-name"}) {
    const Outcome added = Do({"add", "250", option, "O'Neil"});
    EXPECT_EQ(added.status, 2) << option;
    const bool isName = std::string(option) == "--display-name";
    EXPECT_EQ(added.err, "qorhost: " + std::string(option) +
                             " holds an apostrophe, which would end the text in a statement" +
                             (isName ? ": write O\u2019Neil\n" : "\n"));
    EXPECT_EQ(Do({"edit", "101", option, "O'Neil"}).status, 2) << option;
  }
  const Outcome hole = Do({"add", "250", "--phone", "1", "--display-name", "Abel, , Karin"});
  EXPECT_EQ(hole.status, 2);
  EXPECT_THAT(hole.err, HasSubstr("--display-name holds \", ,\""));
  EXPECT_EQ(Do({"renumber", "101", "1,MODIFIED=3"}).status, 2);
}

TEST_F(DirCodes, ACodeThatIsNotMeantAloneIsAMistakeInTheCommandLine) {
  EXPECT_EQ(Do({"delete", "101 OR 1=1", "--yes"}).status, 2);
  Change("UPDATE DIRECTORYCODE SET DIRECTORYCODE=104 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  const Outcome outcome = Do({"show", "104"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("name a row instead (rid:14, rid:15)"));
}

TEST_F(DirCodes, EditPrintsWhatItChanged) {
  const Outcome outcome = Do({"edit", "103", "--phone", "555-7777"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Changed directory code 0103 (RID 13) in unit 2, Linden Park.\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(Row("103")["PHONENUMBER"], "555-7777");
}

TEST_F(DirCodes, EditSwitchesDoNotDisturbAndForwarding) {
  EXPECT_EQ(Do({"edit", "103", "--no-forwarding", "--dnd", "Late Shift"}).status, 0);
  EXPECT_EQ(Row("103")["ISCFCHECKED"], false);
  EXPECT_EQ(Row("103")["DNDSCHEDULEID"], 3);
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

TEST_F(DirCodes, RenumberPrintsBothCodes) {
  const Outcome outcome = Do({"renumber", "101", "180"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Directory code 0101 (RID 11) is 0180 now, in unit 2, Linden Park.\n");
}

TEST_F(DirCodes, DeleteAsksAndNamesTheTenantsWhoAreWithoutTheCode) {
  const Outcome unasked = Do({"delete", "101"});
  EXPECT_EQ(unasked.status, 1);
  EXPECT_THAT(unasked.err, HasSubstr("This Directory Code is applied to a Tenant."));
  EXPECT_THAT(unasked.err,
              HasSubstr("directory code 0101 (RID 11) was not deleted in unit 2, Linden "
                        "Park.\n"));

  const Outcome outcome = Do({"delete", "101", "--yes"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(
      outcome.out,
      HasSubstr("Deleted directory code 0101 (RID 11) in unit 2, Linden Park.\nWithout it now: "));
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
}

TEST_F(DirCodes, ACodeThatCannotBeStoredIsAFailure) {
  AddTrigger("Refuse BEFORE INSERT ON DirectoryCode BEGIN SELECT RAISE(ABORT, 'no room'); END");
  for (const char* code : {"250", "25"}) {
    const Outcome outcome = Do({"add", code, "--phone", "1"});
    EXPECT_EQ(outcome.status, 3) << code;
    EXPECT_THAT(outcome.err, HasSubstr("no room")) << code;
    EXPECT_THAT(outcome.err, HasSubstr("the directory code was not stored")) << code;
    EXPECT_EQ(outcome.out, "") << code;
  }
}

TEST_F(DirCodes, TraceShowsTheScreenBeingFilled) {
  const Outcome outcome = Do({"list", "--trace"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, testing::ContainsRegex(
                               "  cbodirectorycode@[0-9]+.AddItem\\(text: \"<Add New>\"\\)\n"));
  EXPECT_EQ(outcome.out, Do({"list"}).out);
}

}  // namespace
}  // namespace qorhost::test

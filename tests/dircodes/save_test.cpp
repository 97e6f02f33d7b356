// Storing a new directory code and an edited one, as whole transcripts.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::MessageButton;
using qorcred::Null;
using qorcred::Value;

class DirCodeSave : public DirCodeTest {
 protected:
  // Everything that a code can have.
  void EnterEverything() {
    Host().SetText("txtExtn", "77");
    Screen().CheckDoNotDisturb(3);
    Screen().CheckCallForwarding(2, "5559876", "88");
    Host().SetText("txtDisplayName", "  Front desk ");
    Screen().Check("chkShowDisplayName");
    Screen().Check("chkActive");
    Host().controls().Date("dtpStart").Choose(FromCivil({2026, 11, 21, 10, 0, 0}));
    Host().controls().Date("dtpEnd").Choose(FromCivil({2027, 11, 21, 23, 59, 59}));
  }
  void InState(Value state) { Database().Replace("SELECT MODIFIED", {.value = std::move(state)}); }
  [[nodiscard]] std::string Statement(std::string_view operation) {
    const Lines lines = Host().transcript().StartingWith(operation);
    return lines.size() == 1 ? lines[0] : std::to_string(lines.size()) + " statements";
  }
};

TEST_F(DirCodeSave, OfANewCodeChecksStoresAndQueuesItsStep) {
  Screen().EnterNew("0012");
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_EQ(rid, 101);
  EXPECT_TRUE(TranscriptIs(R"~(
    gstrTag -> ""
    txtdirectorycode.Text -> "0012"
    ExecuteSelect "SELECT directorycode from directorycode where unitkey = 3 AND DirectoryCode = 0012" -> no rows
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    CreateObject "qorAppln.clsApplication"
    pbGetUnitStatus 3 -> 0 0 0
    txtPhoneNo.Text -> "5551234"
    txtExtn.Text -> ""
    chkDND.Value -> 0
    chkCallForwarding.Value -> 0
    chkDND.Value -> 0
    chkShowDisplayName.Value -> 0
    chkShowDirCode.Value -> 0
    chkCallForwarding.Value -> 0
    chkActive.Value -> 0
    txtDisplayName.Text -> ""
    CreateObject "qorSPS.clsSendProgSteps"
    ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=12 AND UNITKEY=3" -> no rows
    pbDeleteDirCodePrgStepExists 3 12 -> False
    ExecuteInsert "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED,SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(3,_ROWID_,12,'5551234',Null,2,NULL,False,NULL,False,Null,Null,2,'_LMDATE_',False,Null,Null,Null,Null,1,False,False)" "" "DIRECTORYCODE" -> 101
    pbGenDirCodePrgStep 3 101
    Release "qorAppln.clsApplication"
    Release "qorSPS.clsSendProgSteps"
  )~"));
}

TEST_F(DirCodeSave, OfANewCodeWritesEverythingThatWasEntered) {
  Screen().EnterNew("12");
  EnterEverything();

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Statement("ExecuteInsert"),
            "ExecuteInsert \"Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,"
            "EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,"
            "CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,"
            "OLDDIRECTORYCODE,MODIFIED,SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(3,_ROWID_,12,"
            "'5551234','77',5,9,True,5,True,'5559876','88',7,'_LMDATE_',True,"
            "'11/21/2026 10:00:00 AM','11/21/2027 11:59:59 PM','Front desk',Null,1,True,False)\" "
            "\"\" \"DIRECTORYCODE\" -> 101");
}

TEST_F(DirCodeSave, OfANewCodeReadsItsEntryInTheOrderOfItsChecks) {
  Screen().EnterNew("12");
  EnterEverything();
  Host().StartOver();

  EXPECT_TRUE(Screen().SaveNew());

  const Lines lines = Host().transcript().Read(Detail::kEverything);
  const auto from = std::find(lines.begin(), lines.end(), "txtPhoneNo.Text -> \"5551234\"");
  const auto to = std::find(from, lines.end(), "CreateObject \"qorSPS.clsSendProgSteps\"");
  ASSERT_NE(to, lines.end());
  EXPECT_TRUE(SameLines(Lines(from, to), R"~(
    txtPhoneNo.Text -> "5551234"
    txtExtn.Text -> "77"
    pvnTimeDelay -> 5
    chkDND.Value -> 1
    cboSchedules.ListIndex -> 3
    chkCallForwarding.Value -> 1
    txtPhoneNocf.Text -> "5559876"
    txtExtnCF.Text -> "88"
    cboSchedulesCF.ListIndex -> 2
    chkDND.Value -> 1
    cboSchedules.ListIndex -> 3
    cboSchedules.ItemData(3) -> 9
    chkShowDisplayName.Value -> 1
    chkShowDirCode.Value -> 0
    chkCallForwarding.Value -> 1
    cboSchedulesCF.ListIndex -> 2
    cboSchedulesCF.ItemData(2) -> 5
    pvnTimeDelayCF -> 7
    chkActive.Value -> 1
    dtpStart.Value -> #11/21/2026 10:00:00 AM#
    dtpEnd.Value -> #11/21/2027 11:59:59 PM#
    txtDisplayName.Text -> "  Front desk "
  )~"));
}

TEST_F(DirCodeSave, OfAnEditedCodeShowsWhatTheStoreHasByThen) {
  Screen().ShowStored();
  Database().Select("SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER",
                    {{kUnit, kStoredRow, 12,     "5550000", "4",    6,   Null{},
                      false, Null{},     false,  Null{},    Null{}, 2,   "11/21/2026 10:00:00 AM",
                      false, Null{},     Null{}, "Desk",    false,  true}});

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_EQ(Host().TextOf("txtPhoneNo"), "5550000");
  EXPECT_EQ(Host().controls().Variable("gstrLastModifiedDate"), Value("11/21/2026 10:00:00 AM"));
}

TEST_F(DirCodeSave, OfANewCodeWhosePendingDeletionIsUnsentKnowsItInTheUnit) {
  Screen().EnterNew("0012");
  Host().script().deletionStepExists = true;

  EXPECT_TRUE(Screen().SaveNew());

  const std::string insert = Statement("ExecuteInsert");
  EXPECT_NE(insert.find(",Null,12,0,False,False)\""), std::string::npos) << insert;
}

TEST_F(DirCodeSave, ThatInsertsNothingStillQueuesAStepAndAnswersTrue) {
  Screen().EnterNew("12");
  Database().Replace("Insert into", {.value = 0, .error = "locked"});
  std::int32_t rid = 77;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_EQ(rid, 0);
  EXPECT_EQ(Host().transcript().StartingWith("pbGen"), Lines{"pbGenDirCodePrgStep 3 0"});
}

TEST_F(DirCodeSave, WhoseStepFailsTellsTheNewRowAndAnswersFalse) {
  // The row is stored by then: there is no transaction to take it back.
  std::size_t callsUntilTheStep = 0;
  {
    DirCodeScreen screen;
    screen.EnterNew("12");
    screen.host().StartOver();
    EXPECT_TRUE(screen.SaveNew());
    callsUntilTheStep = screen.host().gate().calls();
  }
  Screen().EnterNew("12");
  Host().StartOver();
  Host().gate().FailAt(callsUntilTheStep);
  std::int32_t rid = 0;

  EXPECT_FALSE(Screen().SaveNew(&rid));

  EXPECT_EQ(rid, 101);
  EXPECT_NE(Host().gate().failed().find("pbGenDirCodePrgStep"), std::string::npos)
      << Host().gate().failed();
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert").size(), 1U);
}

TEST_F(DirCodeSave, ThatIsRefusedLeavesTheRowOfTheCallerAlone) {
  Screen().EnterNew("");
  std::int32_t rid = 77;
  EXPECT_FALSE(Screen().SaveNew(&rid));
  EXPECT_EQ(rid, 77);
}

TEST_F(DirCodeSave, OfAnEditedCodeUpdatesQueuesItsStepAndReloads) {
  Screen().ShowStored();
  Database().Select("SELECT directorycode from", {{12}});
  InState(0);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(TranscriptIs(R"~(
    gstrTag -> "EDIT"
    cbodirectorycode.Text -> "12"
    ExecuteSelect "SELECT directorycode from directorycode where unitkey = 3 AND DirectoryCode = 12" -> 1 row
    txtPhoneNo.Text -> "5551234"
    txtExtn.Text -> ""
    chkDND.Value -> 0
    chkCallForwarding.Value -> 0
    chkDND.Value -> 0
    chkShowDisplayName.Value -> 0
    chkShowDirCode.Value -> 0
    chkCallForwarding.Value -> 0
    chkActive.Value -> 0
    txtDisplayName.Text -> ""
    CreateObject "qorSPS.clsSendProgSteps"
    glngrid -> 17
    ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=12 AND UNITKEY=3 AND RID <> 17" -> no rows
    ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 0
    gstrLastModifiedDate -> "11/20/2026 9:30:00 AM"
    ExecuteUpdate "UPDATE DIRECTORYCODE SET DIRECTORYCODE=12,PHONENUMBER='5551234',EXTENSION=Null,TIMEDELAY=2,DNDSCHEDULEID=NULL,ISDNDCHECKED=False,CFSCHEDULEID=NULL,ISCFCHECKED=False,CFPHONENUMBER=Null,CFEXTENSION=Null,CFTIMEDELAY=2,LASTMODIFIEDDATE='_LMDATE_',ACTIVE=False,STARTDATE=Null,ENDDATE=Null,DISPLAYNAME=Null,MODIFIED=2,SHOWDISPLAYNAME=False,SHOWDIRECTORYCODE=False WHERE UNITKEY=3 AND RID=17" "DIRECTORYCODE" "11/20/2026 9:30:00 AM" 17 -> 1
    pbGenDirCodePrgStep 3 17
    ExecuteSelect "SELECT UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=3 AND DIRECTORYCODE >=0  AND RID=17 ORDER BY DIRECTORYCODE" -> no rows
    Release "qorSPS.clsSendProgSteps"
  )~"));
}

TEST_F(DirCodeSave, OfAnEditedCodeWritesEverythingThatWasEntered) {
  Screen().ShowStored();
  EnterEverything();
  InState(1);

  EXPECT_TRUE(Screen().SaveEdited(2));

  EXPECT_EQ(Statement("ExecuteUpdate"),
            "ExecuteUpdate \"UPDATE DIRECTORYCODE SET DIRECTORYCODE=34,PHONENUMBER='5551234',"
            "EXTENSION='77',TIMEDELAY=5,DNDSCHEDULEID=9,ISDNDCHECKED=True,CFSCHEDULEID=5,"
            "ISCFCHECKED=True,CFPHONENUMBER='5559876',CFEXTENSION='88',CFTIMEDELAY=7,"
            "LASTMODIFIEDDATE='_LMDATE_',ACTIVE=True,STARTDATE='11/21/2026 10:00:00 AM',"
            "ENDDATE='11/21/2027 11:59:59 PM',DISPLAYNAME='Front desk',MODIFIED=1,"
            "SHOWDISPLAYNAME=True,SHOWDIRECTORYCODE=False WHERE UNITKEY=3 AND RID=17\" "
            "\"DIRECTORYCODE\" \"11/20/2026 9:30:00 AM\" 17 -> 1");
}

TEST_F(DirCodeSave, OfAnEditedRowKeepsAStateThatTheUnitDoesNotKnow) {
  const struct {
    Value before;
    const char* written;
  } rows[] = {{0, ",MODIFIED=2,"}, {1, ",MODIFIED=1,"},      {2, ",MODIFIED=2,"},
              {3, ",MODIFIED=1,"}, {Null{}, ",MODIFIED=2,"}, {-1, ",MODIFIED=1,"}};
  Screen().ShowStored();
  for (const auto& row : rows) {
    InState(row.before);
    Host().StartOver();
    EXPECT_TRUE(Screen().SaveEdited());
    const std::string update = Statement("ExecuteUpdate");
    EXPECT_NE(update.find(row.written), std::string::npos) << update;
  }
}

TEST_F(DirCodeSave, OfARowThatSomebodyElseChangedAnswersTrueAndDoesNoMore) {
  Screen().ShowStored();
  Database().Number("UPDATE DIRECTORYCODE", 0);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_EQ(Host().transcript().StartingWith("pbGen").size(), 0U);
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect \"SELECT UNITKEY").size(), 0U);
}

TEST_F(DirCodeSave, OfACodeThatAnotherRowHasIsRefused) {
  Screen().ShowStored();
  Database().Select("RID <> 17", {{12}});

  EXPECT_FALSE(Screen().SaveEdited());

  EXPECT_EQ(Host().transcript().StartingWith("MsgBox"),
            Lines{"MsgBox 64 \"Pello RT\" \"This Directory Code already exists. Please enter a "
                  "different Directory Code.\" -> 1"});
  EXPECT_EQ(Host().controls().focused(), "txtdirectorycode");
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate").size(), 0U);
}

TEST_F(DirCodeSave, OfANewCodeThatTheUnitHasIsRefused) {
  Screen().EnterNew("12");
  Database().Select("DIRECTORYCODE=12 AND UNITKEY=3", {{12}});

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_EQ(Host().controls().focused(), "txtdirectorycode");
  EXPECT_EQ(Host().transcript().StartingWith("pbDelete").size(), 0U);
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert").size(), 0U);
}

TEST_F(DirCodeSave, TheSamePhoneForBothIsAsked) {
  const std::string question =
      "MsgBox 52 \"Pello RT\" \"The phone numbers for the Directory Code and Call Forwarding are "
      "the "
      "same. Do you still want to proceed?\" -> ";
  for (const bool edits : {false, true}) {
    SCOPED_TRACE(edits);
    Screen().ShowStored();
    Host().controls().SetVariable("gstrTag", edits ? "EDIT" : "");
    Screen().CheckCallForwarding(0, " 5551234 ", "");
    for (const bool yes : {false, true}) {
      SCOPED_TRACE(yes);
      Host().script().questionAnswer = yes ? MessageButton::kYes : MessageButton::kNo;
      Host().StartOver();
      Host().controls().ClearFocus();
      EXPECT_EQ(edits ? Screen().SaveEdited() : Screen().SaveNew(), yes);
      EXPECT_EQ(Host().transcript().StartingWith("MsgBox"), Lines{question + (yes ? "6" : "7")});
      EXPECT_EQ(Host().controls().focused(), yes ? "" : "txtPhoneNocf");
      EXPECT_EQ(Host().transcript().StartingWith(edits ? "ExecuteUpdate" : "ExecuteInsert").size(),
                yes ? 1U : 0U);
    }
  }
}

TEST_F(DirCodeSave, TheModeOfTheScreenAndOfTheSaveAreTwoThings) {
  // The tag says where the code is read, the argument what is written.
  Screen().ShowStored();
  EXPECT_TRUE(Screen().SaveNew());
  const std::string insert = Statement("ExecuteInsert");
  EXPECT_NE(insert.find("_ROWID_,12,"), std::string::npos) << insert;

  Host().StartOver();
  Host().controls().SetVariable("gstrTag", "Edit");
  Host().SetText("txtdirectorycode", "90");
  EXPECT_TRUE(Screen().SaveEdited(2));
  const std::string update = Statement("ExecuteUpdate");
  EXPECT_NE(update.find("SET DIRECTORYCODE=90,"), std::string::npos) << update;
}

}  // namespace
}  // namespace qortest

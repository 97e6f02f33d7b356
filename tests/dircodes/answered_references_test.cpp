// What components write into the unit key and the row that they get by reference, and what becomes
// of it in the rest of the operation.
#include <string>

#include "tests/dircodes/dir_code_fixture.h"
#include "tests/support/overlaid_object.h"

namespace qortest {
namespace {

using qorcred::Null;
using qorcred::Value;

class AnsweredReferences : public DirCodeTest {
 protected:
  void InState(Value state) { Database().Replace("SELECT MODIFIED", {.value = std::move(state)}); }
};

TEST_F(AnsweredReferences, TheUnitOfTheStatusIsThatOfANewCode) {
  Screen().EnterNew("12");
  Host().script().unitKeyAfterwards = 8;

  EXPECT_TRUE(Screen().SaveNew());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 5U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 5, effects.end()), R"~(
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteSelect "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=12 AND UNITKEY=8" -> no rows
    pbDeleteDirCodePrgStepExists 8 12 -> False
    ExecuteInsert "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED,SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(8,_ROWID_,12,'5551234',Null,2,NULL,False,NULL,False,Null,Null,2,'_LMDATE_',False,Null,Null,Null,Null,1,False,False)" "" "DIRECTORYCODE" -> 101
    pbGenDirCodePrgStep 8 101
  )~"));
}

TEST_F(AnsweredReferences, TheUnitOfAQuestionForPendingStepsIsThatOfTheInsert) {
  Screen().EnterNew("12");
  // Stored already under this text, so that the unit's status is not asked for.
  Database().Select("SELECT directorycode from directorycode", {{12}});
  Host().script().unitKeyAfterwards = 8;

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("pbDeleteDirCodePrgStepExists"),
            Lines{"pbDeleteDirCodePrgStepExists 3 12 -> False"});
  const Lines inserts = Host().transcript().StartingWith("ExecuteInsert");
  ASSERT_EQ(inserts.size(), 1U);
  EXPECT_NE(inserts.front().find("Values(8,_ROWID_,12,"), std::string::npos) << inserts.front();
}

TEST_F(AnsweredReferences, TheNewRowIsTheInsertsAndNotTheSenders) {
  Screen().EnterNew("12");
  Host().script().rowAfterwards = 99;
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_EQ(rid, 101);
}

// The row that is shown again is the screen's; the unit is what the sender left.
TEST_F(AnsweredReferences, AnEditedCodeIsShownAgainByTheRowOfTheScreen) {
  Screen().ShowStored();
  Host().script().unitKeyAfterwards = 8;
  Host().script().rowAfterwards = 99;

  EXPECT_TRUE(Screen().SaveEdited());

  const Lines selects = Host().transcript().StartingWith("ExecuteSelect \"SELECT UNITKEY,RID,");
  ASSERT_EQ(selects.size(), 1U);
  EXPECT_NE(selects.front().find("WHERE UNITKEY=8 AND DIRECTORYCODE >=0  AND RID=17 ORDER BY"),
            std::string::npos)
      << selects.front();
}

TEST_F(AnsweredReferences, ADeletionGoesOnWithWhatTheSenderLeft) {
  for (const std::int32_t state : {0, 1}) {
    DirCodeScreen screen;
    screen.host().database().Replace("SELECT MODIFIED", {.value = state});
    screen.host().script().questionAnswer = qorcred::MessageButton::kYes;
    screen.host().script().unitKeyAfterwards = 8;
    screen.host().script().rowAfterwards = 99;

    EXPECT_TRUE(screen.Delete(kStoredRow, true, true));

    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteDelete"),
              Lines{"ExecuteDelete \"DIRECTORYCODE\" 99 -> 1"});
    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteUpdate"),
              Lines{"ExecuteUpdate \"UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE='"
                    "_LMDATE_' WHERE UNITKEY=8 AND DIRECTORYCODE=99\" \"DIRECTORYCODE\" -> 1"});
  }
}

}  // namespace
}  // namespace qortest

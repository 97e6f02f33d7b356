// Deleting a directory code: the question, the steps for the unit and the tenants' release.
#include <string>
#include <string_view>

#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::MessageButton;
using qorcred::Null;
using qorcred::Value;

constexpr std::string_view kHolderQuery =
    R"~(
    ExecuteSelect "SELECT DIRECTORYCODE FROM TENANTS WHERE DIRECTORYCODE=17 AND UNITKEY=3")~";

class DirCodeDeletion : public DirCodeTest {
 protected:
  void InState(Value state) { Database().Number("SELECT MODIFIED", std::move(state)); }
  void HeldByATenant() { Database().Select("FROM TENANTS", {{17}}); }
  void Answer(MessageButton button) { Host().script().questionAnswer = button; }
};

TEST_F(DirCodeDeletion, WithoutTheQuestionDeletesAndAnswersFalse) {
  InState(0);

  EXPECT_FALSE(Screen().Delete(kStoredRow));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 0
    CreateObject "qorSPS.clsSendProgSteps"
    pbGenDelDirCodePrgStep 3 17
    Release "qorSPS.clsSendProgSteps"
    ExecuteDelete "DIRECTORYCODE" 17 -> 1
    MsgBox 64 "Pello RT" "Directory Code deleted successfully." -> 1
  )~"));
}

TEST_F(DirCodeDeletion, ConfirmedReleasesTheTenantsAndAnswersTrue) {
  InState(2);
  HeldByATenant();
  Answer(MessageButton::kYes);

  EXPECT_TRUE(Screen().Delete(kStoredRow, false, true));

  EXPECT_TRUE(TranscriptIs(std::string(kHolderQuery) + R"~( -> 1 row
    MsgBox 52 "Pello RT" "This Directory Code is applied to a Tenant. Deleting this Directory Code will remove it from the system. Do you wish to continue?" -> 6
    ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 2
    CreateObject "qorSPS.clsSendProgSteps"
    pbGenDelDirCodePrgStep 3 17
    Release "qorSPS.clsSendProgSteps"
    ExecuteDelete "DIRECTORYCODE" 17 -> 1
    ExecuteUpdate "UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE='_LMDATE_' WHERE UNITKEY=3 AND DIRECTORYCODE=17" "DIRECTORYCODE" -> 1
    MsgBox 64 "Pello RT" "Directory Code deleted successfully." -> 1
  )~"));
}

TEST_F(DirCodeDeletion, OfACodeWithoutTenantNamesIt) {
  Database().Number("SELECT DirectoryCode", 42.0);
  InState(1);
  Answer(MessageButton::kYes);

  EXPECT_TRUE(Screen().Delete(kStoredRow, true, true));

  EXPECT_TRUE(EffectsAre(std::string(kHolderQuery) + R"~( -> no rows
    ExecuteScalar "SELECT DirectoryCode FROM DIRECTORYCODE WHERE RID = 17" -> 42
    MsgBox 52 "Pello RT" "Are you sure you want to delete Directory Code 42?" -> 6
    ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 1
    pbDeleteDirCodePrgStep 3 17
    ExecuteDelete "DIRECTORYCODE" 17 -> 1
    ExecuteUpdate "UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE='_LMDATE_' WHERE UNITKEY=3 AND DIRECTORYCODE=17" "DIRECTORYCODE" -> 1
  )~"));
}

TEST_F(DirCodeDeletion, DeclinedChangesNothingAndSaysNothing) {
  HeldByATenant();

  EXPECT_FALSE(Screen().Delete(kStoredRow, false, true));

  EXPECT_TRUE(TranscriptIs(std::string(kHolderQuery) + R"~( -> 1 row
    MsgBox 52 "Pello RT" "This Directory Code is applied to a Tenant. Deleting this Directory Code will remove it from the system. Do you wish to continue?" -> 7
  )~"));
}

TEST_F(DirCodeDeletion, AnyAnswerButYesDeclines) {
  HeldByATenant();
  Answer(MessageButton::kOk);
  EXPECT_FALSE(Screen().Delete(kStoredRow, false, true));
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete").size(), 0U);
}

TEST_F(DirCodeDeletion, TheClosingMessageAloneCanBeSuppressed) {
  InState(0);
  EXPECT_FALSE(Screen().Delete(kStoredRow, true));
  EXPECT_EQ(Host().transcript().StartingWith("MsgBox").size(), 0U);

  Host().StartOver();
  EXPECT_FALSE(Screen().Delete(kStoredRow, true, true));
  EXPECT_EQ(Host().transcript().StartingWith("MsgBox").size(), 1U);
}

TEST_F(DirCodeDeletion, ACodeWithoutNumberIsAskedAboutAllTheSame) {
  EXPECT_FALSE(Screen().Delete(kStoredRow, false, true));
  EXPECT_EQ(Host().transcript().StartingWith("MsgBox"),
            Lines{"MsgBox 52 \"Pello RT\" \"Are you sure you want to delete Directory Code ?\" -> "
                  "7"});
}

TEST_F(DirCodeDeletion, TheStateDecidesAboutTheStep) {
  const struct {
    const char* name;
    Value state;
    Lines step;
  } rows[] = {
      {"Sent", 0, {"pbGenDelDirCodePrgStep 3 17"}},
      {"NotSent", 1, {"pbDeleteDirCodePrgStep 3 17"}},
      {"Changed", 2, {"pbGenDelDirCodePrgStep 3 17"}},
      {"Deleted", 3, {}},
      {"Unknown", -1, {}},
      {"NoState", Null{}, {"pbGenDelDirCodePrgStep 3 17"}},
      {"Text", "1", {"pbDeleteDirCodePrgStep 3 17"}},
      {"RoundedToEven", 0.5, {"pbGenDelDirCodePrgStep 3 17"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Database().Replace("SELECT MODIFIED", {.value = row.state});
    Host().StartOver();
    Screen().Delete(kStoredRow);
    Lines steps = Host().transcript().StartingWith("pbGen");
    for (const std::string& line : Host().transcript().StartingWith("pbDelete")) {
      steps.push_back(line);
    }
    EXPECT_EQ(steps, row.step);
    EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete"),
              Lines{"ExecuteDelete \"DIRECTORYCODE\" 17 -> 1"});
  }
}

TEST_F(DirCodeDeletion, AStateBeyondSixteenBitsEndsItBeforeTheDeletion) {
  InState(40000);
  EXPECT_FALSE(Screen().Delete(kStoredRow));
  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteScalar "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = 17" -> 40000
    Trapped pbDelete 6 "Overflow"
  )~"));
}

TEST_F(DirCodeDeletion, AFailedReleaseOfTheTenantsStillAnswersTrue) {
  InState(0);
  HeldByATenant();
  Answer(MessageButton::kYes);
  Database().Error("UPDATE TENANTS", "locked");
  EXPECT_TRUE(Screen().Delete(kStoredRow, true, true));
}

}  // namespace
}  // namespace qortest

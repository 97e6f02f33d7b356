// Deleting a credential, with the question when a tenant holds it and the tenant's release.
#include <array>
#include <string>
#include <string_view>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::MessageButton;
using qorcred::Null;
using qorcred::Value;

constexpr std::string_view kQuestion =
    R"~(
    ExecuteSelect "SELECT TENANTID FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=17 OR CREDENTIALID2=17)" -> 1 row
    MsgBox 52 "Pello RT" "This credential is already assgined to a Tenant. Deleting this credential will remove it from the assigned Tenant and delete the credential from the system. Do you want to continue?")~";

class Deletion : public CredentialTest {
 protected:
  void AssignedTo(Value tenant, Value residentFree) {
    Screen().ShowStored(1, 0);
    Database().Select("SELECT TENANTID FROM TENANTS", {{std::move(tenant)}});
    Database().Number("SELECT TenantID FROM Tenants", std::move(residentFree));
    Host().script().questionAnswer = MessageButton::kYes;
  }
};

TEST_F(Deletion, OfAnUnassignedCredentialAsksNothing) {
  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT TENANTID FROM TENANTS WHERE UNITKEY=3 AND (CREDENTIALID1=17 OR CREDENTIALID2=17)" -> no rows
    ExecuteDelete "CREDENTIALBANK" 17 -> 1
  )~"));
}

TEST_F(Deletion, DeclinedChangesNothing) {
  AssignedTo(55, 55);
  Host().script().questionAnswer = MessageButton::kNo;

  EXPECT_FALSE(Screen().Delete(17));

  EXPECT_TRUE(TranscriptIs(std::string(kQuestion) + " -> 7"));
}

TEST_F(Deletion, ConfirmedReleasesTheTenantAndProgramsTheUnit) {
  AssignedTo(55, 55);

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_TRUE(EffectsAre(std::string(kQuestion) + R"~( -> 6
    ExecuteDelete "CREDENTIALBANK" 17 -> 1
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> 55
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    pvCreateProgramSteps 3 55
  )~"));
}

TEST_F(Deletion, MakesTheTenantComponentBehindTheDeletionAndBeforeItReadsTheSelection) {
  AssignedTo(55, 55);

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_TRUE(TranscriptIs(std::string(kQuestion) + R"~( -> 6
    ExecuteDelete "CREDENTIALBANK" 17 -> 1
    CreateObject "qorTent.clsTenant"
    cboCredentials.ListIndex -> 1
    cboCredentials.ItemData(1) -> 17
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> 55
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    pvCreateProgramSteps 3 55
    Release "qorTent.clsTenant"
  )~"));
}

TEST_F(Deletion, ReleasesTheTenantFromTheSelectedCredentialWhicheverIsDeleted) {
  AssignedTo(55, 55);
  Host().Select("cboCredentials", 2);

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_EQ(
      Host().transcript().StartingWith("ExecuteScalar "),
      Lines{"ExecuteScalar \"SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND "
            "((CredentialID1 = 18 ) OR ( CredentialID2 = 18))\" -> 55"});
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete "),
            Lines{"ExecuteDelete \"CREDENTIALBANK\" 17 -> 1"});
}

TEST_F(Deletion, CreatesATenantComponentForTheReleaseAndLetsItGo) {
  AssignedTo(55, 55);

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_TRUE(SameLines(Host().transcript().Read(Detail::kComponents), R"~(
    CreateObject "qorTent.clsTenant"
    Release "qorTent.clsTenant"
  )~"));
}

// Whatever the two updates say: the first may change no row when only the second slot held it.
TEST_F(Deletion, ClearsTheSecondSlotWhenTheFirstChangedNoRow) {
  AssignedTo(55, 55);
  Database().Number("SET CREDENTIALID1", 0);

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate ").size(), 2U);
  EXPECT_EQ(Host().transcript().StartingWith("pvCreateProgramSteps"),
            Lines{"pvCreateProgramSteps 3 55"});
}

TEST_F(Deletion, HeldOnlyByAResidentLeavesTheTenantAlone) {
  const std::array<Value, 5> none{Value(Null{}), Value(), Value(""), Value(0), Value(0.9)};
  for (const Value& scalar : none) {
    CredentialScreen screen;
    screen.ShowStored(1, 0);
    screen.host().database().Select("SELECT TENANTID FROM TENANTS", {{55}});
    screen.host().database().Number("SELECT TenantID FROM Tenants", scalar);
    screen.host().script().questionAnswer = MessageButton::kYes;

    EXPECT_TRUE(screen.Delete(17));

    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteDelete ").size(), 1U);
    EXPECT_TRUE(screen.host().transcript().StartingWith("ExecuteUpdate ").empty());
    EXPECT_TRUE(screen.host().transcript().StartingWith("pvCreateProgramSteps").empty());
  }
}

TEST_F(Deletion, TruncatesTheTenantIdToAWholeNumber) {
  const std::array<Value, 3> ids{Value(55.9), Value("55.9"), Value("55 main")};
  for (const Value& id : ids) {
    CredentialScreen screen;
    screen.ShowStored(1, 0);
    screen.host().database().Select("SELECT TENANTID FROM TENANTS", {{55}});
    screen.host().database().Number("SELECT TenantID FROM Tenants", id);
    screen.host().script().questionAnswer = MessageButton::kYes;

    EXPECT_TRUE(screen.Delete(17));

    EXPECT_EQ(screen.host().transcript().StartingWith("pvCreateProgramSteps"),
              Lines{"pvCreateProgramSteps 3 55"});
  }
}

// The pass over statements takes "-1" for an absent value; reading does not go through it.
TEST_F(Deletion, WithAddNewSelectedClearsTheSlotsOfNull00) {
  AssignedTo(55, 55);
  Host().Select("cboCredentials", 0);

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_TRUE(EffectsAre(std::string(kQuestion) + R"~( -> 6
    ExecuteDelete "CREDENTIALBANK" 17 -> 1
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = -100 ) OR ( CredentialID2 = -100))" -> 55
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = Null00  AND UNITKEY = 3" "TENANTS" -> 1
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = Null00  AND UNITKEY = 3" "TENANTS" -> 1
    pvCreateProgramSteps 3 55
  )~"));
}

TEST_F(Deletion, IsDoneEvenWhenTheStatementFails) {
  Database().Error("CREDENTIALBANK", "locked");

  EXPECT_TRUE(Screen().Delete(17));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete "),
            Lines{"ExecuteDelete \"CREDENTIALBANK\" 17 -> 0 ! \"locked\""});
}

TEST_F(Deletion, IsRefusedWhenItRaises) {
  Host().gate().FailOn("ExecuteDelete");

  EXPECT_FALSE(Screen().Delete(17));
}

TEST_F(Deletion, IsReportedAsNotDoneWhenTheReleaseRaises) {
  AssignedTo(55, 55);
  Host().gate().FailOn("ExecuteScalar");

  EXPECT_FALSE(Screen().Delete(17));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete ").size(), 1U);
}

}  // namespace
}  // namespace qortest

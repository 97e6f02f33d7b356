// Saving an existing credential: its door, its release from the tenant that held it and its
// assignment to the chosen one.
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

constexpr std::string_view kDoorAndNoFormerTenant = R"~(
    ExecuteUpdate "UPDATE CREDENTIALBANK SET DOORCODE = 2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" - 17 -> 1
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> Null
)~";
constexpr std::string_view kCapacity = R"~(
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
)~";

class EditedCredential : public CredentialTest {};

TEST_F(EditedCredential, WithoutTenantGetsItsDoorAndIsOnlyReleased) {
  Screen().ShowStored(1, 0);
  Database().Number("SELECT TenantID FROM Tenants", 56);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteUpdate "UPDATE CREDENTIALBANK SET DOORCODE = 2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" - 17 -> 1
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> 56
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    pvCreateProgramSteps 3 56
  )~"));
}

TEST_F(EditedCredential, WithNothingSelectedInTheTenantListIsOnlyReleased) {
  Screen().ShowStored(1, -1);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(kDoorAndNoFormerTenant));
}

TEST_F(EditedCredential, GoesIntoTheFirstSlotOfItsTenant) {
  Screen().ShowStored(1, 1);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(std::string(kDoorAndNoFormerTenant) + std::string(kCapacity) + R"~(
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = 17 WHERE TENANTID = 55 AND UNITKEY = 3 AND (CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))" "TENANTS" -> 1
    pvCreateProgramSteps 3 55
  )~"));
}

TEST_F(EditedCredential, GoesIntoTheSecondSlotWhenTheFirstTookNothing) {
  Screen().ShowStored(1, 2);
  Database().Number("SET CREDENTIALID1 = 17", 0);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(std::string(kDoorAndNoFormerTenant) + std::string(kCapacity) + R"~(
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = 17 WHERE TENANTID = 56 AND UNITKEY = 3 AND (CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))" "TENANTS" -> 0
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = 17 WHERE TENANTID = 56 AND UNITKEY = 3 AND CREDENTIALID2 IS NULL AND CREDENTIALID1 IS NOT NULL  " "TENANTS" -> 1
    pvCreateProgramSteps 3 56
  )~"));
}

TEST_F(EditedCredential, LeavesItsFormerTenantForTheNewOne) {
  Screen().ShowStored(1, 1);
  Database().Number("SELECT TenantID FROM Tenants", 56);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteUpdate "UPDATE CREDENTIALBANK SET DOORCODE = 2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" - 17 -> 1
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> 56
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    pvCreateProgramSteps 3 56
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = 17 WHERE TENANTID = 55 AND UNITKEY = 3 AND (CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))" "TENANTS" -> 1
    pvCreateProgramSteps 3 55
  )~"));
}

TEST_F(EditedCredential, OfAFullUnitIsNotAssignedThoughTheSaveIsDone) {
  Screen().ShowStored(1, 1);
  Screen().CountCodes("120", "300", "80");

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(std::string(kDoorAndNoFormerTenant) + std::string(kCapacity) + R"~(
    pbGetUnitStatus 3 -> 120 300 80
    MsgBox 64 "Pello RT" "You cannot enter more than 500 combined codes." -> 1
  )~"));
}

TEST_F(EditedCredential, OfAnOverfullUnitIsNotAssignedEither) {
  Screen().ShowStored(1, 1);
  Screen().CountCodes("501", "0", "0");

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_EQ(Host().transcript().StartingWith("MsgBox ").size(), 1U);
  EXPECT_TRUE(Host().transcript().StartingWith("pvCreateProgramSteps").empty());
}

TEST_F(EditedCredential, TakesTheLastPlaceOfTheUnit) {
  Screen().ShowStored(1, 1);
  Screen().CountCodes("120", "300", "79");

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox ").empty());
  EXPECT_EQ(Host().transcript().StartingWith("pvCreateProgramSteps"),
            Lines{"pvCreateProgramSteps 3 55"});
}

TEST_F(EditedCredential, WithoutADoorStoresNull) {
  Screen().ShowStored(1, 0);
  Host().Select("cboActivate", -1);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate "),
            Lines{"ExecuteUpdate \"UPDATE CREDENTIALBANK SET DOORCODE = "
                  "Null,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17\" "
                  "\"CREDENTIALBANK\" - 17 -> 1"});
}

TEST_F(EditedCredential, WithAddNewSelectedLooksForTheRowNull00) {
  Screen().ShowStored(0, 0);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteUpdate "UPDATE CREDENTIALBANK SET DOORCODE = 2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=Null00" "CREDENTIALBANK" - -100 -> 1
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = -100 ) OR ( CredentialID2 = -100))" -> Null
  )~"));
}

TEST_F(EditedCredential, IsAssignedEvenWhenItsDoorWasNotStored) {
  Screen().ShowStored(1, 1);
  Database().Error("SET DOORCODE", "locked");

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_EQ(Host().transcript().StartingWith("pvCreateProgramSteps"),
            Lines{"pvCreateProgramSteps 3 55"});
}

TEST_F(EditedCredential, IsNotSavedWithoutASelection) {
  Screen().ShowStored(-1, 1);

  EXPECT_FALSE(Screen().SaveEdited());

  EXPECT_TRUE(Host().transcript().StartingWith("Execute").empty());
}

TEST_F(EditedCredential, OfAUnitOfUnknownTypeIsNotSaved) {
  Screen().ShowStored(1, 1);
  Database().Replace("FROM UNITTYPES", {});

  EXPECT_FALSE(Screen().SaveEdited());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteUpdate \"UPDATE TENANTS").empty());
}

TEST_F(EditedCredential, IsNotSavedWhenTheCapacityGivesNoTable) {
  Screen().ShowStored(1, 1);
  Database().Replace("FROM UNITTYPES", {.nothing = true});

  EXPECT_FALSE(Screen().SaveEdited());

  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteUpdate \"UPDATE TENANTS").empty());
  // As for a unit of an unknown type: a table without rows stands for the one that is not there.
  EXPECT_EQ(Host().transcript().StartingWith("Trapped"),
            Lines{"Trapped pbSave 9 \"Subscript out of range\""});
}

TEST_F(EditedCredential, TakesAReferenceToNothingForATableWithoutRows) {
  struct Case {
    std::string_view name;
    qorcred::Value answer;
    std::string_view trapped;
  };
  for (const Case& one :
       {Case{"Nothing", qorcred::ObjectRef(), "Trapped pbSave 9 \"Subscript out of range\""},
        Case{"Null", qorcred::Null{}, "Trapped pbSave 9 \"Subscript out of range\""},
        Case{"Text", "500", "Trapped pbSave 424 \"Object required\""},
        Case{"Number", 500, "Trapped pbSave 424 \"Object required\""}}) {
    CredentialScreen screen;
    screen.ShowStored(1, 1);
    screen.host().database().Replace("FROM UNITTYPES", {.value = one.answer, .nothing = true});

    EXPECT_FALSE(screen.SaveEdited()) << one.name;

    EXPECT_EQ(screen.host().transcript().StartingWith("Trapped"), Lines{std::string(one.trapped)})
        << one.name;
  }
}

TEST_F(EditedCredential, CountsIn32Bits) {
  struct Case {
    std::string_view name;
    std::string_view most;
    std::array<std::string_view, 3> counts;
    std::string_view outcome;  ///< the start of the line that tells it
  };
  for (const Case& one :
       {Case{"OneBelow", "100000", {"70000", "20000", "9999"}, "pvCreateProgramSteps 3 55"},
        Case{"AtTheLimit",
             "100000",
             {"70000", "20000", "10000"},
             "MsgBox 64 \"Pello RT\" \"You cannot enter more than 100000 combined codes.\""},
        Case{"Largest", "2147483647", {"2147483646", "0", ""}, "pvCreateProgramSteps 3 55"},
        Case{"LimitTooLarge", "2147483648", {"0", "0", "0"}, "Trapped pbSave 6"},
        Case{"SumTooLarge", "2147483647", {"2147483647", "1", "0"}, "Trapped pbSave 6"},
        Case{"FirstSumTooLarge", "2147483647", {"2147483647", "1", "-1"}, "Trapped pbSave 6"},
        Case{"LimitThatIsNoNumber", "many", {"0", "0", "0"}, "Trapped pbSave 13"},
        Case{"NoNumber", "500", {"0", "x", "0"}, "Trapped pbSave 13"}}) {
    CredentialScreen screen;
    screen.ShowStored(1, 1);
    screen.AllowCodes(one.most);
    screen.CountCodes(one.counts[0], one.counts[1], one.counts[2]);

    EXPECT_EQ(screen.SaveEdited(), !one.outcome.starts_with("Trapped")) << one.name;

    EXPECT_EQ(screen.host().transcript().StartingWith(one.outcome).size(), 1U) << one.name;
  }
}

TEST_F(EditedCredential, MakesItsComponentsInThisOrderAndLetsThemGo) {
  Screen().ShowStored(1, 1);
  Database().Number("SELECT TenantID FROM Tenants", 56);

  EXPECT_TRUE(Screen().SaveEdited());

  EXPECT_TRUE(TranscriptIs(R"~(
    CreateObject "qorAppln.clsApplication"
    CreateObject "qorTent.clsTenant"
    cboActivate.ListIndex -> 2
    cboCredentials.ListIndex -> 1
    cboCredentials.ItemData(1) -> 17
    ExecuteUpdate "UPDATE CREDENTIALBANK SET DOORCODE = 2,LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey=3 AND RID=17" "CREDENTIALBANK" - 17 -> 1
    CreateObject "qorTent.clsTenant"
    CreateObject "qorTent.clsTenant"
    cboCredentials.ListIndex -> 1
    cboCredentials.ItemData(1) -> 17
    ExecuteScalar "SELECT TenantID FROM Tenants WHERE UnitKey=3 AND Resident=0  AND ((CredentialID1 = 17 ) OR ( CredentialID2 = 17))" -> 56
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = 17  AND UNITKEY = 3" "TENANTS" -> 1
    pvCreateProgramSteps 3 56
    Release "qorTent.clsTenant"
    cboAssignedTo.ListIndex -> 1
    cboAssignedTo.ItemData(1) -> 55
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    CreateObject "qorAppln.clsApplication"
    pbGetUnitStatus 3 -> 0 0 0
    cboCredentials.ListIndex -> 1
    cboCredentials.ItemData(1) -> 17
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = 17 WHERE TENANTID = 55 AND UNITKEY = 3 AND (CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))" "TENANTS" -> 1
    pvCreateProgramSteps 3 55
    Release "qorAppln.clsApplication"
    Release "qorDBI.clsDBManager"
    Release "qorTent.clsTenant"
    Release "qorAppln.clsApplication"
    Release "qorTent.clsTenant"
  )~"));
}

TEST_F(EditedCredential, IsNotCheckedAsANewOne) {
  Screen().ShowStored(1, 0);
  Host().SetText("txtPINStart", "not a number");

  EXPECT_TRUE(
      Controller().pbSave(Connection(), kUnit, /*blnIsTBL=*/true, /*blnEditCR=*/true, nullptr));

  EXPECT_TRUE(EffectsAre(kDoorAndNoFormerTenant));
}

TEST_F(EditedCredential, ReadsTheCapacityThroughAManagerOfItsOwn) {
  Screen().ShowStored(1, 1);

  EXPECT_TRUE(Screen().SaveEdited());

  const Lines lines = Host().transcript().Read(Detail::kEverything);
  const auto made = std::find(lines.begin(), lines.end(), "CreateObject \"qorDBI.clsDBManager\"");
  ASSERT_NE(made, lines.end());
  EXPECT_TRUE((made + 1)->starts_with("ExecuteSelect \"SELECT TOTAL")) << *(made + 1);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "CreateObject \"qorDBI.clsDBManager\""), 1);
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "Release \"qorDBI.clsDBManager\""), 1);
}

}  // namespace
}  // namespace qortest

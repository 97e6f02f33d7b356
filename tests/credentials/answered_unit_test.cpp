// The application component may change the unit key when it is asked for a unit's status: what
// comes back is the unit of the rest of the operation.
#include <string_view>

#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class AnsweredUnit : public CredentialTest {};

TEST_F(AnsweredUnit, IsThatOfANewCredential) {
  Screen().EnterSingle(kCard26, "10");
  Host().script().unitKeyAfterwards = 8;

  EXPECT_TRUE(Screen().SaveNew());

  const Lines inserts = Host().transcript().StartingWith("ExecuteInsert ");
  ASSERT_EQ(inserts.size(), 1U);
  EXPECT_NE(inserts.front().find("VALUES(8,_ROWID_,1,10,"), std::string::npos) << inserts.front();
}

TEST_F(AnsweredUnit, IsThatOfTheTenantAnAssignedCredentialGets) {
  Screen().ShowStored(1, 1);
  Host().script().unitKeyAfterwards = 8;

  EXPECT_TRUE(Screen().SaveEdited());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 3, effects.end()), R"~(
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteUpdate "UPDATE TENANTS SET CREDENTIALID1 = 17 WHERE TENANTID = 55 AND UNITKEY = 8 AND (CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))" "TENANTS" -> 1
    pvCreateProgramSteps 8 55
  )~"));
}

class AnsweredUnitWithTenants : public TenantCreatingTest {};

TEST_F(AnsweredUnitWithTenants, IsThatOfEverythingBehindTheStatus) {
  Screen().EnterSingle(kCard26, "10");
  Screen().EnterTenantDefaults();
  Database().Select("Select RID from TenantGroup where UnitKey = 8", {{79}});
  Host().script().unitKeyAfterwards = 8;

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 13U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 13, effects.end()), R"~(
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteSelect "Select RID from TenantGroup where UnitKey = 8 AND IsGroupZero=True" -> 1 row
    BeginTrans
    gstrNewTenantIDs = ""
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(8,_ROWID_,1,10,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 101
    pbGetMaxGroupIDOrLinkID 8 True -> 5
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(8,'No Name110',101,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',79,5,True)" "" "TENANTS" -> 102
    pbIncrementMaxGroupIDOrLinkIDByOne 8 True 1
    pbGetTenantID 8 102 -> 1102
    gstrNewTenantIDs = "1102,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (8 , 1102)" -> 1
    pvCreateProgramSteps 8 102
    CommitTrans
  )~"));
}

}  // namespace
}  // namespace qortest

// Storing new credentials with a tenant for each.
#include <algorithm>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class TenantStorage : public TenantCreatingTest {
 protected:
  /// The values of the first tenant's insert.
  std::string TenantValues() {
    const Lines inserts = Host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
    if (inserts.empty()) {
      return "(none)";
    }
    const std::size_t start = inserts.front().find("VALUES(");
    const std::size_t end = inserts.front().find('"', start);
    return inserts.front().substr(start, end - start);
  }
};

TEST_F(TenantStorage, OfASingleCardCreatesItsTenant) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNewWithTenants(&rid));

  EXPECT_TRUE(EffectsAre(R"~(
    gstrTag = "Single"
    txtPINEND.Text = "100"
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteSelect "Select RID from TenantGroup where UnitKey = 3 AND IsGroupZero=True" -> 1 row
    BeginTrans
    gstrNewTenantIDs = ""
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,1,100,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 101
    pbGetMaxGroupIDOrLinkID 3 True -> 5
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(3,'No Name1100',101,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',77,5,True)" "" "TENANTS" -> 102
    pbIncrementMaxGroupIDOrLinkIDByOne 3 True 1
    pbGetTenantID 3 102 -> 1102
    gstrNewTenantIDs = "1102,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (3 , 1102)" -> 1
    pvCreateProgramSteps 3 102
    CommitTrans
  )~"));
  EXPECT_EQ(rid, 101);
}

TEST_F(TenantStorage, OfARangeCreatesATenantForEachCredential) {
  Screen().EnterRange(kCard30, "1", "3");
  Screen().EnterTenantDefaults();
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNewWithTenants(&rid));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 0 and PINNo >=1  and PINNo <=3 and FacilityCode = 12 Order by CredentialType,PINNo,FacilityCode" -> no rows
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteSelect "Select RID from TenantGroup where UnitKey = 3 AND IsGroupZero=True" -> 1 row
    BeginTrans
    gstrNewTenantIDs = ""
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,0,1,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 101
    pbGetMaxGroupIDOrLinkID 3 True -> 5
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(3,'No Name01',101,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',77,5,True)" "" "TENANTS" -> 102
    pbIncrementMaxGroupIDOrLinkIDByOne 3 True 1
    pbGetTenantID 3 102 -> 1102
    gstrNewTenantIDs = "1102,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (3 , 1102)" -> 1
    pvCreateProgramSteps 3 102
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,0,2,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 103
    pbGetMaxGroupIDOrLinkID 3 True -> 6
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(3,'No Name02',103,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',77,6,True)" "" "TENANTS" -> 104
    pbIncrementMaxGroupIDOrLinkIDByOne 3 True 1
    pbGetTenantID 3 104 -> 1104
    gstrNewTenantIDs = "1102,1104,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (3 , 1104)" -> 1
    pvCreateProgramSteps 3 104
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,0,3,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 105
    pbGetMaxGroupIDOrLinkID 3 True -> 7
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(3,'No Name03',105,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',77,7,True)" "" "TENANTS" -> 106
    pbIncrementMaxGroupIDOrLinkIDByOne 3 True 1
    pbGetTenantID 3 106 -> 1106
    gstrNewTenantIDs = "1102,1104,1106,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (3 , 1106)" -> 1
    pvCreateProgramSteps 3 106
    CommitTrans
  )~"));
  EXPECT_EQ(rid, 105);
}

TEST_F(TenantStorage, ForgetsTheTenantsOfTheSaveBefore) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  Host().controls().SetVariable("gstrNewTenantIDs", "9,");

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(Host().controls().Variable("gstrNewTenantIDs"), qorcred::Value("1102,"));
}

TEST_F(TenantStorage, WithoutDatesStoresNullForBoth) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  Host().controls().Date("dtpStart").Choose(std::nullopt);
  Host().controls().Date("dtpEnd").Choose(std::nullopt);

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(TenantValues(),
            "VALUES(3,'No Name1100',101,1,0,5,9,Null,Null,_ROWID_,'_LMDATE_',77,5,True)");
}

TEST_F(TenantStorage, WithOneDateStoresNullForTheOther) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  Host().controls().Date("dtpEnd").Choose(std::nullopt);

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(TenantValues(),
            "VALUES(3,'No Name1100',101,1,0,5,9,'11/21/2026',Null,_ROWID_,"
            "'_LMDATE_',77,5,True)");
}

TEST_F(TenantStorage, OfInactiveTenantsStoresNoDates) {
  for (const std::int16_t state : {std::int16_t{0}, std::int16_t{2}}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterSingle(kCard26, "100");
    screen.EnterTenantDefaults();
    screen.host().controls().Check("chkActive").SetState(state);

    EXPECT_TRUE(screen.SaveNewWithTenants());

    const Lines inserts =
        screen.host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
    ASSERT_EQ(inserts.size(), 1U);
    EXPECT_NE(inserts.front().find("VALUES(3,'No Name1100',101,1,0,5,9,Null,Null,_ROWID_,"
                                   "'_LMDATE_',77,5,False)"),
              std::string::npos)
        << inserts.front();
  }
}

TEST_F(TenantStorage, WritesTheTimesOfDay) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  Host().controls().Date("dtpStart").Choose(qorcred::FromCivil({2026, 1, 31, 14, 5, 9}));
  Host().controls().Date("dtpEnd").Choose(qorcred::FromCivil({2026, 12, 1, 0, 0, 1}));

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(TenantValues(),
            "VALUES(3,'No Name1100',101,1,0,5,9,'1/31/2026 2:05:09 PM','12/1/2026 12:00:01 AM',"
            "_ROWID_,'_LMDATE_',77,5,True)");
}

/// A host that writes its dates in a form of its own.
class DatesInWords final : public qorcred::Host {
 public:
  explicit DatesInWords(qorcred::Host& inner) : inner_(inner) {}

  std::string DateText(qorcred::Date date) override {
    const qorcred::CivilTime civil = qorcred::ToCivil(date);
    return "day " + std::to_string(civil.day) + " of month " + std::to_string(civil.month);
  }

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override {
    return inner_.CreateComponent(programmaticId);
  }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override {
    return inner_.ShowMessage(text, style, title);
  }
  qorcred::Date Now() override { return inner_.Now(); }
  void LetEventsRun() override { inner_.LetEventsRun(); }
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    inner_.ReportFailure(operation, failure);
  }

 private:
  qorcred::Host& inner_;
};

TEST_F(TenantStorage, WritesDatesInTheFormOfTheHost) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  DatesInWords host(Host().host());
  UnderTest<qorcred::clsCredential> controller(host);
  controller.set_gmobjCredentialScreen(Host().screen());

  EXPECT_TRUE(controller.pbSave(Connection(), kUnit, true));

  EXPECT_EQ(TenantValues(),
            "VALUES(3,'No Name1100',101,1,0,5,9,'day 21 of month 11','day 21 of month 11',"
            "_ROWID_,'_LMDATE_',77,5,True)");
}

TEST_F(TenantStorage, WithNothingSelectedStoresScheduleZero) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  for (const std::string_view list :
       {"cboSchedules1", "cboSchedules2", "cboSchedules3", "cboSchedules4"}) {
    Host().Select(list, -1);
  }

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(TenantValues(),
            "VALUES(3,'No Name1100',101,0,0,0,0,'11/21/2026','11/21/2027 11:59:59 "
            "PM',_ROWID_,'_LMDATE_',77,5,True)");
}

TEST_F(TenantStorage, OfAUnitWithoutGroupsStoresGroupZero) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  Database().Replace("from TenantGroup", {});

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(TenantValues(),
            "VALUES(3,'No Name1100',101,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 "
            "PM',_ROWID_,'_LMDATE_',0,5,True)");
}

TEST_F(TenantStorage, NamesTenantsAfterTypeAndNumber) {
  struct Case {
    std::int32_t type;
    std::string_view name;
  };
  for (const Case& one : {Case{kCard30, "'No Name065535'"}, Case{kCard26, "'No Name165535'"},
                          Case{kTransmitter, "'No Name265535'"}}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.EnterSingle(one.type, "65535");
    screen.EnterTenantDefaults();

    EXPECT_TRUE(screen.SaveNewWithTenants());

    const Lines inserts =
        screen.host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS");
    ASSERT_EQ(inserts.size(), 1U);
    EXPECT_NE(inserts.front().find(one.name), std::string::npos) << inserts.front();
  }
}

TEST_F(TenantStorage, DoesNoTenantWorkForACredentialThatWasNotInserted) {
  Screen().EnterRange(kCard26, "1", "3");
  Screen().EnterTenantDefaults();
  Database().Number("INSERT INTO CREDENTIALBANK", 101);
  Database().Number("INSERT INTO CREDENTIALBANK", 0);

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 3, effects.end()), R"~(
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,1,2,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 0
    gstrNewTenantIDs = ""
    RollbackTrans
  )~"));
  EXPECT_EQ(Host().transactions().open(), 0);
  EXPECT_EQ(Host().transactions().committed(), 0);
}

// The tenant's other calls are made all the same, before the row's identity is looked at.
TEST_F(TenantStorage, RollsBackWhenATenantIsNotInserted) {
  Screen().EnterRange(kCard26, "1", "3");
  Screen().EnterTenantDefaults();
  Database().Number("INSERT INTO TENANTS", 102);
  Database().Number("INSERT INTO TENANTS", 0);
  std::int32_t rid = 0;

  EXPECT_FALSE(Screen().SaveNewWithTenants(&rid));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and PINNo >=1  and PINNo <=3 and FacilityCode = 12 Order by CredentialType,PINNo,FacilityCode" -> no rows
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 0 0 0
    ExecuteSelect "Select RID from TenantGroup where UnitKey = 3 AND IsGroupZero=True" -> 1 row
    BeginTrans
    gstrNewTenantIDs = ""
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,1,1,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 101
    pbGetMaxGroupIDOrLinkID 3 True -> 5
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(3,'No Name11',101,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',77,5,True)" "" "TENANTS" -> 102
    pbIncrementMaxGroupIDOrLinkIDByOne 3 True 1
    pbGetTenantID 3 102 -> 1102
    gstrNewTenantIDs = "1102,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (3 , 1102)" -> 1
    pvCreateProgramSteps 3 102
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,1,2,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 102
    pbGetMaxGroupIDOrLinkID 3 True -> 6
    ExecuteInsert "INSERT INTO TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,ACTIVETENANT)VALUES(3,'No Name12',102,1,0,5,9,'11/21/2026','11/21/2027 11:59:59 PM',_ROWID_,'_LMDATE_',77,6,True)" "" "TENANTS" -> 0
    pbIncrementMaxGroupIDOrLinkIDByOne 3 True 1
    pbGetTenantID 3 0 -> 1000
    gstrNewTenantIDs = "1102,1000,"
    Execute "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (3 , 1000)" -> 1
    pvCreateProgramSteps 3 0
    gstrNewTenantIDs = ""
    RollbackTrans
  )~"));
  EXPECT_EQ(rid, 102);
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert \"INSERT INTO TENANTS").size(), 2U);
  EXPECT_EQ(Host().controls().Variable("gstrNewTenantIDs"), qorcred::Value(""));
  EXPECT_EQ(Host().transactions().committed(), 0);
}

TEST_F(TenantStorage, ForgetsTheTenantsWhenACallRaises) {
  Screen().EnterRange(kCard26, "1", "3");
  Screen().EnterTenantDefaults();
  Host().gate().FailOn("pvCreateProgramSteps");

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_EQ(Host().transactions().rolledBack(), 1);
  EXPECT_EQ(Host().controls().Variable("gstrNewTenantIDs"), qorcred::Value(""));
}

TEST_F(TenantStorage, IsUndoneWhenTheNewTenantsCannotBeForgottenAtItsBeginning) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();
  Host().gate().FailOn("gstrNewTenantIDs=");

  EXPECT_FALSE(Screen().SaveNewWithTenants());

  EXPECT_EQ(Host().transactions().rolledBack(), 1);
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteInsert").empty());
}

TEST_F(TenantStorage, DoesNotAskAnotherApplicationComponentForTheStatus) {
  Screen().EnterSingle(kCard26, "100");
  Screen().EnterTenantDefaults();

  EXPECT_TRUE(Screen().SaveNewWithTenants());

  EXPECT_EQ(Host().transcript().StartingWith("CreateObject \"qorAppln.clsApplication\"").size(),
            1U);
  const Lines lines = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(lines.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(lines.end() - 3, lines.end()), R"~(
    CommitTrans
    Release "qorAppln.clsApplication"
    Release "qorTent.clsTenant"
  )~"));
}

}  // namespace
}  // namespace qortest

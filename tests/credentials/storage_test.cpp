// Storing new credentials: one row a number in one transaction, all of them or none.
#include <array>
#include <string>
#include <string_view>

#include "credentials/save_transaction.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

class Storage : public CredentialTest {};

TEST_F(Storage, OfASingleCardIsOneRowInATransaction) {
  Screen().EnterSingle(kCard26, "10");
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_TRUE(EffectsAre(R"~(
    gstrTag = "Single"
    txtPINEND.Text = "10"
    ExecuteSelect "Select UnitKey,PINNo from CredentialBank where UnitKey = 3 and CredentialType = 1 and PINNo = 10 and FacilityCode = 12" -> no rows
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 0 0 0
    BeginTrans
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,1,10,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> 101
    CommitTrans
  )~"));
  EXPECT_EQ(rid, 101);
}

TEST_F(Storage, OfARangeIsARowForEachNumber) {
  Screen().EnterRange(kTransmitter, "1", "3");
  Host().controls().Option("optButton4").SetOn(true);
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select Top 1 UnitKey, PINNo from CredentialBank where UnitKey = 3 and CredentialType = 2 and FacilityCode = 12 and IDCode = 5 and SequenceNumber = 1 and ButtonNumber = 4 and PINNo >=1  and PINNo <=3 Order by CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber" -> no rows
    ExecuteSelect "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = 3 AND S.UNITTYPE = T.DESCRIPTION" -> 1 row
    pbGetUnitStatus 3 -> 0 0 0
    BeginTrans
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,2,1,12,5,1,4,'_LMDATE_')" "" "CREDENTIALBANK" -> 101
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,2,2,12,5,1,4,'_LMDATE_')" "" "CREDENTIALBANK" -> 102
    ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,2,3,12,5,1,4,'_LMDATE_')" "" "CREDENTIALBANK" -> 103
    CommitTrans
  )~"));
  EXPECT_EQ(rid, 103);
}

TEST_F(Storage, WritesTheButtonOfCardsToo) {
  Screen().EnterSingle(kCard30, "10");
  Host().controls().Option("optButton4").SetOn(true);

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert "),
            Lines{"ExecuteInsert \"INSERT INTO "
                  "CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
                  "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,0,10,12,0,0,4,'_"
                  "LMDATE_')\" \"\" \"CREDENTIALBANK\" -> 101"});
}

TEST_F(Storage, NeedsNoPlaceForTheIdentity) {
  Screen().EnterSingle(kCard26, "10");

  EXPECT_TRUE(Controller().pbSave(Connection(), kUnit));

  EXPECT_EQ(Host().transactions().committed(), 1);
}

TEST_F(Storage, RollsBackWhenARowIsNotInserted) {
  for (const std::int32_t identity : {0, -1}) {
    CredentialScreen screen;
    screen.EnterRange(kCard26, "1", "3");
    screen.host().controls().SetVariable("gstrNewTenantIDs", "9,");
    screen.host().database().Number("INSERT INTO CREDENTIALBANK", 101);
    screen.host().database().Number("INSERT INTO CREDENTIALBANK", identity);

    EXPECT_FALSE(screen.SaveNew());

    const Lines effects = screen.host().transcript().Read(Detail::kEffects);
    ASSERT_GE(effects.size(), 3U);
    EXPECT_TRUE(SameLines(Lines(effects.end() - 3, effects.end()),
                          R"~(
      ExecuteInsert "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(3,_ROWID_,1,2,12,0,0,1,'_LMDATE_')" "" "CREDENTIALBANK" -> )~" +
                              std::to_string(identity) + R"~(
      gstrNewTenantIDs = ""
      RollbackTrans
    )~"));
    EXPECT_EQ(screen.host().transcript().StartingWith("ExecuteInsert ").size(), 2U);
    EXPECT_EQ(screen.host().transactions().open(), 0);
    EXPECT_EQ(screen.host().controls().Variable("gstrNewTenantIDs"), qorcred::Value(""));
  }
}

TEST_F(Storage, RollsBackWhenAStatementFails) {
  Screen().EnterSingle(kCard26, "10");
  Database().Error("INSERT INTO CREDENTIALBANK", "the disk is full");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_EQ(Host().transactions().rolledBack(), 1);
  EXPECT_EQ(Host().transactions().committed(), 0);
}

TEST_F(Storage, AcceptsTheIdentityOne) {
  Screen().EnterSingle(kCard26, "10");
  Database().Number("INSERT INTO CREDENTIALBANK", 1);
  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_EQ(rid, 1);
  EXPECT_EQ(Host().transactions().committed(), 1);
}

// What the caller holds then is the identity of a row that is gone, or the manager's answer.
TEST_F(Storage, LeavesTheLastIdentityOfASaveThatWasRolledBack) {
  struct Case {
    std::string_view name;
    void (*fail)(RecordingHost& host);
    std::int32_t rid;
  };
  static constexpr auto kRefuse = [](RecordingHost& host, std::int32_t identity) {
    host.database().Number("INSERT INTO CREDENTIALBANK", 101);
    host.database().Number("INSERT INTO CREDENTIALBANK", identity);
  };
  const std::array<Case, 5> cases{
      {{"second row without identity", [](RecordingHost& host) { kRefuse(host, 0); }, 0},
       {"second row refused", [](RecordingHost& host) { kRefuse(host, -1); }, -1},
       {"second insert failing",
        [](RecordingHost& host) {
          host.database().On("_ROWID_,1,2,", {.error = "the disk is full"});
        },
        0},
       {"first insert raises", [](RecordingHost& host) { host.gate().FailOn("ExecuteInsert"); },
        42},
       {"no transaction", [](RecordingHost& host) { host.gate().FailOn("BeginTrans"); }, 42}}};
  for (const Case& one : cases) {
    CredentialScreen screen;
    screen.EnterRange(kCard26, "1", "3");
    one.fail(screen.host());
    std::int32_t rid = 42;

    EXPECT_FALSE(screen.SaveNew(&rid)) << one.name;

    EXPECT_EQ(rid, one.rid) << one.name;
    EXPECT_EQ(screen.host().transactions().committed(), 0) << one.name;
    EXPECT_EQ(screen.host().transactions().open(), 0) << one.name;
  }
}

TEST_F(Storage, RollsBackWhenAnInsertRaises) {
  Screen().EnterRange(kCard26, "1", "3");
  Host().gate().FailOn("ExecuteInsert");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_EQ(Host().transactions().rolledBack(), 1);
  EXPECT_EQ(Host().transactions().open(), 0);
}

// The result is True before the transaction is committed, and a failure leaves it as it is.
TEST_F(Storage, ThatCannotBeCommittedIsRolledBackButReportedDone) {
  Screen().EnterSingle(kCard26, "10");
  Host().gate().FailOn("CommitTrans");

  std::int32_t rid = 0;

  EXPECT_TRUE(Screen().SaveNew(&rid));

  EXPECT_EQ(rid, 101);
  EXPECT_EQ(Host().transactions().rolledBack(), 1);
  EXPECT_EQ(Host().transactions().open(), 0);
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().first, "pbSave");
}

TEST_F(Storage, ThatCannotBeginForgetsTheTenantsAndRollsNothingBack) {
  Screen().EnterSingle(kCard26, "10");
  Host().controls().SetVariable("gstrNewTenantIDs", "9,");
  Host().gate().FailOn("BeginTrans");

  EXPECT_FALSE(Screen().SaveNew());

  const Lines effects = Host().transcript().Read(Detail::kEffects);
  ASSERT_GE(effects.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(effects.end() - 3, effects.end()), R"~(
    BeginTrans ! 1000 "Injected failure"
    gstrNewTenantIDs = ""
    Trapped pbSave 1000 "Injected failure"
  )~"));
  EXPECT_EQ(Host().transactions().rolledBack(), 0);
  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteInsert ").empty());
}

TEST_F(Storage, WithoutAConnectionForgetsTheTenantsToo) {
  Host().controls().SetVariable("gstrNewTenantIDs", "9,");
  const qorcred::Screen screen(Host().screen());
  {
    qorcred::SaveTransaction transaction(Host().host(), "pbSave", nullptr, screen);
    EXPECT_THROW(transaction.Begin(), qorcred::RuntimeError);
  }

  EXPECT_TRUE(Host().services().trapped().empty());
  EXPECT_EQ(Host().controls().Variable("gstrNewTenantIDs"), qorcred::Value(""));
}

// A host that creates no tenants may have a screen without the variable.
TEST_F(Storage, LeavesTheNewTenantsOfAnEarlierSaveAlone) {
  Screen().EnterSingle(kCard26, "10");
  Host().controls().SetVariable("gstrNewTenantIDs", "9,");
  Host().gate().FailOn("gstrNewTenantIDs");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().controls().Variable("gstrNewTenantIDs"), qorcred::Value("9,"));
  EXPECT_EQ(Host().transactions().committed(), 1);
}

TEST_F(Storage, LeavesTheNewTenantsAloneWhenTheEntryIsRefused) {
  Screen().EnterSingle(kCard26, "");
  Host().controls().SetVariable("gstrNewTenantIDs", "9,");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_TRUE(Host().transcript().StartingWith("gstrNewTenantIDs").empty());
  EXPECT_EQ(Host().controls().Variable("gstrNewTenantIDs"), qorcred::Value("9,"));
}

TEST_F(Storage, RollsBackAlthoughTheNewTenantsCannotBeForgotten) {
  Screen().EnterRange(kCard26, "1", "3");
  Database().Number("INSERT INTO CREDENTIALBANK", 101);
  Database().Number("INSERT INTO CREDENTIALBANK", 0);
  Host().gate().FailOn("gstrNewTenantIDs=");

  EXPECT_FALSE(Screen().SaveNew());

  EXPECT_EQ(Host().gate().failed(), "gstrNewTenantIDs=");
  EXPECT_EQ(Host().transactions().rolledBack(), 1);
  EXPECT_EQ(Host().transactions().open(), 0);
}

// The pass over statements takes "-1" for an absent value wherever it stands.
TEST_F(Storage, ForAUnitKeyOfMinusOneStoresNull) {
  Screen().EnterSingle(kCard26, "10");

  EXPECT_TRUE(Controller().pbSave(Connection(), -1));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert "),
            Lines{"ExecuteInsert \"INSERT INTO "
                  "CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
                  "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES(Null,_ROWID_,1,10,12,0,0,1,"
                  "'_LMDATE_')\" \"\" \"CREDENTIALBANK\" -> 101"});
}

TEST_F(Storage, CreatesApplicationAndTenantComponentsFirstAndReleasesThemLast) {
  Screen().EnterSingle(kCard26, "10");

  EXPECT_TRUE(Screen().SaveNew());

  const Lines lines = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(lines.size(), 5U);
  EXPECT_TRUE(SameLines(Lines(lines.begin(), lines.begin() + 2), R"~(
    CreateObject "qorAppln.clsApplication"
    CreateObject "qorTent.clsTenant"
  )~"));
  EXPECT_TRUE(SameLines(Lines(lines.end() - 3, lines.end()), R"~(
    CommitTrans
    Release "qorAppln.clsApplication"
    Release "qorTent.clsTenant"
  )~"));
  EXPECT_EQ(Host().services().LiveComponents(), 3);
}

TEST_F(Storage, AsksAnApplicationComponentOfItsOwnForTheStatus) {
  Screen().EnterSingle(kCard26, "10");

  EXPECT_TRUE(Screen().SaveNew());

  EXPECT_EQ(Host().transcript().StartingWith("CreateObject \"qorAppln.clsApplication\"").size(),
            2U);
  EXPECT_EQ(Host().transcript().StartingWith("Release \"qorAppln.clsApplication\"").size(), 2U);
}

}  // namespace
}  // namespace qortest

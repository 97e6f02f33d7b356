// Tenants that are chosen, added, changed and deleted.
#include "host/desks/tenant_desk.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "host/desks/credential_list.h"
#include "host/desks/store_check.h"
#include "host/desks/tenant_fields.h"
#include "host/store/step_queue.h"
#include "tests/host/desks/credential_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::TextOrEmpty;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Unit 2 has the tenants 61 to 135; 62 is called Tanaka Xenia M, and nobody else by these names.
class TenantDeskTest : public CredentialFixture {
 protected:
  void SetUp() override {
    CredentialFixture::SetUp();
    Run("DELETE FROM ProgramSteps");
    Run("UPDATE Tenants SET LastName='Tanaka', FirstName='Xenia', MiddleInitial='M', "
        "NameAtUnit='Xenia Tanaka' WHERE RID=62");
    Run("UPDATE Tenants SET LastName='Quint', NameAtUnit='Xenia Quint' WHERE RID=100");
  }

  [[nodiscard]] static std::vector<std::int32_t> Rids(const std::vector<TenantRow>& rows) {
    std::vector<std::int32_t> rids;
    for (const TenantRow& row : rows) {
      rids.push_back(row.rid);
    }
    return rids;
  }
  [[nodiscard]] std::vector<std::int32_t> Named(const std::vector<std::string>& names) {
    TenantDesk desk(session(), kUnit);
    desk.Choose(names);
    return Rids(desk.chosen());
  }
  [[nodiscard]] std::vector<std::int32_t> Where(const std::vector<std::string>& conditions) {
    TenantDesk desk(session(), kUnit);
    desk.ChooseWhere(conditions);
    return Rids(desk.chosen());
  }
  /// The reason of the fault that naming these raises.
  [[nodiscard]] std::string Refusal(const std::string& name) {
    try {
      (void)Named({name});
    } catch (const InputFault& fault) {
      return fault.reason();
    }
    return "";
  }
  ChangedTenants Edit(const std::vector<std::string>& names, const TenantEntry& entry,
                      Trial trial = Trial::kNo) {
    TenantDesk desk(session(), kUnit);
    desk.Choose(names);
    return desk.Edit(entry, trial);
  }
  [[nodiscard]] std::string FaultyField(const TenantEntry& entry,
                                        const std::vector<std::string>& names = {"rid:62"}) {
    return FieldAtFault([&] { (void)Edit(names, entry); });
  }
  [[nodiscard]] std::vector<std::string> Steps() {
    std::vector<std::string> steps;
    for (const ProgramStep& step : session().sql().steps().List(kUnit)) {
      steps.push_back(step.kind + " " + std::to_string(step.subjectRid));
    }
    return steps;
  }
  [[nodiscard]] std::string Of(const std::string& column, std::int32_t rid = 62) {
    return Cell("SELECT " + column + " FROM Tenants WHERE RID=" + std::to_string(rid));
  }
  [[nodiscard]] std::int64_t LastEntry() {
    return session().sql().audit().After(0, std::nullopt).back().entry;
  }
  /// A card that nobody holds.
  [[nodiscard]] std::string FreeCard(const std::string& number) {
    EXPECT_TRUE(Issue(Cards(number)).done());
    return Cell("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=" + number);
  }

  static TenantEntry LastName(const std::string& name) {
    TenantEntry entry;
    entry.lastName = name;
    return entry;
  }
};

TEST_F(TenantDeskTest, TenantsAreNamedByIdRowsAndWords) {
  EXPECT_THAT(Named({"62"}), ElementsAre(62));
  EXPECT_THAT(Named({"rid:63,62", "rid:63"}), ElementsAre(63, 62));
  EXPECT_THAT(Named({"tanaka x"}), ElementsAre(62));
  EXPECT_THAT(Named({"Xenia Tanaka M"}), ElementsAre(62));
}

TEST_F(TenantDeskTest, ANameIsTheSameInEveryListWhateverStandsAroundItsParts) {
  Run("UPDATE Tenants SET LastName=' Berg ', FirstName='', MiddleInitial=' K' WHERE RID=62");
  TenantDesk desk(session(), kUnit);
  desk.Choose({"rid:62"});
  EXPECT_EQ(desk.chosen().front().Name(), "Berg K");
  CredentialDesk credentials(session(), kUnit, DeskScreen::kCredentials);
  const List cards = CredentialList(session(), credentials);
  EXPECT_TRUE(std::any_of(cards.rows.begin(), cards.rows.end(), [](const auto& row) {
    return std::find(row.begin(), row.end(), qorcred::Value("Berg K")) != row.end();
  }));
}

TEST_F(TenantDeskTest, TenantsStandInTheOrderInWhichPeopleSortNames) {
  int rid = 61;
  for (const char* name : {"Öztürk", "Zander", "ozan", "Petrov", "Åberg", "Abel", "Ozturk"}) {
    Run("UPDATE Tenants SET LastName='" + std::string(name) +
        "', FirstName='A', MiddleInitial=NULL, NameAtUnit='Sorted' WHERE RID=" +
        std::to_string(rid++));
  }
  EXPECT_THAT(Where({"name_at_unit = Sorted"}), ElementsAre(66, 65, 63, 67, 61, 64, 62));
}

TEST_F(TenantDeskTest, AWholeNameWinsOverOneWithMoreWords) {
  Run("UPDATE Tenants SET LastName='Tanaka', FirstName='Xenia', MiddleInitial=NULL WHERE RID=63");
  EXPECT_THAT(Named({"Tanaka Xenia"}), ElementsAre(63));
}

TEST_F(TenantDeskTest, SeveralOfThatNameAreTold) {
  Run("UPDATE Tenants SET LastName='Tanaka', FirstName='Xaver', MiddleInitial=NULL WHERE RID=63");
  EXPECT_EQ(Refusal("Tanaka X"),
            "2 tenants are called '{value}', say more of the name, or rid:N: Tanaka Xaver "
            "(rid:63, code 103); Tanaka Xenia M (rid:62, code 102)");
}

TEST_F(TenantDeskTest, WhoIsNotThereIsAFault) {
  for (const char* name : {"Nobody Atall", "9999", "rid:1", "", "rid:62,"}) {
    EXPECT_NE(Refusal(name), "") << name;
  }
}

TEST_F(TenantDeskTest, ConditionsNarrowByEveryField) {
  EXPECT_THAT(Where({"name begins with tanaka x"}), ElementsAre(62));
  EXPECT_THAT(Where({"name at unit = xenia tanaka"}), ElementsAre(62));
  EXPECT_THAT(Where({"code = 102"}), ElementsAre(62));
  EXPECT_THAT(Where({"code >= 101", "code < 103"}), SizeIs(2));
  EXPECT_THAT(Where({"code ="}), SizeIs(75 - 6));
  EXPECT_THAT(Where({"resident = yes"}), SizeIs(3));
  EXPECT_THAT(Where({"card = 1002"}), ElementsAre(62));
  EXPECT_THAT(Where({"card does not equal 1002"}), SizeIs(74));
  EXPECT_THAT(Where({"card between 1001 AND 1002"}), SizeIs(2));
  EXPECT_THAT(Where({"active = yes"}), IsEmpty());
  EXPECT_THAT(Where({"schedule1 = full access"}), SizeIs(75));
  EXPECT_THAT(Where({"schedule3 = Early Shift"}), SizeIs(19));
  EXPECT_THAT(Where({"end < 2027-01-01"}), IsEmpty());
  Run("UPDATE Tenants SET ACTIVEENDTIME='2026-12-31 23:59:59' WHERE RID=62");
  EXPECT_THAT(Where({"end < 2027-01-01"}), ElementsAre(62));
  EXPECT_THAT(Where({"end = 2026-12-31"}), ElementsAre(62));
  EXPECT_THAT(Where({"group = " + Of("GROUPID")}), SizeIs(75));
}

TEST_F(TenantDeskTest, WhatIsNoConditionIsAFault) {
  for (const char* where : {"floor = 3", "name", "active = maybe", "schedule1 = Sundays"}) {
    EXPECT_NE(FieldAtFault([&] { (void)Where({where}); }), "") << where;
  }
}

TEST_F(TenantDeskTest, AnEditWritesItsFieldsAndQueuesOneStep) {
  const std::string date = Of("LASTMODIFIEDDATE");
  session().sql().steps().Queue(kUnit, step::kProgramTenant, 62);
  TenantEntry entry = LastName("O'Brien");
  entry.schedules[2] = "night shift";
  entry.code = "103";
  const ChangedTenants changed = Edit({"rid:62"}, entry);
  ASSERT_TRUE(changed.done());
  EXPECT_EQ(Of("LastName"), "O'Brien");
  EXPECT_EQ(Of("NameAtUnit"), "Xenia O'Brien");
  EXPECT_EQ(Of("DOORSCHEDULE3"), "4");
  EXPECT_EQ(Of("DIRECTORYCODE"), "13");
  EXPECT_NE(Of("LASTMODIFIEDDATE"), date);
  EXPECT_THAT(Steps(), ElementsAre("program tenant 62"));
  ASSERT_THAT(changed.changes, SizeIs(4));
  EXPECT_EQ(changed.changes[0].field.key, "last_name");
  EXPECT_EQ(TextOrEmpty(changed.changes[0].before), "Tanaka");
  EXPECT_EQ(TextOrEmpty(changed.changes[3].after), "103");
  EXPECT_EQ(session().sql().audit().After(0, kUnit).back().what, "edit tenant Tanaka Xenia M");
}

TEST_F(TenantDeskTest, ANameThatTheUnitShowsOtherwiseStays) {
  Run("UPDATE Tenants SET NameAtUnit='Flat 7' WHERE RID=62");
  EXPECT_TRUE(Edit({"rid:62"}, LastName("Berg")).done());
  EXPECT_EQ(Of("NameAtUnit"), "Flat 7");
}

TEST_F(TenantDeskTest, ATextIsStoredAsItIs) {
  for (const char* name : {"'", "_LMDATE_", "a' OR 'b", "Zoë \xF0\x9F\x98\x80", "%_[x]"}) {
    EXPECT_TRUE(Edit({"rid:62"}, LastName(name)).done()) << name;
    EXPECT_EQ(Of("LastName"), name);
  }
}

TEST_F(TenantDeskTest, WhatIsStoredAlreadyQueuesNothing) {
  const std::int64_t entry = LastEntry();
  const ChangedTenants changed = Edit({"rid:62"}, LastName("Tanaka"));
  EXPECT_TRUE(changed.unchanged);
  EXPECT_EQ(changed.tenants, 0U);
  EXPECT_THAT(Steps(), IsEmpty());
  EXPECT_EQ(LastEntry(), entry);
}

TEST_F(TenantDeskTest, ManyAreChangedAsOneUnitOfWork) {
  TenantDesk desk(session(), kUnit);
  desk.ChooseWhere({"schedule3 = Early Shift"});
  TenantEntry entry;
  entry.schedules[2] = "Night Shift";
  const std::int64_t before = LastEntry();
  EXPECT_EQ(desk.Edit(entry, Trial::kNo).tenants, 19U);
  EXPECT_EQ(LastEntry(), before + 1);
  EXPECT_THAT(Steps(), SizeIs(19));
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE UnitKey=2 AND DOORSCHEDULE3=2"), 0U);
}

TEST_F(TenantDeskTest, OneWhoCannotBeChangedLeavesAllAsTheyAre) {
  Run("UPDATE Tenants SET ACTIVESTARTTIME='2026-06-01 00:00:00' WHERE RID=63");
  TenantEntry entry;
  entry.to = "2026-03-31";
  EXPECT_EQ(FaultyField(entry, {"rid:62,63"}), tenant_field::kEnd);
  EXPECT_EQ(Of("ACTIVEENDTIME"), "");
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(TenantDeskTest, ATrialTellsAndChangesNothing) {
  const std::int64_t entry = LastEntry();
  const ChangedTenants changed = Edit({"rid:62"}, LastName("Berg"), Trial::kYes);
  EXPECT_FALSE(changed.written);
  EXPECT_THAT(changed.changes, SizeIs(2));
  EXPECT_EQ(Of("LastName"), "Tanaka");
  EXPECT_THAT(Steps(), IsEmpty());
  EXPECT_EQ(LastEntry(), entry);
}

TEST_F(TenantDeskTest, ACardIsGivenByTheControllerAndTheFormerOnesAreFree) {
  const std::string card = FreeCard("9100");
  const std::string former = Of("CREDENTIALID1");
  TenantEntry entry;
  entry.cards = {"9100"};
  const ChangedTenants changed = Edit({"rid:62"}, entry);
  ASSERT_TRUE(changed.done());
  EXPECT_EQ(Of("CREDENTIALID1"), card);
  EXPECT_EQ(Of("CREDENTIALID2"), "");
  EXPECT_THAT(changed.freed, ElementsAre("Corvin 30-Bit Card-1002"));
  EXPECT_THAT(Steps(), ElementsAre("program tenant 62"));
  EXPECT_THAT(FindingsIn(session(), kUnit), IsEmpty());
  entry.cards = {"rid:" + former, "9100"};
  ASSERT_TRUE(Edit({"rid:62"}, entry).done());
  EXPECT_EQ(Of("CREDENTIALID1"), card);
  EXPECT_EQ(Of("CREDENTIALID2"), former);
}

TEST_F(TenantDeskTest, ACardThatSomebodyHoldsIsRefusedWithTheHolder) {
  TenantEntry entry;
  entry.cards = {"1003"};
  try {
    (void)Edit({"rid:62"}, entry);
    FAIL() << "it was given";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), tenant_field::kCard);
    EXPECT_THAT(fault.reason(), HasSubstr("is held by"));
    EXPECT_THAT(fault.reason(), HasSubstr("(RID 63)"));
  }
  entry.cards = {"none"};
  EXPECT_TRUE(Edit({"rid:62,63"}, entry).done());
  EXPECT_EQ(Of("CREDENTIALID1", 63), "");
  entry.cards = {"1003", "1004", "1005"};
  EXPECT_EQ(FaultyField(entry), tenant_field::kCard);
  entry.cards = {"1003"};
  EXPECT_EQ(FaultyField(entry, {"rid:62,64"}), tenant_field::kCard);
}

TEST_F(TenantDeskTest, AResidentKeepsCardsAndGetsNone) {
  (void)FreeCard("9100");
  TenantEntry entry;
  entry.cards = {"9100"};
  EXPECT_EQ(FaultyField(entry, {"rid:80"}), tenant_field::kCard);
  EXPECT_NE(Of("CREDENTIALID1", 80), "");
  entry.cards = {"none"};
  EXPECT_TRUE(Edit({"rid:80"}, entry).done());
  EXPECT_EQ(Of("CREDENTIALID1", 80), "");
}

TEST_F(TenantDeskTest, WhatCannotBeEnteredIsAFault) {
  const auto with = [](auto TenantEntry::*input, const char* given) {
    TenantEntry entry;
    entry.*input = given;
    return entry;
  };
  EXPECT_EQ(FaultyField(LastName(" ")), tenant_field::kLastName);
  EXPECT_EQ(FaultyField(LastName("a\nb")), tenant_field::kLastName);
  EXPECT_EQ(FaultyField(LastName("\xFF")), tenant_field::kLastName);
  EXPECT_EQ(FaultyField(LastName(std::string(51, 'x'))), tenant_field::kLastName);
  EXPECT_EQ(FaultyField(with(&TenantEntry::firstName, "\t")), tenant_field::kFirstName);
  EXPECT_EQ(FaultyField(with(&TenantEntry::initial, "Initial")), tenant_field::kInitial);
  EXPECT_EQ(FaultyField(with(&TenantEntry::active, "perhaps")), tenant_field::kActive);
  EXPECT_EQ(FaultyField(with(&TenantEntry::resident, "2")), tenant_field::kResident);
  EXPECT_EQ(FaultyField(with(&TenantEntry::to, "soon")), tenant_field::kEnd);
  EXPECT_EQ(FaultyField(with(&TenantEntry::from, "")), tenant_field::kStart);
  EXPECT_EQ(FaultyField(with(&TenantEntry::code, "999")), tenant_field::kCode);
  EXPECT_EQ(FaultyField(with(&TenantEntry::code, "")), tenant_field::kCode);
  EXPECT_EQ(FaultyField(with(&TenantEntry::group, "7777")), tenant_field::kGroup);
  TenantEntry entry;
  entry.schedules[0] = "Sundays";
  EXPECT_EQ(FaultyField(entry), tenant_field::kDoorSchedules[0]);
  EXPECT_EQ(FieldAtFault([&] { entry.SetSchedules("1,,2"); }), tenant_field::kSchedules);
  EXPECT_EQ(FieldAtFault([&] { entry.SetSchedules("1,1,1,1,1"); }), tenant_field::kSchedules);
}

TEST_F(TenantDeskTest, WithoutAGroupZeroTenantsAreInNone) {
  TenantEntry entry;
  for (const char* none : {"0", "zero"}) {
    Run("UPDATE TenantGroup SET IsGroupZero=1 WHERE RID=3; UPDATE Tenants SET GROUPID=4 WHERE "
        "RID=62");
    entry.group = "0";
    EXPECT_EQ(FaultyField(entry), tenant_field::kGroup);
    Run("UPDATE TenantGroup SET IsGroupZero=0 WHERE RID=3");
    entry.group = none;
    ASSERT_TRUE(Edit({"rid:62"}, entry).done()) << none;
    EXPECT_EQ(Of("GROUPID"), "0") << none;
  }
}

TEST_F(TenantDeskTest, APeriodMakesATenantActiveUnlessItIsSaid) {
  TenantEntry entry;
  entry.from = "2026-02-01";
  entry.to = "2026-12-31";
  ASSERT_TRUE(Edit({"rid:62"}, entry).done());
  EXPECT_EQ(Of("ACTIVETENANT"), "True");
  EXPECT_EQ(Of("ACTIVEENDTIME"), "12/31/2026 11:59:59 PM");
  entry.from = "none";
  entry.to = "none";
  ASSERT_TRUE(Edit({"rid:62"}, entry).done());
  EXPECT_EQ(Of("ACTIVETENANT"), "False");
  EXPECT_EQ(Of("ACTIVEENDTIME"), "");
}

TEST_F(TenantDeskTest, ALeaseEndsOnADay) {
  TenantDesk desk(session(), kUnit);
  desk.Choose({"Tanaka X"});
  constexpr bool kFreeCards = true;
  const ChangedTenants ended = desk.End("2026-03-31", kFreeCards, Trial::kNo);
  ASSERT_TRUE(ended.done());
  EXPECT_EQ(Of("ACTIVETENANT"), "True");
  EXPECT_EQ(Of("ACTIVEENDTIME"), "3/31/2026 11:59:59 PM");
  EXPECT_EQ(Of("CREDENTIALID1"), "");
  EXPECT_THAT(ended.freed, ElementsAre("Corvin 30-Bit Card-1002"));
  EXPECT_THAT(Steps(), ElementsAre("program tenant 62"));
  desk.Choose({"Tanaka X"});
  EXPECT_EQ(FieldAtFault([&] { (void)desk.End("none", false, Trial::kNo); }), tenant_field::kEnd);
}

TEST_F(TenantDeskTest, ATenantIsAddedWithWhatTheUnitGives) {
  TenantDesk desk(session(), kUnit);
  const std::string free = FreeCard("9100");
  Run("DELETE FROM ProgramSteps");
  TenantEntry entry = LastName("d'Arc");
  entry.firstName = "Joan";
  entry.code = "101";
  entry.cards = {"9100"};
  const AddedTenant added = desk.Add(entry, Trial::kNo);
  ASSERT_TRUE(added.done()) << testing::PrintToString(added.failures);
  const std::int32_t rid = added.tenant.rid;
  EXPECT_EQ(session().sql().audit().After(0, kUnit).back().what, "add tenant d'Arc Joan");
  EXPECT_EQ(Of("LastName", rid), "d'Arc");
  EXPECT_EQ(Of("NameAtUnit", rid), "Joan d'Arc");
  EXPECT_EQ(Of("UnitKey", rid), "2");
  EXPECT_EQ(Of("GROUPID", rid), Of("GROUPID", 62));
  EXPECT_EQ(Of("LINKCODE", rid), "76");
  EXPECT_EQ(Of("DOORSCHEDULE4", rid), "1");
  EXPECT_EQ(Of("ACTIVETENANT", rid), "True");
  EXPECT_EQ(Of("ACTIVESTARTTIME", rid), "1/31/2026");
  EXPECT_EQ(Of("ACTIVEENDTIME", rid), "12/31/2026 11:59:59 PM");
  EXPECT_EQ(Of("CREDENTIALID1", rid), free);
  EXPECT_EQ(Of("DIRECTORYCODE", rid), "11");
  EXPECT_EQ(Of("LASTMODIFIEDDATE", rid), "1/31/2026 2:05:09 PM");
  EXPECT_THAT(Steps(), ElementsAre("program tenant " + std::to_string(rid)));
  EXPECT_EQ(CountOf("SELECT TenantID FROM TenantsBackup WHERE TenantID=" + std::to_string(rid)),
            1U);
  EXPECT_THAT(FindingsIn(session(), kUnit), IsEmpty());
  EXPECT_EQ(desk.Add(LastName("Tried"), Trial::kYes).tenant.lastName, "Tried");
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE LastName='Tried'"), 0U);
  EXPECT_EQ(Of("LINKCODE", desk.Add(LastName("Next"), Trial::kNo).tenant.rid), "77");
  EXPECT_EQ(FieldAtFault([&] { (void)desk.Add({}, Trial::kNo); }), tenant_field::kLastName);
}

TEST_F(TenantDeskTest, DeletedTenantsLeaveTheirCardsAndAStep) {
  TenantDesk desk(session(), kUnit);
  desk.Choose({"rid:61,62"});
  const ChangedTenants deleted = desk.Delete(Trial::kNo);
  ASSERT_TRUE(deleted.done());
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE RID IN (61, 62)"), 0U);
  ASSERT_THAT(deleted.changes, SizeIs(2));
  EXPECT_EQ(deleted.changes[1].name, "Tanaka Xenia M");
  EXPECT_THAT(deleted.freed,
              ElementsAre("Corvin 30-Bit Card-1001", "Transmitter-301", "Corvin 30-Bit Card-1002"));
  EXPECT_THAT(Steps(), ElementsAre("program tenant 61", "program tenant 62"));
}

TEST_F(TenantDeskTest, NobodysChangeIsOverwrittenUnseen) {
  TenantDesk desk(session(), kUnit);
  desk.Choose({"rid:62"});
  {
    WorkGuard other(session().sql().work(), {{kUnit}, "somebody else", {}});
    (void)session().sql().Change("UPDATE Tenants SET FirstName='Yara' WHERE RID=62", std::nullopt);
    EXPECT_TRUE(other.Commit());
  }
  const ChangedTenants changed = desk.Edit(LastName("Berg"), Trial::kNo);
  EXPECT_EQ(changed.ending, Ending::kStale);
  EXPECT_EQ(changed.cause, StaleCause::kRowChanged);
  EXPECT_EQ(Of("LastName"), "Tanaka");
  EXPECT_THAT(Steps(), IsEmpty());
}

TEST_F(TenantDeskTest, WhatOthersDoToOtherTenantsStandsBeside) {
  TenantDesk desk(session(), kUnit);
  desk.Choose({"rid:62"});
  {
    WorkGuard other(session().sql().work(), {{kUnit}, "somebody else", {}});
    (void)session().sql().Change("UPDATE Tenants SET FirstName='Yara' WHERE RID=63", std::nullopt);
    EXPECT_TRUE(other.Commit());
  }
  EXPECT_TRUE(desk.Edit(LastName("Berg"), Trial::kNo).done());
  EXPECT_EQ(Of("LastName"), "Berg");
  EXPECT_EQ(Of("FirstName", 63), "Yara");
  EXPECT_THAT(Steps(), ElementsAre("program tenant 62"));
}

}  // namespace
}  // namespace qorhost::test

// Units: made, set up and deleted.
#include "host/desks/unit_desk.h"

#include <gmock/gmock.h>

#include "frame/capacity.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/history_undo.h"
#include "host/desks/store_check.h"
#include "host/desks/store_overview.h"
#include "host/desks/unit_deletion.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class UnitDeskTest : public DeskFixture {
 protected:
  static UnitEntry Entry(const std::string& name = "Annex",
                         const std::string& type = "Entry Panel 500") {
    UnitEntry entry;
    entry.name = name;
    entry.type = type;
    return entry;
  }
  [[nodiscard]] std::int32_t Add(const UnitEntry& entry) {
    return AddUnit(session(), std::nullopt, entry, OtherUnits::kAsked, Trial::kNo).unit.key;
  }
  ChangedUnit Edit(const UnitEntry& entry, OtherUnits others = OtherUnits::kAsked) {
    return EditUnit(session(), kUnit, entry, others, Trial::kNo);
  }
  [[nodiscard]] std::string RefusalOf(const UnitEntry& entry) {
    try {
      Edit(entry);
    } catch (const RefusedError& refusal) {
      return refusal.what();
    }
    return "";
  }
  [[nodiscard]] std::string Setting(const std::string& column, std::int32_t unit = kUnit) {
    return Cell("SELECT " + column + " FROM UnitSettings WHERE UnitKey=" + std::to_string(unit));
  }
  [[nodiscard]] std::string Total(const std::string& type) {
    return Cell("SELECT TOTAL FROM UNITTYPES WHERE DESCRIPTION='" + type + "'");
  }
  [[nodiscard]] std::int64_t LastEntry() {
    return session().sql().audit().After(0, std::nullopt).back().entry;
  }
};

TEST_F(UnitDeskTest, ANewUnitHasWhatTheControllersNeed) {
  const std::int32_t unit = Add(Entry());
  EXPECT_EQ(unit, 4);
  EXPECT_THAT(MissingSettings(session(), {{unit, "Annex"}}), IsEmpty());
  EXPECT_THAT(FindingsIn(session(), unit), IsEmpty());
  EXPECT_EQ(DoorList(session(), {{unit, "Annex"}}).rows.size(), 4U);
  EXPECT_EQ(CountOf("SELECT RID FROM Schedules WHERE UnitKey=4 AND ScheduleID IN (0, 1)"), 2U);
  EXPECT_EQ(CountOf("SELECT RID FROM TenantGroup WHERE UnitKey=4 AND IsGroupZero=True"), 1U);
}

TEST_F(UnitDeskTest, CredentialsWithTenantsAreIssuedInANewUnit) {
  const std::int32_t unit = Add(Entry());
  CredentialDesk desk(session(), unit, DeskScreen::kTenantCreating);
  NewCredentials entry;
  entry.type = "card26";
  entry.first = "500";
  entry.last = "502";
  entry.facility = "7";
  entry.withTenants = true;
  EnterCredentials(desk, entry);
  EXPECT_TRUE(desk.SaveNew().done());
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE UnitKey=4 AND GROUPID IN (SELECT RID FROM "
                    "TenantGroup WHERE UnitKey=4)"),
            3U);
  EXPECT_THAT(FindingsIn(session(), unit), IsEmpty());
}

TEST_F(UnitDeskTest, AUnitWhoseAdditionWasUndoneIsAddedAgain) {
  EXPECT_EQ(Add(Entry()), 4);
  EXPECT_TRUE(UndoEntry(session(), std::to_string(LastEntry()), Trial::kNo).done());
  EXPECT_EQ(session().Units().size(), 3U);
  EXPECT_EQ(Add(Entry()), 4);
  EXPECT_THAT(FindingsIn(session(), 4), IsEmpty());
}

TEST_F(UnitDeskTest, AKeyIsGivenOrTheNextOne) {
  const auto add = [this](const std::string& key) {
    return AddUnit(session(), key, Entry(), OtherUnits::kAsked, Trial::kNo).unit.key;
  };
  EXPECT_EQ(add("12"), 12);
  EXPECT_EQ(Add(Entry()), 13);
  EXPECT_THROW(add("2"), RefusedError);
  for (const char* key : {"0", "-1", "2147483648", "x", ""}) {
    EXPECT_EQ(FieldAtFault([&] { add(key); }), unit_input::kKey) << key;
  }
  EXPECT_EQ(add("2147483647"), 2147483647);
  EXPECT_THROW((void)Add(Entry()), RefusedError);
}

TEST_F(UnitDeskTest, ANewUnitNeedsANameAndAType) {
  const auto fault = [this](const UnitEntry& entry) {
    return FieldAtFault([&] { (void)Add(entry); });
  };
  UnitEntry entry = Entry();
  entry.name.reset();
  EXPECT_EQ(fault(entry), unit_input::kName);
  EXPECT_EQ(fault(Entry("  ")), unit_input::kName);
  EXPECT_EQ(fault(Entry("a\tb")), unit_input::kName);
  entry = Entry();
  entry.type.reset();
  EXPECT_EQ(fault(entry), unit_input::kType);
  EXPECT_EQ(fault(Entry("Annex", "Panel 9")), unit_input::kType);
  EXPECT_EQ(session().Units().size(), 3U) << "nothing stays of a unit that was refused";
}

TEST_F(UnitDeskTest, ANewTypeComesWithItsCapacity) {
  UnitEntry entry = Entry("Annex", "Panel 9");
  entry.capacity = "9";
  (void)Add(entry);
  EXPECT_EQ(Total("Panel 9"), qorcred::CapacityText(9));
}

TEST_F(UnitDeskTest, CapacitiesAreFrom1To32767) {
  struct Row {
    const char* capacity;
    bool taken;
  };
  for (const Row& row : {Row{"0", false}, Row{"1", true}, Row{"32767", true}, Row{"32768", false},
                         Row{"-1", false}, Row{"2.5", false}, Row{"many", false}, Row{"", false}}) {
    UnitEntry entry = Entry("Annex", std::string("Panel ") + row.capacity);
    entry.capacity = row.capacity;
    EXPECT_EQ(FieldAtFault([&] { (void)Add(entry); }) != unit_input::kCapacity, row.taken)
        << row.capacity;
  }
  EXPECT_EQ(Total("Panel 32767"), "MzI3Njc=");
}

TEST_F(UnitDeskTest, ACapacityIsReadByTheControllers) {
  UnitEntry entry = Entry("Annex", "Panel 1");
  entry.capacity = "1";
  const std::int32_t unit = Add(entry);
  const auto issue = [&](const std::string& number) {
    CredentialDesk desk(session(), unit, DeskScreen::kCredentials);
    NewCredentials card;
    card.type = "card26";
    card.first = number;
    card.facility = "7";
    EnterCredentials(desk, card);
    return desk.SaveNew().ending;
  };
  EXPECT_EQ(issue("1"), Ending::kDone);
  EXPECT_EQ(issue("2"), Ending::kRefused);
}

TEST_F(UnitDeskTest, EveryGivenSettingIsWritten) {
  UnitEntry entry;
  entry.name = "O'Brien's House";
  entry.type = "Entry Panel 8000";
  entry.codeDigits = "15";
  entry.entryDigits = "6";
  entry.ignoresFacility = "Yes";
  entry.cardFacility = "255";
  entry.transmitterFacility = "0";
  entry.defaultEnd = "90d";
  EXPECT_FALSE(Edit(entry).unchanged);
  EXPECT_EQ(Cell("SELECT UnitName FROM Units WHERE UnitKey=2"), "O'Brien's House");
  EXPECT_EQ(Setting("UNITTYPE"), "Entry Panel 8000");
  EXPECT_EQ(Setting("MaxDigitsDirectoryCode"), "15");
  EXPECT_EQ(Setting("MaxDigitsEntryCode"), "6");
  EXPECT_EQ(Setting("IGNOREFACILITYCODE"), "True");
  EXPECT_EQ(Setting("CARDDEFAULTFACILITYCODE"), "255");
  EXPECT_EQ(Setting("RFDEFAULTFACILITYCODE"), "0");
  EXPECT_EQ(Setting("RECORDDEACTIVATION"), "2");
  EXPECT_EQ(Setting("DEACTIVATIONDAYS"), "90");
  EXPECT_EQ(Setting("DEACTIVATIONDATE"), "");

  const std::int64_t last = LastEntry();
  EXPECT_TRUE(Edit(entry).unchanged);
  EXPECT_EQ(LastEntry(), last);
}

TEST_F(UnitDeskTest, NamesThatReadAsTheSameNumberAreTwo) {
  UnitEntry entry;
  entry.name = "7";
  EXPECT_FALSE(Edit(entry).unchanged);
  entry.name = "07";
  EXPECT_FALSE(Edit(entry).unchanged);
  EXPECT_EQ(Cell("SELECT UnitName FROM Units WHERE UnitKey=2"), "07");
}

TEST_F(UnitDeskTest, AFlagIsTakenBack) {
  UnitEntry entry;
  entry.ignoresFacility = "yes";
  EXPECT_FALSE(Edit(entry).unchanged);
  EXPECT_TRUE(Edit(entry).unchanged);
  entry.ignoresFacility = "no";
  EXPECT_FALSE(Edit(entry).unchanged);
  EXPECT_EQ(Setting("IGNOREFACILITYCODE"), "False");
}

TEST_F(UnitDeskTest, TheDefaultEndIsADateDaysOrNone) {
  UnitEntry entry;
  entry.defaultEnd = "2027-12-31";
  Edit(entry);
  EXPECT_EQ(Setting("RECORDDEACTIVATION"), "1");
  EXPECT_THAT(Setting("DEACTIVATIONDATE"), HasSubstr("12/31/2027"));
  EXPECT_TRUE(Edit(entry).unchanged);
  const List shown = UnitSettingsList(session(), {{kUnit, "Linden Park"}});
  EXPECT_EQ(qorcred::TextOrEmpty(shown.rows[0][6]), "2027-12-31");
  // The screens read it: a new code of the unit ends then.
  DirCodeDesk desk(session(), kUnit);
  EXPECT_EQ(qorcred::DayOf(desk.screen().Date("dtpEnd").shown()),
            qorcred::FromCivil({2027, 12, 31, 0, 0, 0}));
  entry.defaultEnd = "none";
  Edit(entry);
  EXPECT_EQ(Setting("RECORDDEACTIVATION"), "0");
  EXPECT_EQ(Setting("DEACTIVATIONDATE"), "");
}

TEST_F(UnitDeskTest, WrongSettingsAreFaultsOfTheirFields) {
  struct Row {
    std::optional<std::string> UnitEntry::*member;
    const char* given;
    std::string_view field;
  };
  for (const Row& row :
       {Row{&UnitEntry::codeDigits, "0", unit_input::kCodeDigits},
        Row{&UnitEntry::codeDigits, "16", unit_input::kCodeDigits},
        Row{&UnitEntry::entryDigits, "0", unit_input::kEntryDigits},
        Row{&UnitEntry::defaultEnd, "0d", unit_input::kDefaultEnd},
        Row{&UnitEntry::defaultEnd, "36501d", unit_input::kDefaultEnd},
        Row{&UnitEntry::defaultEnd, "soon", unit_input::kDefaultEnd},
        Row{&UnitEntry::defaultEnd, "", unit_input::kDefaultEnd},
        Row{&UnitEntry::ignoresFacility, "maybe", unit_input::kIgnoresFacility},
        Row{&UnitEntry::cardFacility, "256", unit_input::kCardFacility},
        Row{&UnitEntry::transmitterFacility, "-1", unit_input::kTransmitterFacility}}) {
    UnitEntry entry;
    entry.*row.member = row.given;
    EXPECT_EQ(FieldAtFault([&] { Edit(entry); }), row.field) << row.given;
  }
}

TEST_F(UnitDeskTest, ACapacityOfATypeThatOthersHaveIsAskedFor) {
  (void)Add(Entry("Annex", "Entry Panel 2000"));
  UnitEntry entry;
  entry.capacity = "3000";
  EXPECT_THROW(Edit(entry), SharedType);
  EXPECT_THAT(RefusalOf(entry), HasSubstr("is that of unit 4, Annex as well"));
  EXPECT_EQ(Total("Entry Panel 2000"), qorcred::CapacityText(2000));
  EXPECT_FALSE(Edit(entry, OtherUnits::kChanged).unchanged);
  EXPECT_EQ(Total("Entry Panel 2000"), qorcred::CapacityText(3000));
}

TEST_F(UnitDeskTest, ACapacityBelowTheCodesInUseIsRefused) {
  UnitEntry entry;
  entry.capacity = "150";
  EXPECT_THAT(RefusalOf(entry), HasSubstr("151 codes are in use in unit 2, Linden Park"));
  entry.capacity = "151";
  EXPECT_EQ(RefusalOf(entry), "");
  entry.capacity.reset();
  entry.type = "Panel";
  EXPECT_EQ(FieldAtFault([&] { Edit(entry); }), unit_input::kType);
}

TEST_F(UnitDeskTest, FewerDigitsThanAStoredCodeHasAreRefused) {
  UnitEntry entry;
  entry.codeDigits = "2";
  EXPECT_THAT(RefusalOf(entry), HasSubstr("the directory code 106 in unit 2 is longer than 2"));
  entry.codeDigits = "3";
  EXPECT_EQ(RefusalOf(entry), "");
}

TEST_F(UnitDeskTest, AUnitWithoutSettingsIsGivenThem) {
  Run("DELETE FROM UnitSettings WHERE UnitKey=2");
  UnitEntry entry;
  entry.type = "Entry Panel 2000";
  EXPECT_FALSE(Edit(entry).unchanged);
  EXPECT_THAT(MissingSettings(session(), {{kUnit, "Linden Park"}}), IsEmpty());
}

TEST_F(UnitDeskTest, ADeletedUnitIsGoneWithAllThatWasInItAndComesBackByUndoing) {
  const UnitContents contents = ContentsOf(session(), kUnit);
  EXPECT_EQ(contents.Text(), "75 tenants, 145 credentials, 6 directory codes");
  DeleteUnits(session(), {{{kUnit, ""}, contents}}, Trial::kNo);
  for (const char* table :
       {"Units", "UnitSettings", "DOORS", "Schedules", "TenantGroup", "UnitCounters", "Tenants",
        "CredentialBank", "DirectoryCode", "ProgramSteps", "TenantsBackup"}) {
    EXPECT_EQ(CountOf(std::string("SELECT RID FROM ") + table + " WHERE UnitKey=2"), 0U) << table;
  }
  EXPECT_EQ(session().Units().size(), 2U);
  EXPECT_TRUE(UndoEntry(session(), std::to_string(LastEntry()), Trial::kNo).done());
  EXPECT_EQ(session().Units().size(), 3U);
  EXPECT_EQ(ContentsOf(session(), kUnit).tenants, 75U);
}

TEST_F(UnitDeskTest, AUnitWithSomethingElseInItByNowIsNotDeleted) {
  UnitContents contents = ContentsOf(session(), kUnit);
  contents.tenants -= 1;
  EXPECT_THROW(DeleteUnits(session(), {{{kUnit, ""}, contents}}, Trial::kNo), RefusedError);
  EXPECT_EQ(session().Units().size(), 3U);
}

TEST_F(UnitDeskTest, AUnitThatIsNamedTwiceIsDeletedOnce) {
  const std::vector<UnitToDelete> units =
      WithContents(session(), {{kUnit, ""}, {1, ""}, {kUnit, ""}});
  ASSERT_EQ(units.size(), 2U);
  EXPECT_EQ(units[0].contents, ContentsOf(session(), kUnit));
  EXPECT_EQ(units[1].contents, ContentsOf(session(), 1));
  EXPECT_EQ(ContentsOf(units).tenants, 75U + 60U);
}

TEST_F(UnitDeskTest, TrialsChangeNothing) {
  const std::int64_t last = LastEntry();
  EXPECT_EQ(AddUnit(session(), std::nullopt, Entry(), OtherUnits::kAsked, Trial::kYes).unit.key, 4);
  UnitEntry entry;
  entry.name = "Other";
  EXPECT_FALSE(EditUnit(session(), kUnit, entry, OtherUnits::kAsked, Trial::kYes).unchanged);
  DeleteUnits(session(), {{{kUnit, ""}, ContentsOf(session(), kUnit)}}, Trial::kYes);
  EXPECT_EQ(session().Units().size(), 3U);
  EXPECT_EQ(Cell("SELECT UnitName FROM Units WHERE UnitKey=2"), "Linden Park");
  EXPECT_EQ(LastEntry(), last);
}

}  // namespace
}  // namespace qorhost::test

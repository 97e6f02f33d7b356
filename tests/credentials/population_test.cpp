// Filling the lists of the credential screen: schedules, tenants, credential types and the defaults
// that depend on the unit.
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::FromCivil;
using qorcred::Null;

constexpr std::array<std::string_view, 4> kScheduleLists{"cboSchedules1", "cboSchedules2",
                                                         "cboSchedules3", "cboSchedules4"};

/// Texts and item data of a list, "text=data" each.
std::vector<std::string> Items(RecordingHost& host, std::string_view list) {
  const qorhost::ListModel& box = host.controls().List(list);
  std::vector<std::string> items;
  for (std::int32_t at = 0; at < box.count(); ++at) {
    items.push_back(box.Text(at) + "=" + std::to_string(box.ItemData(at)));
  }
  return items;
}

class Schedules : public CredentialTest {};

TEST_F(Schedules, AreListedInEachOfTheFourListsBehindTheFixedOnes) {
  Database().Select("from Schedules", {{5, "Day"}, {9, "Night"}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and  modified <> 3 and UnitKey = 3  Order by ScheduleName " -> 2 rows
    cboSchedules1.Clear
    cboSchedules2.Clear
    cboSchedules3.Clear
    cboSchedules4.Clear
    cboSchedules1.AddItem "No Access"
    cboSchedules1.NewIndex -> 0
    cboSchedules1.ItemData(0) = 0
    cboSchedules2.AddItem "No Access"
    cboSchedules2.NewIndex -> 0
    cboSchedules2.ItemData(0) = 0
    cboSchedules3.AddItem "No Access"
    cboSchedules3.NewIndex -> 0
    cboSchedules3.ItemData(0) = 0
    cboSchedules4.AddItem "No Access"
    cboSchedules4.NewIndex -> 0
    cboSchedules4.ItemData(0) = 0
    cboSchedules1.AddItem "Full Access"
    cboSchedules1.NewIndex -> 1
    cboSchedules1.ItemData(1) = 1
    cboSchedules2.AddItem "Full Access"
    cboSchedules2.NewIndex -> 1
    cboSchedules2.ItemData(1) = 1
    cboSchedules3.AddItem "Full Access"
    cboSchedules3.NewIndex -> 1
    cboSchedules3.ItemData(1) = 1
    cboSchedules4.AddItem "Full Access"
    cboSchedules4.NewIndex -> 1
    cboSchedules4.ItemData(1) = 1
    cboSchedules1.AddItem "Day"
    cboSchedules1.NewIndex -> 2
    cboSchedules1.ItemData(2) = 5
    cboSchedules2.AddItem "Day"
    cboSchedules2.NewIndex -> 2
    cboSchedules2.ItemData(2) = 5
    cboSchedules3.AddItem "Day"
    cboSchedules3.NewIndex -> 2
    cboSchedules3.ItemData(2) = 5
    cboSchedules4.AddItem "Day"
    cboSchedules4.NewIndex -> 2
    cboSchedules4.ItemData(2) = 5
    cboSchedules1.AddItem "Night"
    cboSchedules1.NewIndex -> 3
    cboSchedules1.ItemData(3) = 9
    cboSchedules2.AddItem "Night"
    cboSchedules2.NewIndex -> 3
    cboSchedules2.ItemData(3) = 9
    cboSchedules3.AddItem "Night"
    cboSchedules3.NewIndex -> 3
    cboSchedules3.ItemData(3) = 9
    cboSchedules4.AddItem "Night"
    cboSchedules4.NewIndex -> 3
    cboSchedules4.ItemData(3) = 9
    cboSchedules1.ListIndex = 1
    cboSchedules2.ListIndex = 1
    cboSchedules3.ListIndex = 1
    cboSchedules4.ListIndex = 1
  )~"));
}

TEST_F(Schedules, OfAUnitWithoutAnyAreNoAccessAndFullAccess) {
  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and  modified <> 3 and UnitKey = 3  Order by ScheduleName " -> no rows
    cboSchedules1.Clear
    cboSchedules2.Clear
    cboSchedules3.Clear
    cboSchedules4.Clear
    cboSchedules1.AddItem "No Access"
    cboSchedules1.ItemData(0) = 0
    cboSchedules2.AddItem "No Access"
    cboSchedules2.ItemData(0) = 0
    cboSchedules3.AddItem "No Access"
    cboSchedules3.ItemData(0) = 0
    cboSchedules4.AddItem "No Access"
    cboSchedules4.ItemData(0) = 0
    cboSchedules1.AddItem "Full Access"
    cboSchedules1.ItemData(1) = 1
    cboSchedules2.AddItem "Full Access"
    cboSchedules2.ItemData(1) = 1
    cboSchedules3.AddItem "Full Access"
    cboSchedules3.ItemData(1) = 1
    cboSchedules4.AddItem "Full Access"
    cboSchedules4.ItemData(1) = 1
    cboSchedules1.ListIndex = 1
    cboSchedules2.ListIndex = 1
    cboSchedules3.ListIndex = 1
    cboSchedules4.ListIndex = 1
  )~"));
  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(Items(Host(), list), (std::vector<std::string>{"No Access=0", "Full Access=1"}));
    EXPECT_EQ(Host().controls().List(list).SelectedText(), "Full Access");
  }
}

TEST_F(Schedules, ReplaceWhatTheListsHeldBefore) {
  Database().Select("from Schedules", {{5, "Day"}});
  Controller().pbRetrieveSchedules(Connection(), kUnit);
  Controller().pbRetrieveSchedules(Connection(), kUnit);

  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(Items(Host(), list),
              (std::vector<std::string>{"No Access=0", "Full Access=1", "Day=5"}));
  }
}

// A host whose manager answers with one column only cannot tell the names; the upper column bound
// of such an answer is that of an empty one.
TEST_F(Schedules, InOneColumnCountAsNone) {
  Database().Select("from Schedules", {{5}, {9}, {11}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(Items(Host(), list), (std::vector<std::string>{"No Access=0", "Full Access=1"}));
  }
}

TEST_F(Schedules, AfterAFailedStatementAreTheFixedOnes) {
  Database().Error("from Schedules", "the disk is gone");

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect "),
            Lines{"ExecuteSelect \"Select ScheduleID, ScheduleName from Schedules Where ScheduleID "
                  "not in (0,1) and  modified <> 3 and UnitKey = 3  Order by ScheduleName \" -> no "
                  "rows ! \"the disk is gone\""});
  EXPECT_EQ(Items(Host(), "cboSchedules1"),
            (std::vector<std::string>{"No Access=0", "Full Access=1"}));
}

class TenantList : public CredentialTest {};

TEST_F(TenantList, ShowsUnassignedAndThenTheNamesOfTheUnitsTenants) {
  Database().Select("FROM Tenants", {{55, "Doe", "Jane", "Q"}, {56, "Roe", "Richard", "X"}});

  Controller().pbRetrieveTenants(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0 ORDER BY LastName,FirstName,MiddleInitial " -> 2 rows
    cboAssignedTo.Clear
    cboAssignedTo.AddItem "<Unassigned>"
    cboAssignedTo.ItemData(0) = -100
    cboAssignedTo.AddItem "Doe Jane Q"
    cboAssignedTo.ItemData(1) = 55
    cboAssignedTo.AddItem "Roe Richard X"
    cboAssignedTo.ItemData(2) = 56
  )~"));
  EXPECT_EQ(Host().controls().List("cboAssignedTo").selected(), -1);
}

TEST_F(TenantList, TakesTheIndexOfEachTenantFromTheList) {
  Database().Select("FROM Tenants", {{55, "Doe", "Jane", "Q"}});

  Controller().pbRetrieveTenants(Connection(), kUnit);

  const Lines all = Host().transcript().Read(Detail::kEverything);
  ASSERT_GE(all.size(), 3U);
  EXPECT_TRUE(SameLines(Lines(all.end() - 3, all.end()), R"~(
    cboAssignedTo.AddItem "Doe Jane Q"
    cboAssignedTo.NewIndex -> 1
    cboAssignedTo.ItemData(1) = 55
  )~"));
}

TEST_F(TenantList, KeepsTheBlanksOfMissingNameParts) {
  Database().Select(
      "FROM Tenants",
      {{55, "Doe", "Jane", Null{}}, {56, "Roe", Null{}, "X"}, {57, Null{}, Null{}, Null{}}});

  Controller().pbRetrieveTenants(Connection(), kUnit);

  EXPECT_EQ(Items(Host(), "cboAssignedTo"),
            (std::vector<std::string>{"<Unassigned>=-100", "Doe Jane =55", "Roe  X=56", "  =57"}));
}

TEST_F(TenantList, OfAUnitWithoutTenantsHasUnassignedAlone) {
  Controller().pbRetrieveTenants(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0 ORDER BY LastName,FirstName,MiddleInitial " -> no rows
    cboAssignedTo.Clear
    cboAssignedTo.AddItem "<Unassigned>"
    cboAssignedTo.ItemData(0) = -100
  )~"));
}

class UnitSettings : public CredentialTest {};
class UnitSettingsWithTenants : public TenantCreatingTest {
 protected:
  void Settings(qorcred::Value mode, qorcred::Value date, qorcred::Value days) {
    Database().Select("FROM UnitSettings",
                      {{false, std::move(mode), std::move(date), std::move(days)}});
  }
  /// What the pickers are told, line by line.
  Lines PickerLines() {
    Lines lines = Host().transcript().Read(Detail::kEffects);
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with("dtp"); });
    return lines;
  }
};

constexpr std::string_view kTypesAndSettings = R"~(
    cboCredentialType.AddItem "Corvin 30-Bit Card"
    cboCredentialType.ItemData(0) = 0
    cboCredentialType.AddItem "Standard 26-Bit Card"
    cboCredentialType.ItemData(1) = 1
    cboCredentialType.AddItem "Transmitter"
    cboCredentialType.ItemData(2) = 2
    cboCredentialType.ListIndex = 0
    ExecuteSelect "SELECT IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, DEACTIVATIONDAYS FROM UnitSettings WHERE UnitKey=3" -> 1 row
)~";

TEST_F(UnitSettings, AddTheThreeCredentialTypesAndSelectTheFirst) {
  Database().Select("FROM UnitSettings", {{false, 0, Null{}, Null{}}});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(kTypesAndSettings));
}

TEST_F(UnitSettings, LeaveTheDatesOfOtherScreensAlone) {
  for (const std::int32_t mode : {0, 1, 2}) {
    CredentialScreen screen;
    screen.host().database().Select("FROM UnitSettings",
                                    {{false, mode, FromCivil({2026, 12, 31, 0, 0, 0}), 30}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEffects), kTypesAndSettings))
        << mode;
  }
}

TEST_F(UnitSettings, AddTheTypesAgainWhenReadTwice) {
  Database().Select("FROM UnitSettings", {{false, 0, Null{}, Null{}}});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);
  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_EQ(Items(Host(), "cboCredentialType"),
            (std::vector<std::string>{"Corvin 30-Bit Card=0", "Standard 26-Bit Card=1",
                                      "Transmitter=2", "Corvin 30-Bit Card=0",
                                      "Standard 26-Bit Card=1", "Transmitter=2"}));
}

TEST_F(UnitSettings, ThatIgnoreTheFacilityCodeDisableItsBoxAndLabel) {
  for (const qorcred::Value& flag : {qorcred::Value(true), qorcred::Value(-1)}) {
    CredentialScreen screen;
    screen.host().database().Select("FROM UnitSettings", {{flag, 0, Null{}, Null{}}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEffects),
                          std::string(kTypesAndSettings) + R"~(
      txtFacilityCode.Enabled = False
      lblFacilityCode.Enabled = False
      txtFacilityCode.BackColor = -2147483633
      lblFacilityCode.BackColor = -2147483633
    )~"));
  }
}

TEST_F(UnitSettings, WithAnyOtherFlagLeaveTheFacilityCodeEnabled) {
  for (const qorcred::Value& flag :
       {qorcred::Value(false), qorcred::Value(0), qorcred::Value(1), qorcred::Value(Null{})}) {
    CredentialScreen screen;
    screen.host().database().Select("FROM UnitSettings", {{flag, 0, Null{}, Null{}}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_TRUE(screen.host().transcript().StartingWith("txtFacilityCode").empty());
    EXPECT_TRUE(screen.host().transcript().StartingWith("lblFacilityCode").empty());
    EXPECT_TRUE(screen.host().services().trapped().empty());
  }
}

TEST_F(UnitSettingsWithTenants, WithoutDeactivationClearBothDates) {
  Settings(0, Null{}, Null{});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(std::string(kTypesAndSettings) + R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Year = 2027
    dtpStart.Value = Null
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpEnd.Value = Null
  )~"));
}

TEST_F(UnitSettingsWithTenants, WithAnEmptyModeCountAsWithoutDeactivation) {
  for (const qorcred::Value& mode :
       {qorcred::Value(Null{}), qorcred::Value(), qorcred::Value(""), qorcred::Value("0")}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.host().database().Select("FROM UnitSettings", {{false, mode, Null{}, Null{}}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_EQ(screen.host().transcript().StartingWith("dtpStart.Value = ").size(), 2U);
    EXPECT_FALSE(screen.host().controls().Date("dtpEnd").chosen());
  }
}

TEST_F(UnitSettingsWithTenants, OnALeapDayMoveTheEndPickerToTheFirstOfMarch) {
  Settings(0, Null{}, Null{});
  Host().script().now = FromCivil({2028, 2, 29, 10, 0, 0});
  Host().controls().Date("dtpEnd").Choose(FromCivil({2028, 2, 29, 0, 0, 0}));

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #2/29/2028#
    dtpEnd.Month = 3
    dtpEnd.Day = 1
    dtpEnd.Year = 2029
    dtpStart.Value = Null
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpEnd.Value = Null
  )~"));
  EXPECT_EQ(Host().controls().Date("dtpEnd").shown(), FromCivil({2029, 3, 1, 23, 59, 59}));
}

TEST_F(UnitSettingsWithTenants, OnTheLastOfFebruaryOfOtherYearsKeepTheMonth) {
  Settings(0, Null{}, Null{});
  Host().script().now = FromCivil({2027, 2, 28, 10, 0, 0});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #2/28/2027#
    dtpEnd.Year = 2028
    dtpStart.Value = Null
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
    dtpEnd.Value = Null
  )~"));
}

TEST_F(UnitSettingsWithTenants, WithAFixedDateEndThatDay) {
  Settings(1, FromCivil({2026, 12, 31, 0, 0, 0}), Null{});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Value = #12/31/2026#
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
  )~"));
}

TEST_F(UnitSettingsWithTenants, WithAFixedDateThatIsNullHaveNoEnd) {
  Settings(1, Null{}, Null{});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Value = Null
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
  )~"));
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(UnitSettingsWithTenants, WithAFixedDateInATextEndThatDay) {
  Settings(1, "12/31/2026", Null{});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Value = "12/31/2026"
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
  )~"));
  EXPECT_EQ(Host().controls().Date("dtpEnd").shown(), FromCivil({2026, 12, 31, 23, 59, 59}));
}

// The picker refuses the text; the start was set by then.
TEST_F(UnitSettingsWithTenants, WithAFixedDateThatIsNoDateEndEarly) {
  Settings(1, "at the end of the year", Null{});

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Value = "at the end of the year" ! 13 "Type mismatch"
  )~"));
  ASSERT_EQ(Host().services().trapped().size(), 1U);
  EXPECT_EQ(Host().services().trapped().front().second, qorcred::ErrorNumber::kTypeMismatch);
}

TEST_F(UnitSettingsWithTenants, WithADayCountEndThatManyDaysFromToday) {
  Settings(2, Null{}, 30);

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Value = #12/21/2026#
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
  )~"));
}

TEST_F(UnitSettingsWithTenants, ReadModeAndDaysFromTextsToo) {
  Settings("2", Null{}, "30");

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_EQ(Host().transcript().StartingWith("dtpEnd.Value = "),
            Lines{"dtpEnd.Value = #12/21/2026#"});
}

TEST_F(UnitSettingsWithTenants, EndAtThePickersLatestDateWhenTheDaysReachIt) {
  struct Case {
    std::string_view name;
    std::int32_t days;
    std::string_view end;
  };
  // The picker ends ten days from today.
  constexpr std::array<Case, 4> kCases{{{"one day before", 9, "#11/30/2026#"},
                                        {"that day", 10, "#12/1/2026#"},
                                        {"one day after", 11, "#12/1/2026#"},
                                        {"beyond the calendar", 9000000, "#12/1/2026#"}}};
  for (const Case& one : kCases) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.host().database().Select("FROM UnitSettings", {{false, 2, Null{}, one.days}});
    qorcred::Put(screen.host().controls().Date("dtpEnd"), "MaxDate",
                 FromCivil({2026, 12, 1, 0, 0, 0}));

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_EQ(screen.host().transcript().StartingWith("dtpEnd.Value = "),
              Lines{"dtpEnd.Value = " + std::string(one.end)})
        << one.name;
  }
}

// The picker's own latest date is the end of the calendar: no date lies behind it.
TEST_F(UnitSettingsWithTenants, EndAtTheLastDayOfTheCalendarWhenTheDaysLeadBeyondIt) {
  Settings(2, Null{}, 9000000);

  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_TRUE(SameLines(PickerLines(), R"~(
    dtpStart.Value = #11/21/2026#
    dtpEnd.Value = #12/31/9999#
    dtpEnd.Hour = 23
    dtpEnd.Minute = 59
    dtpEnd.Second = 59
  )~"));
}

TEST_F(UnitSettingsWithTenants, MayEndTodayOrBefore) {
  for (const auto& [days, end] : {std::pair{qorcred::Value(0), "#11/21/2026#"},
                                  std::pair{qorcred::Value(Null{}), "#11/21/2026#"},
                                  std::pair{qorcred::Value(-1), "#11/20/2026#"}}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.host().database().Select("FROM UnitSettings", {{false, 2, Null{}, days}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_EQ(screen.host().transcript().StartingWith("dtpEnd.Value = "),
              Lines{"dtpEnd.Value = " + std::string(end)});
  }
}

TEST_F(UnitSettingsWithTenants, OfAnUnknownUnitLeaveTheDatesAlone) {
  Controller().pbRetrieveSettingsFromUnit(Connection(), kUnit);

  EXPECT_EQ(Host().controls().List("cboCredentialType").count(), 3);
  EXPECT_TRUE(Host().transcript().StartingWith("txtFacilityCode").empty());
  EXPECT_TRUE(PickerLines().empty());
}

TEST_F(UnitSettingsWithTenants, WithAnyOtherModeLeaveTheDatesAlone) {
  for (const qorcred::Value& mode : {qorcred::Value(3), qorcred::Value(-1)}) {
    CredentialScreen screen(ScreenKind::kTenantCreating);
    screen.host().database().Select("FROM UnitSettings", {{false, mode, Null{}, 5}});

    screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(), kUnit);

    EXPECT_TRUE(SameLines(screen.host().transcript().Read(Detail::kEffects), kTypesAndSettings));
  }
}

}  // namespace
}  // namespace qortest

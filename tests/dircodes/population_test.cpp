// Filling the lists of the directory-code screen: schedules and tenants.
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::Null;

using Items = std::vector<std::string>;

constexpr std::array<std::string_view, 2> kScheduleLists{"cboSchedules", "cboSchedulesCF"};

/// A result table each of whose calls passes the gate.
qorcred::ObjectRef GatedTable(const std::vector<Row>& rows, FaultGate& gate) {
  auto table = std::make_shared<qorcred::ResultTable>(rows.size(), rows.front().size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      table->At(static_cast<std::int32_t>(row), static_cast<std::int32_t>(column)) =
          rows[row][column];
    }
  }
  return std::make_shared<GatedObject>("table", std::move(table), gate);
}

class DirCodeSchedules : public DirCodeTest {};

TEST_F(DirCodeSchedules, FillTheFirstListAndThenTheSecondBehindTheFixedOnes) {
  Database().Select("from Schedules", {{5, "Day"}, {9, "Night"}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and  modified <> 3 and UnitKey = 3  Order by ScheduleName " -> 2 rows
    cboSchedules.Clear
    cboSchedulesCF.Clear
    cboSchedules.AddItem "Full Access"
    cboSchedules.NewIndex -> 0
    cboSchedules.ItemData(0) = 1
    cboSchedules.AddItem "No Access"
    cboSchedules.NewIndex -> 1
    cboSchedules.ItemData(1) = 0
    cboSchedules.AddItem "Day"
    cboSchedules.NewIndex -> 2
    cboSchedules.ItemData(2) = 5
    cboSchedules.AddItem "Night"
    cboSchedules.NewIndex -> 3
    cboSchedules.ItemData(3) = 9
    cboSchedulesCF.AddItem "Full Access"
    cboSchedulesCF.NewIndex -> 0
    cboSchedulesCF.ItemData(0) = 1
    cboSchedulesCF.AddItem "No Access"
    cboSchedulesCF.NewIndex -> 1
    cboSchedulesCF.ItemData(1) = 0
    cboSchedulesCF.AddItem "Day"
    cboSchedulesCF.NewIndex -> 2
    cboSchedulesCF.ItemData(2) = 5
    cboSchedulesCF.AddItem "Night"
    cboSchedulesCF.NewIndex -> 3
    cboSchedulesCF.ItemData(3) = 9
  )~"));
  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(Host().controls().List(list).selected(), -1) << list;
  }
}

TEST_F(DirCodeSchedules, OfAUnitWithoutAnyAreFullAccessAndNoAccess) {
  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_TRUE(EffectsAre(R"~(
    ExecuteSelect "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and  modified <> 3 and UnitKey = 3  Order by ScheduleName " -> no rows
    cboSchedules.Clear
    cboSchedulesCF.Clear
    cboSchedules.AddItem "Full Access"
    cboSchedules.ItemData(0) = 1
    cboSchedules.AddItem "No Access"
    cboSchedules.ItemData(1) = 0
    cboSchedulesCF.AddItem "Full Access"
    cboSchedulesCF.ItemData(0) = 1
    cboSchedulesCF.AddItem "No Access"
    cboSchedulesCF.ItemData(1) = 0
  )~"));
}

TEST_F(DirCodeSchedules, AreSortedByNameWithoutRegardToCaseBehindTheFixedOnes) {
  Database().Select(
      "from Schedules",
      {{5, "night"}, {6, "Early"}, {7, "day"}, {8, "DAY"}, {9, "Alpha"}, {10, "Day"}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  // Names that differ in case alone stay in the order of the query.
  const Items expected{"Full Access=1", "No Access=0", "Alpha=9", "day=7",
                       "DAY=8",         "Day=10",      "Early=6", "night=5"};
  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(ItemsOf(Host(), list), expected) << list;
  }
}

TEST_F(DirCodeSchedules, WithNamesInFrontOfTheFixedOnesStillStandBehindThem) {
  Database().Select("from Schedules", {{5, "A"}, {6, ""}, {7, Null{}}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  const Items items = ItemsOf(Host(), "cboSchedules");
  ASSERT_EQ(items.size(), 5U);
  EXPECT_EQ(items[0], "Full Access=1");
  EXPECT_EQ(items[1], "No Access=0");
  EXPECT_EQ(items[4], "A=5");
}

TEST_F(DirCodeSchedules, OfWhichThereIsOneNeedNoOrder) {
  Database().Select("from Schedules", {{5, "Day"}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_EQ(ItemsOf(Host(), "cboSchedulesCF"), (Items{"Full Access=1", "No Access=0", "Day=5"}));
}

TEST_F(DirCodeSchedules, ReplaceWhatTheListsHeldBefore) {
  Database().Select("from Schedules", {{5, "Day"}});
  Controller().pbRetrieveSchedules(Connection(), kUnit);
  Controller().pbRetrieveSchedules(Connection(), kUnit);

  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(ItemsOf(Host(), list), (Items{"Full Access=1", "No Access=0", "Day=5"}));
  }
}

// The upper column bound of an answer in one column is that of an empty one.
TEST_F(DirCodeSchedules, InOneColumnCountAsNone) {
  Database().Select("from Schedules", {{5}, {9}, {11}});

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  for (const std::string_view list : kScheduleLists) {
    EXPECT_EQ(ItemsOf(Host(), list), (Items{"Full Access=1", "No Access=0"}));
  }
}

TEST_F(DirCodeSchedules, AfterAFailedStatementAreTheFixedOnes) {
  Database().Error("from Schedules", "the disk is gone");

  Controller().pbRetrieveSchedules(Connection(), kUnit);

  EXPECT_EQ(ItemsOf(Host(), "cboSchedules"), (Items{"Full Access=1", "No Access=0"}));
  EXPECT_TRUE(Host().services().trapped().empty());
}

class DirCodeTenants : public DirCodeTest {};

TEST_F(DirCodeTenants, OfACodeAreListedByTheirNames) {
  Database().Select("FROM Tenants", {{55, "Doe", "Jane", "Q"}, {56, "Roe", "Richard", "X"}});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, 17));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=17 ORDER BY LastName,FirstName,MiddleInitial " -> 2 rows
    lstTenants.Clear
    lstTenants.AddItem "Doe Jane Q"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 55
    lstTenants.AddItem "Roe Richard X"
    lstTenants.NewIndex -> 1
    lstTenants.ItemData(1) = 56
  )~"));
}

struct TenantQuery {
  std::string_view name;
  std::int32_t dirCode;
  bool displayNames;
  std::string_view query;
};

class DirCodeTenantQuery : public DirCodeTest, public ::testing::WithParamInterface<TenantQuery> {};

TEST_P(DirCodeTenantQuery, AsksForTheTenantsOfTheRow) {
  EXPECT_FALSE(Controller().pbRetrieveTenants(Connection(), kUnit, GetParam().dirCode,
                                              GetParam().displayNames));

  EXPECT_TRUE(TranscriptIs("ExecuteSelect \"" + std::string(GetParam().query) + R"~(" -> no rows
    lstTenants.Clear
    lstTenants.AddItem "<Unassigned>"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = -100
  )~"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, DirCodeTenantQuery,
    ::testing::Values(
        TenantQuery{"WithoutACode", -1, false,
                    "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 "
                    "AND Resident=0  AND DirectoryCode=NULL ORDER BY "
                    "LastName,FirstName,MiddleInitial "},
        TenantQuery{"OfTheRowZero", 0, false,
                    "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 "
                    "AND Resident=0  AND DirectoryCode=0 ORDER BY "
                    "LastName,FirstName,MiddleInitial "},
        TenantQuery{"OfANegativeRow", -2, false,
                    "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=3 "
                    "AND Resident=0  AND DirectoryCode=-2 ORDER BY "
                    "LastName,FirstName,MiddleInitial "},
        TenantQuery{"WithoutACodeByDisplayName", -1, true,
                    "SELECT TenantID,NameAtUnit  FROM Tenants WHERE UnitKey=3 AND Resident=0  AND "
                    "DirectoryCode=NULL ORDER BY NameAtUnit "},
        TenantQuery{"OfTheRowZeroByDisplayName", 0, true,
                    "SELECT TenantID,NameAtUnit  FROM Tenants WHERE UnitKey=3 AND Resident=0  AND "
                    "DirectoryCode=0 ORDER BY NameAtUnit "},
        TenantQuery{"OfARowByDisplayName", 2147483647, true,
                    "SELECT TenantID,NameAtUnit  FROM Tenants WHERE UnitKey=3 AND Resident=0  AND "
                    "DirectoryCode=2147483647 ORDER BY NameAtUnit "}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(DirCodeTenants, OfNoGivenRowAreThoseOfTheRowZero) {
  EXPECT_FALSE(Controller().pbRetrieveTenants(Connection(), kUnit));

  EXPECT_NE(Host().transcript().StartingWith("ExecuteSelect ").at(0).find("AND DirectoryCode=0 "),
            std::string::npos);
}

TEST_F(DirCodeTenants, KeepTheBlanksOfMissingNameParts) {
  Database().Select(
      "FROM Tenants",
      {{55, "Doe", "Jane", Null{}}, {56, "Roe", Null{}, "X"}, {57, Null{}, Null{}, Null{}}});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, 17));

  EXPECT_EQ(ItemsOf(Host(), "lstTenants"), (Items{"Doe Jane =55", "Roe  X=56", "  =57"}));
}

TEST_F(DirCodeTenants, WithoutADisplayNameAreLeftOut) {
  Database().Select("FROM Tenants", {{55, Null{}}, {56, ""}, {57, "Doe"}, {58, " "}});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, 17, true));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT TenantID,NameAtUnit  FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=17 ORDER BY NameAtUnit " -> 4 rows
    lstTenants.Clear
    lstTenants.AddItem "Doe"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = 57
    lstTenants.AddItem " "
    lstTenants.NewIndex -> 1
    lstTenants.ItemData(1) = 58
    lstTenants.ListCount -> 2
  )~"));
}

TEST_F(DirCodeTenants, AmongWhomNobodyHasADisplayNameLeaveAPlaceholder) {
  Database().Select("FROM Tenants", {{55, Null{}}, {56, ""}});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, -1, true));

  EXPECT_TRUE(TranscriptIs(R"~(
    ExecuteSelect "SELECT TenantID,NameAtUnit  FROM Tenants WHERE UnitKey=3 AND Resident=0  AND DirectoryCode=NULL ORDER BY NameAtUnit " -> 2 rows
    lstTenants.Clear
    lstTenants.ListCount -> 0
    lstTenants.AddItem "Display names not found"
    lstTenants.NewIndex -> 0
    lstTenants.ItemData(0) = -100
  )~"));
}

TEST_F(DirCodeTenants, ReplaceWhatTheListHeldBefore) {
  Host().AddItem("lstTenants", "somebody else", 4);
  Database().Select("FROM Tenants", {{57, "Doe"}});

  EXPECT_TRUE(Controller().pbRetrieveTenants(Connection(), kUnit, 17, true));

  EXPECT_EQ(ItemsOf(Host(), "lstTenants"), Items{"Doe=57"});
}

TEST_F(DirCodeTenants, AfterAFailedStatementAreNone) {
  Database().Error("FROM Tenants", "the disk is gone");

  EXPECT_FALSE(Controller().pbRetrieveTenants(Connection(), kUnit, 17));

  EXPECT_EQ(ItemsOf(Host(), "lstTenants"), Items{"<Unassigned>=-100"});
}

/// The operations that let the failures of result tables pass, with a table for each.
struct Population {
  std::string_view name;
  std::string_view query;
  std::vector<Row> rows;
  void (*run)(DirCodeScreen& screen);
  std::size_t calls;  ///< the fewest calls that the operation makes on its table
};

void PrintTo(const Population& population, std::ostream* out) {
  *out << population.name;
}

class DirCodePopulation : public ::testing::TestWithParam<Population> {};

TEST_P(DirCodePopulation, RaisesEveryFailureOfItsResultTable) {
  FaultGate clean;
  {
    DirCodeScreen screen;
    screen.host().database().On(std::string(GetParam().query),
                                {.table = GatedTable(GetParam().rows, clean)});
    GetParam().run(screen);
    EXPECT_TRUE(screen.host().services().trapped().empty());
  }
  ASSERT_GE(clean.calls(), GetParam().calls);

  // The transcript's own looks at the table pass the gate as well.
  std::size_t raised = 0;
  for (std::size_t n = 1; n <= clean.calls(); ++n) {
    DirCodeScreen screen;
    FaultGate gate;
    gate.FailAt(n);
    screen.host().database().On(std::string(GetParam().query),
                                {.table = GatedTable(GetParam().rows, gate)});
    const int error = ErrorOf([&] { GetParam().run(screen); });
    if (error != 0) {
      EXPECT_EQ(error, static_cast<int>(ErrorNumber::kApplicationDefined)) << n;
      ++raised;
    }
    EXPECT_TRUE(screen.host().services().trapped().empty()) << n << ' ' << gate.failed();
    EXPECT_EQ(screen.host().database().LiveTables(), 0) << n;
  }
  EXPECT_GE(raised, GetParam().calls);
}

TEST_P(DirCodePopulation, TrapsEveryOtherFailure) {
  std::size_t failed = 0;
  for (std::size_t n = 1;; ++n) {
    DirCodeScreen screen;
    screen.host().database().On(std::string(GetParam().query), {.rows = GetParam().rows});
    screen.host().StartOver();
    screen.host().gate().FailAt(n);
    ASSERT_EQ(ErrorOf([&] { GetParam().run(screen); }), 0) << n;
    if (screen.host().gate().failed().empty()) break;
    ++failed;
    ASSERT_EQ(screen.host().services().trapped().size(), 1U) << screen.host().gate().failed();
    EXPECT_EQ(screen.host().services().trapped().front().second, ErrorNumber::kApplicationDefined);
  }
  EXPECT_GT(failed, 4U);
}

INSTANTIATE_TEST_SUITE_P(
    Operations, DirCodePopulation,
    ::testing::Values(
        Population{"Schedules",
                   "from Schedules",
                   {{5, "Night"}, {9, "Day"}},
                   [](DirCodeScreen& screen) {
                     screen.controller().pbRetrieveSchedules(screen.host().connection(), kUnit);
                   },
                   // bound, two rows, four cells, first cell, sort, two bounds, eight cells
                   20},
        Population{"Settings",
                   "FROM UnitSettings",
                   {{4, false, 2, Null{}, 30}},
                   [](DirCodeScreen& screen) {
                     screen.controller().pbRetrieveSettingsFromUnit(screen.host().connection(),
                                                                    kUnit);
                   },
                   3},
        Population{"Tenants",
                   "FROM Tenants",
                   {{55, "Doe", "Jane", "Q"}},
                   [](DirCodeScreen& screen) {
                     screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit, 17);
                   },
                   7},
        Population{"DisplayNames",
                   "FROM Tenants",
                   {{55, "Doe"}},
                   [](DirCodeScreen& screen) {
                     screen.controller().pbRetrieveTenants(screen.host().connection(), kUnit, 17,
                                                           true);
                   },
                   5}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace qortest

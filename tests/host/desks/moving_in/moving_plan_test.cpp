// Which files are planned, and what is told of their tables and columns.
#include "host/desks/moving_in/moving_plan.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "frame/convert.h"
#include "host/desks/desk_error.h"
#include "host/desks/moving_in/moving_report.h"
#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

std::string RefusalOf(const DesktopFile& file) {
  try {
    (void)MovingPlan(file, "some.mdb", std::nullopt);
  } catch (const RefusedError& refused) {
    return refused.what();
  }
  return "planned";
}

TEST(MovingPlans, RefuseFilesOfOtherApplications) {
  EXPECT_THAT(RefusalOf({}), HasSubstr("another application"));
  EXPECT_THAT(
      RefusalOf({{TableOf("Recipes", {"RID"}, {}), TableOf("Shops and Doors", {"Name"}, {})}}),
      HasSubstr("another application"));
}

TEST(MovingPlans, RefuseTablesThatStandElsewhere) {
  DesktopTable linked = TableOf("tenants", {}, {});
  linked.isLinked = true;
  const DesktopTable units = TableOf("Units", {"UnitKey"}, {{N(1)}});
  EXPECT_THAT(RefusalOf({{units, linked}}),
              AllOf(HasSubstr("'tenants'"), HasSubstr("stand in another file")));
  linked.name = "Orders";  // unknown ones may be what they like
  EXPECT_EQ(RefusalOf({{units, linked}}), "planned");
}

TEST(MovingPlans, RefuseTablesAndColumnsThatStandTwice) {
  const DesktopTable units = TableOf("Units", {"UnitKey"}, {{N(1)}});
  EXPECT_THAT(RefusalOf({{units, TableOf("UNITS", {"UnitKey"}, {{N(2)}})}}),
              HasSubstr("'some.mdb' has the table 'Units' twice"));
  EXPECT_THAT(RefusalOf({{TableOf("Units", {"UnitKey", "UnitName", "UNITNAME"}, {})}}),
              HasSubstr("has the column 'UnitName' of the table 'Units' twice"));
  const DesktopTable recipes = TableOf("Recipes", {"Name", "NAME"}, {});
  EXPECT_EQ(RefusalOf({{units, recipes, recipes}}), "planned") << "those are left";
  EXPECT_EQ(RefusalOf({{TableOf("Units", {"UnitKey", "Colour", "COLOUR"}, {})}}), "planned");
}

TEST(MovingPlans, RefuseTablesWithoutWhatGivesThemAMeaning) {
  const DesktopTable units = TableOf("UNITS", {"unitkey"}, {{N(1)}});
  EXPECT_EQ(RefusalOf({{units}}), "planned");
  EXPECT_THAT(RefusalOf({{TableOf("DOORS", {"UNITKEY", "DOORID"}, {})}}),
              HasSubstr("has no table 'Units'"));
  EXPECT_THAT(RefusalOf({{TableOf("Units", {"UnitName"}, {})}}), HasSubstr("no column 'UnitKey'"));
  EXPECT_THAT(
      RefusalOf({{units, TableOf("CredentialBank", {"UnitKey", "CredentialType", "PINNo"}, {})}}),
      HasSubstr("no column 'RID'"));
  EXPECT_EQ(RefusalOf({{units, TableOf("Tenants", {"TenantID", "UnitKey", "LastName"}, {})}}),
            "planned");
}

TEST(MovingPlans, TellWhatAFileLacksAndWhatThatMeans) {
  const MovingPlan plan({{TableOf("UNITS", {"unitkey"}, {{N(1)}})}}, "some.mdb", std::nullopt);
  std::vector<std::string> missing;
  for (const MissingThing& thing : plan.missing()) {
    missing.push_back(fmt::format("{}.{}: {}", thing.table, thing.column, thing.means));
  }
  EXPECT_EQ(missing.size(), 10U + 2U);
  EXPECT_THAT(missing, testing::Contains("CredentialBank.: there are no credentials"));
  EXPECT_THAT(missing, testing::Contains("DOORS.: the units have no doors"));
  EXPECT_EQ(missing[10], "Units.RID: the rows get numbers of their own");
  EXPECT_EQ(missing[11], "Units.UnitName: empty in every row");
}

TEST(MovingPlans, TellWhatAFileHasAndAStoreHasNot) {
  const MovingPlan plan({{TableOf("Recipes", {"RID"}, {{N(1)}, {N(2)}}),
                          TableOf("UNITS", {"unitkey", "Colour"}, {{N(1), N(7)}})}},
                        "some.mdb", std::nullopt);
  ASSERT_EQ(plan.left().size(), 2U);
  EXPECT_EQ(plan.left()[0].table, "Recipes");
  EXPECT_EQ(plan.left()[0].column, "");
  EXPECT_EQ(plan.left()[0].rows, 2U);
  EXPECT_EQ(plan.left()[1].table, "Units");
  EXPECT_EQ(plan.left()[1].column, "Colour");
  std::vector<std::string> told;
  for (const std::vector<qorcred::Value>& row : OddTable(plan).rows) {
    told.push_back(qorcred::TextOrEmpty(row[0]) + ' ' + qorcred::TextOrEmpty(row[1]) + ' ' +
                   qorcred::TextOrEmpty(row[4]) + ' ' + qorcred::TextOrEmpty(row[7]));
  }
  EXPECT_THAT(told, testing::IsSupersetOf(
                        {"missing DOORS  missing-table", "missing Units UnitName missing-column",
                         "left Recipes  unknown-table", "left Units Colour unknown-column"}));
}

TEST(MovingPlans, TellOfTablesThatAreLinksAndNotOfTheirRows) {
  DesktopTable link = TableOf("Orders", {}, {});
  link.isLinked = true;
  const MovingPlan plan({{UnitTable({1}), link, TableOf("Recipes", {"RID"}, {})}}, "some.mdb",
                        std::nullopt);
  EXPECT_THAT(NamesOfLeft(plan).tables,
              testing::ElementsAre("Orders (a link to another file)", "Recipes (0 rows)"));
  EXPECT_TRUE(LeftTable(plan).rows[0][2].Is(qorcred::ValueType::kNull));
  EXPECT_EQ(qorcred::TextOrEmpty(LeftTable(plan).rows[1][2]), "0");
  std::vector<std::string> reasons;
  for (const std::vector<qorcred::Value>& row : OddTable(plan).rows) {
    reasons.push_back(qorcred::TextOrEmpty(row[8]));
  }
  EXPECT_THAT(reasons, testing::IsSupersetOf(
                           {"a store does not have this table: it is a link to another file",
                            "a store does not have this table: 0 rows are left"}));
}

TEST(MovingPlans, NameColumnsThatAFileLacksOnceForEachMeaning) {
  const MovingPlan plan(
      {{TableOf("Units", {"UnitKey"}, {{N(1)}}), TableOf("DOORS", {"UNITKEY", "DOORID"}, {}),
        TableOf("TenantGroup", {"RID", "UnitKey", "IsGroupZero"}, {})}},
      "some.mdb", std::nullopt);
  std::vector<std::string> told;
  for (const MissingColumns& columns : MissingColumnsByMeaning(plan)) {
    told.push_back(fmt::format("{} ({})", fmt::join(columns.names, ", "), columns.means));
  }
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0], "Units.RID, DOORS.RID (the rows get numbers of their own)");
  EXPECT_EQ(told[1], "Units.UnitName, DOORS.DOORNAME (empty in every row)");
}

TEST(MovingPlans, YesAndNoThatAFileLacksAreNo) {
  const MovingPlan plan(
      {{TableOf("Units", {"UnitKey"}, {{N(1)}}), TableOf("UnitSettings", {"UnitKey"}, {{N(1)}})}},
      "some.mdb", std::nullopt);
  const StagedTable& settings = plan.tables()[2];
  const std::size_t ignores = settings.At("IGNOREFACILITYCODE");
  EXPECT_EQ(*settings.rows().front().cells[ignores].As<bool>(), false);
  EXPECT_TRUE(settings.IsGiven(ignores));
  EXPECT_FALSE(settings.IsGiven(settings.At("UNITTYPE")));
}

}  // namespace
}  // namespace qorhost::test

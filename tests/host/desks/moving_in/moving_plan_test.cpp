// What is settled of files that are put together here, one oddity at a time.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "host/desks/desk_error.h"
#include "host/desks/moving_in/moving_report.h"
#include "tests/host/desks/moving_in/moving_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

std::string RefusalOf(const DesktopFile& file) {
  try {
    (void)MovingPlan(file, "some.mdb", std::nullopt);
  } catch (const RefusedError& refused) {
    return refused.what();
  }
  return "planned";
}

DesktopCell N(std::int64_t number) {
  return number;
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
  EXPECT_EQ(missing[11], "Units.UnitName: it is empty in every row");
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

/// "row 2 TenantID 7 -> 2 [other-tenant-id]"
std::vector<std::string> ToldOf(const MovingPlan& plan, std::string_view table) {
  std::vector<std::string> told;
  for (const SettledCell& cell : plan.settled().named()) {
    if (cell.table != table) continue;
    told.push_back(fmt::format("{} row {} {} {}{} [{}]", WordFor(cell.settlement), cell.row,
                               cell.column, cell.value,
                               cell.instead.empty() ? "" : " -> " + cell.instead, cell.kind));
  }
  return told;
}

DesktopTable UnitTable(std::vector<std::int64_t> keys) {
  DesktopTable units = TableOf("Units", {"RID", "UnitKey", "UnitName"}, {});
  for (const std::int64_t key : keys) {
    units.rows.push_back({N(key), N(key), DesktopText{"Gate", true}});
  }
  units.count = units.rows.size();
  return units;
}

TEST(MovingPlans, TenantIdsFollowTheRidAndBackupRowsFollowThem) {
  const MovingPlan plan({{UnitTable({1}),
                          TableOf("Tenants", {"RID", "TenantID", "UnitKey", "LastName"},
                                  {{N(1), N(1), N(1), DesktopText{"Same", true}},
                                   {N(2), N(7), N(1), DesktopText{"Other", true}},
                                   {N(3), DesktopNull{}, N(1), DesktopText{"None", true}}}),
                          TableOf("TenantsBackup", {"RID", "UnitKey", "TenantID"},
                                  {{N(1), N(1), N(1)}, {N(2), N(1), N(7)}, {N(3), N(1), N(3)}})}},
                        "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "Tenants"),
              ElementsAre("adjusted row 2 TenantID 7 -> 2 [other-tenant-id]",
                          "adjusted row 3 TenantID Null -> 3 [other-tenant-id]"));
  EXPECT_THAT(ToldOf(plan, "TenantsBackup"),
              ElementsAre("adjusted row 2 TenantID 7 -> 2 [other-tenant-id]"));
}

TEST(MovingPlans, BackupRowsStayWithTheTenantWhoseRidTheyName) {
  for (const bool isBehind : {true, false}) {
    std::vector<std::vector<DesktopCell>> tenants{{N(5), N(13), N(1), DesktopText{"Other", true}},
                                                  {N(13), N(13), N(1), DesktopText{"Same", true}}};
    if (!isBehind) std::swap(tenants.front(), tenants.back());
    const MovingPlan plan(
        {{UnitTable({1}),
          TableOf("Tenants", {"RID", "TenantID", "UnitKey", "LastName"}, std::move(tenants)),
          TableOf("TenantsBackup", {"RID", "UnitKey", "TenantID"}, {{N(1), N(1), N(13)}})}},
        "some.mdb", std::nullopt);
    EXPECT_THAT(ToldOf(plan, "TenantsBackup"), testing::IsEmpty());
  }
}

TEST(MovingPlans, CodesBelowMinusOneAreToldAndKept) {
  const MovingPlan plan(
      {{UnitTable({1}), TableOf("DirectoryCode", {"RID", "UNITKEY", "DIRECTORYCODE"},
                                {{N(1), N(1), N(-1)},
                                 {N(2), N(1), N(-2)},
                                 {N(3), N(1), N(-99999)},
                                 {N(4), N(1), N(0)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("kept row 2 DIRECTORYCODE -2 [number-range]",
                          "kept row 3 DIRECTORYCODE -99999 [number-range]",
                          "kept row 4 PHONENUMBER Null [missing-phone]"));
}

TEST(MovingPlans, NumbersOfCodesThatNoUnitCanHaveBecomeNull) {
  std::vector<std::vector<DesktopCell>> rows;
  const std::vector<DesktopCell> formers{
      12.5, 1e300, -3.0, 1e15, 999999999999999.0, 0.0, DesktopNull{}, DesktopCell{-1.0}};
  for (const DesktopCell& former : formers) {
    const std::int64_t number = 1 + static_cast<std::int64_t>(rows.size());
    rows.push_back({N(number), N(1), N(number), DesktopText{"555", true}, former});
  }
  rows.push_back({N(9), N(1), N(-1), DesktopText{"555", true}, 0.5});
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf("DirectoryCode",
                {"RID", "UNITKEY", "DIRECTORYCODE", "PHONENUMBER", "OLDDIRECTORYCODE"}, rows)}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("adjusted row 1 OLDDIRECTORYCODE 12.5 -> Null [number-range]",
                          "adjusted row 2 OLDDIRECTORYCODE 1e+300 -> Null [number-range]",
                          "adjusted row 3 OLDDIRECTORYCODE -3 -> Null [number-range]",
                          "adjusted row 4 OLDDIRECTORYCODE 1000000000000000 -> Null [number-range]",
                          "adjusted row 9 OLDDIRECTORYCODE 0.5 -> Null [number-range]"));
}

TEST(MovingPlans, DelaysBelowZeroAreToldAndKept) {
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf("DirectoryCode",
                {"RID", "UNITKEY", "DIRECTORYCODE", "PHONENUMBER", "TIMEDELAY", "CFTIMEDELAY"},
                {{N(1), N(1), N(1), DesktopText{"1", true}, N(0), N(2147483647)},
                 {N(2), N(1), N(2), DesktopText{"1", true}, N(-1), DesktopNull{}},
                 {N(3), N(1), N(3), DesktopText{"1", true}, DesktopNull{}, N(-5)},
                 {N(4), N(1), N(-1), DesktopText{"1", true}, N(-1), N(-1)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("kept row 2 TIMEDELAY -1 [value-range]",
                          "kept row 3 CFTIMEDELAY -5 [value-range]",
                          "kept row 4 TIMEDELAY -1 [value-range]",
                          "kept row 4 CFTIMEDELAY -1 [value-range]"));
}

/// The two of them are the display mode, of which each pair has a meaning.
TEST(MovingPlans, DisplayModesAreAnyPairOfYesAndNo) {
  DesktopTable codes = TableOf(
      "DirectoryCode",
      {"RID", "UNITKEY", "DIRECTORYCODE", "PHONENUMBER", "SHOWDISPLAYNAME", "SHOWDIRECTORYCODE"},
      {});
  const auto add = [&](std::int64_t number, DesktopCell name, DesktopCell code) {
    codes.rows.push_back(
        {N(number), N(1), N(number), DesktopText{"1", true}, std::move(name), std::move(code)});
  };
  add(1, N(0), N(0));
  add(2, N(-1), N(0));
  add(3, N(0), N(1));
  add(4, N(-1), N(-1));
  add(5, N(3), DesktopNull{});
  codes.count = codes.rows.size();
  const MovingPlan plan({{UnitTable({1}), codes}}, "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "DirectoryCode"),
              ElementsAre("adjusted row 5 SHOWDISPLAYNAME 3 -> Yes [number-for-flag]",
                          "adjusted row 5 SHOWDIRECTORYCODE Null -> No [null-flag]"));
}

TEST(MovingPlans, WidthsBelowZeroBecomeTheUsualOnes) {
  const auto field = [](std::int64_t rid, const char* name, DesktopCell width) {
    return std::vector<DesktopCell>{N(rid), DesktopText{name, true}, std::move(width), N(1),
                                    N(rid)};
  };
  const MovingPlan plan(
      {{UnitTable({1}), TableOf("TenantSelectionFields",
                                {"RID", "FieldName", "DisplayWidth", "Display", "DisplaySeq"},
                                {field(51, "DirectoryCode.DirectoryCode", N(0)),
                                 field(52, "DirectoryCode.PhoneNumber", N(-1)),
                                 field(53, "DirectoryCode.Extension", N(2147483647)),
                                 field(54, "DirectoryCode.TimeDelay", DesktopNull{})})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "TenantSelectionFields"),
              ElementsAre("adjusted row 2 DisplayWidth -1 -> Null [value-range]"));
}

/// The fields of a report, in the order of their RIDs from 51 on.
struct ReportField {
  const char* column;
  std::int64_t display;
  DesktopCell sequence;
};

std::vector<std::string> ToldOfFields(const std::vector<ReportField>& fields) {
  std::vector<std::vector<DesktopCell>> rows;
  for (const ReportField& field : fields) {
    rows.push_back({N(51 + static_cast<std::int64_t>(rows.size())), DesktopText{field.column, true},
                    N(field.display), field.sequence});
  }
  return ToldOf(MovingPlan({{UnitTable({1}), TableOf("TenantSelectionFields",
                                                     {"RID", "FieldName", "Display", "DisplaySeq"},
                                                     std::move(rows))}},
                           "some.mdb", std::nullopt),
                "TenantSelectionFields");
}

TEST(MovingPlans, FieldsThatAreNotDisplayedComeBehindThoseThatAre) {
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(2)},
                            {"DirectoryCode.DirectoryCode", 1, N(1)},
                            {"directorycode.PhoneNumber", 1, N(3)},
                            {"DirectoryCode.TimeDelay", 0, N(1)},
                            {"DirectoryCode.DisplayName", 0, N(4)},
                            {"Tenants.LastName", 0, N(1)}}),
              ElementsAre("adjusted row 1 DisplaySeq 2 -> 6 [field-order]",
                          "adjusted row 4 DisplaySeq 1 -> 5 [field-order]"));
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.DirectoryCode", 1, N(1)},
                            {"DirectoryCode.PhoneNumber", 1, N(2)},
                            {"DirectoryCode.TimeDelay", 0, N(3)}}),
              testing::IsEmpty());
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.TimeDelay", 0, N(3)},
                            {"DirectoryCode.PhoneNumber", 0, DesktopNull{}}}),
              testing::IsEmpty())
      << "no field is displayed";
}

TEST(MovingPlans, FieldsThatAreNotDisplayedDoNotShareThePlaceOfTheLastThatIs) {
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(2)},
                            {"DirectoryCode.DirectoryCode", 1, N(1)},
                            {"DirectoryCode.PhoneNumber", 1, N(2)}}),
              ElementsAre("adjusted row 1 DisplaySeq 2 -> 3 [field-order]"));
}

/// A store has Null in front of every number.
TEST(MovingPlans, FieldsWithoutAPlaceStandBeforeAllOthers) {
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, DesktopNull{}},
                            {"DirectoryCode.DirectoryCode", 1, N(-5)}}),
              ElementsAre("adjusted row 1 DisplaySeq Null -> 1 [field-order]"));
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, DesktopNull{}},
                            {"DirectoryCode.DirectoryCode", 1, DesktopNull{}},
                            {"DirectoryCode.TimeDelay", 0, N(-1)}}),
              ElementsAre("adjusted row 1 DisplaySeq Null -> 1 [field-order]"));
}

TEST(MovingPlans, FieldsThatCannotComeBehindTheLastNumberAreTold) {
  constexpr std::int64_t kLast = 2147483647;
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(7)},
                            {"DirectoryCode.TimeDelay", 0, N(8)},
                            {"DirectoryCode.DirectoryCode", 1, N(kLast)}}),
              ElementsAre("kept row 1 DisplaySeq 7 [field-order]",
                          "kept row 2 DisplaySeq 8 [field-order]"));
  EXPECT_THAT(ToldOfFields({{"DirectoryCode.Extension", 0, N(7)},
                            {"DirectoryCode.TimeDelay", 0, N(kLast)},
                            {"DirectoryCode.DirectoryCode", 1, N(9)}}),
              ElementsAre("adjusted row 1 DisplaySeq 7 -> 2147483647 [field-order]"))
      << "which of two that are not displayed comes first does not matter";
}

struct SettingCase {
  const char* column;
  std::int64_t lowest;
  std::int64_t highest;
};

class MovedSettings : public testing::TestWithParam<SettingCase> {};

TEST_P(MovedSettings, BeyondTheirBoundsAreToldAndKept) {
  const auto plan = [](std::int64_t value, std::int64_t ends) {
    return MovingPlan(
        {{UnitTable({1}),
          TableOf("UnitSettings", {"RID", "UnitKey", "RECORDDEACTIVATION", GetParam().column},
                  {{N(1), N(1), N(ends), N(value)}})}},
        "some.mdb", std::nullopt);
  };
  const auto told = [&](std::int64_t value, std::int64_t ends) {
    const MovingPlan made = plan(value, ends);
    for (const SettledCell& cell : made.settled().named()) {
      if (cell.column == GetParam().column)
        return std::string(WordFor(cell.settlement)) + ' ' + cell.kind;
    }
    return std::string();
  };
  constexpr std::int64_t kAfterDays = 2;
  EXPECT_EQ(told(GetParam().lowest - 1, kAfterDays), "kept value-range");
  EXPECT_EQ(told(GetParam().lowest, kAfterDays), "");
  EXPECT_EQ(told(GetParam().highest, kAfterDays), "");
  EXPECT_EQ(told(GetParam().highest + 1, kAfterDays), "kept value-range");
  const bool isOfDays = std::string_view(GetParam().column) == "DEACTIVATIONDAYS";
  EXPECT_EQ(told(GetParam().highest + 1, 0), isOfDays ? "" : "kept value-range");
}
INSTANTIATE_TEST_SUITE_P(All, MovedSettings,
                         testing::Values(SettingCase{"MaxDigitsDirectoryCode", 1, 15},
                                         SettingCase{"MaxDigitsEntryCode", 1, 15},
                                         SettingCase{"DEACTIVATIONDAYS", 1, 36500},
                                         SettingCase{"CARDDEFAULTFACILITYCODE", 0, 255},
                                         SettingCase{"RFDEFAULTFACILITYCODE", 0, 255}),
                         [](const auto& one) { return std::string(one.param.column); });

TEST(MovingPlans, CardsWithADoorThatTheUnitLacksAreTold) {
  constexpr std::int64_t kCard = 1;
  constexpr std::int64_t kTransmitter = 2;
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf("DOORS", {"RID", "UNITKEY", "DOORID"}, {{N(1), N(1), N(1)}, {N(2), N(1), N(2)}}),
        TableOf("CredentialBank", {"RID", "UnitKey", "CredentialType", "PINNo", "DOORCODE"},
                {{N(1), N(1), N(kCard), N(1), N(2)},
                 {N(2), N(1), N(kCard), N(2), N(3)},
                 {N(3), N(1), N(kCard), N(3), N(-1)},
                 {N(4), N(1), N(kCard), N(4), N(0)},
                 {N(5), N(1), N(kCard), N(5), DesktopNull{}},
                 {N(6), N(1), N(kTransmitter), N(6), N(3)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(ToldOf(plan, "CredentialBank"), ElementsAre("kept row 2 DOORCODE 3 [missing-door]",
                                                          "kept row 3 DOORCODE -1 [missing-door]"));
}

TEST(MovingPlans, CodesThatStandForNoneAreSettledLikeOthers) {
  const MovingPlan plan(
      {{UnitTable({1}),
        TableOf(
            "DirectoryCode",
            {"RID", "UNITKEY", "DIRECTORYCODE", "CFSCHEDULEID", "TIMEDELAY", "MODIFIED"},
            {{N(1), N(1), N(-1), N(42), N(-5), N(12)}, {N(2), N(1), N(-1), N(1), N(0), N(0)}})}},
      "some.mdb", std::nullopt);
  EXPECT_THAT(
      ToldOf(plan, "DirectoryCode"),
      testing::UnorderedElementsAre("adjusted row 1 CFSCHEDULEID 42 -> Null [missing-schedule]",
                                    "kept row 1 TIMEDELAY -5 [value-range]",
                                    "adjusted row 1 MODIFIED 12 -> 2 [value-range]"));
  const auto codes =
      std::find_if(plan.tables().begin(), plan.tables().end(),
                   [](const StagedTable& table) { return table.known().name == "DirectoryCode"; });
  const StagedRow& row = codes->rows().front();
  EXPECT_EQ(LongIn(row.cells[codes->At("CFSCHEDULEID")]), std::nullopt);
  EXPECT_EQ(LongIn(row.cells[codes->At("MODIFIED")]), 2);
}

TEST(MovingPlans, NameSoManyOddCellsAndCountTheRest) {
  constexpr std::size_t kMore = 3;
  DesktopTable units = UnitTable({1});
  DesktopTable types = TableOf("UNITTYPES", {"RID", "DESCRIPTION", "TOTAL"}, {});
  for (std::size_t row = 0; row < SettledCells::kMostNamed + kMore; ++row) {
    types.rows.push_back({N(static_cast<std::int64_t>(row) + 1), DesktopNull{}, DesktopNull{}});
  }
  types.rows.push_back({N(2'000'000), DesktopText{"Gate", true}, DesktopText{"500", true}});
  types.count = types.rows.size();
  const MovingPlan plan({{std::move(units), std::move(types)}}, "some.mdb", std::nullopt);
  EXPECT_EQ(plan.CountOf(Settlement::kRefused), SettledCells::kMostNamed + kMore);
  EXPECT_EQ(plan.refusedRows(), SettledCells::kMostNamed + kMore);
  EXPECT_EQ(plan.settled().UnnamedOf(Settlement::kRefused), kMore);
  EXPECT_EQ(plan.settled().UnnamedOf(Settlement::kAdjusted), 0U);
  EXPECT_THAT(ToldOf(plan, "UNITTYPES").back(), HasSubstr("[capacity-plain]"))
      << "what is refused does not push out what is adjusted";
  EXPECT_EQ(WhatIsNamed(plan), "the first 50000 of each and counts the others");
  EXPECT_EQ(WhatIsNamed(MovingPlan({{UnitTable({1})}}, "some.mdb", std::nullopt)), "all");
  const Table table = SettledTable(plan);
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows.back()[8]), "3 more, which are not listed");
  std::ostringstream report;
  PrintMovingReport(report, plan, "some.mdb");
  EXPECT_THAT(report.str(), HasSubstr("  3 more, which are not listed\n"));
}

TEST(MovingPlans, TellInWhichCodePageTextsAreRead) {
  const auto reportOf = [](std::optional<DesktopCodePage> page) {
    std::ostringstream report;
    PrintMovingReport(report, MovingPlan({{UnitTable({1})}, page}, "some.mdb", std::nullopt),
                      "some.mdb");
    return report.str();
  };
  EXPECT_THAT(reportOf(std::nullopt), testing::Not(HasSubstr("code page")));
  EXPECT_THAT(reportOf(DesktopCodePage{1250, false}),
              HasSubstr("The texts of the file are read in the code page 1250.\n"));
  EXPECT_THAT(reportOf(DesktopCodePage{1252, true}),
              HasSubstr("The file tells no code page that is known: its texts are read in 1252. "
                        "Look at names with accents.\n"));
}

TEST(MovingPlans, GiveRowsWithoutAnIdentityFreeOnes) {
  const MovingPlan plan(
      {{TableOf("Units", {"RID", "UnitKey"},
                {{N(5), N(1)}, {N(2147483647), N(2)}, {DesktopNull{}, N(3)}, {N(5), N(4)}})}},
      "some.mdb", std::nullopt);
  const StagedTable& units = plan.tables().front();
  std::vector<std::int32_t> rids;
  for (const StagedRow& row : units.rows()) rids.push_back(*LongIn(row.cells[units.At("RID")]));
  EXPECT_THAT(rids, ElementsAre(5, 2147483647, 1, 2));
}

TEST(MovingPlans, ARefusedCredentialIsTakenFromItsHolder) {
  const MovingPlan plan(
      {{TableOf("Units", {"UnitKey"}, {{N(1)}}),
        TableOf("CredentialBank", {"RID", "UnitKey", "CredentialType", "PINNo"},
                {{N(1), N(1), N(1), N(0)}, {N(2), N(1), N(1), N(7)}}),
        TableOf("Tenants", {"RID", "UnitKey", "LastName", "CREDENTIALID1", "CREDENTIALID2"},
                {{N(1), N(1), DesktopText{"Good", true}, N(1), N(2)}})}},
      "some.mdb", std::nullopt);
  const StagedTable& tenants = plan.tables()[8];
  ASSERT_EQ(tenants.known().name, "Tenants");
  const StagedRow& row = tenants.rows().front();
  EXPECT_EQ(LongIn(row.cells[tenants.At("CREDENTIALID1")]), std::nullopt);
  EXPECT_EQ(LongIn(row.cells[tenants.At("CREDENTIALID2")]), 2);
  EXPECT_EQ(plan.settled().named().back().kind, "missing-credential");
}

}  // namespace
}  // namespace qorhost::test

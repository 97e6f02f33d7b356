// Every odd row of a building that is brought in: refused, adjusted or kept, and told.
#include <gmock/gmock.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/moving_in/moving_report.h"
#include "tests/host/desks/moving_in/moving_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

using Place = std::tuple<std::string, std::size_t, std::string>;  // table, row, column in capitals

std::string InCapitals(std::string text) {
  for (char& letter : text)
    letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  return text;
}

/// What becomes of each kind of odd row, as docs/moving-in.md has it; "exact" is told nothing of.
const std::map<std::string, std::string> kRules{
    {"blank-name", "kept"},
    {"broken-text", "adjusted"},
    {"capacity-missing", "kept"},
    {"capacity-plain", "adjusted"},
    {"capacity-range", "kept"},
    {"capacity-words", "kept"},
    {"duplicate-credential", "refused"},
    {"duplicate-field", "refused"},
    {"duplicate-group-zero", "adjusted"},
    {"duplicate-id", "refused"},
    {"duplicate-key", "refused"},
    {"duplicate-link", "kept"},
    {"duplicate-type", "refused"},
    {"early-date", "exact"},
    {"foreign-credential", "adjusted"},
    {"id-range", "refused"},
    {"late-date", "exact"},
    {"long-text", "kept"},
    {"missing-credential", "adjusted"},
    {"missing-directory-code", "adjusted"},
    {"missing-group", "adjusted"},
    {"missing-phone", "kept"},
    {"missing-tenant", "refused"},
    {"missing-type", "kept"},
    {"missing-unit", "refused"},
    {"no-group-zero", "kept"},
    {"no-settings", "kept"},
    {"null-id", "refused"},
    {"null-key", "refused"},
    {"null-name", "refused"},
    {"null-number", "refused"},
    {"null-type", "refused"},
    {"number-as-text", "adjusted"},
    {"other-tenant-id", "adjusted"},
    {"over-full", "kept"},
    {"period", "kept"},
    {"repeated-credential", "adjusted"},
    {"shared-credential", "kept"},
    {"unknown-field", "refused"},
};
/// The kinds of which rows are settled in several ways, row by row.
const std::map<std::tuple<std::string, std::string, std::size_t>, std::string> kRowRules{
    {{"control-character", "TENANTS", 19}, "kept"},
    {{"control-character", "TENANTS", 20}, "kept"},
    {{"control-character", "TENANTS", 21}, "kept"},
    {{"control-character", "TENANTS", 22}, "adjusted"},
    {{"control-character", "TENANTS", 23}, "kept"},
    {{"control-character", "DIRECTORYCODE", 16}, "kept"},
    {{"duplicate-directory-code", "DIRECTORYCODE", 4}, "refused"},
    {{"duplicate-directory-code", "DIRECTORYCODE", 5}, "kept"},  // it is deleted
    {{"duplicate-id", "SCHEDULES", 13}, "adjusted"},             // nobody refers to its RID
    {{"missing-schedule", "TENANTS", 10}, "adjusted"},
    {{"missing-schedule", "DIRECTORYCODE", 20}, "kept"},
    {{"missing-schedule", "DIRECTORYCODE", 21}, "adjusted"},
    {{"number-range", "CREDENTIALBANK", 12}, "refused"},
    {{"number-range", "CREDENTIALBANK", 14}, "refused"},
    {{"number-range", "CREDENTIALBANK", 15}, "refused"},
    {{"number-range", "DIRECTORYCODE", 9}, "refused"},
    {{"number-range", "DIRECTORYCODE", 10}, "kept"},  // the unit's digits may have been more
    {{"number-range", "DIRECTORYCODE", 11}, "refused"},
    {{"seconds", "CREDENTIALBANK", 36}, "exact"},
    {{"seconds", "CREDENTIALBANK", 37}, "adjusted"},
    {{"text-for-number", "CREDENTIALBANK", 27}, "refused"},
    {{"text-for-number", "CREDENTIALBANK", 28}, "refused"},
    {{"text-for-number", "TENANTS", 16}, "kept"},
    {{"text-for-number", "DIRECTORYCODE", 17}, "refused"},
    {{"text-for-number", "DIRECTORYCODE", 18}, "refused"},
    {{"unknown-type", "CREDENTIALBANK", 16}, "kept"},
    {{"unknown-type", "CREDENTIALBANK", 17}, "refused"},
    {{"value-range", "UNITSETTINGS", 5}, "adjusted"},
    {{"value-range", "CREDENTIALBANK", 20}, "refused"},
    {{"value-range", "CREDENTIALBANK", 21}, "refused"},
    {{"value-range", "CREDENTIALBANK", 22}, "refused"},
    {{"value-range", "CREDENTIALBANK", 23}, "refused"},
    {{"value-range", "CREDENTIALBANK", 24}, "refused"},
    {{"value-range", "DIRECTORYCODE", 24}, "adjusted"},
};

std::string RuleFor(const std::string& kind, const std::string& table, std::size_t row) {
  const auto found = kRowRules.find({kind, InCapitals(table), row});
  return found != kRowRules.end() ? found->second : kRules.at(kind);
}

class OddRows : public MovingFixture {
 protected:
  [[nodiscard]] static MovingPlan PlanOfOdd() { return PlanOf("building-odd.mdb"); }
};

TEST_F(OddRows, EachIsSettledByItsRule) {
  const MovingPlan plan = PlanOfOdd();
  std::map<Place, std::vector<std::pair<std::string, std::string>>> told;
  for (const SettledCell& cell : plan.settled().named()) {
    told[{InCapitals(cell.table), cell.row, InCapitals(cell.column)}].emplace_back(
        cell.kind, WordFor(cell.settlement));
  }
  std::size_t settled = 0;
  const nlohmann::ordered_json expected = ExpectedOf("building-odd.mdb");
  for (const auto& odd : expected.at("odd")) {
    if (odd.at("row").is_null()) continue;  // of a whole table
    const std::string kind = odd.at("kind");
    const std::string table = odd.at("table");
    const auto row = odd.at("row").get<std::size_t>();
    const std::string rule = RuleFor(kind, table, row);
    const auto found = told.find({InCapitals(table), row, InCapitals(odd.at("column"))});
    if (rule == "exact") {
      EXPECT_TRUE(found == told.end()) << table << " " << row;
      continue;
    }
    ASSERT_TRUE(found != told.end()) << odd;
    EXPECT_THAT(found->second, testing::Contains(std::pair(kind, rule))) << odd;
    ++settled;
  }
  EXPECT_EQ(settled, 102U);
}

TEST_F(OddRows, NothingElseIsToldThanOfOddRows) {
  std::set<std::pair<std::string, std::size_t>> odd;
  const nlohmann::ordered_json expected = ExpectedOf("building-odd.mdb");
  for (const auto& row : expected.at("odd")) {
    if (!row.at("row").is_null()) odd.emplace(InCapitals(row.at("table")), row.at("row"));
  }
  const MovingPlan plan = PlanOfOdd();
  for (const SettledCell& cell : plan.settled().named()) {
    EXPECT_TRUE(odd.contains({InCapitals(cell.table), cell.row})) << cell.table << " " << cell.row;
  }
}

/// But of the fields of their report, of which those that are not displayed stand first, and of
/// cards with a door that their unit does not have.
TEST_F(OddRows, SoundBuildingsAreToldNothingOf) {
  for (const char* name : {"building-2000.mdb", "building-2010.accdb", "encoded-2000.mdb"}) {
    const MovingPlan plan = PlanOf(name);
    EXPECT_EQ(plan.refusedRows(), 0U) << name;
    EXPECT_EQ(plan.CountOf(Settlement::kAdjusted), 3U) << name;
    for (const SettledCell& cell : plan.settled().named()) {
      EXPECT_THAT(cell.kind, testing::AnyOf("field-order", "missing-door")) << name;
    }
  }
}

TEST_F(OddRows, EveryRowOfTheFileIsSomewhere) {
  const MovingPlan plan = PlanOfOdd();
  const nlohmann::ordered_json tables = ExpectedOf("building-odd.mdb").at("tables");
  std::size_t rows = 0;
  for (const auto& [name, table] : tables.items()) rows += table.at("rows").get<std::size_t>();
  std::size_t found = 0;
  for (const MovedTable& table : plan.numbers()) {
    EXPECT_EQ(table.inFile, table.broughtIn + table.refused + table.ofOtherUnits) << table.name;
    found += table.inFile;
  }
  EXPECT_EQ(found, rows);
  EXPECT_EQ(plan.refusedRows(), 52U);
}

TEST_F(OddRows, AnotherUnitsRowsAreLeftAndCounted) {
  const MovingPlan plan = PlanOf("building-odd.mdb", 2);
  for (const MovedTable& table : plan.numbers()) {
    EXPECT_EQ(table.inFile, table.broughtIn + table.refused + table.ofOtherUnits) << table.name;
    if (table.name == "CredentialBank") {
      EXPECT_EQ(table.broughtIn, 2U);
      EXPECT_EQ(table.ofOtherUnits, 46U);
    }
  }
  for (const SettledCell& cell : plan.settled().named()) {
    EXPECT_NE(cell.table, "Tenants");
  }
}

TEST_F(OddRows, AUnitThatIsNotThereIsRefusedWithThoseThatAre) {
  EXPECT_THAT([] { (void)PlanOf("building-2000.mdb", 8); },
              testing::ThrowsMessage<RefusedError>(
                  AllOf(HasSubstr("no unit 8"), HasSubstr("3, 7, 12, 40"))));
}

TEST_F(OddRows, TheReportNamesTableRowColumnValueAndReason) {
  std::ostringstream report;
  PrintMovingReport(report, PlanOfOdd(), "building-odd.mdb", Extent::kAll);
  EXPECT_THAT(
      report.str(),
      AllOf(HasSubstr("113 rows to bring in, 52 rows refused, 23 cells adjusted"),
            HasSubstr("CredentialBank, row 12 (RID 12): PINNo 70000: credentials are numbered from "
                      "1 to 65535 [number-range]"),
            HasSubstr("DOORS, row 4 (UNITKEY 1, DOORID 2): DOORID 2: a row before it"),
            HasSubstr("Tenants, row 13 (RID 13): TenantID 5013 -> 13: "),
            HasSubstr("LastName \"Bell\\x07 Escape\\x1B[31mred\""),
            HasSubstr("  DOORS.RID (the rows get numbers of their own)\n")));
  EXPECT_EQ(report.str().find('\x1B'), std::string::npos);
}

}  // namespace
}  // namespace qorhost::test

// How much a report tells of what was settled.
#include "host/desks/moving_in/moving_report.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

std::size_t LinesWith(const std::string& text, std::string_view part) {
  std::istringstream in(text);
  std::size_t count = 0;
  for (std::string line; std::getline(in, line);) {
    if (line.find(part) != std::string::npos) ++count;
  }
  return count;
}

std::string TextReportOf(const MovingPlan& plan, Extent extent) {
  std::ostringstream report;
  PrintMovingReport(report, plan, "some.mdb", extent);
  return report.str();
}

std::string CsvReportOf(const MovingPlan& plan) {
  std::ostringstream report;
  PrintOddCsv(report, plan);
  return report.str();
}

TEST(MovingReports, NameSoManyOddCellsInMemoryAndAllInTheFile) {
  constexpr std::size_t kMore = 3;
  constexpr std::size_t kAll = SettledCells::kMostNamed + kMore;
  DesktopTable types = TableOf("UNITTYPES", {"RID", "DESCRIPTION", "TOTAL"}, {});
  for (std::size_t row = 0; row < kAll; ++row) {
    types.rows.push_back({N(static_cast<std::int64_t>(row) + 1), DesktopNull{}, DesktopNull{}});
  }
  types.rows.push_back({N(2'000'000), DesktopText{"Gate", true}, DesktopText{"500", true}});
  const MovingPlan plan({{UnitTable({1}), std::move(types)}}, "some.mdb", std::nullopt);
  EXPECT_EQ(plan.CountOf(Settlement::kRefused), kAll);
  EXPECT_EQ(plan.refusedRows(), kAll);
  EXPECT_EQ(plan.settled().UnnamedOf(Settlement::kRefused), kMore);
  EXPECT_EQ(plan.settled().UnnamedOf(Settlement::kAdjusted), 0U);
  EXPECT_THAT(ToldOf(plan, "UNITTYPES").back(), HasSubstr("[capacity-plain]"))
      << "what is refused does not push out what is adjusted";
  const Table table = SettledTable(plan);
  EXPECT_EQ(qorcred::TextOrEmpty(table.rows.back()[8]), "3 more, which the report alone lists");
  const std::string named = TextReportOf(plan, Extent::kNamed);
  EXPECT_EQ(LinesWith(named, "[null-type]"), SettledCells::kMostNamed);
  EXPECT_THAT(named, HasSubstr("  3 more, which the report alone lists\n"));
  const std::string all = TextReportOf(plan, Extent::kAll);
  EXPECT_EQ(LinesWith(all, "[null-type]"), kAll);
  EXPECT_EQ(LinesWith(all, "more, which"), 0U);
  EXPECT_THAT(all, HasSubstr("  UNITTYPES, row 50003 (RID 50003): DESCRIPTION Null: the type has "
                             "no name [null-type]\n"));
  EXPECT_EQ(LinesWith(CsvReportOf(plan), ",null-type,"), kAll);
}

/// Cards of which the type and the number are texts: two adjusted cells each.
TEST(MovingReports, ListEveryAdjustedCellInTheOrderOfTheFile) {
  constexpr std::int64_t kCards = 60'000;
  DesktopTable cards = TableOf("CredentialBank", {"RID", "UnitKey", "CredentialType", "PINNo"}, {});
  for (std::int64_t rid = 1; rid <= kCards; ++rid) {
    cards.rows.push_back(
        {N(rid), N(1), DesktopText{" 1", true}, DesktopText{fmt::format("0{}", rid), true}});
  }
  const MovingPlan plan({{UnitTable({1}), cards,
                          TableOf("Tenants", {"RID", "TenantID", "UnitKey", "LastName"},
                                  {{N(1), N(2), N(1), DesktopText{"Other", true}}})}},
                        "some.mdb", std::nullopt);
  constexpr std::size_t kAdjusted = 2 * kCards + 1;
  EXPECT_EQ(plan.CountOf(Settlement::kAdjusted), kAdjusted);
  EXPECT_EQ(plan.settled().named().size(), SettledCells::kMostNamed + 1) << "one is kept";
  std::vector<std::string> told;
  plan.settled().Each([&](const SettledCell& cell) {
    told.push_back(fmt::format("{} {} {} {} -> {}", cell.table, cell.row, cell.column, cell.value,
                               cell.instead));
  });
  ASSERT_EQ(told.size(), kAdjusted + 1);
  EXPECT_EQ(told[1], "CredentialBank 1 CredentialType \" 1\" -> 1");
  for (std::int64_t card = 1; card <= kCards; ++card) {
    const auto at = static_cast<std::size_t>(2 * card);
    EXPECT_EQ(told[at], fmt::format("CredentialBank {0} PINNo \"0{0}\" -> {0}", card));
  }
  EXPECT_EQ(told.back(), "Tenants 1 TenantID 2 -> 1");
  EXPECT_EQ(LinesWith(TextReportOf(plan, Extent::kAll), "[number-as-text]"), kAdjusted - 1);
  EXPECT_EQ(LinesWith(CsvReportOf(plan), ",number-as-text,"), kAdjusted - 1);
}

TEST(MovingReports, TellInWhichCodePageTextsAreRead) {
  const auto reportOf = [](std::optional<DesktopCodePage> page) {
    std::ostringstream report;
    PrintMovingReport(report, MovingPlan({{UnitTable({1})}, page}, "some.mdb", std::nullopt),
                      "some.mdb", Extent::kAll);
    return report.str();
  };
  EXPECT_THAT(reportOf(std::nullopt), testing::Not(HasSubstr("code page")));
  EXPECT_THAT(reportOf(DesktopCodePage{1250, false}),
              HasSubstr("The texts of the file are read in the code page 1250.\n"));
  EXPECT_THAT(reportOf(DesktopCodePage{1252, true}),
              HasSubstr("The file tells no code page that is known: its texts are read in 1252. "
                        "Look at names with accents.\n"));
}

}  // namespace
}  // namespace qorhost::test

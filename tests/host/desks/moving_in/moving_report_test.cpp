// How much a report tells of what was settled.
#include "host/desks/moving_in/moving_report.h"

#include <gmock/gmock.h>

#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "frame/convert.h"
#include "tests/host/desks/moving_in/made_tables.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

TEST(MovingReports, NameSoManyOddCellsAndCountTheRest) {
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

TEST(MovingReports, TellInWhichCodePageTextsAreRead) {
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

}  // namespace
}  // namespace qorhost::test

// Charts: the shapes that they draw, and what they tell those who do not see them.
#include "host/files/svg_chart.h"

#include <gmock/gmock.h>

#include <vector>

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kDark = "fill=\"#27445c\"";
constexpr const char* kTooMuch = "fill=\"#111111\"";

std::string Bars(const std::vector<ChartBar>& bars) {
  return BarChart({"Codes", "3 of 4"}, bars).markup();
}

std::string Columns(const std::vector<ChartColumn>& columns) {
  return ColumnChart({"Weeks", "2 entries"}, columns).markup();
}

TEST(Charts, TellWhatTheyAreAndSay) {
  for (const std::string& chart : {Bars({{"1", 3, 4.0}}), Columns({{"2026-01-05", 2}})}) {
    EXPECT_THAT(chart, testing::StartsWith("<svg role=\"img\" "));
    EXPECT_THAT(chart, testing::EndsWith("</svg>\n"));
  }
  EXPECT_THAT(Bars({}), AllOf(HasSubstr("aria-label=\"Codes\""), HasSubstr("<title>Codes</title>"),
                              HasSubstr("<desc>3 of 4</desc>")));
}

TEST(Bars, AreAsLongAsTheShareThatIsTaken) {
  const std::string half = Bars({{"1, Harbour Court", 250, 500.0}});
  EXPECT_THAT(half, AllOf(HasSubstr("width=\"170.0\" height=\"15.0\" fill=\"#27445c\""),
                          HasSubstr("250 of 500 (50 %)"), HasSubstr(">1, Harbour Court</text>"),
                          Not(HasSubstr(kTooMuch))));
  const std::string full = Bars({{"1", 500, 500.0}});
  EXPECT_THAT(full, AllOf(HasSubstr("width=\"340.0\" height=\"15.0\" fill=\"#27445c\""),
                          Not(HasSubstr(kTooMuch))));
  EXPECT_THAT(Bars({{"1", 501, 500.0}}), AllOf(HasSubstr(kTooMuch), HasSubstr("501 of 500")));
  EXPECT_THAT(Bars({{"1", 7, std::nullopt}}),
              AllOf(HasSubstr("7, no limit known"), Not(HasSubstr(kDark))));
}

TEST(Bars, ShortenLabelsBetweenCharacters) {
  EXPECT_THAT(Bars({{std::string(28, 'x'), 1, 2.0}}),
              HasSubstr(">" + std::string(28, 'x') + "</text>"));
  std::string longer;
  for (int at = 0; at < 29; ++at) {
    longer += "ë";
  }
  EXPECT_THAT(Bars({{longer, 1, 2.0}}), HasSubstr(">" + longer.substr(0, 54) + "…</text>"));
}

TEST(Columns, AreAsHighAsTheirShareOfTheHighest) {
  const std::string chart = Columns({{"a", 0}, {"b", 5}, {"c", 10}});
  EXPECT_THAT(chart, AllOf(HasSubstr("height=\"84.0\" fill"), HasSubstr("height=\"42.0\" fill"),
                           HasSubstr(">10</text>"), Not(HasSubstr(">0</text>"))));
  EXPECT_THAT(Columns({{"a", 0}, {"b", 0}}), Not(HasSubstr("<rect")));
  EXPECT_THAT(Columns({}), Not(HasSubstr("<rect")));
}

TEST(Columns, AreLabelledWhereThereIsRoomAndAtTheLast) {
  std::vector<ChartColumn> weeks;
  for (int at = 0; at < 26; ++at) {
    weeks.push_back({"week " + std::to_string(at), 1});
  }
  const std::string chart = Columns(weeks);
  EXPECT_THAT(chart, AllOf(HasSubstr("text-anchor=\"end\">week 25</text>"),
                           HasSubstr(">week 21</text>"), Not(HasSubstr(">week 24</text>"))));
}

}  // namespace
}  // namespace qorhost::test

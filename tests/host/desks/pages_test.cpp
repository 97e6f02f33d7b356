// Lists and the store's overview as pages, and the activity that the overview draws.
#include <gmock/gmock.h>

#include <sstream>

#include "host/desks/activity.h"
#include "host/desks/list_page.h"
#include "host/desks/overview_page.h"
#include "host/desks/shown_value.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Value;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class PagesTest : public DeskFixture {
 protected:
  [[nodiscard]] static std::string Printed(const HtmlPage& page) {
    std::ostringstream out;
    PrintHtml(out, page);
    return out.str();
  }
  /// An entry of the history, made at a time of UTC.
  void AddEntry(const std::string& at, const std::string& unit = "2") {
    Run("INSERT INTO AuditEntries (At, Who, Origin, UnitKey, What, Rows) VALUES ('" + at +
        "', 'anna', '', " + unit + ", 'x', '')");
  }
};

TEST_F(PagesTest, AListTellsWhatItIsOfAndWhatWasAskedFor) {
  List list;
  list.title = "Tenants";
  list.fields = {{"Name", "name"}};
  list.rows = {{"Berg"}};
  const HtmlPage page =
      PageOf(session(), list, {{"name = Berg", "end < 2027"}, "-name", "", 5}, UnitName{2, "Park"});
  EXPECT_EQ(page.title, "Tenants");
  EXPECT_EQ(page.foot, "Tenants, unit 2, Park, 2026-01-31");
  ASSERT_THAT(page.facts, SizeIs(2));
  EXPECT_EQ(page.facts[0].name + ": " + page.facts[0].text, "Unit: 2, Park");
  EXPECT_EQ(page.facts[1].text, "2026-01-31");
  EXPECT_EQ(page.sections.front().caption,
            "1 row where name = Berg and end < 2027, by -name, at most 5");
  EXPECT_EQ(PageOf(session(), list, {}, {}).foot, "Tenants, all units, 2026-01-31");
  EXPECT_EQ(PageOf(session(), list, {}, UnitName{7, ""}).facts[0].text, "7");
}

TEST_F(PagesTest, TheOverviewHasARowForEveryUnit) {
  Run("UPDATE Tenants SET ACTIVETENANT=-1, ACTIVEENDTIME='2026-01-30 23:59:59' WHERE RID=62");
  Run("UPDATE Tenants SET ACTIVETENANT=-1, ACTIVEENDTIME='2026-02-05 23:59:59' WHERE RID=63");
  const List list = OverviewOf(session(), session().Units(), 30).list;
  ASSERT_THAT(list.rows, SizeIs(3));
  EXPECT_EQ(list.rows[1][0], Value(2));
  EXPECT_EQ(list.rows[1][2], Value(75.0)) << "tenants";
  EXPECT_EQ(list.rows[1][3], Value(151.0)) << "codes in use";
  EXPECT_EQ(list.rows[1][4], Value(2000)) << "capacity";
  EXPECT_EQ(list.rows[1][7], Value(1.0)) << "expired";
  EXPECT_EQ(list.rows[1][8], Value(1.0)) << "expiring";
  EXPECT_EQ(OverviewOf(session(), session().Units(), 4).list.rows[1][8], Value(0.0));
}

TEST_F(PagesTest, TheOverviewTellsSinceWhenStepsWait) {
  Run("DELETE FROM ProgramSteps");
  const auto since = [&] { return OverviewOf(session(), session().Units(), 30).list.rows[1][6]; };
  EXPECT_TRUE(since().Is(qorcred::ValueType::kNull));
  session().sql().steps().Queue(kUnit, step::kProgramTenant, 62);
  EXPECT_EQ(ShownText(since()), "2026-01-31 14:05:09");
}

TEST_F(PagesTest, TheOverviewDrawsWhatItSays) {
  Run("UPDATE Tenants SET ACTIVETENANT=-1, ACTIVEENDTIME='2026-01-30 23:59:59' WHERE RID=62");
  const std::vector<UnitName> units = session().Units();
  const StoreOverview overview = OverviewOf(session(), units, 30);
  const HtmlPage page = PageOfOverview(session(), overview, {}, overview.list, {});
  ASSERT_THAT(page.sections, SizeIs(4));
  EXPECT_THAT(page.sections[1].charts, SizeIs(1));
  EXPECT_THAT(page.sections[2].charts, SizeIs(1));
  EXPECT_THAT(page.sections[3].table.rows, SizeIs(1));
  EXPECT_THAT(
      Printed(page),
      AllOf(HasSubstr("<desc>Unit 1, Harbour Court: 498 of 500; Unit 2, Linden Park: 151 "
                      "of 2000; Unit 3, Mill Street Lofts: 114 of 8000</desc>"),
            HasSubstr("498 of 500 (99 %)"), HasSubstr("<h2>Over, or ending within 30 days</h2>")));
}

TEST_F(PagesTest, AChartHasNoMoreUnitsThanASheetHolds) {
  const std::vector<UnitName> units(25, UnitName{2, "Linden Park"});
  const HtmlPage page = PageOfOverview(session(), OverviewOf(session(), units, 0), {}, {}, {});
  EXPECT_THAT(page.sections[1].charts, SizeIs(2));
}

TEST_F(PagesTest, ActivityCountsEntriesByWeeksThatBeginOnMondays) {
  Run("DELETE FROM AuditEntries");
  AddEntry("2026-01-18 23:59:59");
  AddEntry("2026-01-19 00:00:00");
  AddEntry("2026-01-25 23:59:59");
  AddEntry("2026-01-26 00:00:00");
  AddEntry("2026-02-02 00:00:00");  // the session's day is a Saturday before
  AddEntry("2026-01-26 10:00:00", "1");
  const auto entries = [&](std::optional<std::int32_t> unit) {
    std::vector<std::int64_t> counts;
    for (const WeekOfWork& week : ActivityByWeek(session(), unit, 3)) {
      counts.push_back(week.entries);
    }
    return counts;
  };
  EXPECT_THAT(entries(kUnit), ElementsAre(1, 2, 2));
  EXPECT_THAT(entries(std::nullopt), ElementsAre(1, 2, 3));
  const std::vector<WeekOfWork> weeks = ActivityByWeek(session(), kUnit, 3);
  EXPECT_EQ(ShownDay(weeks.front().monday), "2026-01-12");
  EXPECT_EQ(ShownDay(weeks.back().monday), "2026-01-26");
  EXPECT_TRUE(ActivityByWeek(session(), kUnit, 0).empty());
}

}  // namespace
}  // namespace qorhost::test

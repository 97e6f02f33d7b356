#include "host/screens/report_filter_screen.h"

#include <gtest/gtest.h>

#include "frame/controls.h"
#include "frame/date.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Get;
using qorcred::Value;
using qorhost::ControlArrayModel;
using qortest::Raises;

const qorcred::Date kFilterDay = qorcred::FromCivil({2026, 11, 21, 0, 0, 0});

constexpr const char* kArrays[] = {"cboField",    "cboFilter", "txtFrom",    "txtTo",
                                   "dtpDateFrom", "dtpDateTo", "chkBoolean", "cboType"};

TEST(ReportFilterScreenTest, EveryControlIsThereOnceForEachRow) {
  const auto screen = qorhost::MakeReportFilterScreen(7, kFilterDay);
  EXPECT_EQ(screen->name(), "frmTxFilter");
  EXPECT_EQ(screen->Names().size(), std::size(kArrays));
  for (const char* name : kArrays) {
    EXPECT_EQ(qorcred::Screen(screen).Array(name).Count(), 7) << name;
  }
}

TEST(ReportFilterScreenTest, HasAtLeastFiveRows) {
  for (const std::size_t rows : {0U, 1U, 4U, 5U}) {
    const auto screen = qorhost::MakeReportFilterScreen(rows, kFilterDay);
    for (const char* name : kArrays) {
      EXPECT_EQ(screen->Get<ControlArrayModel>(name).size(), 5U) << name;
    }
  }
  EXPECT_EQ(
      qorhost::MakeReportFilterScreen(6, kFilterDay)->Get<ControlArrayModel>("cboType").size(), 6U);
}

TEST(ReportFilterScreenTest, OpensEmptyWithTodayChosen) {
  const auto screen = qorhost::MakeReportFilterScreen(5, kFilterDay);
  const qorcred::Screen view(screen);
  for (std::int32_t row = 0; row < 5; ++row) {
    for (const char* list : {"cboField", "cboFilter", "cboType"}) {
      EXPECT_EQ(view.Array(list).List(row).ListIndex(), -1) << list;
      EXPECT_EQ(view.Array(list).List(row).ListCount(), 0) << list;
    }
    for (const char* box : {"txtFrom", "txtTo"}) {
      EXPECT_EQ(view.Array(box).Box(row).Text(), "") << box;
    }
    for (const char* picker : {"dtpDateFrom", "dtpDateTo"}) {
      EXPECT_EQ(view.Array(picker).Picker(row).Chosen(), Value(kFilterDay)) << picker;
    }
    EXPECT_EQ(view.Array("chkBoolean").Check(row).State(), Value(std::int16_t{0}));
  }
}

TEST(ReportFilterScreenTest, TheRowsAreApart) {
  const auto screen = qorhost::MakeReportFilterScreen(5, kFilterDay);
  const qorcred::Screen view(screen);
  view.Array("txtFrom").Box(2).SetText("12");
  view.Array("cboField").List(4).AddItemWithData("Display Name", 65);
  view.Array("dtpDateTo").Picker(1).SetEndOfDay();
  EXPECT_EQ(view.Array("txtFrom").Box(1).Text(), "");
  EXPECT_EQ(view.Array("txtFrom").Box(2).Text(), "12");
  EXPECT_EQ(view.Array("cboField").List(4).ItemData(0), 65);
  EXPECT_EQ(view.Array("cboField").List(3).ListCount(), 0);
  EXPECT_EQ(qorcred::ToText(view.Array("dtpDateTo").Picker(1).Chosen()), "11/21/2026 11:59:59 PM");
  EXPECT_EQ(qorcred::ToText(view.Array("dtpDateTo").Picker(0).Chosen()), "11/21/2026");
}

TEST(ReportFilterScreenTest, ARowBeyondTheLastIsNotThere) {
  const auto screen = qorhost::MakeReportFilterScreen(5, kFilterDay);
  EXPECT_TRUE(Raises(qorcred::ErrorNumber::kIndexOutOfRange, [&] { Get(*screen, "txtTo", 5); }));
  EXPECT_TRUE(Raises(qorcred::ErrorNumber::kIndexOutOfRange, [&] { Get(*screen, "txtTo", -1); }));
}

TEST(ReportFilterScreenTest, AControlThatGetsTheFocusIsNamedWithItsRow) {
  const auto screen = qorhost::MakeReportFilterScreen(5, kFilterDay);
  qorcred::Screen(screen).Array("txtFrom").Box(3).SetFocus();
  EXPECT_EQ(screen->focused(), "txtFrom(3)");
}

}  // namespace

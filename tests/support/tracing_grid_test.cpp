#include <gtest/gtest.h>

#include "frame/result_table.h"
#include "host/screens/grid_model.h"
#include "host/screens/report_filter_screen.h"
#include "reports/report_grid.h"
#include "tests/support/recorder.h"
#include "tests/support/tracing_object.h"

namespace qortest {
namespace {

using qorcred::GridColumn;
using qorcred::ObjectRef;
using qorcred::ReportGrid;
using qorcred::ResultTable;
using qorcred::ValueItem;
using qorhost::GridModel;

TEST(TracingGridTest, NamesEveryPartByTheWayToIt) {
  Recorder recorder;
  const auto inner = std::make_shared<GridModel>();
  const ReportGrid grid(std::make_shared<TracingControl>("objGrid", inner, recorder.Sink()));
  const GridColumn column = grid.Columns().At(3);
  column.SetCaption("DND Schedule");
  (void)column.Caption();
  column.Items().SetTranslate(true);
  grid.Columns().Remove(16);
  grid.SetArray(std::make_shared<ResultTable>(1, 1));
  grid.ReBind();
  grid.Refresh();
  EXPECT_EQ(recorder.Take(),
            (Lines{"objGrid.Columns(3).Caption = \"DND Schedule\"",
                   "objGrid.Columns(3).Caption -> \"DND Schedule\"",
                   "objGrid.Columns(3).ValueItems.Translate = True", "objGrid.Columns.Remove 16",
                   "objGrid.Array = <object>", "objGrid.ReBind", "objGrid.Refresh"}));
  EXPECT_EQ(inner->rowCount(), 1U) << "the calls reach the grid";
}

TEST(TracingGridTest, AnItemThatTheGridMadeIsTracedUntilItIsAdded) {
  Recorder recorder;
  const auto inner = std::make_shared<GridModel>();
  const ReportGrid grid(std::make_shared<TracingControl>("objGrid", inner, recorder.Sink()));
  const ValueItem item(grid.NewValueItem());
  item.SetValue(-1);
  item.SetDisplayValue("Active");
  grid.Columns().At(0).Items().Add(item);
  EXPECT_EQ(recorder.Take(), (Lines{"objGrid.NewValueItem", "objGrid.NewValueItem.Value = -1",
                                    "objGrid.NewValueItem.DisplayValue = \"Active\"",
                                    "objGrid.Columns(0).ValueItems.Add"}));
  EXPECT_EQ(inner->columns().at(0).items().count(), 1U);
}

TEST(TracingGridTest, AFilterRowIsNamedByItsIndex) {
  Recorder recorder;
  const auto screen = qorhost::MakeReportFilterScreen(5, qorcred::Date{46000});
  const ObjectRef traced = std::make_shared<TracingScreen>(
      screen, recorder.Sink(),
      [screen](std::string_view name) { return screen->SpelledName(name); });
  const qorcred::ControlArray fields = qorcred::Screen(traced).Array("CBOFIELD");
  (void)fields.List(2).ListIndex();
  fields.List(4).AddItem("Card Number");
  (void)fields.Count();
  EXPECT_EQ(recorder.Take(), (Lines{"cboField(2).ListIndex -> -1",
                                    "cboField(4).AddItem \"Card Number\"", "cboField.Count -> 5"}));
}

}  // namespace
}  // namespace qortest

#include "host/screens/grid_model.h"

#include <gtest/gtest.h>

#include "frame/date.h"
#include "frame/result_table.h"
#include "reports/report_grid.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Get;
using qorcred::GridColumn;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::ReportGrid;
using qorcred::ResultTable;
using qorcred::Value;
using qorcred::ValueItem;
using qorhost::GridModel;
using qortest::Raises;

class GridModelTest : public ::testing::Test {
 protected:
  [[nodiscard]] GridColumn Column(std::int32_t index) const {
    return ReportGrid(grid_).Columns().At(index);
  }
  void AddItem(std::int32_t column, const Value& value, std::string_view shown) const {
    const ValueItem item(ReportGrid(grid_).NewValueItem());
    item.SetValue(value);
    item.SetDisplayValue(shown);
    Column(column).Items().Add(item);
  }
  /// Binds a table of one row.
  void Bind(const std::vector<Value>& row) {
    table_ = std::make_shared<ResultTable>(1, row.size());
    for (std::size_t column = 0; column < row.size(); ++column) {
      table_->At(0, static_cast<std::int32_t>(column)) = row[column];
    }
    ReportGrid(grid_).SetArray(table_);
    ReportGrid(grid_).ReBind();
  }

  std::shared_ptr<GridModel> grid_ = std::make_shared<GridModel>();
  std::shared_ptr<ResultTable> table_;
};

TEST_F(GridModelTest, OpensWithSeventeenColumnsAndNoRows) {
  EXPECT_EQ(ReportGrid(grid_).Columns().Count(), 17);
  for (std::int32_t index = 0; index < 17; ++index) {
    EXPECT_EQ(Column(index).Caption(), "");
    EXPECT_EQ(Get(Column(index).object(), "Visible"), Value(true));
    EXPECT_EQ(Get(*Column(index).Items().reference(), "Count"), Value(0));
  }
  EXPECT_EQ(grid_->rowCount(), 0U);
  EXPECT_EQ(Get(*grid_, "Array"), Value(ObjectRef()));
}

TEST_F(GridModelTest, KeepsWhatAColumnIsGiven) {
  Column(3).SetCaption("DND Schedule");
  Column(3).SetWidth("1600");
  Column(3).SetVisible(false);
  EXPECT_EQ(grid_->columns().at(3).caption(), "DND Schedule");
  EXPECT_EQ(grid_->columns().at(3).width(), 1600);
  EXPECT_FALSE(grid_->columns().at(3).visible());
  EXPECT_EQ(Get(*Column(3).reference(), ""), Value("DND Schedule"));
  EXPECT_EQ(grid_->columns().at(2).caption(), "");
}

TEST_F(GridModelTest, AColumnThatIsRemovedLetsTheOnesBehindItMoveUp) {
  Column(1).SetCaption("one");
  Column(2).SetCaption("two");
  ReportGrid(grid_).Columns().Remove(1);
  EXPECT_EQ(ReportGrid(grid_).Columns().Count(), 16);
  EXPECT_EQ(Column(1).Caption(), "two");
}

TEST_F(GridModelTest, AColumnCanBeFetchedInOneStep) {
  Column(5).SetCaption("five");
  EXPECT_EQ(Get(*qorcred::RequireObject(Get(*grid_, "COLUMNS", 5)), "caption"), Value("five"));
}

TEST_F(GridModelTest, ShowsCellsAsTexts) {
  Bind({"0012", 7, true, Null{}, qorcred::FromCivil({2024, 3, 5, 14, 30, 0}), Value()});
  EXPECT_EQ(grid_->rowCount(), 1U);
  const std::vector<std::string> shown{"0012", "7", "True", "", "3/5/2024 2:30:00 PM", ""};
  for (std::size_t column = 0; column < shown.size(); ++column) {
    EXPECT_EQ(grid_->Shown(0, column), shown[column]);
  }
  EXPECT_EQ(grid_->Shown(0, 6), "") << "a column that the table does not have";
}

struct TranslationRow {
  const char* name;
  Value cell;
  Value stored;
  const char* shown;
};

class TranslationTest : public GridModelTest,
                        public ::testing::WithParamInterface<TranslationRow> {};

TEST_P(TranslationTest, ComparesACellWithAnItemsValueByText) {
  AddItem(0, GetParam().stored, "translated");
  Column(0).Items().SetTranslate(true);
  Bind({GetParam().cell});
  EXPECT_EQ(grid_->Shown(0, 0), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(GridModelTest, TranslationTest,
                         ::testing::Values(TranslationRow{"Number", 3, 3, "translated"},
                                           TranslationRow{"NumberAndText", "3", 3.0, "translated"},
                                           TranslationRow{"OtherNumber", 30, 3, "30"},
                                           TranslationRow{"Yes", true, -1, "translated"},
                                           TranslationRow{"No", false, 0, "translated"},
                                           TranslationRow{"YesAndNo", true, 0, "True"},
                                           TranslationRow{"Null", Null{}, "", "translated"},
                                           TranslationRow{"Empty", Value(), "", "translated"},
                                           TranslationRow{"EmptyText", "", Null{}, "translated"},
                                           TranslationRow{"NullIsNotZero", Null{}, 0, ""},
                                           TranslationRow{"TextOtherwiseCased", "office", "Office",
                                                          "office"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(GridModelTest, TranslatesNothingUnlessTold) {
  AddItem(0, 1, "one");
  Bind({1});
  EXPECT_EQ(grid_->Shown(0, 0), "1");
  Column(0).Items().SetTranslate(true);
  EXPECT_EQ(grid_->Shown(0, 0), "one");
  EXPECT_EQ(Get(*Column(0).Items().reference(), "Translate"), Value(true));
}

TEST_F(GridModelTest, AnAddedItemIsACopy) {
  const ValueItem item(ReportGrid(grid_).NewValueItem());
  item.SetValue(1);
  item.SetDisplayValue("one");
  Column(0).Items().Add(item);
  item.SetValue(2);
  item.SetDisplayValue("two");
  Column(0).Items().Add(item);
  Column(0).Items().SetTranslate(true);
  EXPECT_EQ(Get(*Column(0).Items().reference(), "Count"), Value(2));
  Bind({1});
  EXPECT_EQ(grid_->Shown(0, 0), "one");
  Bind({2});
  EXPECT_EQ(grid_->Shown(0, 0), "two");
}

TEST_F(GridModelTest, OfTwoItemsForOneValueTheFirstCounts) {
  AddItem(0, 1, "first");
  AddItem(0, "1", "second");
  Column(0).Items().SetTranslate(true);
  Bind({1});
  EXPECT_EQ(grid_->Shown(0, 0), "first");
}

TEST_F(GridModelTest, ValueItemsKeepPresentationAndDropDownList) {
  const ObjectRef items = Column(0).Items().reference();
  Column(0).Items().SetPresentation(1);
  Put(*items, "DropDownList", true);
  EXPECT_EQ(Get(*items, "Presentation"), Value(std::int16_t{1}));
  EXPECT_EQ(Get(*items, "DropDownList"), Value(true));
}

TEST_F(GridModelTest, ANewArrayIsShownOnlyAfterItIsBound) {
  Bind({"old"});
  auto rows = std::make_shared<ResultTable>(2, 1);
  rows->At(0, 0) = "new";
  ReportGrid(grid_).SetArray(rows);
  EXPECT_EQ(grid_->Shown(0, 0), "old");
  EXPECT_EQ(Get(*grid_, "Array"), Value(ObjectRef(rows)));
  ReportGrid(grid_).ReBind();
  ReportGrid(grid_).Refresh();
  EXPECT_EQ(grid_->Shown(0, 0), "new");
  EXPECT_EQ(grid_->rowCount(), 2U);
}

TEST_F(GridModelTest, ATableWhoseOnlyRowWasDeletedShowsNoRow) {
  Bind({""});
  table_->DeleteRows(0);
  EXPECT_EQ(grid_->rowCount(), 0U);
  EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { (void)grid_->Shown(0, 0); }));
}

TEST_F(GridModelTest, NothingCanBeBound) {
  Bind({"old"});
  Put(*grid_, "Array", ObjectRef());
  Call(*grid_, "ReBind");
  EXPECT_EQ(grid_->rowCount(), 0U);
  EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { (void)grid_->Shown(0, 0); }));
}

TEST_F(GridModelTest, RefusesWhatItDoesNotHave) {
  const auto raises = [](ErrorNumber number, auto body) { EXPECT_TRUE(Raises(number, body)); };
  const ObjectRef column = Column(0).reference();
  const ObjectRef items = Column(0).Items().reference();
  const ObjectRef columns = ReportGrid(grid_).Columns().reference();
  const ObjectRef item = ReportGrid(grid_).NewValueItem();
  for (const ObjectRef& object : {column, items, columns, item, ObjectRef(grid_)}) {
    raises(ErrorNumber::kUnknownMember, [&] { Get(*object, "Splits"); });
  }
  raises(ErrorNumber::kIndexOutOfRange, [&] { Get(*columns, "", 17); });
  raises(ErrorNumber::kIndexOutOfRange, [&] { Get(*columns, "", -1); });
  raises(ErrorNumber::kIndexOutOfRange, [&] { Call(*columns, "Remove", 17); });
  raises(ErrorNumber::kUnknownMember, [&] { Put(*columns, "Count", 3); });
  raises(ErrorNumber::kUnknownMember, [&] { Put(*column, "ValueItems", items); });
  raises(ErrorNumber::kInvalidProcedureCall, [&] { Put(*column, "Width", -1); });
  raises(ErrorNumber::kObjectRequired, [&] { Call(*items, "Add", 5); });
  raises(ErrorNumber::kObjectNotSet, [&] { Call(*items, "Add", ObjectRef()); });
  raises(ErrorNumber::kWrongArgumentCount, [&] { Call(*items, "Add"); });
  raises(ErrorNumber::kUnknownMember, [&] { Call(*items, "Add", column); });
  raises(ErrorNumber::kObjectRequired, [&] { Put(*grid_, "Array", "rows"); });
  raises(ErrorNumber::kWrongArgumentCount, [&] { Call(*grid_, "ReBind", 1); });
  EXPECT_EQ(grid_->columns().size(), 17U);
  EXPECT_EQ(grid_->columns().at(0).items().count(), 0U);
}

}  // namespace

// The value items that make coded cells of the report readable.
#include <string>
#include <string_view>
#include <vector>

#include "frame/runtime_error.h"
#include "tests/reports/grid_fixture.h"

namespace qortest {
namespace {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::RuntimeError;
using qorcred::Value;

/// A grid that makes no value items of its own.
class GridWithoutFactory final : public qorcred::Object {
 public:
  explicit GridWithoutFactory(ObjectRef inner) : inner_(std::move(inner)) {}

  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    if (qorcred::SameMember(member, "NewValueItem")) {
      throw RuntimeError(ErrorNumber::kUnknownMember);
    }
    return inner_->Invoke(member, kind, arguments);
  }

 private:
  ObjectRef inner_;
};

class ReportValueItems : public ReportGridTest {
 protected:
  const qorhost::GridValueItems& ItemsOf(std::size_t column) {
    return Host().shownGrid().columns().at(column).items();
  }
};

TEST_F(ReportValueItems, StandForYesAndNo) {
  for (const std::string_view caption :
       {"Do Not Disturb", "Call Forwarding", "Show Display Name", "Show Directory Code"}) {
    SCOPED_TRACE(caption);
    StoreLayout({std::string(caption)});
    Database().Replace("SELECT rows", {.rows = {{-1}, {0}, {true}, {false}, {1}, {"x"}, {Null{}}}});
    Show();
    std::vector<std::string> shown;
    for (std::size_t row = 0; row < 7; ++row) shown.push_back(Shown(row)[0]);
    EXPECT_EQ(shown, (std::vector<std::string>{"True", "False", "True", "False", "1", "x", ""}));
    EXPECT_EQ(ItemsOf(0).count(), 2U);
    EXPECT_EQ(ItemsOf(0).presentation(), 1);
    EXPECT_TRUE(ItemsOf(0).translate());
  }
}

TEST_F(ReportValueItems, StandForTheStatus) {
  StoreLayout({"Directory Status"});
  AnswerRows({{true}, {false}});
  Show();
  EXPECT_EQ(Shown(0)[0], "Active");
  EXPECT_EQ(Shown(1)[0], "Inactive");
  EXPECT_EQ(ItemsOf(0).count(), 2U);
  EXPECT_EQ(ItemsOf(0).presentation(), 1);
}

TEST_F(ReportValueItems, StandForSchedules) {
  Database().Select("FROM Schedules", {{2, "Day"}, {3, Null{}}, {17, "Night's"}});
  for (const std::string_view caption : {"DND Schedule", "CF Schedule"}) {
    SCOPED_TRACE(caption);
    StoreLayout({std::string(caption)});
    Database().Replace("SELECT rows", {.rows = {{17}, {2}, {3}, {Null{}}, {4}, {0}}});
    Show();
    std::vector<std::string> shown;
    for (std::size_t row = 0; row < 6; ++row) shown.push_back(Shown(row)[0]);
    EXPECT_EQ(shown, (std::vector<std::string>{"Night's", "Day", "", "<None>", "4", "0"}));
    EXPECT_EQ(ItemsOf(0).count(), 4U);
    EXPECT_EQ(ItemsOf(0).presentation(), 0) << "left as it was";
    EXPECT_TRUE(ItemsOf(0).translate());
  }
}

TEST_F(ReportValueItems, OfAScheduleAreReadIdFirst) {
  Database().Replace("FROM Schedules", Host().WatchedRow({2, "Day"}));
  StoreLayout({"DND Schedule"});
  AnswerRows({{2}});
  Show();
  Lines read;
  for (const std::string& line : Host().transcript().Read(Detail::kEverything)) {
    if (line == "rows(0, 0) -> 2" || line == "rows(0, 1) -> \"Day\"") read.push_back(line);
  }
  ASSERT_GE(read.size(), 2U);
  EXPECT_EQ(Lines(read.end() - 2, read.end()), (Lines{"rows(0, 0) -> 2", "rows(0, 1) -> \"Day\""}));
}

TEST_F(ReportValueItems, WithoutSchedulesStandForNoneAlone) {
  StoreLayout({"DND Schedule"});
  AnswerRows({{Null{}}, {5}});
  Show();
  EXPECT_EQ(ItemsOf(0).count(), 1U);
  EXPECT_EQ(Shown(0)[0], "<None>");
  EXPECT_EQ(Shown(1)[0], "5");
}

TEST_F(ReportValueItems, OfSchedulesAreThoseOfTheUnitThatIsShown) {
  StoreLayout({"DND Schedule", "CF Schedule"});
  Controller().set_mlngUnitKey(99);
  Show();
  EXPECT_EQ(
      Host().transcript().StartingWith("ExecuteSelect \"SELECT ScheduleID"),
      Lines(2,
            "ExecuteSelect \"SELECT ScheduleID, ScheduleName FROM Schedules WHERE UnitKey = 7 "
            "ORDER BY UnitKey, ScheduleID\" -> no rows"));
}

TEST_F(ReportValueItems, AreNotGivenToOtherColumns) {
  const std::vector<std::string> captions{"Directory Code",
                                          "Phone No.",
                                          "Phone No. Extension",
                                          "Phone No. Delay",
                                          "Display Name",
                                          "CF Phone No.",
                                          "CF Extension",
                                          "CF Time Delay",
                                          "Directory Start Date",
                                          "Directory End Date",
                                          "",
                                          "directory status",
                                          "Do Not Disturb ",
                                          "Directory Status2"};
  StoreLayout(captions);
  Show();
  for (std::size_t column = 0; column < captions.size(); ++column) {
    EXPECT_EQ(ItemsOf(column).count(), 0U) << captions[column];
    EXPECT_FALSE(ItemsOf(column).translate()) << captions[column];
  }
  EXPECT_TRUE(Host().transcript().StartingWith("colValueItem").empty());
}

TEST_F(ReportValueItems, AreTheGridsOwnWhenNoneIsHandedOver) {
  StoreLayout({"Directory Status", "Do Not Disturb"});
  AnswerRows({{-1, 0}});

  ShowWith(nullptr);

  EXPECT_EQ(Shown(), (std::vector<std::string>{"Active", "False"}));
  EXPECT_EQ(
      Host().transcript().StartingWith("objGrid.NewValueItem"),
      (Lines{"objGrid.NewValueItem", "objGrid.NewValueItem.Value = -1",
             "objGrid.NewValueItem.DisplayValue = \"Active\"", "objGrid.NewValueItem.Value = 0",
             "objGrid.NewValueItem.DisplayValue = \"Inactive\"", "objGrid.NewValueItem.Value = -1",
             "objGrid.NewValueItem.DisplayValue = \"True\"", "objGrid.NewValueItem.Value = 0",
             "objGrid.NewValueItem.DisplayValue = \"False\""}));
}

TEST_F(ReportValueItems, AreNotAskedOfTheGridWhenNoColumnNeedsThem) {
  StoreLayout({"Directory Code", "Display Name"});
  ShowWith(nullptr);
  EXPECT_TRUE(Host().transcript().StartingWith("objGrid.NewValueItem").empty());
}

TEST_F(ReportValueItems, AreMissingWhereTheGridMakesNone) {
  StoreLayout({"Directory Status", "DND Schedule", "Directory Code"});
  SetCodeLength(4);
  AnswerRows({{-1, Null{}, 12}});
  ObjectRef layout;

  Controller().pvDirCodeReportResult(
      kUnit, Connection(), std::make_shared<GridWithoutFactory>(Host().grid()), kReportSql, layout);

  EXPECT_EQ(Shown(), (std::vector<std::string>{"-1", "", "0012"}));
  EXPECT_EQ(ItemsOf(0).count(), 0U);
  EXPECT_FALSE(ItemsOf(0).translate());
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(ReportValueItems, ThatTheGridCannotMakeLeaveTheColumn) {
  StoreLayout({"Directory Status", "Do Not Disturb"});
  AnswerRows({{-1, 0}});
  Host().gate().FailOn("objGrid.NewValueItem");

  ShowWith(nullptr);

  EXPECT_EQ(Shown(), (std::vector<std::string>{"-1", "False"}));
  EXPECT_EQ(Host().services().trapped().size(), 1U);
}

// Whatever fails while one column gets its value items, the columns behind it get theirs and the
// report is shown.
TEST_F(ReportValueItems, ThatFailDoNotStopTheOtherColumns) {
  for (const std::string_view call :
       {"colValueItem.Value=", "colValueItem.DisplayValue=", "objGrid.Columns..ValueItems",
        "objGrid.Columns..ValueItems.Add",
        "objGrid.Columns..ValueItems.Presentation=", "objGrid.Columns..ValueItems.Translate="}) {
    SCOPED_TRACE(call);
    StoreLayout({"Directory Status", "Do Not Disturb", "Directory Code"});
    SetCodeLength(4);
    Database().Replace("SELECT rows", {.rows = {{-1, -1, 12}}});
    Host().StartOver();
    Host().gate().FailOn(std::string(call));

    Show();

    ASSERT_FALSE(Host().gate().failed().empty());
    EXPECT_EQ(Shown(), (std::vector<std::string>{"-1", "True", "0012"}));
    ASSERT_EQ(Host().services().trapped().size(), 1U);
    EXPECT_EQ(Host().services().trapped().front(),
              std::pair(std::string("pvDirCodeReportResult"), ErrorNumber::kApplicationDefined));
    EXPECT_EQ(Host().transcript().StartingWith("objGrid.Refresh").size(), 1U);
  }
}

TEST_F(ReportValueItems, OfSchedulesThatCannotBeReadDoNotStopTheOtherColumns) {
  StoreLayout({"DND Schedule", "CF Schedule", "Directory Status"});
  Database().On("FROM Schedules", {.nothing = true});
  Database().On("FROM Schedules", {.rows = {{5, "Day"}}});
  AnswerRows({{5, 5, 0}});
  Show();
  EXPECT_EQ(Shown(), (std::vector<std::string>{"5", "Day", "Inactive"}));
  EXPECT_EQ(Host().services().trapped().size(), 1U);
}

TEST_F(ReportValueItems, OfSchedulesWithAFailedStatementStandForNoneAlone) {
  StoreLayout({"DND Schedule", "Directory Status"});
  Database().Error("FROM Schedules", "locked");
  AnswerRows({{Null{}, -1}});
  Show();
  EXPECT_EQ(Shown(), (std::vector<std::string>{"<None>", "Active"}));
  EXPECT_TRUE(Host().services().trapped().empty());
}

}  // namespace
}  // namespace qortest

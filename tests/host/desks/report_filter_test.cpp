// Where the parts of a condition go on the filter screen.
#include "host/desks/report_filter.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame/controls.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

class ReportFilters : public DeskFixture {
 protected:
  static constexpr std::size_t kRow = 1;

  void SetUp() override {
    DeskFixture::SetUp();
    filter_.emplace(session(), 0);
    filter_->Fields(kRow).AddItem("A");
    filter_->Fields(kRow).AddItem("B");
  }
  static ReportCondition Condition(std::int32_t operation, std::string first,
                                   std::string second = "") {
    ReportCondition condition;
    condition.field = 1;
    condition.operation = operation;
    condition.first = std::move(first);
    condition.second = std::move(second);
    return condition;
  }
  void Enter(FieldKind kind, const ReportCondition& condition) {
    filter_->Enter(kRow, condition, kind);
  }
  /// A control of the row, as a controller sees it.
  template <typename Kind>
  [[nodiscard]] Kind& At(std::string_view name) {
    return dynamic_cast<Kind&>(
        *dynamic_cast<ScreenModel&>(*filter_->screen()).Get<ControlArrayModel>(name).at(kRow));
  }

  std::optional<ReportFilter> filter_;
};

TEST_F(ReportFilters, HaveARowForEveryConditionAndFiveAtLeast) {
  EXPECT_EQ(filter_->rowCount(), 5U);
  EXPECT_EQ(ReportFilter(session(), 6).rowCount(), 6U);
}

TEST_F(ReportFilters, ChooseTheFieldAndTheOperatorByItsWord) {
  Enter(FieldKind::kText, Condition(2, "Ka"));
  EXPECT_EQ(filter_->Fields(kRow).SelectedText(), "B");
  EXPECT_EQ(At<ListModel>("cboFilter").SelectedText(), "begins with");
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "Ka");
  EXPECT_EQ(At<TextModel>("txtTo").text(), "");
}

TEST_F(ReportFilters, TypeARangeIntoBothBoxes) {
  Enter(FieldKind::kNumber, Condition(6, "5", "9"));
  EXPECT_EQ(At<ListModel>("cboFilter").SelectedText(), "between");
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "5");
  EXPECT_EQ(At<TextModel>("txtTo").text(), "9");
}

TEST_F(ReportFilters, ChooseDaysInThePickers) {
  const qorcred::Value today = At<PickerModel>("dtpDateTo").Chosen();
  Enter(FieldKind::kDate, Condition(0, "2026-03-05"));
  EXPECT_EQ(At<PickerModel>("dtpDateFrom").Chosen(),
            qorcred::Value(qorcred::FromCivil({2026, 3, 5, 0, 0, 0})));
  EXPECT_EQ(At<PickerModel>("dtpDateTo").Chosen(), today) << "no second day was given";
}

TEST_F(ReportFilters, TickYesAndTypeTheYesThatIsComparedAsAText) {
  Enter(FieldKind::kYesNo, Condition(0, "TRUE"));
  EXPECT_EQ(At<CheckModel>("chkBoolean").state(), 1);
  Enter(FieldKind::kYesNoText, Condition(0, "false"));
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "No");
}

TEST_F(ReportFilters, ChooseACredentialTypeByAnyOfItsNames) {
  Enter(FieldKind::kCredentialType, Condition(0, "card26"));
  EXPECT_EQ(At<ListModel>("cboType").SelectedText(), "Standard 26 Bit card");
  EXPECT_EQ(At<ListModel>("cboType").count(), 4);
  EXPECT_EQ(FieldAtFault([&] { Enter(FieldKind::kCredentialType, Condition(0, "badge")); }),
            report_input::kCondition);
}

TEST_F(ReportFilters, RefuseWhatCannotBeTypedOrChosen) {
  EXPECT_EQ(FieldAtFault([&] { Enter(FieldKind::kText, Condition(0, "a\tb")); }),
            report_input::kCondition);
  EXPECT_EQ(FieldAtFault([&] { Enter(FieldKind::kDate, Condition(0, "0150-01-01")); }),
            report_input::kCondition);
}

/// A screen that a person fills in, with a field of each kind.
class FollowedFilters : public ReportFilters {
 protected:
  void SetUp() override {
    DeskFixture::SetUp();
    std::vector<ReportField> fields{{"Name", FieldKind::kText},
                                    {"Number", FieldKind::kNumber},
                                    {"Day", FieldKind::kDate},
                                    {"Listed", FieldKind::kYesNoText},
                                    {"Type", FieldKind::kCredentialType}};
    filter_.emplace(session(), 0);
    for (const ReportField& field : fields) {
      filter_->Fields(kRow).AddItem(field.name);
    }
    fields[1].leftOut = 2;
    fields[1].range = {0, 999};
    filter_->Follow(fields);
  }
  [[nodiscard]] std::string Visible() {
    std::string names;
    for (const std::string_view name :
         {"txtFrom", "txtTo", "dtpDateFrom", "dtpDateTo", "chkBoolean", "cboType"}) {
      if (At<ControlModel>(name).visible()) {
        names += names.empty() ? name : " " + std::string(name);
      }
    }
    return names;
  }
};

TEST_F(FollowedFilters, ShowTheControlsThatTheFieldAndTheOperatorTake) {
  EXPECT_EQ(Visible(), "");
  EXPECT_FALSE(At<ListModel>("cboFilter").enabled());
  filter_->Fields(kRow).Select(0);
  EXPECT_TRUE(At<ListModel>("cboFilter").enabled());
  EXPECT_EQ(At<ListModel>("cboFilter").SelectedText(), "equal");
  EXPECT_EQ(Visible(), "txtFrom");
  filter_->Fields(kRow).Select(1);
  EXPECT_EQ(At<ListModel>("cboFilter").count(), 6) << "the ranges are left out";
  filter_->Fields(kRow).Select(2);
  EXPECT_EQ(Visible(), "dtpDateFrom");
  At<ListModel>("cboFilter").SelectText("between");
  EXPECT_EQ(Visible(), "dtpDateFrom dtpDateTo");
  filter_->Fields(kRow).Select(3);
  EXPECT_EQ(Visible(), "chkBoolean");
  filter_->Fields(kRow).Select(4);
  EXPECT_EQ(Visible(), "cboType");
  EXPECT_EQ(At<ListModel>("cboType").selected(), 0);
  filter_->Clear(kRow);
  EXPECT_EQ(Visible(), "");
  EXPECT_EQ(filter_->FieldIn(kRow), nullptr);
}

TEST_F(FollowedFilters, AnotherFieldForgetsTheValuesOfTheLast) {
  filter_->Fields(kRow).Select(0);
  At<TextModel>("txtFrom").SetText("Ka");
  filter_->Fields(kRow).Select(1);
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "");
}

TEST_F(FollowedFilters, RefuseAtTheRowWhatItsFieldDoesNotTake) {
  filter_->TakeEntered();  // rows without a field are no conditions
  filter_->Fields(kRow).Select(1);
  EXPECT_EQ(FieldAtFault([&] { filter_->TakeEntered(); }), kConditionRows[kRow]);
  At<TextModel>("txtFrom").SetText("1000");
  EXPECT_EQ(FieldAtFault([&] { filter_->TakeEntered(); }), kConditionRows[kRow]);
  At<TextModel>("txtFrom").SetText(" 999 ");
  filter_->TakeEntered();
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "999");
  filter_->Fields(kRow).Select(2);
  At<PickerModel>("dtpDateFrom").Choose(std::nullopt);
  EXPECT_EQ(FieldAtFault([&] { filter_->TakeEntered(); }), kConditionRows[kRow]);
}

TEST_F(FollowedFilters, TellARangeWithoutAGapWhereAValueIsMissing) {
  filter_->Fields(kRow).Select(2);
  At<ListModel>("cboFilter").SelectText("between");
  At<PickerModel>("dtpDateFrom").Choose(std::nullopt);
  At<PickerModel>("dtpDateTo").Choose(qorcred::FromCivil({2026, 1, 31, 0, 0, 0}));
  try {
    filter_->TakeEntered();
    FAIL() << "a value is missing";
  } catch (const InputFault& fault) {
    EXPECT_THAT(fault.value(), testing::EndsWith(" between and 2026-01-31"));
    EXPECT_THAT(fault.reason(), testing::HasSubstr("needs two values"));
  }
}

TEST_F(FollowedFilters, TypeTheAnswerThatIsComparedAsAText) {
  filter_->Fields(kRow).Select(3);
  filter_->TakeEntered();
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "No");
  At<CheckModel>("chkBoolean").SetState(1);
  filter_->TakeEntered();
  EXPECT_EQ(At<TextModel>("txtFrom").text(), "Yes");
}

}  // namespace
}  // namespace qorhost::test

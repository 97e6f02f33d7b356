#include "host/screens/screen_snapshot.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/screens/credential_screen.h"
#include "host/screens/dir_code_screen.h"
#include "host/screens/report_filter_screen.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Date;
using qorcred::ErrorNumber;
using qorhost::Change;
using qorhost::ChangeKind;
using qorhost::ControlArrayModel;
using qorhost::kDefaultShownDay;
using qorhost::ListModel;
using qorhost::ScreenModel;
using qorhost::ScreenSnapshot;
using qorhost::Subscription;
using qorhost::TextModel;
using qortest::Raises;

/// One way to change a screen, and what an observer hears when it is taken back.
struct Step {
  const char* name;
  void (*change)(ScreenModel& screen);
  std::vector<std::pair<std::string, ChangeKind>> taken = {};
};

std::shared_ptr<ScreenModel> FilledScreen() {
  auto screen = qorhost::MakeDirectoryCodeScreen(kDefaultShownDay);
  screen->Add("optOne", std::make_shared<qorhost::OptionModel>());
  screen->Add("txtRow", std::make_shared<ControlArrayModel>(
                            std::vector<std::shared_ptr<qorhost::ControlModel>>{
                                std::make_shared<TextModel>(), std::make_shared<TextModel>()}));
  ListModel& list = screen->List("cboSchedules");
  list.AddItemWithData("Day", 10);
  list.AddItemWithData("Night", 11);
  list.Select(0);
  screen->Box("txtPhoneNo").SetText("555");
  screen->Box("txtExtn").SetFocus();
  return screen;
}

const std::vector<Step>& Steps() {
  static const std::vector<Step> steps{
      {"text",
       [](ScreenModel& screen) { screen.Box("txtPhoneNo").SetText("556"); },
       {{"txtPhoneNo", ChangeKind::kValue}}},
      {"text length",
       [](ScreenModel& screen) { screen.Box("txtPhoneNo").SetMaxLength(9); },
       {{"txtPhoneNo", ChangeKind::kLimits}}},
      {"check",
       [](ScreenModel& screen) { screen.Check("chkDND").SetState(2); },
       {{"chkDND", ChangeKind::kValue}}},
      {"option",
       [](ScreenModel& screen) { screen.Option("optOne").SetOn(true); },
       {{"optOne", ChangeKind::kValue}}},
      {"spinner",
       [](ScreenModel& screen) { screen.Spin("pvnTimeDelay").SetValue("x"); },
       {{"pvnTimeDelay", ChangeKind::kValue}}},
      {"chosen date",
       [](ScreenModel& screen) { screen.Date("dtpEnd").Choose(kDefaultShownDay); },
       {{"dtpEnd", ChangeKind::kValue}}},
      {"shown date",
       [](ScreenModel& screen) { screen.Date("dtpEnd").Show(Date{36530.5}); },
       {{"dtpEnd", ChangeKind::kValue}}},
      {"first day",
       [](ScreenModel& screen) { screen.Date("dtpEnd").SetMinDate(Date{1}); },
       {{"dtpEnd", ChangeKind::kLimits}}},
      {"last day",
       [](ScreenModel& screen) { screen.Date("dtpEnd").SetMaxDate(Date{40000}); },
       {{"dtpEnd", ChangeKind::kLimits}}},
      {"enabled",
       [](ScreenModel& screen) { screen.Any("cmdedit").SetEnabled(false); },
       {{"cmdedit", ChangeKind::kState}}},
      {"visible",
       [](ScreenModel& screen) { screen.Any("cmdedit").SetVisible(false); },
       {{"cmdedit", ChangeKind::kState}}},
      {"caption",
       [](ScreenModel& screen) { screen.Any("cmdedit").SetCaption("x"); },
       {{"cmdedit", ChangeKind::kLook}}},
      {"colour",
       [](ScreenModel& screen) { screen.Any("cmdedit").SetBackColor(3); },
       {{"cmdedit", ChangeKind::kLook}}},
      {"width",
       [](ScreenModel& screen) { screen.Any("cmdedit").SetWidth(3); },
       {{"cmdedit", ChangeKind::kLook}}},
      {"array",
       [](ScreenModel& screen) {
         const auto& rows = screen.Get<ControlArrayModel>("txtRow");
         dynamic_cast<TextModel&>(*rows.at(1)).SetText("x");
       },
       {{"txtRow(1)", ChangeKind::kValue}}},
      {"selection",
       [](ScreenModel& screen) { screen.List("cboSchedules").Select(1); },
       {{"cboSchedules", ChangeKind::kSelection}}},
      {"new item",
       [](ScreenModel& screen) { screen.List("cboSchedules").AddItem("Noon"); },
       {{"cboSchedules", ChangeKind::kItems}}},
      {"inserted item",
       [](ScreenModel& screen) { screen.List("cboSchedules").AddItem("x", 0); },
       {{"cboSchedules", ChangeKind::kItems}, {"cboSchedules", ChangeKind::kSelection}}},
      {"item's number",
       [](ScreenModel& screen) { screen.List("cboSchedules").SetItemData(1, 1); },
       {{"cboSchedules", ChangeKind::kItems}}},
      {"item's text",
       [](ScreenModel& screen) { screen.List("cboSchedules").SetText(1, "x"); },
       {{"cboSchedules", ChangeKind::kItems}}},
      {"cleared list",
       [](ScreenModel& screen) { screen.List("cboSchedules").Clear(); },
       {{"cboSchedules", ChangeKind::kItems}, {"cboSchedules", ChangeKind::kSelection}}},
      {"variable",
       [](ScreenModel& screen) { screen.SetVariable("glngrid", 17); },
       {{"glngrid", ChangeKind::kVariable}}},
      {"focus",
       [](ScreenModel& screen) { screen.Box("txtPhoneNo").SetFocus(); },
       {{"txtExtn", ChangeKind::kFocus}}},
      {"cleared focus",
       [](ScreenModel& screen) { screen.ClearFocus(); },
       {{"txtExtn", ChangeKind::kFocus}}},
  };
  return steps;
}

TEST(ScreenSnapshotTest, EveryKindOfChangeMakesAnotherSnapshotAndIsTakenBack) {
  for (const Step& step : Steps()) {
    const auto screen = FilledScreen();
    const ScreenSnapshot before = screen->Snapshot();
    EXPECT_EQ(screen->Snapshot(), before);
    step.change(*screen);
    const ScreenSnapshot after = screen->Snapshot();
    EXPECT_FALSE(after == before) << step.name;
    screen->Restore(before);
    EXPECT_EQ(screen->Snapshot(), before) << step.name;
    screen->Restore(after);
    EXPECT_EQ(screen->Snapshot(), after) << step.name;
  }
}

TEST(ScreenSnapshotTest, RestoringTellsWhatChangedAsRestored) {
  for (const Step& step : Steps()) {
    const auto screen = FilledScreen();
    const ScreenSnapshot before = screen->Snapshot();
    step.change(*screen);
    std::vector<std::pair<std::string, ChangeKind>> heard;
    const Subscription listening = screen->Observe([&](const Change& change) {
      EXPECT_TRUE(change.restored) << step.name;
      EXPECT_EQ(screen->Snapshot(), before) << step.name << ": told before the screen was whole";
      heard.emplace_back(change.name, change.kind);
    });
    screen->Restore(before);
    EXPECT_EQ(heard, step.taken) << step.name;
    heard.clear();
    screen->Restore(before);
    EXPECT_TRUE(heard.empty()) << step.name << ": nothing changed the second time";
  }
}

TEST(ScreenSnapshotTest, ARestoredFocusOfNoControlIsTold) {
  const auto screen = qorhost::MakeCredentialScreen();
  const ScreenSnapshot before = screen->Snapshot();
  screen->Box("txtPINStart").SetFocus();
  std::vector<std::string> heard;
  const Subscription listening =
      screen->Observe([&](const Change& change) { heard.emplace_back(change.name); });
  screen->Restore(before);
  EXPECT_EQ(heard, (std::vector<std::string>{""}));
  EXPECT_EQ(screen->focused(), "");
}

TEST(ScreenSnapshotTest, ARestoredSelectionLoadsNothing) {
  const auto screen = FilledScreen();
  const ScreenSnapshot before = screen->Snapshot();
  ListModel& list = screen->List("cboSchedules");
  list.Select(1);
  int loads = 0;
  const Subscription loading = list.OnSelect([&](std::int32_t) { ++loads; });
  screen->Restore(before);
  EXPECT_EQ(list.selected(), 0);
  EXPECT_EQ(loads, 0);
  list.Select(1);
  EXPECT_EQ(loads, 1);
}

TEST(ScreenSnapshotTest, BothButtonsOfAGroupComeBack) {
  const auto screen = qorhost::MakeCredentialScreen();
  const ScreenSnapshot before = screen->Snapshot();
  screen->Option("optButton4").SetOn(true);
  screen->Restore(before);
  EXPECT_TRUE(screen->Option("optButtonDefault").on());
  EXPECT_FALSE(screen->Option("optButton4").on());
}

TEST(ScreenSnapshotTest, TheNewIndexComesBack) {
  const auto screen = FilledScreen();
  const ScreenSnapshot before = screen->Snapshot();
  ListModel& list = screen->List("cboSchedules");
  EXPECT_EQ(list.newIndex(), 1);
  list.AddItem("x");
  screen->Restore(before);
  EXPECT_EQ(list.newIndex(), 1);
}

TEST(ScreenSnapshotTest, ASnapshotSharesTheItemsOfALongList) {
  constexpr std::int32_t kMany = 30000;
  const auto screen = qorhost::MakeCredentialScreen();
  ListModel& list = screen->List("cboCredentials");
  for (std::int32_t number = 0; number < kMany; ++number) {
    list.AddItemWithData("Transmitter-" + std::to_string(number), number);
  }
  const ScreenSnapshot before = screen->Snapshot();
  const std::string* first = &list.Text(0);
  for (int line = 0; line < 3; ++line) {
    list.AddItem("at the end");
    list.Select(kMany);
    first = &list.Text(0);
    screen->Restore(before);
    EXPECT_EQ(&list.Text(0), first) << "putting the list back copies nothing";
    EXPECT_EQ(list.count(), kMany);
  }
  EXPECT_EQ(screen->Snapshot(), before);
}

TEST(ScreenSnapshotTest, TheSnapshotOfAnotherScreenIsRefusedAndChangesNothing) {
  const auto screen = FilledScreen();
  const ScreenSnapshot before = screen->Snapshot();
  const auto number = ErrorNumber::kInvalidProcedureCall;
  EXPECT_TRUE(Raises(number, [&] {
    screen->Restore(qorhost::MakeDirectoryCodeScreen(kDefaultShownDay)->Snapshot());
  }));
  EXPECT_TRUE(Raises(number, [&] { screen->Restore({}); }));
  ScreenSnapshot other = before;
  other.variables.pop_back();
  EXPECT_TRUE(Raises(number, [&] { screen->Restore(other); }));
  other = before;
  other.controls.front().state.own = qorhost::NoState{};
  EXPECT_TRUE(Raises(number, [&] { screen->Restore(other); }));
  EXPECT_EQ(screen->Snapshot(), before);
}

TEST(ScreenSnapshotTest, AScreenOfTheSameKindTakesTheSnapshotOver) {
  const auto one = FilledScreen();
  const auto other = FilledScreen();
  one->Box("txtExtn").SetText("12");
  one->List("cboSchedules").AddItem("Noon");
  other->Restore(one->Snapshot());
  EXPECT_EQ(other->Snapshot(), one->Snapshot());
  one->List("cboSchedules").AddItem("one");
  other->List("cboSchedules").AddItem("other");
  EXPECT_EQ(one->List("cboSchedules").Text(3), "one");
  EXPECT_EQ(other->List("cboSchedules").Text(3), "other");
}

}  // namespace

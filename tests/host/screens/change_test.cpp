#include "host/screens/change.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/screens/credential_screen.h"
#include "host/screens/dir_code_screen.h"
#include "host/screens/grid_model.h"
#include "host/screens/report_filter_screen.h"

namespace {

using qorcred::Call;
using qorcred::Put;
using qorhost::Change;
using qorhost::ChangeKind;
using qorhost::ListModel;
using qorhost::Observers;
using qorhost::OptionModel;
using qorhost::Subscription;
using qorhost::TextModel;
using Heard = std::vector<std::string>;

std::string KindName(ChangeKind kind) {
  switch (kind) {
    case ChangeKind::kValue:
      return "value";
    case ChangeKind::kLimits:
      return "limits";
    case ChangeKind::kItems:
      return "items";
    case ChangeKind::kSelection:
      return "selection";
    case ChangeKind::kState:
      return "state";
    case ChangeKind::kLook:
      return "look";
    case ChangeKind::kFocus:
      return "focus";
    case ChangeKind::kVariable:
      return "variable";
  }
  return "?";
}

/// Hears everything that a screen or control tells.
class Listener {
 public:
  template <typename Observed>
  explicit Listener(Observed& observed)
      : subscription_(observed.Observe([this](const Change& change) {
          heard_.push_back(std::string(change.name) + ' ' + KindName(change.kind) +
                           (change.restored ? " restored" : ""));
        })) {}

  Heard Take() { return std::exchange(heard_, {}); }

 private:
  Heard heard_;
  Subscription subscription_;
};

class ObserversTest : public ::testing::Test {
 protected:
  Subscription Hear(const std::string& who) {
    return observers_.Add([this, who](const Change&) { heard_.push_back(who); });
  }
  void Notify() { observers_.Notify({"x", nullptr, ChangeKind::kValue}); }

  Observers observers_;
  Heard heard_;
};

TEST_F(ObserversTest, HandlersHearInTheOrderOfTheirSubscription) {
  const Subscription one = Hear("one");
  const Subscription two = Hear("two");
  Notify();
  EXPECT_EQ(heard_, (Heard{"one", "two"}));
}

TEST_F(ObserversTest, AnEndedSubscriptionHearsNothing) {
  {
    const Subscription gone = Hear("gone");
    EXPECT_FALSE(observers_.empty());
  }
  Subscription ended = Hear("ended");
  ended.End();
  Notify();
  EXPECT_EQ(heard_, Heard());
  EXPECT_TRUE(observers_.empty());
}

TEST_F(ObserversTest, AssigningASubscriptionEndsTheOneBefore) {
  Subscription listening = Hear("first");
  listening = Hear("second");
  Notify();
  EXPECT_EQ(heard_, (Heard{"second"}));
}

TEST_F(ObserversTest, AHandlerMayEndItselfAndOthersWhileItIsTold) {
  Subscription self;
  Subscription later;
  self = observers_.Add([&](const Change&) {
    heard_.emplace_back("self");
    self.End();
    later.End();
  });
  later = Hear("later");
  const Subscription last = Hear("last");
  Notify();
  Notify();
  EXPECT_EQ(heard_, (Heard{"self", "last", "last"}));
}

TEST_F(ObserversTest, AHandlerThatIsAddedMeanwhileHearsTheNextChange) {
  std::vector<Subscription> added;
  const Subscription adding =
      observers_.Add([&](const Change&) { added.push_back(Hear("added")); });
  Notify();
  EXPECT_EQ(heard_, Heard());
  Notify();
  EXPECT_EQ(heard_, (Heard{"added"}));
}

TEST_F(ObserversTest, AnEndedHandlerIsNotCalledByAChangeMadeInsideItsOwnCall) {
  Subscription self;
  self = observers_.Add([&](const Change&) {
    heard_.emplace_back("self");
    self.End();
    Notify();
  });
  Notify();
  EXPECT_EQ(heard_, (Heard{"self"}));
}

TEST_F(ObserversTest, WhatAHandlerRaisesPassesThroughAndLaterChangesAreTold) {
  bool raise = true;
  const Subscription raising = observers_.Add([&](const Change&) {
    if (std::exchange(raise, false)) {
      throw std::runtime_error("no");
    }
  });
  const Subscription behind = Hear("behind");
  EXPECT_THROW(Notify(), std::runtime_error);
  EXPECT_EQ(heard_, Heard());
  Notify();
  EXPECT_EQ(heard_, (Heard{"behind"}));
}

TEST_F(ObserversTest, ASubscriptionMayOutliveWhatItObserves) {
  Subscription subscription;
  {
    Observers gone;
    subscription = gone.Add([](const Change&) {});
  }
  subscription.End();
  EXPECT_TRUE(observers_.empty());
}

TEST(ScreenChangeTest, TellsOfEveryKindOfChangeOnce) {
  const auto screen = qorhost::MakeDirectoryCodeScreen(qorhost::kDefaultShownDay);
  Listener listener(*screen);
  for (int twice = 0; twice < 2; ++twice) {
    screen->Box("txtPhoneNo").SetText("555");
    screen->Box("txtPhoneNo").SetMaxLength(7);
    screen->Check("chkDND").SetState(1);
    screen->Spin("pvnTimeDelay").SetValue(4);
    screen->Date("dtpStart").Choose(qorhost::kDefaultShownDay);
    screen->Date("dtpStart").SetMinDate(qorhost::kDefaultShownDay);
    screen->Date("dtpEnd").Show(qorcred::Date{36530});
    screen->Any("cmdedit").SetEnabled(false);
    screen->Any("cmdSelect").SetVisible(false);
    screen->Any("cmdedit").SetCaption("Edit");
    screen->Any("cmdedit").SetBackColor(1);
    screen->Any("cmdedit").SetWidth(2);
    screen->Box("txtExtn").SetFocus();
    screen->SetVariable("GSTRTAG", "EDIT");
    EXPECT_EQ(listener.Take(),
              twice == 0
                  ? (Heard{"txtPhoneNo value", "txtPhoneNo limits", "chkDND value",
                           "pvnTimeDelay value", "dtpStart value", "dtpStart limits",
                           "dtpEnd value", "cmdedit state", "cmdSelect state", "cmdedit look",
                           "cmdedit look", "cmdedit look", "txtExtn focus", "gstrTag variable"})
                  : Heard());
  }
}

TEST(ScreenChangeTest, TellsOfWhatIsPutByName) {
  const auto screen = qorhost::MakeDirectoryCodeScreen(qorhost::kDefaultShownDay);
  Listener listener(*screen);
  Put(*screen, "chkActive", 1);
  Put(screen->Box("txtExtn"), "Text", "12");
  Put(screen->Box("txtExtn"), "Enabled", false);
  Put(screen->Date("dtpEnd"), "Month", 2);
  Put(*screen, "glngrid", 5);
  EXPECT_EQ(listener.Take(), (Heard{"chkActive value", "txtExtn value", "txtExtn state",
                                    "dtpEnd value", "glngrid variable"}));
}

TEST(ScreenChangeTest, ATextThatIsCutToTheNewLengthIsTold) {
  TextModel box;
  box.SetText("12345");
  Listener listener(box);
  box.SetMaxLength(3);
  EXPECT_EQ(listener.Take(), (Heard{" limits", " value"}));
}

TEST(ScreenChangeTest, AListTellsOfItsItemsAndOfItsSelection) {
  ListModel list;
  Listener listener(list);
  list.Clear();
  EXPECT_EQ(listener.Take(), Heard()) << "it was empty";
  list.AddItem("b");
  list.AddItemWithData("c", 3);
  list.AddItem("a", 0);
  EXPECT_EQ(listener.Take(), (Heard{" items", " items", " items"}));
  list.Select(1);
  list.Select(1);
  list.SelectText("c");
  EXPECT_EQ(listener.Take(), (Heard{" selection", " selection"}));
  list.SetText(0, "a");
  list.SetItemData(2, 3);
  EXPECT_EQ(listener.Take(), Heard());
  Put(list, "List", 0, "A");
  Put(list, "ItemData", 0, 1);
  list.RemoveItem(2);
  list.Clear();
  EXPECT_EQ(listener.Take(), (Heard{" items", " items", " items", " items"}));
}

TEST(ScreenChangeTest, TheButtonsOfAGroupTellWhenTheGroupIsAsItShallBe) {
  const auto screen = qorhost::MakeCredentialScreen();
  OptionModel& four = screen->Option("optButton4");
  OptionModel& standard = screen->Option("optButtonDefault");
  std::vector<std::pair<bool, bool>> seen;
  const Subscription watching =
      screen->Observe([&](const Change&) { seen.emplace_back(four.on(), standard.on()); });
  four.SetOn(true);
  four.SetOn(true);
  EXPECT_EQ(seen, (std::vector<std::pair<bool, bool>>{{true, false}, {true, false}}))
      << "once for each button";
}

TEST(ScreenChangeTest, ControlsOfAnArrayTellUnderTheirOwnNames) {
  const auto screen = qorhost::MakeReportFilterScreen(5, qorhost::kDefaultShownDay);
  Listener listener(*screen);
  const auto& fields = screen->Get<qorhost::ControlArrayModel>("cboField");
  dynamic_cast<ListModel&>(*fields.at(2)).AddItem("Date");
  EXPECT_EQ(listener.Take(), (Heard{"cboField(2) items"}));
}

TEST(ScreenChangeTest, AControlsOwnObserversHearBeforeTheScreens) {
  const auto screen = qorhost::MakeCredentialScreen();
  Heard heard;
  const Subscription whole = screen->Observe([&](const Change&) { heard.emplace_back("screen"); });
  const Subscription one = screen->Box("txtPINStart").Observe([&](const Change& change) {
    heard.emplace_back(change.control->name());
  });
  screen->Box("txtPINStart").SetText("1");
  EXPECT_EQ(heard, (Heard{"txtPINStart", "screen"}));
}

TEST(ScreenChangeTest, ClearingTheFocusIsToldWithoutAControl) {
  const auto screen = qorhost::MakeCredentialScreen();
  screen->Box("txtPINStart").SetFocus();
  Listener listener(*screen);
  screen->Box("txtPINStart").SetFocus();
  screen->ClearFocus();
  screen->ClearFocus();
  EXPECT_EQ(listener.Take(), (Heard{" focus"}));
}

TEST(ScreenChangeTest, AGridTellsWhenItIsBoundAndRefreshed) {
  qorhost::GridModel grid;
  Listener listener(grid);
  Call(grid, "ReBind");
  Call(grid, "Refresh");
  EXPECT_EQ(listener.Take(), (Heard{" items", " items"}));
}

}  // namespace

// One operation as a unit of work: what it stores, and what it does when others were faster.
#include "host/desks/desk_work.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "host/screens/credential_screen.h"
#include "host/store/store_error.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// An operation renames the door 1, which is shown.
class DeskWork : public DeskFixture {
 protected:
  void SetUp() override {
    DeskFixture::SetUp();
    shownDoor_.emplace(session(), kUnit);
    shownDoor_->TakeUnit();
    ASSERT_TRUE(shownDoor_->TakeRows({Shown(1)}));
  }

  static std::string DoorRow(const std::string& columns, int door) {
    return "SELECT " + columns + " FROM DOORS WHERE UNITKEY=2 AND DOORID=" + std::to_string(door);
  }
  static ShownSelect Shown(int door) { return {DoorRow("*", door), ShownAs::kRow, "DOORS"}; }
  [[nodiscard]] std::string NameOfDoor(int door) { return Cell(DoorRow("DOORNAME", door)); }
  void Rename(int door, const std::string& name) {
    (void)session().sql().Change("UPDATE DOORS SET DOORNAME='" + name +
                                     "' WHERE UNITKEY=2 AND DOORID=" + std::to_string(door),
                                 std::nullopt);
  }
  /// What somebody else does meanwhile, with a unit of work of their own.
  void OthersRename(int door, const std::string& name) {
    WorkGuard guard(session().sql().work(), {{kUnit}, "others rename", {}});
    Rename(door, name);
    (void)guard.Commit();
  }

  [[nodiscard]] DeskOperation Renaming(const std::string& name, Ending ending = Ending::kDone) {
    return {"rename the door",
            [this, name, ending] {
              ++runs_;
              Outcome outcome;
              outcome.ending = ending;
              try {
                Rename(1, name);
              } catch (const StoreError& failure) {
                outcome.ending = Ending::kFailed;
                outcome.failures.emplace_back(failure.what());
              }
              return outcome;
            },
            [this] { ++startedAgain_; }};
  }
  [[nodiscard]] std::vector<std::string> DoneSince(const UnitVersion& version) {
    std::vector<std::string> what;
    for (const WorkEntry& entry : session().sql().audit().After(version.entry, kUnit)) {
      what.push_back(entry.what);
    }
    return what;
  }

  std::optional<ShownState> shownDoor_;
  int runs_ = 0;
  int startedAgain_ = 0;
};

TEST_F(DeskWork, ADoneOperationIsStoredUnderItsName) {
  const UnitVersion before = shownDoor_->version();
  EXPECT_TRUE(RunAsWork(session(), *shownDoor_, Renaming("Red")).done());
  EXPECT_EQ(NameOfDoor(1), "Red");
  EXPECT_THAT(DoneSince(before), ElementsAre("rename the door"));
}

TEST_F(DeskWork, WhatItLeavesIsWhatTheNextOneFinds) {
  EXPECT_TRUE(RunAsWork(session(), *shownDoor_, Renaming("Red")).done());
  EXPECT_FALSE(shownDoor_->WhatDiffers());
  EXPECT_EQ(shownDoor_->Cell("doorname"), qorcred::Value("Red"));
  EXPECT_TRUE(RunAsWork(session(), *shownDoor_, Renaming("Blue")).done());
  EXPECT_EQ(runs_, 2) << "each once";
  EXPECT_EQ(startedAgain_, 0);
}

TEST_F(DeskWork, OfARefusedOperationNothingStays) {
  const std::string name = NameOfDoor(1);
  const UnitVersion before = shownDoor_->version();
  EXPECT_EQ(RunAsWork(session(), *shownDoor_, Renaming("Red", Ending::kRefused)).ending,
            Ending::kRefused);
  EXPECT_EQ(NameOfDoor(1), name);
  EXPECT_THAT(DoneSince(before), IsEmpty());
}

TEST_F(DeskWork, ItRunsAgainBesideAChangeOfOtherRows) {
  OthersRename(2, "Green");
  EXPECT_TRUE(RunAsWork(session(), *shownDoor_, Renaming("Red")).done());
  EXPECT_EQ(runs_, 2);
  EXPECT_EQ(startedAgain_, 1);
  EXPECT_EQ(NameOfDoor(1), "Red");
  EXPECT_EQ(NameOfDoor(2), "Green");
}

TEST_F(DeskWork, AChangeOfItsRowsMakesItStaleAndIsTold) {
  OthersRename(1, "Green");
  EXPECT_TRUE(shownDoor_->WhatDiffers());
  const Outcome outcome = RunAsWork(session(), *shownDoor_, Renaming("Red"));
  EXPECT_EQ(outcome.ending, Ending::kStale);
  ASSERT_EQ(outcome.changes.size(), 1U);
  EXPECT_EQ(outcome.changes[0].what, "others rename");
  EXPECT_EQ(runs_, 1);
  EXPECT_EQ(startedAgain_, 1);
  EXPECT_EQ(NameOfDoor(1), "Green");
}

TEST_F(DeskWork, InsideAUnitOfWorkItIsAPartOfThat) {
  const std::string name = NameOfDoor(1);
  {
    WorkGuard many(session().sql().work(), {{kUnit}, "many", {}});
    EXPECT_TRUE(RunAsWork(session(), *shownDoor_, Renaming("Red")).done());
    EXPECT_EQ(NameOfDoor(1), "Red");
  }
  EXPECT_EQ(NameOfDoor(1), name);
}

TEST_F(DeskWork, AScreenIsPutBackWhenItsOperationIsStale) {
  const auto screen = MakeCredentialScreen();
  screen->Box("txtPINStart").SetText("500");
  OthersRename(1, "Green");
  DeskOperation operation = Renaming("Red");
  operation.run = [&, run = operation.run] {
    screen->Box("txtPINStart").SetText("from the controller");
    return run();
  };
  EXPECT_EQ(RunOnScreen(session(), *shownDoor_, *screen, operation).ending, Ending::kStale);
  EXPECT_EQ(screen->Box("txtPINStart").text(), "500");
}

TEST_F(DeskWork, ListsAreOlderThanARowWhenOthersHaveChangedTheUnitInBetween) {
  OthersRename(2, "Green");
  EXPECT_FALSE(shownDoor_->TakeRows({Shown(1)}));
  shownDoor_->TakeUnit();
  EXPECT_TRUE(shownDoor_->TakeRows({Shown(1)}));
}

TEST_F(DeskWork, ACellThatIsNotShownIsNull) {
  EXPECT_EQ(shownDoor_->Cell("NoColumn"), qorcred::Value(qorcred::Null{}));
  (void)shownDoor_->TakeRows({Shown(99), Shown(1)});
  EXPECT_EQ(shownDoor_->Cell("DOORNAME"), qorcred::Value(qorcred::Null{}))
      << "the row of the first statement alone";
}

}  // namespace
}  // namespace qorhost::test

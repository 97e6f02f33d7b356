// The merge screen: what the unit has otherwise is accepted difference by difference.
#include "host/desktop/screens/merge_page.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <sstream>

#include "host/desks/unit_export.h"
#include "tests/host/desktop/exchange_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::unit_place::Place;
using testing::HasSubstr;
using testing::StartsWith;

enum Column : int { kAccept, kAction, kCode, kWhat };

class MergeScreens : public ExchangeTest {
 protected:
  MergeScreens() { OpenDemoAt(QStringLiteral("merge")); }

  /// The unit has another phone for 102, no 106, and 300.
  static std::string ChangedUnit(DeskSession& session) {
    UnitFile unit = ExportUnit(session, kUnit, "", Unholdable::kLeftOut).file;
    std::erase_if(unit.codes, [](const UnitCode& code) { return NumberOf(code) == 106; });
    for (UnitCode& code : unit.codes) {
      if (NumberOf(code) == 102) {
        code[Place::kPhone] = "555-9999";
      }
    }
    unit.codes.push_back(unit.codes.front());
    unit.codes.back()[Place::kCode] = "300";
    std::ostringstream out;
    WriteUnitFile(out, unit);
    return out.str();
  }
  void ChooseUnit() { ChooseFile("unit.txt", ChangedUnit(window().place()->session())); }
  /// The row with that code.
  [[nodiscard]] int RowOf(const std::string& code) {
    int row = 0;
    while (row < RowsOf("differences") && CellOf("differences", row, kCode) != code) {
      ++row;
    }
    return row;
  }
  [[nodiscard]] bool IsAccepted(const std::string& code) {
    return Grid("differences")
               .model()
               ->index(RowOf(code), kAccept)
               .data(Qt::CheckStateRole)
               .toInt() == Qt::Checked;
  }
  /// Goes to the row and presses Space.
  void Accept(const std::string& code) {
    ClickCell("differences", RowOf(code), kWhat);
    Activate();
    QTest::keyClick(&Grid("differences"), Qt::Key_Space);
    Settle();
  }
  [[nodiscard]] std::string PhoneOf(const std::string& code) {
    return Cell("SELECT PHONENUMBER FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code);
  }
};

TEST_F(MergeScreens, NoDifferenceIsMadeThatIsNotAccepted) {
  ChooseUnit();
  ASSERT_EQ(RowsOf("differences"), 3);
  EXPECT_FALSE(Find<QPushButton>("mergeButton").isEnabled());
  Accept("102");
  EXPECT_TRUE(IsAccepted("102"));
  EXPECT_EQ(LabelText("summary"), "Differences: 3, accepted: 1. The same on both sides: 4.");
  EXPECT_TRUE(page().HasEntries());
  Click("mergeButton");
  EXPECT_THAT(Told(), StartsWith("Added: 0. Changed: 1. Deleted: 0."));
  EXPECT_EQ(PhoneOf("102"), "555-9999");
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=300"), "0");
  EXPECT_EQ(RowsOf("differences"), 2);
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(MergeScreens, BothSidesOfADifferenceAreShown) {
  ChooseUnit();
  ClickCell("differences", RowOf("102"), kWhat);
  std::string phone;
  std::string active;
  for (int row = 0; row < RowsOf("sides"); ++row) {
    if (CellOf("sides", row, 0) == "active") {
      active = CellOf("sides", row, 1) + " " + CellOf("sides", row, 2);
    }
    if (CellOf("sides", row, 0) == "phone") {
      phone = CellOf("sides", row, 2) + " " + CellOf("sides", row, 3);
    }
  }
  EXPECT_EQ(phone, "555-9999 differs");
  EXPECT_EQ(active, "yes yes");
}

TEST_F(MergeScreens, DeletionsAreAskedForAndABoxIsTickedByTheMouseToo) {
  ChooseUnit();
  QTableView& view = Grid("differences");
  const QRect box = view.visualRect(view.model()->index(RowOf("106"), kAccept));
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                    {box.left() + 10, box.center().y()});
  ASSERT_TRUE(IsAccepted("106"));
  answers_->Click(QMessageBox::No);
  Click("mergeButton");
  EXPECT_EQ(answers_->LastText(), "Of the unit’s 6 directory codes will be deleted: 1. Go on?");
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=106"), "1");
  answers_->Click(QMessageBox::Yes);
  Click("acceptAllButton");
  Click("mergeButton");
  EXPECT_THAT(Told(), StartsWith("Added: 1. Changed: 1. Deleted: 1."));
  EXPECT_EQ(RowsOf("differences"), 0);
  EXPECT_THAT(LabelText("summary"), HasSubstr("have the same 6 directory codes"));
}

TEST_F(MergeScreens, ADifferenceThatOthersHaveChangedIsTold) {
  ChooseUnit();
  Accept("102");
  {
    DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    (void)other.sql().Change(
        "UPDATE DIRECTORYCODE SET PHONENUMBER='555-7777' WHERE UNITKEY=2 AND DIRECTORYCODE=102",
        dialect::StatementKind::kUpdate);
  }
  answers_->Click(QMessageBox::Ok);
  Click("mergeButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("omeone else has changed the unit meanwhile"));
  EXPECT_EQ(PhoneOf("102"), "555-7777");
  EXPECT_TRUE(IsAccepted("102"));
  Click("mergeButton");
  EXPECT_EQ(PhoneOf("102"), "555-9999");
}

TEST_F(MergeScreens, BadLinesAreShownAndLeftOutWhenThatIsSaid) {
  std::string unit = ChangedUnit(window().place()->session());
  const std::size_t last = unit.rfind('\n', unit.size() - 2);
  unit.insert(last + 1, "no code\n");
  ChooseFile("unit.txt", unit);
  EXPECT_THAT(LabelText("badLines"), HasSubstr("Nothing is merged with bad lines"));
  EXPECT_EQ(RowsOf("differences"), 0);
  Click("skipBadLines");
  EXPECT_EQ(RowsOf("differences"), 2);  // nothing is deleted then
  EXPECT_THAT(LabelText("badLines"), StartsWith("Line "));
}

TEST_F(MergeScreens, WhatIsNoUnitFileIsToldInABox) {
  answers_->Type(QString::fromStdString(File("unit.txt").string()));
  answers_->Click(QMessageBox::Ok);
  std::ofstream(File("unit.txt")) << "Directory Code,Phone\n";
  Click("chooseButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("is no unit file"));
  EXPECT_EQ(RowsOf("differences"), 0);
}

TEST_F(MergeScreens, TypingNarrowsTheDifferencesAndAllThatAreShownAreAccepted) {
  ChooseUnit();
  FindBy("findDifference", "PHONE");
  ASSERT_EQ(RowsOf("differences"), 1);
  Click("acceptAllButton");
  FindBy("findDifference", "");
  EXPECT_TRUE(IsAccepted("102"));
  EXPECT_FALSE(IsAccepted("300"));
  Click("acceptNoneButton");
  EXPECT_FALSE(IsAccepted("102"));
}

/// The calls of the merge's saves, from the first on.
std::vector<std::string> MergeSavesIn(const std::vector<std::string>& trace) {
  const auto isSave = [](const std::string& line) {
    return line.find("pbMergeSave") != std::string::npos;
  };
  const auto begin = std::find_if(trace.begin(), trace.end(), isSave);
  const auto end = std::find_if(trace.rbegin(), trace.rend(), isSave).base();
  return begin < end ? std::vector<std::string>(begin, end) : std::vector<std::string>();
}

TEST_F(MergeScreens, MakesTheCallsThatAMergeMakesWithoutAWindow) {
  ChooseUnit();
  Click("acceptAllButton");
  answers_->Click(QMessageBox::Yes);
  trace_.clear();
  Click("mergeButton");
  const std::vector<std::string> shown = MergeSavesIn(trace_);
  ASSERT_GT(shown.size(), 5U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  std::istringstream file(ChangedUnit(*session));
  const UnitReading reading = ReadUnitFile(file);
  UnitMerge merge(*session, kUnit, reading, BadLines::kRefused, Deletions::kAll);
  headless.clear();
  ASSERT_TRUE(merge.Apply(nullptr).done());
  EXPECT_EQ(shown, MergeSavesIn(headless));
}

}  // namespace
}  // namespace qorhost::test

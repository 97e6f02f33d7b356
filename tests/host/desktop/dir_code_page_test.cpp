// The directory-code screen, worked with mouse and keys.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QMainWindow>
#include <QSpinBox>
#include <QStatusBar>
#include <chrono>
#include <utility>

#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desktop/binding/date_field.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class DirCodeScreens : public DesktopTest {
 protected:
  DirCodeScreens() { OpenDemoAt(QStringLiteral("dir_codes")); }

  void EnterCode(const char* code) {
    Type("txtdirectorycode", code);
    Type("txtDisplayName", "Lobby");
    Type("txtPhoneNo", "5550100");
  }
  [[nodiscard]] std::string CellOf(const std::string& column, const std::string& code) {
    return Cell("SELECT " + column +
                " FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=" + code);
  }
};

/// Counts how many times a widget is painted.
class Paintings final : public QObject {
 public:
  explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    count_ += event->type() == QEvent::Paint ? 1 : 0;
    return QObject::eventFilter(watched, event);
  }
  [[nodiscard]] int Take() { return std::exchange(count_, 0); }

 private:
  int count_ = 0;
};

TEST_F(DirCodeScreens, WhatIsToldIsPaintedAgainOnlyWhereItSaysSomethingElse) {
  window().runner().SetPace(std::chrono::hours(1));  // no bar is shown while it saves
  Paintings paintings(*window().statusBar());
  const auto save = [this, &paintings](const char* extension) {
    Type("txtExtn", extension);
    QCoreApplication::processEvents();
    (void)paintings.Take();
    Click("saveButton");
    QCoreApplication::processEvents();
    return paintings.Take();
  };
  ClickEntry("cbodirectorycode", "0101");
  EXPECT_GT(save("41"), 0);
  EXPECT_EQ(save("42"), 0);
  EXPECT_EQ(Told(), "Saved directory code 0101.");
  EXPECT_EQ(CellOf("EXTENSION", "101"), "42");
  Click("newButton");
  QCoreApplication::processEvents();
  EXPECT_EQ(Told(), "") << "what was told of the code that was left is taken away";
}

TEST_F(DirCodeScreens, ACodeIsAddedWithWhatNewCodesHave) {
  EnterCode("399");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved directory code 399.");
  EXPECT_EQ(CellOf("DISPLAYNAME", "399"), "Lobby");
  EXPECT_EQ(CellOf("ACTIVE", "399"), "True");
  EXPECT_EQ(CellOf("SHOWDIRECTORYCODE", "399"), "True");
  EXPECT_THAT(Find<QLabel>("title").text().toStdString(), HasSubstr("399"));
}

TEST_F(DirCodeScreens, ACodeGetsThePeriodThatTheUnitGivesNewCodesAlsoAfterAnother) {
  EnterCode("398");
  Click("saveButton");
  Click("newButton");
  EnterCode("399");
  Click("saveButton");
  Surroundings surroundings;
  surroundings.clock = [] { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); };
  DeskSession session(OpenStoreFile(File("building.db"), Access::kChange), surroundings);
  DirCodeDesk desk(session, kUnit);
  EnterNewCode(desk, "397", {});
  desk.screen().Box("txtPhoneNo").SetText("5550100");
  const AddedDirCode added = desk.AddCode();
  ASSERT_TRUE(added.isStored());
  for (const char* column : {"STARTDATE", "ENDDATE"}) {
    EXPECT_EQ(CellOf(column, "398"), CellOf(column, "397"));
    EXPECT_EQ(CellOf(column, "399"), CellOf(column, "397"));
  }
  EXPECT_NE(CellOf("ENDDATE", "397"), "");
}

TEST_F(DirCodeScreens, EveryRefusalStandsAtItsWidget) {
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_EQ(Marked(), "txtdirectorycode: Please enter a Directory Code.");
  Type("txtdirectorycode", "399");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("txtPhoneNo: Please enter a Phone No."));
  Type("txtPhoneNo", "5550100");
  Click("chkDND");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("cboSchedules: Please select a Time Zone"));
  Click("chkDND");
  Click("chkCallForwarding");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("cboSchedulesCF: Please select a Time Zone"));
  Choose("cboSchedulesCF", "Full Access");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("txtPhoneNocf: Please enter a Call Forwarding Phone No."));
  EXPECT_EQ(CellOf("Count(*)", "399"), "0");
}

TEST_F(DirCodeScreens, ACodeThatIsThereAlreadyIsRefused) {
  EnterCode("101");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_EQ(answers_->LastText(),
            "This Directory Code already exists. Please enter a different Directory Code.");
  EXPECT_EQ(CellOf("Count(*)", "101"), "1");
}

TEST_F(DirCodeScreens, ACodeThatIsNoNumberIsToldWithoutABox) {
  EnterCode("39x");
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("txtdirectorycode: "));
  EXPECT_THAT(Marked(), HasSubstr("39x"));
  EXPECT_TRUE(answers_->seen().empty());
}

TEST_F(DirCodeScreens, ACodeIsLoadedChangedAndStored) {
  ClickEntry("cbodirectorycode", "0101");
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("Directory code 0101"));
  EXPECT_TRUE(Find<QLineEdit>("txtdirectorycode").isReadOnly());
  Type("txtExtn", "42");
  QTest::keyClick(&Find<QSpinBox>("pvnTimeDelay"), Qt::Key_Up);
  auto& end = Find<DateField>("dtpEnd");
  if (!end.check().isChecked()) {
    QTest::mouseClick(&end.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  }
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved directory code 0101.");
  EXPECT_EQ(CellOf("EXTENSION", "101"), "42");
  EXPECT_NE(CellOf("ENDDATE", "101"), "");
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(DirCodeScreens, SavingWhatIsStoredAlreadyQueuesNoStep) {
  const std::string steps = Cell("SELECT Count(*) FROM DIRECTORYCODE WHERE MODIFIED<>0");
  ClickEntry("cbodirectorycode", "0101");
  Click("saveButton");
  EXPECT_EQ(Told(), "0101 is stored so already.");
  EXPECT_EQ(Cell("SELECT Count(*) FROM DIRECTORYCODE WHERE MODIFIED<>0"), steps);
}

TEST_F(DirCodeScreens, ACodeIsRenumberedAndDeleted) {
  EnterCode("399");
  Click("saveButton");
  answers_->Type(QStringLiteral("398"));
  Click("renumberButton");
  EXPECT_EQ(CellOf("Count(*)", "398"), "1");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_EQ(answers_->LastText(), "Are you sure you want to delete Directory Code 398?");
  EXPECT_EQ(CellOf("Count(*)", "398"), "0");
}

TEST_F(DirCodeScreens, SavesMakeTheCallsThatTheyMakeWithoutAWindow) {
  EnterCode("399");
  trace_.clear();
  Click("saveButton");
  const std::vector<std::string> added = CallsOf("pbSave", trace_);
  ASSERT_GT(added.size(), 20U);
  ClickEntry("cbodirectorycode", "0101");
  Type("txtExtn", "42");
  trace_.clear();
  Click("saveButton");
  const std::vector<std::string> changed = CallsOf("pbSave", trace_);
  ASSERT_GT(changed.size(), 20U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  DirCodeDesk desk(*session, kUnit);
  DirCodeEntry entry;
  entry.displayName = "Lobby";
  entry.phone = "5550100";
  EnterNewCode(desk, "399", entry);
  ASSERT_TRUE(desk.AddCode().isStored());
  EXPECT_EQ(added, CallsOf("pbSave", headless));
  (void)desk.Select("0101");
  DirCodeEntry change;
  change.extension = "42";
  (void)EnterDirCodeChange(desk, change);
  ASSERT_TRUE(desk.SaveEdited().done());
  EXPECT_EQ(changed, CallsOf("pbSave", headless));
}

TEST_F(DirCodeScreens, RenumberingAndDeletingMakeTheCallsThatTheyMakeWithoutAWindow) {
  ClickEntry("cbodirectorycode", "0102");
  answers_->Type(QStringLiteral("398"));
  Click("renumberButton");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  const std::vector<std::string> renumbered = CallsOf("pbUpdateDirCode", trace_);
  const std::vector<std::string> deleted = CallsOf("pbDelete", trace_);
  ASSERT_GT(renumbered.size(), 5U);
  ASSERT_GT(deleted.size(), 5U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  DirCodeDesk desk(*session, kUnit);
  (void)desk.Select("0102");
  desk.TypeCode("398");
  ASSERT_TRUE(desk.Renumber().done());
  ASSERT_TRUE(desk.Delete().done());
  EXPECT_EQ(renumbered, CallsOf("pbUpdateDirCode", headless));
  EXPECT_EQ(deleted, CallsOf("pbDelete", headless));
}

}  // namespace
}  // namespace qorhost::test

// Leaving an entry for another store, files without an ending, and the store of the last time.
#include <gmock/gmock.h>

#include <QComboBox>
#include <algorithm>

#include "host/desks/store_backup.h"
#include "tests/host/desktop/exchange_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class Leaving : public ExchangeTest {
 protected:
  void EnterSomething() {
    OpenDemoAt(QStringLiteral("credentials"));
    Type("txtPINStart", "9001");
  }
  void Name(const char* file) { answers_->Type(QString::fromStdString(File(file).string())); }
  [[nodiscard]] auto Asked(const char* text) {
    return std::count_if(answers_->seen().begin(), answers_->seen().end(),
                         [text](const SeenBox& box) { return box.text == text; });
  }
};

constexpr const char* kLeaveIt = "What you entered is not saved (Credentials). Leave it?";

TEST_F(Leaving, ForANewStoreIsAskedAboutOnce) {
  EnterSomething();
  Name("new.db");
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::No);
  ChooseInMenu("New…");
  EXPECT_EQ(Asked(kLeaveIt), 1);
  EXPECT_EQ(window().place()->file(), File("new.db"));
}

TEST_F(Leaving, NoStoreIsMadeByEscape) {
  EnterSomething();
  Name("new.db");
  answers_->Click(QMessageBox::Yes);
  answers_->With([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  ChooseInMenu("New…");
  EXPECT_EQ(answers_->LastText(), "Put the demo building into it?");
  EXPECT_FALSE(std::filesystem::exists(File("new.db")));
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
}

TEST_F(Leaving, ForAStoreThatIsMadeElsewhereIsAskedAboutBeforeItIsMade) {
  EnterSomething();
  answers_->Click(QMessageBox::No);
  EXPECT_FALSE(window().CreateStoreAt(File("new.db"), false));
  EXPECT_FALSE(std::filesystem::exists(File("new.db")));
}

TEST_F(Leaving, ForABackupInAnotherPlaceIsAskedAboutOnce) {
  OpenDemoAt(QStringLiteral("overview"));
  (void)BackUp(File("building.db"), File("monday.db"), Standing::kStays);
  ASSERT_TRUE(window().OpenDemo());
  window().ShowScreen(QStringLiteral("credentials"));
  Type("txtPINStart", "9001");
  answers_->Click(QMessageBox::Yes);
  Name("monday.db");
  Name("tuesday.db");
  ChooseInMenu("Restore a backup…");
  EXPECT_EQ(Asked(kLeaveIt), 1);
  EXPECT_EQ(window().place()->file(), File("tuesday.db"));
}

TEST_F(Leaving, WhatHeadingsStandForIsAskedAbout) {
  OpenDemoAt(QStringLiteral("import"));
  Choose("kind", "Directory codes");
  ChooseFile("in.csv", "Flat,Ring\n250,1\n");
  EXPECT_FALSE(page().HasEntries());
  Choose("column", "Flat");
  Choose("standsFor", "Directory Code");
  EXPECT_TRUE(page().HasEntries());
  answers_->Click(QMessageBox::No);
  EXPECT_FALSE(window().close());
}

TEST_F(Leaving, MeaningsThatWereProposedAreAskedAbout) {
  OpenDemoAt(QStringLiteral("import"));
  ChooseFile("people.csv", "Surname,Forename,Colour\nRae,Zoë,red\n");
  ASSERT_TRUE(Find<QPushButton>("takeProposals").isVisible());
  EXPECT_FALSE(page().HasEntries());
  Click("takeProposals");
  EXPECT_TRUE(page().HasEntries());
}

TEST_F(Leaving, AFileWithoutAnEndingGetsOne) {
  OpenDemoAt(QStringLiteral("overview"));
  Name("monday");
  ChooseInMenu("Back up…");
  EXPECT_THAT(Told(), HasSubstr(File("monday.db").string()));
  EXPECT_TRUE(std::filesystem::exists(File("monday.db")));
  Name("new");
  answers_->Click(QMessageBox::No);
  ChooseInMenu("New…");
  EXPECT_EQ(window().place()->file(), File("new.db"));
}

TEST_F(Leaving, AStoreOfTheLastTimeThatHasVanishedIsTold) {
  OpenDemoAt(QStringLiteral("overview"));
  EXPECT_TRUE(window().close());
  std::filesystem::rename(File("building.db"), File("elsewhere.db"));
  MakeWindow();
  window().OpenLastStore();
  EXPECT_EQ(window().place(), nullptr);
  EXPECT_EQ(Told(),
            "The store that was open the last time is not there: " + File("building.db").string());
}

TEST_F(Leaving, WithoutAStoreOfTheLastTimeNothingIsTold) {
  window().OpenLastStore();
  EXPECT_EQ(Told(), "");
}

}  // namespace
}  // namespace qorhost::test

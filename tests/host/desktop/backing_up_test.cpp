// Backing up from the window, and putting a backup back.
#include <gmock/gmock.h>

#include <QAction>
#include <algorithm>
#include <fstream>

#include "host/desks/store_backup.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// The store as it was before a restore: its name has the tests' moment in it.
constexpr const char* kKept = "building.db.before-restore-20260131-140509";

class Backups : public DesktopTest {
 protected:
  /// A backup, after which a card was issued that is not in it.
  void MakeBackupAndGoOn() {
    OpenDemoAt(QStringLiteral("credentials"));
    (void)BackUp(File("building.db"), File("monday.db"), Standing::kStays);
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", "9001");
    Type("txtFacilityCode", "7");
    Click("saveButton");
    ASSERT_EQ(Cards(), "1");
  }
  std::string Cards() { return Cell("SELECT Count(*) FROM CredentialBank WHERE PINNo=9001"); }
  /// The next dialog is for a file, which is this one.
  void Name(const char* file) { answers_->Type(QString::fromStdString(File(file).string())); }
  bool IsOffered(const char* entry) {
    const QList<QAction*> actions = window().findChildren<QAction*>();
    return std::any_of(actions.begin(), actions.end(), [entry](const QAction* action) {
      return action->text() == QString::fromUtf8(entry) && action->isEnabled();
    });
  }
};

TEST_F(Backups, AreStoresThatCanBeOpened) {
  OpenDemoAt(QStringLiteral("overview"));
  Name("monday.db");
  ChooseInMenu("Back up…");
  EXPECT_THAT(Told(), StartsWith("Backed up to " + File("monday.db").string()));
  EXPECT_TRUE(window().OpenStore(File("monday.db")));
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

TEST_F(Backups, NeverReplaceTheStoreItself) {
  OpenDemoAt(QStringLiteral("overview"));
  Name("building.db");
  answers_->Click(QMessageBox::Yes);  // the dialog's own question
  answers_->Click(QMessageBox::Ok);
  ChooseInMenu("Back up…");
  EXPECT_EQ(answers_->seen().back().icon, QMessageBox::Critical);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

TEST_F(Backups, OfAStoreInMemoryThereAreNone) {
  Click("demoButton");
  answers_->Click(QMessageBox::Ok);
  ChooseInMenu("Back up…");
  EXPECT_THAT(answers_->LastText(), HasSubstr("in memory"));
}

TEST_F(Backups, TakeTheStoresPlaceWhichIsKept) {
  MakeBackupAndGoOn();
  Name("monday.db");
  answers_->Click(QMessageBox::Yes);
  ChooseInMenu("Restore a backup…");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Put the backup monday.db of "));
  EXPECT_THAT(answers_->LastText(), HasSubstr("in the place of building.db?"));
  EXPECT_EQ(answers_->seen().back().defaultButton, "No");
  EXPECT_EQ(Told(), std::string("Restored from monday.db. The store as it was is ") + kKept + ".");
  EXPECT_EQ(window().place()->file(), File("building.db"));
  EXPECT_EQ(window().place()->unitKey(), kUnit);
  EXPECT_EQ(page().objectName(), QStringLiteral("CredentialPage"));
  EXPECT_EQ(Cards(), "0");
  ASSERT_TRUE(window().OpenStore(File(kKept)));
  EXPECT_EQ(Cards(), "1");
}

TEST_F(Backups, TakeNobodysPlaceUnlessThatIsWanted) {
  MakeBackupAndGoOn();
  Name("monday.db");
  answers_->Click(QMessageBox::No);
  ChooseInMenu("Restore a backup…");
  EXPECT_EQ(Cards(), "1");
  EXPECT_FALSE(std::filesystem::exists(File(kKept)));
}

TEST_F(Backups, ThatAreNoneLeaveTheStoreOpenAsItWas) {
  MakeBackupAndGoOn();
  std::ofstream(File("letter.db")) << "Dear Sir or Madam";
  for (const char* file : {"letter.db", "building.db"}) {
    Name(file);
    answers_->Click(QMessageBox::Yes);
    answers_->Click(QMessageBox::Ok);
    ChooseInMenu("Restore a backup…");
    EXPECT_THAT(answers_->LastText(), StartsWith("The backup is not restored."));
    EXPECT_EQ(Cards(), "1");
    EXPECT_EQ(window().place()->unitKey(), kUnit);
  }
  EXPECT_FALSE(std::filesystem::exists(File(kKept)));
}

TEST_F(Backups, AskForAnEntryThatWouldBeLost) {
  MakeBackupAndGoOn();
  Click("newButton");
  Type("txtPINStart", "9002");
  answers_->Click(QMessageBox::No);
  ChooseInMenu("Restore a backup…");
  EXPECT_EQ(TextIn("txtPINStart"), "9002");
}

TEST_F(Backups, ReplaceAStoreThatCannotBeOpenedAnyMore) {
  MakeBackupAndGoOn();
  ASSERT_TRUE(window().CloseStore());
  constexpr std::uintmax_t kPages = 3 * 4096;
  std::filesystem::resize_file(File("building.db"), kPages);
  Name("monday.db");
  Name("building.db");
  answers_->Click(QMessageBox::Yes);
  ChooseInMenu("Restore a backup…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cards(), "0");
  EXPECT_EQ(std::filesystem::file_size(File(kKept)), kPages);
}

TEST_F(Backups, BecomeAStoreWhereNoneStands) {
  MakeBackupAndGoOn();
  ASSERT_TRUE(window().CloseStore());
  Name("monday.db");
  Name("another.db");
  ChooseInMenu("Restore a backup…");
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(window().place()->file(), File("another.db"));
  EXPECT_EQ(Told(), "Restored from monday.db.");
}

TEST_F(Backups, AreOfferedWhileAStoreIsOpen) {
  EXPECT_FALSE(IsOffered("Back up…"));
  EXPECT_FALSE(IsOffered("Refresh"));
  EXPECT_TRUE(IsOffered("Restore a backup…"));
  OpenDemoAt(QStringLiteral("overview"));
  EXPECT_TRUE(IsOffered("Back up…"));
  EXPECT_TRUE(IsOffered("Refresh"));
}

}  // namespace
}  // namespace qorhost::test

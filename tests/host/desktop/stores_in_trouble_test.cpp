// Stores that vanish, are locked, may not be written or are damaged, and two programs on one store:
// what is wrong is told, nothing is lost, and the program goes on.
#include <gmock/gmock.h>
#include <unistd.h>

#include <QProcess>
#include <fstream>

#include "host/store/unit_of_work.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class StoresInTrouble : public DesktopTest {
 protected:
  void EnterCard() {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", "9001");
    Type("txtFacilityCode", "7");
  }
  /// The demo building in a file that is closed again.
  void MakeStore() {
    ASSERT_TRUE(window().CreateStoreAt(File("building.db"), true));
    ASSERT_TRUE(window().CloseStore());
  }
  /// What a person does when nothing else goes any more.
  void ExpectTheProgramGoesOn() {
    ASSERT_TRUE(window().CreateStoreAt(File("another.db"), true));
    window().ShowScreen(QStringLiteral("overview"));
    EXPECT_NE(window().page(), nullptr);
  }
};

TEST_F(StoresInTrouble, AStoreThatHasVanishedIsToldAtTheNextSave) {
  OpenDemoAt(QStringLiteral("credentials"));
  EnterCard();
  for (const char* name : {"building.db", "building.db-wal", "building.db-shm"}) {
    std::filesystem::remove(File(name));
  }
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Nothing was changed."));
  EXPECT_THAT(answers_->LastText(),
              HasSubstr("The store was moved or replaced meanwhile and has to be opened again."));
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
  answers_->Click(QMessageBox::Yes);  // the entry is left
  ExpectTheProgramGoesOn();
}

TEST_F(StoresInTrouble, WhatWasToldOfAnEarlierSaveIsGoneWhenOneFails) {
  OpenDemoAt(QStringLiteral("credentials"));
  EnterCard();
  Click("saveButton");
  ASSERT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
  Click("newButton");
  EnterCard();
  Type("txtPINStart", "9002");
  for (const char* name : {"building.db", "building.db-wal", "building.db-shm"}) {
    std::filesystem::remove(File(name));
  }
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(Told(), testing::Not(HasSubstr("Saved")));
  EXPECT_THAT(answers_->LastText(),
              HasSubstr("The store was moved or replaced meanwhile and has to be opened again."));
  answers_->Click(QMessageBox::Yes);
  ExpectTheProgramGoesOn();
}

TEST_F(StoresInTrouble, AStoreWhoseLockIsHeldIsWaitedForUntilCancel) {
  OpenDemoAt(QStringLiteral("steps"));
  window().ShowScreen(QStringLiteral("history"));
  DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
  WorkGuard held(other.sql().work(), WorkOrder{{kUnit}, "hold the lock", {}});
  other.sql().work().Lock();
  window().ShowScreen(QStringLiteral("overview"));  // looking waits for nobody
  EXPECT_NE(window().page(), nullptr);
  window().ShowScreen(QStringLiteral("dir_codes"));
  Type("txtdirectorycode", "250");
  Type("txtPhoneNo", "1");
  const CancelPress cancel(window());
  Click("saveButton");
  EXPECT_EQ(Told(), "Cancelled. Nothing was changed.");
  EXPECT_EQ(TextIn("txtdirectorycode"), "250");
  held.Undo();
  Click("saveButton");
  EXPECT_EQ(Cell("SELECT Count(*) FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=250"), "1");
}

TEST_F(StoresInTrouble, AStoreThatMayNotBeWrittenIsTold) {
  MakeStore();
  std::filesystem::permissions(File("building.db"), std::filesystem::perms::owner_read |
                                                        std::filesystem::perms::group_read |
                                                        std::filesystem::perms::others_read);
  std::filesystem::permissions(File("."), std::filesystem::perms::all);
  // Who owns everything may write everything: the store is opened by somebody else then.
  constexpr uid_t kNobody = 65534;
  const bool isRoot = geteuid() == 0;
  ASSERT_TRUE(!isRoot || seteuid(kNobody) == 0);
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(File("building.db")));
  ASSERT_TRUE(!isRoot || seteuid(0) == 0);
  EXPECT_THAT(answers_->LastText(), HasSubstr("building.db cannot be opened."));
  EXPECT_THAT(answers_->LastText(),
              HasSubstr("cannot be written: check the rights on the file and its folder"));
  EXPECT_EQ(answers_->seen().back().icon, QMessageBox::Critical);
  ExpectTheProgramGoesOn();
}

TEST_F(StoresInTrouble, ADamagedStoreIsToldAndNotTouched) {
  MakeStore();
  {
    std::fstream file(File("building.db"), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(0);
    file << std::string(4096, 'x');
  }
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(File("building.db")));
  EXPECT_THAT(answers_->LastText(), HasSubstr("building.db cannot be opened."));
  EXPECT_THAT(answers_->LastText(), HasSubstr("the file is not a store: choose another one"));
  std::ifstream file(File("building.db"), std::ios::binary);
  EXPECT_EQ(file.get(), 'x');
  ExpectTheProgramGoesOn();
}

TEST_F(StoresInTrouble, AStoreThatIsDamagedWhileItIsOpenIsTold) {
  OpenDemoAt(QStringLiteral("dir_codes"));
  {
    DeskSession(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    std::fstream file(File("building.db"), std::ios::in | std::ios::out | std::ios::binary);
    file.seekg(0, std::ios::end);
    const auto size = static_cast<std::size_t>(file.tellg());
    constexpr std::size_t kPage = 4096;
    file.seekp(kPage);
    file << std::string(size - kPage, '\xA5');
  }
  answers_->Click(QMessageBox::Ok);
  window().ShowScreen(QStringLiteral("history"));
  if (window().page() != nullptr) {  // what was read before may be enough for one screen
    FindBy("findEntry", "x");
    QTest::keyClick(&window(), Qt::Key_F5);
  }
  window().ShowScreen(QStringLiteral("dir_codes"));
  Type("txtdirectorycode", "250");
  Type("txtPhoneNo", "1");
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("(the store is damaged: put back a copy of it)"));
  answers_->Click(QMessageBox::Yes);
  ExpectTheProgramGoesOn();
}

TEST_F(StoresInTrouble, TheSecondOfTwoProgramsThatSaveARowIsTold) {
  OpenDemoAt(QStringLiteral("dir_codes"));
  ClickEntry("cbodirectorycode", "0102");
  Type("txtPhoneNo", "555-1111");
  QProcess other;
  other.start(QStringLiteral(QORHOST_PROGRAM),
              {QStringLiteral("--db"), QString::fromStdString(File("building.db").string()),
               QStringLiteral("dircodes"), QStringLiteral("edit"), QStringLiteral("102"),
               QStringLiteral("--unit"), QStringLiteral("2"), QStringLiteral("--phone"),
               QStringLiteral("555-2222")});
  constexpr int kLongest = 60000;  // milliseconds
  ASSERT_TRUE(other.waitForFinished(kLongest));
  ASSERT_EQ(other.exitCode(), 0) << other.readAllStandardError().toStdString();
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("omeone else has changed the directory code"));
  EXPECT_THAT(answers_->LastText(), HasSubstr("edit directory code"));
  EXPECT_EQ(Cell("SELECT PHONENUMBER FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=102"),
            "555-2222");
  EXPECT_EQ(TextIn("txtPhoneNo"), "555-1111");
  Click("saveButton");
  EXPECT_EQ(Cell("SELECT PHONENUMBER FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=102"),
            "555-1111");
}

}  // namespace
}  // namespace qorhost::test

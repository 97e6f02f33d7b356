// Stores on a server in the window.
#include <gmock/gmock.h>

#include "tests/host/desktop/desktop_fixture.h"
#include "tests/host/store/store_names.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ServerStores : public DesktopTest {
 protected:
  void SetUp() override {
    if (!WhyNoServer().empty()) {
      GTEST_SKIP() << WhyNoServer();
    }
    name_ = NewServerName();
    PutStore(name_,
             {true,
              [] {
                return qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
              },
              {}},
             Standing::kStays);
  }

  std::string name_;
};

TEST_F(ServerStores, AreOpenedByTheirNamesAndWorkedOn) {
  answers_->Type(QString::fromStdString(name_));
  ChooseInMenu("Open server…");
  ASSERT_NE(window().place(), nullptr);
  window().ShowUnit(kUnit);
  window().ShowScreen(QStringLiteral("credentials"));
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Type("txtPINStart", "9001");
  Type("txtFacilityCode", "7");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
  EXPECT_EQ(Cell("SELECT Count(*) FROM CredentialBank WHERE PINNo=9001"), "1");
}

TEST_F(ServerStores, AreRememberedAsTheLastStore) {
  answers_->Type(QString::fromStdString(name_));
  ChooseInMenu("Open server…");
  EXPECT_TRUE(window().close());
  MakeWindow();
  window().OpenLastStore();
  ASSERT_NE(window().place(), nullptr);
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

TEST_F(ServerStores, ThatAreNotThereAreToldAndTheProgramGoesOn) {
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(NewServerName()));
  EXPECT_THAT(answers_->LastText(), HasSubstr("create it first"));
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore("postgresql:///none?host=" + File("nowhere").string()));
  EXPECT_THAT(answers_->LastText(), testing::Not(IsEmpty()));
  EXPECT_TRUE(window().OpenStore(name_));
}

TEST_F(ServerStores, AreBackedUpIntoAFile) {
  ASSERT_TRUE(window().OpenStore(name_));
  answers_->Type(QString::fromStdString(File("monday.db").string()));
  ChooseInMenu("Back up…");
  EXPECT_THAT(Told(), testing::StartsWith("Backed up to " + File("monday.db").string()));
  EXPECT_TRUE(window().OpenStore(File("monday.db")));
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units"), "3");
}

TEST_F(DesktopTest, ANameThatIsNoServersIsAskedForAgain) {
  answers_->Type(QStringLiteral("building.db"));
  answers_->Click(QMessageBox::Ok);
  answers_->With([](QDialog& dialog) { dialog.reject(); });
  ChooseInMenu("Open server…");
  EXPECT_THAT(answers_->LastText(), HasSubstr("building.db is no store on a server."));
  EXPECT_EQ(window().place(), nullptr);
}

}  // namespace
}  // namespace qorhost::test

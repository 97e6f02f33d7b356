// Servers that are lost while something is saved, and such as want a password.
#include <gmock/gmock.h>

#include <QFile>
#include <QTableView>
#include <atomic>
#include <fstream>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/screens/import_page.h"
#include "tests/host/desktop/desktop_fixture.h"
#include "tests/host/store/postgres/server_proxy.h"
#include "tests/host/store/postgres/test_server.h"

namespace qorhost::test {
namespace {

using postgres::test::ServerProxy;
using postgres::test::TestServer;
using testing::HasSubstr;
using testing::Not;
using Way = ServerProxy::Way;

/// Closes every message with Return, and remembers the last one.
class ClosedBoxes {
 public:
  ClosedBoxes() {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box != nullptr && box->isVisible()) {
        text_ += FromQt(box->text() + QLatin1Char('\n') + box->informativeText());
        QTest::keyClick(box, Qt::Key_Return);
      }
    });
    look_.start(0);
  }
  [[nodiscard]] std::string Take() { return std::exchange(text_, ""); }

 private:
  QTimer look_;
  std::string text_;
};

class ServersInTrouble : public DesktopTest {
 protected:
  void SetUp() override {
    if (!TestServer::Missing().empty()) {
      GTEST_SKIP() << TestServer::Missing();
    }
    static int count = 0;
    database_ = "trouble" + std::to_string(++count);
    name_ = TestServer::Shared().Create(database_);
    PutStore(name_, {true, SystemClock(), {}}, Standing::kStays);
  }

  void OpenThrough(ServerProxy& proxy) {
    ASSERT_TRUE(window().OpenStore(proxy.NameOf(database_)));
    window().ShowUnit(kUnit);
    window().ShowScreen(QStringLiteral("credentials"));
  }
  void EnterCard(int number) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", std::to_string(number).c_str());
    Type("txtFacilityCode", "7");
  }
  /// Whether it is stored, as somebody sees who has another way to the server.
  [[nodiscard]] bool IsStored(int number) {
    DeskSession beside(OpenStoreFile(name_, Access::kRead), Surroundings{});
    return qorcred::TextOrEmpty(beside.sql().Scalar(
               "SELECT Count(*) FROM CredentialBank WHERE UnitKey=2 AND PINNo=" +
               std::to_string(number))) == "1";
  }

  std::string database_;
  std::string name_;
};

TEST_F(ServersInTrouble, ASaveWhoseConnectionIsLostIsToldAsItIsStored) {
  constexpr int kBetween = 5;  // messages: the store's own tests lose each
  answers_.reset();
  ServerProxy proxy(TestServer::Shared());
  OpenThrough(proxy);
  ClosedBoxes boxes;
  int number = 9000;
  int notStored = 0;
  bool reached = true;
  for (int nth = 0; reached && !HasFailure(); nth += kBetween) {
    for (const Way way : {Way::kLostBefore, Way::kLostBehindAnswer}) {
      EnterCard(++number);
      std::atomic<int> met = 0;
      proxy.Ask([&](const auto&) { return met++ == nth ? way : Way::kOn; });
      Click("saveButton");
      proxy.Ask(nullptr);
      reached = met > nth;
      const std::string told = Told() + "\n" + boxes.Take();
      EXPECT_FALSE(window().runner().busy());
      EXPECT_THAT(told, Not(HasSubstr("It is not known")));
      if (IsStored(number)) {
        EXPECT_THAT(told, Not(HasSubstr("Nothing was changed"))) << nth;
      } else {
        ++notStored;
        EXPECT_THAT(told, HasSubstr("Nothing was changed")) << nth;
        EXPECT_EQ(TextIn("txtPINStart"), std::to_string(number)) << nth;
        Click("saveButton");  // it goes as if nothing had been
        EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-" + std::to_string(number) + ".") << nth;
      }
      (void)boxes.Take();
      ChooseInMenu("Refresh");
      Click("newButton");
    }
  }
  EXPECT_GT(notStored, 0);
}

/// Loses the server at the next COMMIT, behind its answer; the store waits to learn what became of
/// it, until Cancel is pressed.
class LostCommit {
 public:
  LostCommit(MainWindow& window, ServerProxy& proxy) : proxy_(proxy) {
    proxy_.Ask([this](const ServerProxy::Message& message) {
      if (message.text.find("COMMIT") == std::string_view::npos) {
        return Way::kOn;
      }
      isLost_ = true;
      proxy_.Close(true);
      return Way::kLostBehindAnswer;
    });
    QObject::connect(&look_, &QTimer::timeout, &look_, [this, &window] {
      if (isLost_ && window.runner().busy()) {
        QTest::keyClick(&window, Qt::Key_Escape);
      }
    });
    look_.start(0);
  }

  [[nodiscard]] bool isLost() const { return isLost_; }
  /// The server is there again.
  void End() {
    look_.stop();
    proxy_.Ask(nullptr);
    proxy_.Close(false);
  }

 private:
  ServerProxy& proxy_;
  std::atomic<bool> isLost_ = false;
  QTimer look_;
};

TEST_F(ServersInTrouble, ASaveOfWhichNobodyKnowsIsToldSoAndTheEntryKept) {
  ServerProxy proxy(TestServer::Shared());
  OpenThrough(proxy);
  EnterCard(9001);
  LostCommit lost(window(), proxy);
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  ASSERT_TRUE(lost.isLost());
  EXPECT_THAT(answers_->LastText(), HasSubstr("It is not known whether it was stored."));
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
  EXPECT_FALSE(window().runner().busy());
  lost.End();
  EXPECT_TRUE(IsStored(9001));
  answers_->Click(QMessageBox::Yes);  // the entry is left
  ChooseInMenu("Refresh");
  EXPECT_EQ(Cell("SELECT Count(*) FROM CredentialBank WHERE UnitKey=2 AND PINNo=9001"), "1");
}

TEST_F(ServersInTrouble, AnUndoOfWhichNobodyKnowsIsToldSo) {
  ServerProxy proxy(TestServer::Shared());
  OpenThrough(proxy);
  EnterCard(9001);
  Click("saveButton");
  ASSERT_TRUE(IsStored(9001));
  window().ShowScreen(QStringLiteral("history"));
  auto& entries = Find<QTableView>("entries");
  QTest::mouseClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier,
                    entries.visualRect(entries.model()->index(0, 1)).center());
  LostCommit lost(window(), proxy);
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::Ok);
  Click("undoButton");
  ASSERT_TRUE(lost.isLost());
  EXPECT_THAT(answers_->LastText(), HasSubstr("It is not known whether it was stored."));
  EXPECT_THAT(Told(), Not(HasSubstr("Nothing was changed")));
  lost.End();
  EXPECT_FALSE(IsStored(9001));
}

TEST_F(ServersInTrouble, AnImportOfWhichNobodyKnowsIsToldSo) {
  ServerProxy proxy(TestServer::Shared());
  OpenThrough(proxy);
  const std::filesystem::path file = File("cards.csv");
  std::ofstream(file) << "Credential Type,Card Number,Facility Code\ncard26,9001,7\n";
  window().ShowScreen(QStringLiteral("import"));
  Choose("kind", "Credentials");
  dynamic_cast<ImportPage&>(page()).Open(file);
  Click("checkButton");
  LostCommit lost(window(), proxy);
  answers_->Click(QMessageBox::Ok);
  Click("importButton");
  ASSERT_TRUE(lost.isLost());
  EXPECT_THAT(answers_->LastText(), HasSubstr("It is not known whether it was stored."));
  EXPECT_THAT(Told(), Not(HasSubstr("Nothing was changed")));
  lost.End();
  EXPECT_TRUE(IsStored(9001));
}

class PasswordServers : public ServersInTrouble {
 protected:
  void SetUp() override {
    ServersInTrouble::SetUp();
    if (!IsSkipped()) {
      static const bool isMade = [] {
        TestServer::Shared().AddUser("locked", "kept secret");
        return true;
      }();
      EXPECT_TRUE(isMade);
      name_ += "&user=locked";
    }
  }
  void ExpectWrittenNowhere() {
    settings_->sync();
    QFile file(settings_->fileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("kept secret"));
    for (const SeenBox& box : answers_->seen()) {
      EXPECT_THAT(box.text, Not(HasSubstr("kept secret")));
    }
    for (const std::string& line : trace_) {
      EXPECT_THAT(line, Not(HasSubstr("kept secret")));
    }
  }
};

TEST_F(PasswordServers, AskForItAndKeepItForThisRunAlone) {
  answers_->With([](QDialog& dialog) {
    auto& line = *dialog.findChild<QLineEdit*>();
    EXPECT_EQ(line.echoMode(), QLineEdit::Password);
    QTest::keyClicks(&line, QStringLiteral("kept secret"));
    QTest::keyClick(&line, Qt::Key_Return);
  });
  ASSERT_TRUE(window().OpenStore(name_));
  window().ShowScreen(QStringLiteral("overview"));
  ASSERT_NE(window().page(), nullptr);
  ASSERT_TRUE(window().CloseStore());
  EXPECT_TRUE(window().OpenStore(name_));  // nobody is asked again
  EXPECT_TRUE(window().close());
  ExpectWrittenNowhere();
}

TEST_F(PasswordServers, AskAgainForOneThatIsWrong) {
  answers_->Type(QStringLiteral("guessed"));
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(name_));
  EXPECT_THAT(answers_->LastText(), HasSubstr("password authentication failed"));
  answers_->Type(QStringLiteral("kept secret"));
  EXPECT_TRUE(window().OpenStore(name_));
  ExpectWrittenNowhere();
}

TEST_F(PasswordServers, AreNotOpenedWithoutIt) {
  answers_->With([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  answers_->Click(QMessageBox::Ok);
  EXPECT_FALSE(window().OpenStore(name_));
  EXPECT_THAT(answers_->LastText(), HasSubstr("cannot be opened."));
  EXPECT_EQ(window().place(), nullptr);
}

}  // namespace
}  // namespace qorhost::test

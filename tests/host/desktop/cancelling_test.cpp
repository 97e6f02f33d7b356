// Cancel while each kind of long work runs: nothing of it stays, and the same can be done again.
#include <gmock/gmock.h>
#include <sqlite3.h>

#include <QTableView>
#include <fstream>

#include "frame/credential_numbers.h"
#include "host/desktop/screens/import_page.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

/// Another seat that has the right to write to a store.
class OtherSeat {
 public:
  explicit OtherSeat(const std::filesystem::path& file)
      : session_(OpenStoreFile(file, Access::kChange), Surroundings{}),
        work_(session_.sql().work(), WorkOrder{{}, "hold the lock", {}}) {
    session_.sql().work().Lock();
  }

  void Leave() { work_.Undo(); }

 private:
  DeskSession session_;
  WorkGuard work_;
};

/// A program that lets nobody else even look into a store.
class Owner {
 public:
  explicit Owner(const std::filesystem::path& file) {
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open(file.string().c_str(), &opened), SQLITE_OK);
    database_.reset(opened);
    EXPECT_EQ(sqlite3_exec(opened, "PRAGMA locking_mode=EXCLUSIVE; BEGIN IMMEDIATE", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
  }

 private:
  struct Closer {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close(handle); }
  };
  std::unique_ptr<sqlite3, Closer> database_;
};

/// Cancels what runs behind the telling of something that begins so: the reading of what was
/// stored.
class CancelBehind {
 public:
  CancelBehind(MainWindow& window, const std::function<std::string()>& told, std::string begin)
      : attentive_(window) {
    QObject::connect(&look_, &QTimer::timeout, &look_,
                     [this, &window, told, begin = std::move(begin)] {
                       if (!done_ && window.runner().busy() && told().starts_with(begin)) {
                         done_ = true;
                         QTest::keyClick(&window, Qt::Key_Escape);
                       }
                     });
    look_.start(0);
  }

  [[nodiscard]] bool done() const { return done_; }

 private:
  AttentiveWindow attentive_;
  QTimer look_;
  bool done_ = false;
};

class Cancelling : public DesktopTest {
 protected:
  static constexpr int kMany = 20000;  // credentials that take a while to read

  void AddManyCredentials() {
    SqlSession& sql = window().place()->session().sql();
    WorkGuard whole(sql.work(), WorkOrder{{kUnit}, "fill", {}});
    const qorcred::Value stamp("2026-01-31 14:05:09");
    for (int number = 0; number < kMany; ++number) {
      sql.AddRow("CredentialBank",
                 std::vector<Field>{{"UnitKey", kUnit},
                                    {"CredentialType", int{qorcred::kStandardCard}},
                                    {"PINNo", 30001 + number},
                                    {"FacilityCode", 7},
                                    {"IDCode", 0},
                                    {"SequenceNumber", 0},
                                    {"ButtonNumber", 1},
                                    {"DOORCODE", 0},
                                    {"LASTMODIFIEDDATE", stamp}});
    }
    whole.Commit();
  }
  [[nodiscard]] int RowsOf(const char* table) {
    return Find<QTableView>(table).model()->rowCount();
  }
};

TEST_F(Cancelling, AnUndoThatWaitsForAnotherSeat) {
  OpenDemoAt(QStringLiteral("dir_codes"));
  ClickEntry("cbodirectorycode", "0102");
  const std::string before = TextIn("txtPhoneNo");
  Type("txtPhoneNo", "555-1111");
  Click("saveButton");
  window().ShowScreen(QStringLiteral("history"));
  auto& entries = Find<QTableView>("entries");
  QTest::mouseClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier,
                    entries.visualRect(entries.model()->index(0, 1)).center());
  const auto phone = [this] {
    return Cell("SELECT PHONENUMBER FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=102");
  };
  OtherSeat other(File("building.db"));
  answers_->Click(QMessageBox::Yes);
  {
    const CancelPress cancel(window());
    Click("undoButton");
    EXPECT_THAT(cancel.told(), HasSubstr("Another program is writing"));
  }
  EXPECT_EQ(Told(), "Cancelled. Nothing was changed.");
  EXPECT_EQ(phone(), "555-1111");
  other.Leave();
  answers_->Click(QMessageBox::Yes);
  Click("undoButton");
  EXPECT_THAT(Told(), HasSubstr("Undone: entry"));
  EXPECT_EQ(phone(), before);
}

TEST_F(Cancelling, AnImportOfManyRows) {
  constexpr int kRows = 1500;
  OpenDemoAt(QStringLiteral("import"));
  std::ofstream file(File("cards.csv"));
  file << "Credential Type,Card Number,Facility Code\n";
  for (int row = 0; row < kRows; ++row) {
    file << "card26," << 30001 + row << ",7\n";
  }
  file.close();
  Choose("kind", "Credentials");
  dynamic_cast<ImportPage&>(page()).Open(File("cards.csv"));
  const auto stored = [this] {
    return Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo>30000");
  };
  for (const char* button : {"checkButton", "importButton"}) {
    const CancelPress cancel(window());
    Click(button);
    EXPECT_TRUE(cancel.done()) << button;
    EXPECT_EQ(Told(), "Cancelled. Nothing was changed.") << button;
    EXPECT_EQ(stored(), "0");
    EXPECT_EQ(RowsOf("preview"), kRows);
  }
  Click("importButton");
  EXPECT_EQ(stored(), std::to_string(kRows));
  EXPECT_EQ(RowsOf("preview"), 0);
}

TEST_F(Cancelling, OfTheReadingBehindAChangeDoesNotDenyTheChange) {
  OpenDemoAt(QStringLiteral("overview"));
  GiveACard("9001");
  AddManyCredentials();
  ChooseInMenu("Refresh");
  const std::string stored = "Cancelled behind the change, which is stored. F5 shows it.";
  const CancelBehind cancel(
      window(), [this] { return Told(); }, "Standard 26-Bit Card-9001 has");
  answers_->Type(QStringLiteral("9002"));
  Click("renumberButton");
  EXPECT_TRUE(cancel.done());
  EXPECT_EQ(Cell("SELECT Count(*) FROM CredentialBank WHERE UnitKey=2 AND PINNo=9002"), "1");
  EXPECT_EQ(Told(), stored);
}

TEST_F(Cancelling, AReportAndTheOpeningOfAScreen) {
  OpenDemoAt(QStringLiteral("overview"));
  AddManyCredentials();
  {
    const CancelPress cancel(window(), CancelPress::By::kEscape);
    window().ShowScreen(QStringLiteral("credentials"));
    EXPECT_TRUE(cancel.done());
  }
  EXPECT_EQ(window().page(), nullptr);
  {
    const CancelPress cancel(window(), CancelPress::By::kEscape);
    window().ShowScreen(QStringLiteral("credential_report"));
    EXPECT_TRUE(cancel.done());
  }
  EXPECT_EQ(Told(), "Cancelled. Nothing was changed.");
  EXPECT_EQ(RowsOf("rows"), 0);
  Click("runButton");
  EXPECT_GT(RowsOf("rows"), kMany);
  window().ShowScreen(QStringLiteral("credentials"));
  EXPECT_GT(Find<QListView>("cboCredentials").model()->rowCount(), kMany);
}

TEST_F(Cancelling, TheOpeningOfAStoreThatAnotherProgramKeepsToItself) {
  ASSERT_TRUE(window().CreateStoreAt(File("building.db"), true));
  ASSERT_TRUE(window().CloseStore());
  {
    const Owner owner(File("building.db"));
    const CancelPress cancel(window());
    EXPECT_FALSE(window().OpenStore(File("building.db")));
    EXPECT_TRUE(cancel.done());
  }
  EXPECT_EQ(Told(), "Cancelled. Nothing was opened.");
  EXPECT_EQ(window().place(), nullptr);
  EXPECT_TRUE(window().OpenStore(File("building.db")));
}

TEST_F(Cancelling, TheMakingOfTheDemoBuilding) {
  for (const bool inFile : {false, true}) {
    const CancelPress cancel(window(), CancelPress::By::kEscape);
    EXPECT_FALSE(inFile ? window().CreateStoreAt(File("building.db"), true) : window().OpenDemo());
    EXPECT_TRUE(cancel.done());
    EXPECT_EQ(Told(), "Cancelled. Nothing was opened.");
    EXPECT_EQ(window().place(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(File("building.db")));
  }
}

TEST_F(Cancelling, ABackupThatWaitsForTheOneInWhosePlaceItIsToBe) {
  ASSERT_TRUE(window().CreateStoreAt(File("monday.db"), true));
  OpenDemoAt(QStringLiteral("overview"));
  const auto backUp = [this] {
    answers_->Type(QString::fromStdString(File("monday.db").string()));
    answers_->Click(QMessageBox::Yes);  // the dialog's own question
    ChooseInMenu("Back up…");
  };
  OtherSeat other(File("monday.db"));
  {
    const CancelPress cancel(window());
    backUp();
    EXPECT_THAT(cancel.told(), HasSubstr("Another program is writing"));
  }
  EXPECT_EQ(Told(), "Cancelled. The store is not backed up.");
  other.Leave();
  backUp();
  EXPECT_THAT(Told(), HasSubstr("Backed up to"));
}

}  // namespace
}  // namespace qorhost::test

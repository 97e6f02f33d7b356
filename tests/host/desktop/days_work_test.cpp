// A day of work at the window: nothing grows.
#include <gmock/gmock.h>
#include <malloc.h>
#include <sqlite3.h>

#include <QPixmapCache>
#include <QTableView>
#include <array>
#include <cstdlib>
#include <iostream>
#include <span>
#include <string>

#include "host/desktop/shell/screens_table.h"
#include "tests/host/desktop/asked.h"
#include "tests/host/desktop/desktop_fixture.h"

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's own; its header does not come with every compiler.
// NOLINTNEXTLINE(readability-identifier-naming, bugprone-reserved-identifier)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace qorhost::test {
namespace {

/// Without the pages that the engine keeps up to a bound of its own.
std::size_t BytesInUse() {
  const auto ofEngine = static_cast<std::size_t>(sqlite3_memory_used());
#if defined(__SANITIZE_ADDRESS__)
  return __sanitizer_get_current_allocated_bytes() - ofEngine;
#else
  return mallinfo2().uordblks - ofEngine;
#endif
}

/// What an operator does in a day. Each round leaves the building as it was, but for the history,
/// which keeps every unit of work.
class DaysWork : public DesktopTest {
 protected:
  /// Without pictures of controls, which Qt keeps up to a bound of its own.
  DaysWork() { QPixmapCache::setCacheLimit(0); }
  ~DaysWork() override { QPixmapCache::setCacheLimit(kept_); }
  DaysWork(const DaysWork&) = delete;
  DaysWork& operator=(const DaysWork&) = delete;

  /// So many operations at least, and to the end of a round. How many there were in all.
  long DoUntil(long operations) {
    while (done_ < operations && !HasFailure()) {
      DoARound();
      ++rounds_;
    }
    return done_;
  }
  /// Without what screens show: the history has a row more for every unit of work. The store, the
  /// window and whatever they keep stay as they are.
  [[nodiscard]] std::size_t BytesBehindScreens() {
    window().ShowScreen(QStringLiteral("overview"));
    window().ShowUnit(kUnit - 1);
    Settle();
    const std::size_t bytes = BytesInUse();
    window().ShowUnit(kUnit);
    Settle();
    return bytes;
  }

 private:
  void DoARound() {
    for (const Kind kind : rounds_ % kWholeEach == 0 ? kWhole : kShort) {
      (this->*kind)();
      ASSERT_FALSE(HasFailure()) << "operation " << done_;
      ++done_;
      trace_.clear();
      trace_.shrink_to_fit();
      answers_->ForgetSeen();
    }
  }
  void EditCode(const char* code) {
    window().ShowScreen(QStringLiteral("dir_codes"));
    ClickEntry("cbodirectorycode", code);
    Type("txtPhoneNo", rounds_ % 2 == 0 ? "555-1111" : "555-2222");
    Click("saveButton");
    ASSERT_EQ(Told(), std::string("Saved directory code ") + code + ".");
  }
  void EditOneCode() { EditCode("0102"); }
  void EditAnotherCode() { EditCode("0103"); }
  void FindACode() {
    Type("findCode", "0102");
    QTest::keyClick(&Find<QLineEdit>("findCode"), Qt::Key_Return);
    Type("findCode", "");
    Settle();
  }
  void AddACode() {
    Click("newButton");
    Type("txtdirectorycode", "399");
    Type("txtDisplayName", "Lobby");
    Type("txtPhoneNo", "5550100");
    Click("saveButton");
    ASSERT_EQ(Told(), "Saved directory code 399.");
  }
  void DeleteTheCode() {
    answers_->Click(QMessageBox::Yes);
    Click("deleteButton");
    ASSERT_EQ(Cell("SELECT Count(*) FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=399"),
              "0");
  }
  void SeeAnotherUnit() {
    auto& units = Find<QComboBox>("unitChooser");
    QTest::keyClick(&units, Qt::Key_Up);
    ASSERT_EQ(window().place()->unitKey(), kUnit - 1);
    Settle();
    QTest::keyClick(&units, Qt::Key_Down);
    ASSERT_EQ(window().place()->unitKey(), kUnit);
  }
  void EnterCards(const char* first, const char* last) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", first);
    Type("txtFacilityCode", "7");
    if (last != nullptr) {
      Type("txtPINEND", last);
    }
  }
  void IssueACard() {
    window().ShowScreen(QStringLiteral("credentials"));
    Click("newButton");
    EnterCards("9001", nullptr);
    Click("saveButton");
    ASSERT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
  }
  void DeleteTheCard() {
    answers_->Click(QMessageBox::Yes);
    Click("deleteButton");
    ASSERT_EQ(Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9001"), "0");
  }
  void IssueARange() {
    window().ShowScreen(QStringLiteral("credentials"));
    Click("newButton");
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Click("severalCredentials");
    EnterCards("9001", "9040");
    Click("saveButton");
    ASSERT_EQ(Told(), "Saved Standard 26-Bit Card-9001 to 9040.");
  }
  void ReportTheRange() {
    window().ShowScreen(QStringLiteral("credential_report"));
    Choose("cboField_0", "Card Number");
    Choose("cboFilter_0", "between");
    Type("txtFrom_0", "9001");
    Type("txtTo_0", "9040");
    Click("runButton");
    ASSERT_EQ(Find<QTableView>("rows").model()->rowCount(), 40);
  }
  void UndoTheLatest() {
    window().ShowScreen(QStringLiteral("history"));
    ClickCell("entries", 0);
    answers_->Click(QMessageBox::Yes);
    Click("undoButton");
    ASSERT_THAT(Told(), testing::StartsWith("Undone: entry "));
    ASSERT_EQ(Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo "
                   "Between 9001 AND 9040"),
              "0");
  }
  void ReportCodes() {
    window().ShowScreen(QStringLiteral("dir_code_report"));
    Click("runButton");
    ASSERT_GT(Find<QTableView>("rows").model()->rowCount(), 3);
  }
  void AddATenant() {
    window().ShowScreen(QStringLiteral("tenants"));
    Click("newButton");
    Type("lastName", "Vogel");
    Type("firstName", "Ada");
    Type("code", "104");
    Click("saveButton");
    ASSERT_EQ(Told(), "Added tenant Vogel Ada.");
  }
  void EditTheTenant() {
    Type("initial", "K");
    Click("saveButton");
    ASSERT_EQ(Told(), "Changed Vogel Ada.");
  }
  void FindTheTenant() {
    FindBy("findTenant", "vog");
    ASSERT_EQ(Find<QTableView>("tenants").model()->rowCount(), 1);
    ClickCell("tenants", 0);
  }
  void DeleteTheTenant() {
    answers_->Click(QMessageBox::Yes);
    Click("deleteButton");
    ASSERT_EQ(Cell("SELECT Count(*) FROM Tenants WHERE LastName='Vogel'"), "0");
    FindBy("findTenant", "");
  }
  void CreateTenants() {
    window().ShowScreen(QStringLiteral("tenant_creating"));
    EnterCards("9001", "9003");
    Click("saveButton");
    ASSERT_EQ(Told(), "Created 3 tenants with Standard 26-Bit Card-9001 to 9003.");
  }
  void MarkAllSteps() {
    window().ShowScreen(QStringLiteral("steps"));
    ASSERT_TRUE(Find<QPushButton>("markButton").isEnabled());
    answers_->Click(QMessageBox::Yes);
    Click("markButton");
    ASSERT_EQ(Find<QTableView>("steps").model()->rowCount(), 0);
  }
  void LookAround() {
    for (const ScreenEntry& screen : Screens()) {
      window().ShowScreen(QString::fromLatin1(screen.key));
      Settle();
    }
  }
  void ClickCell(const char* table, int row) {
    auto& view = Find<QTableView>(table);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(row, 1)).center());
    Settle();
  }

  using Kind = void (DaysWork::*)();
  static constexpr std::array<Kind, 20> kAll{
      &DaysWork::EditOneCode,     &DaysWork::EditAnotherCode, &DaysWork::FindACode,
      &DaysWork::AddACode,        &DaysWork::DeleteTheCode,   &DaysWork::SeeAnotherUnit,
      &DaysWork::IssueACard,      &DaysWork::DeleteTheCard,   &DaysWork::ReportCodes,
      &DaysWork::AddATenant,      &DaysWork::EditTheTenant,   &DaysWork::FindTheTenant,
      &DaysWork::DeleteTheTenant, &DaysWork::MarkAllSteps,    &DaysWork::IssueARange,
      &DaysWork::ReportTheRange,  &DaysWork::UndoTheLatest,   &DaysWork::CreateTenants,
      &DaysWork::UndoTheLatest,   &DaysWork::LookAround};
  static constexpr std::span<const Kind> kWhole{kAll};
  // Without those that show the history: it grows, and with it the time for showing it.
  static constexpr std::span<const Kind> kShort = kWhole.first(14);
  static constexpr long kWholeEach = 5;

  int kept_ = QPixmapCache::cacheLimit();
  long done_ = 0;  // operations
  long rounds_ = 0;
};

TEST_F(DaysWork, LeavesNothingBehind) {
  const long operations = Asked("QORDESK_OPERATIONS", 500);
  OpenDemoAt(QStringLiteral("dir_codes"));
  const long begin = DoUntil(operations / 3);  // what is kept for good is there
  ASSERT_FALSE(HasFailure());
  const std::size_t bytes = BytesBehindScreens();
  const long end = DoUntil(operations);
  ASSERT_FALSE(HasFailure());
  const std::size_t then = BytesBehindScreens();
  const double grown = then > bytes ? static_cast<double>(then - bytes) : 0.0;
  const double each = grown / static_cast<double>(end - begin);
  std::cout << end << " operations, " << each << " bytes more for each\n";
  constexpr double kMostForEach = 256;
  EXPECT_LT(each, kMostForEach);
}

}  // namespace
}  // namespace qorhost::test

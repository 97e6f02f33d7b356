// The screen that creates tenants with their credentials, worked with mouse and keys.
#include <gmock/gmock.h>

#include <QCheckBox>

#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desktop/binding/date_field.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

class CreatingScreens : public DesktopTest {
 protected:
  CreatingScreens() { OpenDemoAt(QStringLiteral("tenant_creating")); }

  void EnterCards(const char* first, const char* last) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", first);
    Type("txtPINEND", last);
    Type("txtFacilityCode", "7");
  }
  [[nodiscard]] std::string Tenants() {
    return Cell("SELECT Count(*) FROM Tenants WHERE UnitKey=2");
  }
  [[nodiscard]] std::string Holders(const std::string& condition) {
    return Cell(
        "SELECT Count(*) FROM Tenants, CREDENTIALBANK WHERE Tenants.UnitKey=2 AND "
        "Tenants.CREDENTIALID1=CREDENTIALBANK.RID AND CREDENTIALBANK.PINNo Between 9001 "
        "AND 9003" +
        condition);
  }
};

TEST_F(CreatingScreens, EveryCredentialOfTheRangeGetsATenant) {
  const int before = std::stoi(Tenants());
  EnterCards("9001", "9003");
  Choose("cboSchedules3", "Late Shift");
  auto& end = Find<DateField>("dtpEnd");
  QTest::mouseClick(&end.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
  Click("saveButton");
  EXPECT_EQ(Told(), "Created 3 tenants with Standard 26-Bit Card-9001 to 9003.");
  EXPECT_EQ(std::stoi(Tenants()), before + 3);
  EXPECT_EQ(Holders(""), "3");
  EXPECT_EQ(Holders(" AND Tenants.ACTIVETENANT=True"), "3");
  EXPECT_FALSE(page().HasEntries());
  EXPECT_EQ(TextIn("txtPINStart"), "");
}

TEST_F(CreatingScreens, ARefusalStandsAtItsWidgetAndNothingIsStored) {
  const std::string before = Tenants();
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_EQ(Marked(), "txtPINStart: You must enter a credential number.");
  EnterCards("9001", "9000x");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_FALSE(Marked().empty());
  EXPECT_EQ(Tenants(), before);
  EXPECT_TRUE(page().HasEntries());
}

TEST_F(CreatingScreens, MakeTheCallsThatASaveMakesWithoutAWindow) {
  EnterCards("9001", "9002");
  trace_.clear();
  Click("saveButton");
  const auto save = [](const std::vector<std::string>& trace) {
    const auto begins = [](const char* with) {
      return [with](const std::string& line) { return line.starts_with(with); };
    };
    const auto begin = std::find_if(trace.begin(), trace.end(), begins("clsCredential@1.pbSave("));
    return std::vector<std::string>(begin, std::find_if(begin, trace.end(), begins("-> ")));
  };
  const std::vector<std::string> shown = save(trace_);
  ASSERT_GT(shown.size(), 50U);

  std::vector<std::string> headless;
  const auto session = WithoutAWindow(headless);
  CredentialDesk desk(*session, kUnit, DeskScreen::kTenantCreating);
  NewCredentials entry;
  entry.type = "card26";
  entry.first = "9001";
  entry.last = "9002";
  entry.facility = "7";
  entry.withTenants = true;
  EnterCredentials(desk, entry);
  ASSERT_TRUE(desk.SaveNew().done());
  EXPECT_EQ(shown, save(headless));
}

}  // namespace
}  // namespace qorhost::test

// A store that begins without anything: what the window says of it, and its first rows.
#include <gmock/gmock.h>

#include <QStackedWidget>

#include "host/desks/unit_desk.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class EmptyStores : public DesktopTest {
 protected:
  EmptyStores() { EXPECT_TRUE(window().CreateStoreAt(File("empty.db"), false)); }

  [[nodiscard]] std::string Problem() {
    const auto* shown = window().findChild<QStackedWidget*>()->currentWidget();
    const auto* label = qobject_cast<const QLabel*>(shown);
    return label == nullptr ? "" : label->text().toStdString();
  }
  void AddAUnit() {
    DeskSession other(OpenStoreFile(File("empty.db"), Access::kChange), Surroundings{});
    UnitEntry entry;
    entry.name = "Garden House";
    entry.type = "Entry Panel 500";
    entry.capacity = "500";
    ASSERT_EQ(AddUnit(other, {}, entry, OtherUnits::kAsked, Trial::kNo).unit.key, 1);
  }
  void IssueACard(const char* number) {
    window().ShowScreen(QStringLiteral("credentials"));
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", number);
    Type("txtFacilityCode", "7");
    Click("saveButton");
    EXPECT_EQ(Told(), std::string("Saved Standard 26-Bit Card-") + number + ".");
  }
  [[nodiscard]] std::string CountOf(const std::string& from) {
    return Cell("SELECT Count(*) FROM " + from);
  }
};

TEST_F(EmptyStores, SayHowAUnitIsMade) {
  for (const char* screen : {"credentials", "history"}) {
    window().ShowScreen(QString::fromLatin1(screen));
    EXPECT_EQ(window().page(), nullptr);
    EXPECT_THAT(Problem(), AllOf(HasSubstr("no units yet"), HasSubstr("“Units”")));
  }
  window().ShowScreen(QStringLiteral("overview"));
  const auto labels = page().findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
    return label->isVisible() && label->text().contains(QStringLiteral("“Units”"));
  }));
}

TEST_F(EmptyStores, HaveTheirFirstUnitMadeOnItsScreen) {
  window().ShowScreen(QStringLiteral("credentials"));
  EXPECT_EQ(window().page(), nullptr);
  window().ShowScreen(QStringLiteral("units"));
  Type("name", "Garden House");
  QTest::keyClicks(Find<QComboBox>("type").lineEdit(), QStringLiteral("Entry Panel 500"));
  Type("capacity", "500");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved: Unit 1, Garden House.");
  EXPECT_EQ(Find<QComboBox>("unitChooser").currentText(), QStringLiteral("Garden House (1)"));
  EXPECT_EQ(window().place()->unitKey(), 1);
  IssueACard("9001");
}

TEST_F(EmptyStores, TakeTheirFirstUnitAndThenACardACodeAndATenant) {
  window().ShowScreen(QStringLiteral("credentials"));
  AddAUnit();
  QTest::keySequence(&window(), QKeySequence::Refresh);
  ASSERT_NE(window().page(), nullptr);
  EXPECT_EQ(Find<QComboBox>("unitChooser").currentText(), QStringLiteral("Garden House (1)"));
  IssueACard("9001");
  window().ShowScreen(QStringLiteral("dir_codes"));
  Type("txtdirectorycode", "101");
  Type("txtDisplayName", "Lobby");
  Type("txtPhoneNo", "5550100");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved directory code 101.");
  window().ShowScreen(QStringLiteral("tenants"));
  Type("lastName", "Vogel");
  Type("firstName", "Ada");
  Type("card1", "Standard 26-Bit Card-9001");
  Type("code", "101");
  Click("saveButton");
  EXPECT_EQ(Told(), "Added tenant Vogel Ada.");
  EXPECT_EQ(CountOf("CREDENTIALBANK WHERE UnitKey=1 AND PINNo=9001"), "1");
  EXPECT_EQ(CountOf("DIRECTORYCODE WHERE UNITKEY=1 AND DIRECTORYCODE=101"), "1");
  EXPECT_EQ(CountOf("Tenants, CREDENTIALBANK WHERE Tenants.UnitKey=1 AND LastName='Vogel' AND "
                    "Tenants.CREDENTIALID1=CREDENTIALBANK.RID AND CREDENTIALBANK.PINNo=9001"),
            "1");
}

}  // namespace
}  // namespace qorhost::test

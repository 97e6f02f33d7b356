// The overview: what waits, and what ends soon.
#include <gmock/gmock.h>

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QTableWidget>

#include "host/desktop/binding/date_field.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::StartsWith;

class Overviews : public DesktopTest {
 protected:
  [[nodiscard]] std::vector<std::string> Labels() {
    std::vector<std::string> texts;
    for (const QLabel* label : page().findChildren<QLabel*>()) {
      if (label->isVisible()) {
        texts.push_back(label->text().toStdString());
      }
    }
    return texts;
  }
  [[nodiscard]] QTableWidget& Ending() { return Find<QTableWidget>("expiring"); }
  /// The tenant's lease ends on 2026-02-10, ten days from now.
  void EndALease() {
    window().ShowScreen(QStringLiteral("tenants"));
    FindBy("findTenant", "O'Brien Paula");
    auto& tenants = Find<QTableView>("tenants");
    ASSERT_EQ(tenants.model()->rowCount(), 1);
    QTest::mouseClick(tenants.viewport(), Qt::LeftButton, Qt::NoModifier,
                      tenants.visualRect(tenants.model()->index(0, 1)).center());
    auto& end = Find<DateField>("end");
    QTest::mouseClick(&end.check(), Qt::LeftButton, Qt::NoModifier, {8, 8});
    end.edit().setSelectedSection(QDateTimeEdit::MonthSection);
    QTest::keyClick(&end.edit(), Qt::Key_Up);
    end.edit().setSelectedSection(QDateTimeEdit::DaySection);
    while (end.edit().date().day() > 10) {
      QTest::keyClick(&end.edit(), Qt::Key_Down);
    }
    Click("saveButton");
    ASSERT_EQ(Told(), "Changed O'Brien Paula H.");
  }
  void IssueACard() {
    window().ShowScreen(QStringLiteral("credentials"));
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", "9001");
    Type("txtFacilityCode", "7");
    Click("saveButton");
    ASSERT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
  }
};

TEST_F(Overviews, ShowWhatEndsSoonAndWhatWaits) {
  OpenDemoAt(QStringLiteral("overview"));
  EXPECT_FALSE(Ending().isVisible());
  EXPECT_THAT(Labels(), Contains("Nothing ends within 30 days."));
  EXPECT_THAT(Labels(), Contains("145 credentials, 6 directory codes; no step waits for the unit"));
  EndALease();
  IssueACard();
  window().ShowScreen(QStringLiteral("overview"));
  Settle();
  EXPECT_TRUE(Ending().isVisible());
  ASSERT_EQ(Ending().rowCount(), 1);
  const char* const cells[] = {"2026-02-10", "Tenant", "O'Brien Paula", "Unit 2, Linden Park"};
  for (int column = 0; column < Ending().columnCount(); ++column) {
    EXPECT_EQ(Ending().item(0, column)->text().toStdString(), cells[column]);
  }
  EXPECT_THAT(Labels(), Contains(AllOf(StartsWith("146 credentials, 6 directory codes; "),
                                       EndsWith("one step waits for the unit"))));
  EXPECT_THAT(Labels(), testing::Not(Contains("Nothing ends within 30 days.")));
}

TEST_F(Overviews, NameAUnitWithAnAmpersandAsItIsCalled) {
  OpenDemoAt(QStringLiteral("overview"));
  (void)window().place()->session().sql().Change(
      "UPDATE Units SET UnitName='Smith & Sons' WHERE UnitKey=2", std::nullopt);
  ChooseInMenu("Refresh");
  const auto boxes = page().findChildren<QGroupBox*>();
  EXPECT_TRUE(std::any_of(boxes.begin(), boxes.end(), [](const QGroupBox* box) {
    return box->title() == QStringLiteral("Unit 2, Smith && Sons");  // && is shown as one
  }));
  EXPECT_TRUE(std::none_of(boxes.begin(), boxes.end(), [](const QGroupBox* box) {
    return !QKeySequence::mnemonic(box->title()).isEmpty();
  }));
}

TEST_F(Overviews, SayRightBelowTheUnitsThatNothingEnds) {
  OpenDemoAt(QStringLiteral("overview"));
  const auto labels = page().findChildren<QLabel*>();
  const auto nothing = std::find_if(labels.begin(), labels.end(), [](const QLabel* label) {
    return label->text() == QStringLiteral("Nothing ends within 30 days.");
  });
  ASSERT_NE(nothing, labels.end());
  const auto last = page().findChildren<QProgressBar*>().back();
  const int from = last->mapTo(&page(), QPoint(0, last->height())).y();
  EXPECT_LT((*nothing)->mapTo(&page(), QPoint(0, 0)).y() - from, 100);
}

}  // namespace
}  // namespace qorhost::test

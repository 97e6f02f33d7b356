// The store is looked over: what is wrong is a list that can be copied.
#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QTableView>

#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class Checks : public DesktopTest {
 protected:
  Checks() { OpenDemoAt(QStringLiteral("overview")); }
};

TEST_F(Checks, AStoreInOrderIsToldToBeSo) {
  ChooseInMenu("Check the store…");
  EXPECT_EQ(Told(), "Nothing is wrong: the store, its rows and the history are in order.");
}

TEST_F(Checks, WhatIsWrongIsShownAndCopied) {
  SpoilCards();
  answers_->With([](QDialog& dialog) {
    auto& faults = *dialog.findChild<QTableView*>(QStringLiteral("faults"));
    const int rows = faults.model()->rowCount();
    EXPECT_GT(rows, 0);
    EXPECT_THAT(faults.model()->index(0, 1).data().toString().toStdString(),
                HasSubstr("has the door 77, which is not there"));
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("copyFaults")), Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), rows);
    faults.selectRow(0);
    QTest::keyClick(&faults, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 1);
    EXPECT_THAT(QGuiApplication::clipboard()->text().toStdString(),
                HasSubstr("which is not there\tgive it one of the unit's doors"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  ChooseInMenu("Check the store…");
}

TEST_F(Checks, AreCancelled) {
  const CancelPress cancel(window(), CancelPress::By::kEscape);
  ChooseInMenu("Check the store…");
  EXPECT_TRUE(cancel.done());
  EXPECT_EQ(Told(), "Cancelled. The store was not looked over to its end.");
}

TEST_F(Checks, AreNotThereWithoutAStore) {
  ASSERT_TRUE(window().CloseStore());
  for (const QAction* action : window().findChildren<QAction*>()) {
    if (action->text() == QStringLiteral("Check the store…")) {
      EXPECT_FALSE(action->isEnabled());
      return;
    }
  }
  FAIL() << "there is no such entry in a menu";
}

}  // namespace
}  // namespace qorhost::test

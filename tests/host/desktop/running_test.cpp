// Operations on the window's thread: progress, cancelling, input that is held back, other seats.
#include <gmock/gmock.h>

#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <thread>

#include "host/desks/history.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;

class RunningOperations : public DesktopTest {
 protected:
  RunningOperations() { OpenDemoAt(QStringLiteral("credentials")); }

  /// Does something at the first event that is worked off while an operation runs.
  void WhileItRuns(std::function<void()> act) {
    QObject::connect(&moment_, &QTimer::timeout, &moment_, [this, act = std::move(act)] {
      if (window().runner().busy()) {
        moment_.stop();
        act();
      }
    });
    moment_.start(0);
  }

  QTimer moment_;
};

TEST_F(RunningOperations, CancelEndsALongSaveAndNothingIsStored) {
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Click("severalCredentials");
  Type("txtPINStart", "9001");
  Type("txtPINEND", "10400");
  Type("txtFacilityCode", "7");
  WhileItRuns([this] {
    auto* cancel = window().findChild<QPushButton*>(QStringLiteral("cancelOperation"));
    EXPECT_TRUE(cancel->isVisible());
    QTest::mouseClick(cancel, Qt::LeftButton);
  });
  Click("saveButton");
  EXPECT_EQ(Told(), "Cancelled. Nothing was changed.");
  EXPECT_EQ(
      Cell("SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo Between 9001 AND 10400"),
      "0");
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
}

TEST_F(RunningOperations, TheProgressOfALongSaveRises) {
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Click("severalCredentials");
  Type("txtPINStart", "9001");
  Type("txtPINEND", "19400");
  Type("txtFacilityCode", "7");
  auto* cancel = window().findChild<QPushButton*>(QStringLiteral("cancelOperation"));
  const auto* bar = cancel->parentWidget()->findChild<QProgressBar*>();
  std::vector<int> values;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    if (bar->isVisible() && bar->maximum() > 0 &&
        (values.empty() || values.back() != bar->value())) {
      values.push_back(bar->value());
    }
  });
  look.start(0);
  Click("saveButton");
  look.stop();
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001 to 19400.");
  EXPECT_GT(values.size(), 1U);
  EXPECT_TRUE(std::is_sorted(values.begin(), values.end())) << testing::PrintToString(values);
  EXPECT_FALSE(bar->isVisible());
}

TEST_F(RunningOperations, EscapeCancelsToo) {
  bool cancelled = false;
  WhileItRuns([this] { QTest::keyClick(&Find<QLineEdit>("txtPINStart"), Qt::Key_Escape); });
  const Progress progress = window().runner().progress();
  (void)window().runner().Run(QStringLiteral("Counting"), [&] {
    for (int done = 0; done < 1000000 && !cancelled; ++done) {
      cancelled = !progress(done, 1000000);
      std::this_thread::yield();
    }
  });
  EXPECT_TRUE(cancelled);
}

TEST_F(RunningOperations, OtherInputIsHeldBackAndNotKeptForLater) {
  bool tried = false;
  WhileItRuns([&] {
    QTest::keyClicks(&Find<QLineEdit>("txtPINStart"), QStringLiteral("77"));
    QTest::mouseClick(&Find<QPushButton>("newButton"), Qt::LeftButton);
    EXPECT_FALSE(window().close());
    tried = true;
  });
  const Progress progress = window().runner().progress();
  (void)window().runner().Run(QStringLiteral("Counting"), [&] {
    while (!tried) {
      (void)progress(1, 2);
    }
  });
  Settle();
  EXPECT_EQ(TextIn("txtPINStart"), "");
  EXPECT_TRUE(window().isVisible());
}

TEST_F(RunningOperations, OneRunsAtATime) {
  bool nested = true;
  EXPECT_TRUE(window().runner().Run(QStringLiteral("one"), [&] {
    nested = window().runner().Run(QStringLiteral("other"), [] { FAIL(); });
  }));
  EXPECT_FALSE(nested);
  EXPECT_FALSE(window().runner().busy());
}

TEST_F(RunningOperations, WhatAnOperationRaisesOpensTheWindowAgain) {
  EXPECT_THROW((void)window().runner().Run(QStringLiteral("one"), [] { throw std::bad_alloc(); }),
               std::bad_alloc);
  EXPECT_FALSE(window().runner().busy());
  QTest::keyClicks(&Find<QLineEdit>("txtPINStart"), QStringLiteral("77"));
  EXPECT_EQ(TextIn("txtPINStart"), "77");
}

TEST_F(RunningOperations, WaitingForAnotherSeatsLockEndsByCancel) {
  DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
  WorkGuard held(other.sql().work(), WorkOrder{{kUnit}, "hold the lock", {}});
  other.sql().work().Lock();
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Type("txtPINStart", "9001");
  Type("txtFacilityCode", "7");
  const CancelPress cancel(window());
  Click("saveButton");
  EXPECT_EQ(Told(), "Cancelled. Nothing was changed.");
  EXPECT_THAT(cancel.told(), HasSubstr("Another program is writing"));
  EXPECT_EQ(TextIn("txtPINStart"), "9001");
  held.Undo();
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001.");
}

}  // namespace
}  // namespace qorhost::test

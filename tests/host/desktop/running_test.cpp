// Operations on the window's thread: progress, cancelling, input that is held back, other seats.
#include <gmock/gmock.h>

#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <vector>

#include "host/desks/history.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
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

 private:
  AttentiveWindow attentive_{window()};
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

// How the bar stood at each moment at which the window was alive.
class ShownProgress {
 public:
  explicit ShownProgress(QMainWindow& window)
      : bar_(window.findChild<QPushButton*>(QStringLiteral("cancelOperation"))
                 ->parentWidget()
                 ->findChild<QProgressBar*>()) {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
      if (bar_->isVisible() && bar_->maximum() > 0 &&
          (values_.empty() || values_.back() != bar_->value())) {
        values_.push_back(bar_->value());
      }
    });
    look_.start(0);
  }

  [[nodiscard]] const std::vector<int>& values() const { return values_; }
  [[nodiscard]] bool isShown() const { return bar_->isVisible(); }

 private:
  QTimer look_;
  const QProgressBar* bar_;
  std::vector<int> values_;
};

TEST_F(RunningOperations, ALongSaveShowsItsProgress) {
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Click("severalCredentials");
  Type("txtPINStart", "9001");
  Type("txtPINEND", "10400");
  Type("txtFacilityCode", "7");
  const ShownProgress shown(window());
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved Standard 26-Bit Card-9001 to 10400.");
  EXPECT_FALSE(shown.values().empty());
  EXPECT_TRUE(std::is_sorted(shown.values().begin(), shown.values().end()))
      << testing::PrintToString(shown.values());
  EXPECT_FALSE(shown.isShown());
}

TEST_F(RunningOperations, TheProgressRises) {
  constexpr int kSteps = 4;
  constexpr int kTries = 1000;  // a look comes when nothing else is waiting
  const ShownProgress shown(window());
  EXPECT_TRUE(window().runner().Run(QStringLiteral("one"), [this, &shown] {
    const Progress progress = window().runner().progress();
    for (int done = 1; done <= kSteps; ++done) {
      const std::size_t before = shown.values().size();
      for (int tries = 0; tries < kTries && shown.values().size() == before; ++tries) {
        EXPECT_TRUE(progress(done, kSteps));
      }
    }
  }));
  EXPECT_THAT(shown.values(), ElementsAre(250, 500, 750, 1000));
  EXPECT_FALSE(shown.isShown());
}

TEST_F(RunningOperations, EscapeCancelsToo) {
  bool cancelled = false;
  WhileItRuns([this] { QTest::keyClick(&Find<QLineEdit>("txtPINStart"), Qt::Key_Escape); });
  const Progress progress = window().runner().progress();
  (void)window().runner().Run(QStringLiteral("Counting"), [&] {
    for (int done = 0; done < 1000000 && !cancelled; ++done) {
      cancelled = !progress(done, 1000000);
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

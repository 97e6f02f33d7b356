// The window under whatever a hand can do to it: no crash, and what is stored stays whole.
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "host/desks/store_check.h"
#include "host/desktop/screens/import_page.h"
#include "tests/host/desktop/asked.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

/// What is asked for; else another one each time where the work is long, and one that stays where
/// a run has to be like the last one.
unsigned Seed(bool isLong) {
  constexpr long kUsual = 4711;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto ofClock = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  return static_cast<unsigned>(Asked("QORDESK_FUZZ_SEED", isLong ? ofClock : kUsual));
}

/// Does by chance what a person could do.
class Hand {
 public:
  Hand(MainWindow& window, unsigned seed) : window_(window), chance_(seed) {
    boxes_.setInterval(0);
    QObject::connect(&boxes_, &QTimer::timeout, &boxes_, [this] { CloseDialog(); });
    boxes_.start();
  }

  void Act() {
    switch (Below(8)) {
      case 0:
        window_.ShowScreen(QString::fromLatin1(Screens()[Below(Screens().size())].key));
        break;
      case 1:
        QTest::keyClick(&window_, Qt::Key_F5);
        break;
      case 2:
        window_.resize(400 + static_cast<int>(Below(900)), 300 + static_cast<int>(Below(700)));
        break;
      case 3:
      case 4:
        Click();
        break;
      default:
        Press();
        break;
    }
    Settle();
  }

 private:
  std::size_t Below(std::size_t end) { return chance_() % end; }

  /// A widget of the screen in front that can be worked with; null without one.
  QWidget* Any() {
    std::vector<QWidget*> widgets;
    if (window_.page() != nullptr) {
      for (QWidget* widget : window_.page()->findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus) {
          widgets.push_back(widget);
        }
      }
    }
    return widgets.empty() ? nullptr : widgets[Below(widgets.size())];
  }

  void Click() {
    QWidget* widget = Any();
    if (widget == nullptr) {
      return;
    }
    if (auto* area = qobject_cast<QAbstractScrollArea*>(widget)) {
      widget = area->viewport();
    }
    const QPoint at(static_cast<int>(Below(static_cast<std::size_t>(widget->width()) + 1)),
                    static_cast<int>(Below(static_cast<std::size_t>(widget->height()) + 1)));
    const Qt::KeyboardModifiers keys = Below(4) == 0 ? Qt::ControlModifier : Qt::NoModifier;
    if (Below(6) == 0) {
      QTest::mouseDClick(widget, Qt::LeftButton, keys, at);
    } else {
      QTest::mouseClick(widget, Qt::LeftButton, keys, at);
    }
  }

  void Press() {
    constexpr std::array kKeys{Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Escape,
                               Qt::Key_Up,   Qt::Key_Down,    Qt::Key_Left,   Qt::Key_Right,
                               Qt::Key_Home, Qt::Key_End,     Qt::Key_Delete, Qt::Key_Space,
                               Qt::Key_F2,   Qt::Key_F8,      Qt::Key_PageUp, Qt::Key_PageDown};
    QWidget* widget = Any();
    if (widget == nullptr) {
      return;
    }
    if (Below(3) == 0) {
      widget->setFocus();
    }
    QWidget* focus = window_.focusWidget() == nullptr ? widget : window_.focusWidget();
    if (Below(2) == 0) {
      QTest::keyClick(focus, kKeys.at(Below(kKeys.size())));
    } else {
      const std::string_view letters = "0123456789,-' aZ%";
      QTest::keyClick(focus, letters[Below(letters.size())]);
    }
  }

  /// A box gets any of its buttons, any other dialog or list that has come up is closed.
  void CloseDialog() {
    if (QWidget* list = QApplication::activePopupWidget()) {
      QTest::keyClick(list, Qt::Key_Escape);
      list->close();
      return;
    }
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible()) {
      return;
    }
    if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
      const QList<QAbstractButton*> buttons = box->buttons();
      QTest::mouseClick(
          buttons[static_cast<qsizetype>(Below(static_cast<std::size_t>(buttons.size())))],
          Qt::LeftButton);
      return;
    }
    QTest::keyClick(dialog, Qt::Key_Escape);
  }

  MainWindow& window_;
  std::mt19937 chance_;
  QTimer boxes_;
};

class LongWork : public DesktopTest {
 protected:
  /// What is wrong with the units that there are: some may have been deleted.
  [[nodiscard]] static std::vector<std::string> WrongIn(DeskSession& session) {
    std::vector<std::string> wrong;
    for (const UnitName& unit : session.Units()) {
      for (const Finding& finding : FindingsIn(session, unit.key)) {
        wrong.push_back(finding.what);
      }
    }
    return wrong;
  }
};

TEST_F(LongWork, WhateverAHandDoesTheProgramGoesOn) {
  answers_.reset();
  OpenDemoAt(QStringLiteral("import"));
  std::ofstream(File("people.csv")) << "Name,Flat\n\"Rae, Zoë\",250\n\"Ng, Li\",x\n";
  dynamic_cast<ImportPage&>(page()).Open(File("people.csv"));
  const long seconds = Asked("QORDESK_FUZZ_SECONDS", 0);
  const unsigned seed = Seed(seconds > 0);
  std::cout << "seed " << seed << std::endl;  // before anything goes wrong
  constexpr long kUsualEvents = 400;
  const std::vector<std::string> wrong = WrongIn(window().place()->session());
  std::int64_t looked = 0;  // the entry behind which the store was looked at
  Hand hand(window(), seed);
  QElapsedTimer since;
  since.start();
  long done = 0;
  while (seconds > 0 ? since.elapsed() < seconds * 1000 : done < kUsualEvents) {
    hand.Act();
    ++done;
    ASSERT_FALSE(window().runner().busy()) << "seed " << seed << ", event " << done;
    ASSERT_NE(window().place(), nullptr);
    // What is stored is whole, whatever was saved and undone.
    DeskSession& session = window().place()->session();
    for (const WorkEntry& entry : session.sql().audit().After(looked, std::nullopt)) {
      looked = entry.entry;
      ASSERT_EQ(WrongIn(session), wrong)
          << "seed " << seed << ", event " << done << ": " << entry.what;
    }
  }
  EXPECT_TRUE(window().place()->session().Damages().empty());
  std::cout << done << " events of the seed " << seed << '\n';
}

}  // namespace
}  // namespace qorhost::test

// The window on a demo building, worked with mouse and keys.
#pragma once

#include <gmock/gmock.h>

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>
#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "host/desks/session.h"
#include "host/desktop/shell/main_window.h"

namespace qorhost::test {

/// A message box as a person sees it.
struct SeenBox {
  std::string title;
  std::string text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  std::string defaultButton;
};

/// Answers the boxes that come up, in turn, by clicks and keys. A box for which there is no answer
/// is closed by Escape, and fails the test.
class Answers {
 public:
  Answers();
  ~Answers();

  /// The next box is closed by a click on that button.
  void Click(QMessageBox::StandardButton button);
  /// The text is typed into the next dialog, which Return closes.
  void Type(const QString& text);
  /// The next dialog is worked by the function, which has to close it.
  void With(std::function<void(QDialog& dialog)> work);
  /// The button of that name is clicked in the next dialog.
  void Press(const char* button);

  [[nodiscard]] const std::vector<SeenBox>& seen() const { return seen_; }
  [[nodiscard]] std::string LastText() const { return seen_.empty() ? "" : seen_.back().text; }
  /// Before a test that goes on for long.
  void ForgetSeen() { seen_ = {}; }

 private:
  struct Answer {
    QMessageBox::StandardButton button = QMessageBox::NoButton;
    QString typed;
    std::function<void(QDialog& dialog)> work;
    int tries = 0;  ///< that did not close the dialog
  };
  void Look();
  void TypeInto(QDialog& dialog, const Answer& answer);
  void TypeAgain(QDialog& dialog, Answer answer);

  QTimer timer_;
  std::deque<Answer> answers_;
  std::vector<SeenBox> seen_;
};

/// Has the window look up at each call of an operation: what a test does then happens however short
/// the operation is.
class AttentiveWindow {
 public:
  explicit AttentiveWindow(MainWindow& window) : runner_(window.runner()) {
    runner_.SetPace(std::chrono::milliseconds(0));
  }
  ~AttentiveWindow() { runner_.SetPace(OperationRunner::kUsualPace); }
  AttentiveWindow(const AttentiveWindow&) = delete;
  AttentiveWindow& operator=(const AttentiveWindow&) = delete;

 private:
  OperationRunner& runner_;
};

/// Cancels the next operation: by its button, as soon as it is shown, or by Escape, at once.
class CancelPress {
 public:
  enum class By : bool { kButton, kEscape };

  explicit CancelPress(MainWindow& window, By by = By::kButton);

  [[nodiscard]] bool done() const { return done_; }
  /// What was told beside the button then.
  [[nodiscard]] const std::string& told() const { return told_; }
  /// How often the operation looked up afterwards: one that has heard it soon ends.
  [[nodiscard]] int looksAfterwards() const { return looksAfterwards_; }

 private:
  AttentiveWindow attentive_;
  QTimer look_;
  bool done_ = false;
  int looksAfterwards_ = 0;
  std::string told_;
};

/// The clock stands at 2026-01-31 14:05:09. Settings and stores lie in a folder of the test's own.
class DesktopTest : public testing::Test {
 protected:
  static constexpr std::int32_t kUnit = 2;

  DesktopTest();
  ~DesktopTest() override;

  /// A new window, with the settings as they are.
  void MakeWindow();
  /// The demo building in a file, shown at a screen for unit 2.
  void OpenDemoAt(const QString& screen);
  [[nodiscard]] std::filesystem::path File(const std::string& name) const;
  /// A session on another demo building, with the same clock, which adds its calls to `trace` and
  /// answers questions with Yes.
  [[nodiscard]] std::unique_ptr<DeskSession> WithoutAWindow(std::vector<std::string>& trace) const;

  [[nodiscard]] MainWindow& window() { return *window_; }
  [[nodiscard]] ScreenPage& page() { return *window_->page(); }
  /// A widget of the screen in front by its name; fails the test without one.
  template <typename Widget>
  [[nodiscard]] Widget& Find(const char* name) {
    QWidget* where = window_->page() != nullptr ? static_cast<QWidget*>(window_->page())
                                                : static_cast<QWidget*>(window_.get());
    auto* found = where->findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr) {
      found = window_->findChild<Widget*>(QString::fromLatin1(name));
    }
    if (found == nullptr) {
      throw std::logic_error(std::string("there is no widget ") + name);
    }
    return *found;
  }
  void Click(const char* button);
  /// Chooses what stands so in a menu.
  void ChooseInMenu(const char* text);
  /// Types in place of what is in the line.
  void Type(const char* line, const char* text);
  /// Types into a line that finds rows, and presses Return, which finds them at once.
  void FindBy(const char* line, const char* text);
  /// Goes to the entry with the arrow keys.
  void Choose(const char* combo, const char* entry);
  /// Clicks on the entry in the list.
  void ClickEntry(const char* list, const char* entry);
  [[nodiscard]] std::string TextIn(const char* line);
  /// What is said at which widget: "txtPINStart: You must ...".
  [[nodiscard]] std::string Marked();
  [[nodiscard]] std::string Told();
  /// On the smallest computer screen that the program is made for.
  void ExpectNoScrollingSideways(const std::string& where);
  /// Issues a card at the credential screen and gives it to Paula O'Brien: two entries of the
  /// history, and a step.
  void GiveACard(const char* number);
  /// Cards of one type of the unit open a door then that is not there.
  void SpoilCards();
  /// A spreadsheet of four residents, with a heading that nobody knows and two cells that are
  /// wrong.
  [[nodiscard]] std::filesystem::path WriteResidents() const;
  /// What the unit of the open store holds, but for a code that is other there, one more and one
  /// less.
  [[nodiscard]] std::filesystem::path WriteChangedUnit();
  /// The first cell of a SELECT on the open store.
  [[nodiscard]] std::string Cell(const std::string& select);

  QTemporaryDir folder_;
  std::unique_ptr<QSettings> settings_;
  std::vector<std::string> trace_;
  std::unique_ptr<Answers> answers_;
  std::unique_ptr<MainWindow> window_;
};

/// What a trace has of the last call of an operation, from its first line to its return, without
/// the numbers of objects: a window has seen others before.
[[nodiscard]] std::vector<std::string> CallsOf(std::string_view operation,
                                               const std::vector<std::string>& trace);

/// Works off what waits in the window's queue.
void Settle();

/// A window that has to grow is told of its new size by its system, and lays itself out behind
/// that.
void LayOut();

/// Works off what comes until the condition holds, however long a machine takes that has much to
/// do; false when it never does.
[[nodiscard]] bool ComesTrue(const std::function<bool()>& condition);

}  // namespace qorhost::test

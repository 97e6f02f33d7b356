#include "tests/host/desktop/desktop_fixture.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <algorithm>
#include <fstream>

#include "frame/convert.h"
#include "host/desks/unit_export.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/page_room.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desktop/cut_texts.h"

namespace qorhost::test {

namespace {

constexpr int kBetweenLooks = 5;  // milliseconds
constexpr int kUsualWait = 3000;  // until a window is on the screen
constexpr int kLongestWait = 60000;
constexpr int kMostTries = 200;  // of a dialog that Return does not close

qorcred::Date TheTestsDay() {
  return qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
}

int RowOf(const QAbstractItemModel& model, const char* entry) {
  for (int row = 0; row < model.rowCount(); ++row) {
    if (model.index(row, 0).data().toString() == QString::fromUtf8(entry)) {
      return row;
    }
  }
  throw std::logic_error(std::string("there is no entry ") + entry);
}

void ClickRow(QAbstractItemView& view, int row) {
  const QModelIndex index = view.model()->index(row, 0);
  view.scrollTo(index);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                    view.visualRect(index).center());
}

}  // namespace

std::vector<std::string> CallsOf(std::string_view operation,
                                 const std::vector<std::string>& trace) {
  const std::string call = "." + std::string(operation) + "(";
  const auto last = std::find_if(trace.rbegin(), trace.rend(), [&call](const std::string& line) {
    return !line.starts_with(' ') && line.find(call) != std::string::npos;
  });
  std::vector<std::string> lines;
  if (last == trace.rend()) {
    return lines;
  }
  const auto first = last.base() - 1;
  const auto isOver = [](const std::string& line) { return !line.starts_with(' '); };
  auto end = std::find_if(first + 1, trace.end(), isOver);
  if (end != trace.end() && end->starts_with("-> ")) {
    ++end;
  }
  for (auto line = first; line != end; ++line) {
    std::string plain = *line;
    for (std::size_t at = plain.find('@'); at != std::string::npos; at = plain.find('@', at)) {
      plain.erase(at, plain.find_first_not_of("0123456789", at + 1) - at);
    }
    lines.push_back(plain);
  }
  return lines;
}

void Settle() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

void LayOut() {
  constexpr int kRounds = 5;
  for (int round = 0; round < kRounds; ++round) {
    Settle();
  }
}

bool ComesTrue(const std::function<bool()>& condition) {
  return QTest::qWaitFor(condition, kLongestWait);
}

Answers::Answers() {
  timer_.setInterval(kBetweenLooks);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
  timer_.start();
}

Answers::~Answers() {
  EXPECT_TRUE(answers_.empty()) << answers_.size() << " boxes were expected and did not come";
}

void Answers::Click(QMessageBox::StandardButton button) {
  answers_.push_back({button, {}, {}, 0});
}

void Answers::Type(const QString& text) {
  answers_.push_back({QMessageBox::NoButton, text, {}, 0});
}

void Answers::With(std::function<void(QDialog& dialog)> work) {
  answers_.push_back({QMessageBox::NoButton, {}, std::move(work), 0});
}

void Answers::Press(const char* button) {
  With([button](QDialog& dialog) {
    auto* found = dialog.findChild<QAbstractButton*>(QString::fromLatin1(button));
    ASSERT_NE(found, nullptr) << button;
    QTest::mouseClick(found, Qt::LeftButton);
  });
}

void Answers::Look() {
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  // A click on a window that is still on its way to the screen is lost.
  if (dialog == nullptr || !dialog->isVisible() || !dialog->windowHandle()->isExposed()) {
    return;
  }
  Answer answer;
  const bool expected = !answers_.empty();
  if (expected) {
    answer = answers_.front();
    answers_.pop_front();
  }
  auto* box = qobject_cast<QMessageBox*>(dialog);
  if (box != nullptr) {
    const QString more = box->informativeText().isEmpty()
                             ? QString()
                             : QStringLiteral("\n") + box->informativeText();
    seen_.push_back({FromQt(box->windowTitle()), FromQt(box->text() + more), box->icon(),
                     box->defaultButton() == nullptr
                         ? ""
                         : FromQt(box->defaultButton()->text().remove(QLatin1Char('&')))});
  }
  if (!expected) {
    ADD_FAILURE() << "unexpected: " << (box != nullptr ? seen_.back().text : "a dialog");
    QTest::keyClick(dialog, Qt::Key_Escape);
    return;
  }
  if (qobject_cast<QFileDialog*>(dialog) == nullptr) {  // which is Qt's own
    ExpectNothingCut(*dialog, FromQt(dialog->windowTitle()));
  }
  if (answer.work) {
    answer.work(*dialog);
    return;
  }
  if (box == nullptr) {
    TypeInto(*dialog, answer);
    return;
  }
  QAbstractButton* button = box->button(answer.button);
  if (button == nullptr) {
    ADD_FAILURE() << "no such button at: " << seen_.back().text;
    QTest::keyClick(dialog, Qt::Key_Escape);
    return;
  }
  const QPointer<QDialog> clicked = dialog;
  QTest::mouseClick(button, Qt::LeftButton);
  if (clicked != nullptr && clicked->isVisible()) {
    answers_.push_front(answer);  // a window manager moved the button away: the next look clicks
    seen_.pop_back();
  }
}

void Answers::TypeInto(QDialog& dialog, const Answer& answer) {
  auto* line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  line = line != nullptr ? line : dialog.findChild<QLineEdit*>();
  ASSERT_NE(line, nullptr);
  line->setCompleter(nullptr);  // what it suggests would take the keys
  // As one text, but for its last letter: a folder that a path names on the way would be chosen in
  // the list, where it is shown, and Return would enter it.
  line->setText(answer.typed.left(answer.typed.size() - 1));
  QTest::keyClicks(line, answer.typed.right(1));
  // Behind this look: what asks then is seen by the next one.
  QTimer::singleShot(0, line, [this, line, &dialog, answer] {
    QTest::keyClick(line, Qt::Key_Return);
    if (dialog.isVisible()) {
      TypeAgain(dialog, answer);
    }
  });
}

/// A dialog that still reads a folder was not ready.
void Answers::TypeAgain(QDialog& dialog, Answer answer) {
  if (++answer.tries < kMostTries) {
    answers_.push_front(std::move(answer));
    return;
  }
  auto* files = qobject_cast<QFileDialog*>(&dialog);
  ADD_FAILURE() << "Return does not close the dialog \"" << FromQt(dialog.windowTitle())
                << "\" in the folder "
                << (files == nullptr ? "(none)" : FromQt(files->directory().absolutePath()))
                << " with the text \"" << FromQt(answer.typed) << "\"";
  dialog.reject();
}

CancelPress::CancelPress(MainWindow& window, By by) : attentive_(window) {
  auto* cancel = window.findChild<QPushButton*>(QStringLiteral("cancelOperation"));
  QObject::connect(&look_, &QTimer::timeout, &look_, [this, &window, cancel, by] {
    if (!window.runner().busy() || (by == By::kButton && !cancel->isVisible())) {
      return;
    }
    if (done_) {
      looksAfterwards_ += window.runner().cancelled() ? 1 : 0;  // else it is another operation
      return;
    }
    done_ = true;
    told_ = FromQt(cancel->parentWidget()->findChild<QLabel*>()->text());
    if (by == By::kButton) {
      QTest::mouseClick(cancel, Qt::LeftButton);
    } else {
      QTest::keyClick(&window, Qt::Key_Escape);
    }
  });
  look_.start(0);
}

DesktopTest::DesktopTest()
    : settings_(std::make_unique<QSettings>(folder_.filePath(QStringLiteral("settings.ini")),
                                            QSettings::IniFormat)),
      answers_(std::make_unique<Answers>()) {
  MakeWindow();
}

DesktopTest::~DesktopTest() {
  window_.reset();
  Settle();
}

void DesktopTest::MakeWindow() {
  window_.reset();
  WorkSurroundings surroundings;
  surroundings.clock = TheTestsDay;
  surroundings.author = {"anna", "qordesk on lobby", {}};
  surroundings.trace = [this](std::string_view line) { trace_.emplace_back(line); };
  surroundings.desktopReader = QORHOST_DESKTOP_READER;
  window_ = std::make_unique<MainWindow>(*settings_, surroundings);
  window_->show();
  if (!QTest::qWaitForWindowExposed(window_.get(), kUsualWait)) {
    // A window manager that is busy with the window of the test before may overlook a new one.
    window_->hide();
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get(), kLongestWait));
  }
}

std::filesystem::path DesktopTest::File(const std::string& name) const {
  return std::filesystem::path(FromQt(folder_.path())) / name;
}

std::unique_ptr<DeskSession> DesktopTest::WithoutAWindow(std::vector<std::string>& trace) const {
  Surroundings surroundings;
  surroundings.clock = TheTestsDay;
  surroundings.trace = [&trace](std::string_view line) { trace.emplace_back(line); };
  surroundings.messageBox = [](std::string_view, qorcred::MessageStyle style, std::string_view) {
    return style == qorcred::MessageStyle::kQuestion ? qorcred::MessageButton::kYes
                                                     : qorcred::MessageButton::kOk;
  };
  CreateStore(File("other.db"), true, surroundings.clock);
  return std::make_unique<DeskSession>(OpenStoreFile(File("other.db"), Access::kChange),
                                       surroundings);
}

void DesktopTest::OpenDemoAt(const QString& screen) {
  ASSERT_TRUE(window_->CreateStoreAt(File("building.db"), true));
  window_->ShowUnit(kUnit);
  window_->ShowScreen(screen);
  ASSERT_NE(window_->page(), nullptr);
  Settle();
}

void DesktopTest::Click(const char* button) {
  QTest::mouseClick(&Find<QAbstractButton>(button), Qt::LeftButton, Qt::NoModifier,
                    {10, Find<QAbstractButton>(button).height() / 2});
  Settle();
}

void DesktopTest::ChooseInMenu(const char* text) {
  for (QAction* action : window_->findChildren<QAction*>()) {
    if (action->text() == QString::fromUtf8(text)) {
      action->trigger();
      return;
    }
  }
  FAIL() << "there is no " << text << " in a menu";
}

void DesktopTest::Type(const char* line, const char* text) {
  auto& edit = Find<QLineEdit>(line);
  QTest::mouseClick(&edit, Qt::LeftButton);
  QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&edit, Qt::Key_Delete);
  QTest::keyClicks(&edit, QString::fromUtf8(text));
}

void DesktopTest::FindBy(const char* line, const char* text) {
  Type(line, text);
  QTest::keyClick(&Find<QLineEdit>(line), Qt::Key_Return);
}

void DesktopTest::Choose(const char* combo, const char* entry) {
  auto& box = Find<QComboBox>(combo);
  const int row = RowOf(*box.model(), entry);
  box.setFocus();
  // The keys of a person who looks at the entries on the way.
  while (box.currentIndex() != row) {
    const int before = box.currentIndex();
    QTest::keyClick(&box, before < row ? Qt::Key_Down : Qt::Key_Up);
    ASSERT_NE(box.currentIndex(), before) << "the keys do not move " << combo;
  }
  Settle();
  ASSERT_EQ(box.currentText(), QString::fromUtf8(entry));
}

void DesktopTest::ClickEntry(const char* list, const char* entry) {
  auto& view = Find<QListView>(list);
  ClickRow(view, RowOf(*view.model(), entry));
  Settle();
}

std::string DesktopTest::TextIn(const char* line) {
  return FromQt(Find<QLineEdit>(line).text());
}

std::string DesktopTest::Marked() {
  QWidget* marked = page().mark().marked();
  return marked == nullptr ? "" : FromQt(marked->objectName()) + ": " + FromQt(page().mark().why());
}

void DesktopTest::ExpectNoScrollingSideways(const std::string& where) {
  constexpr QSize kSmallestScreen(1280, 800);
  const QSize before = window().size();
  window().resize(kSmallestScreen);
  Settle();
  EXPECT_LE(window().width(), kSmallestScreen.width()) << where;
  EXPECT_EQ(window().findChild<PageRoom*>()->horizontalScrollBar()->maximum(), 0) << where;
  window().resize(before);
  Settle();
}

std::string DesktopTest::Told() {
  return FromQt(window_->statusBar()->currentMessage());
}

void DesktopTest::GiveACard(const char* number) {
  window_->ShowScreen(QStringLiteral("credentials"));
  Choose("cboCredentialType", "Standard 26-Bit Card");
  Type("txtPINStart", number);
  Type("txtFacilityCode", "7");
  Click("saveButton");
  const auto& holders = Find<QComboBox>("cboAssignedTo");
  const QString paula =
      holders.itemText(holders.findText(QStringLiteral("O'Brien Paula"), Qt::MatchStartsWith));
  Choose("cboAssignedTo", paula.toUtf8().constData());
  Click("saveButton");
  ASSERT_THAT(Told(), testing::HasSubstr(std::string("Standard 26-Bit Card-") + number));
}

void DesktopTest::SpoilCards() {
  SqlSession& sql = window_->place()->session().sql();
  WorkGuard work(sql.work(), WorkOrder{{kUnit}, "sql: UPDATE CredentialBank", {}});
  (void)sql.Change("UPDATE CredentialBank SET DOORCODE=77 WHERE UnitKey=2 AND CredentialType=" +
                       Cell("SELECT Min(CredentialType) FROM CredentialBank WHERE UnitKey=2 AND "
                            "CredentialType<>2"),
                   std::nullopt);
  ASSERT_TRUE(work.Commit());
}

std::filesystem::path DesktopTest::WriteResidents() const {
  const std::filesystem::path file = File("residents.csv");
  std::ofstream(file) << "Full name,Apartment,Phone No.,Card Type,Card Number,Facility Code,Start\n"
                         "\"Rae, Zoë\",250,555-0250,card26,9001,7,2026-02-01\n"
                         "\"Ng, Li\",251,555-0251,card26,9002,700,2026-02-01\n"
                         "\"Diaz, Ana\",252,555-0252,card26,9003,7,soon\n"
                         "\"Okafor, Ben\",253,555-0253,transmitter,9004,7,2026-02-01\n";
  return file;
}

std::filesystem::path DesktopTest::WriteChangedUnit() {
  UnitFile unit = ExportUnit(window_->place()->session(), kUnit, "", Unholdable::kLeftOut).file;
  unit.codes[1][qorcred::unit_place::kPhone] = "555-9999";
  unit.codes.push_back(unit.codes.front());
  unit.codes.back()[qorcred::unit_place::kCode] = "300";
  unit.codes.erase(unit.codes.begin() + 3);
  const std::filesystem::path file = File("unit.txt");
  std::ofstream out(file);
  WriteUnitFile(out, unit);
  return file;
}

std::string DesktopTest::Cell(const std::string& select) {
  return qorcred::TextOrEmpty(window_->place()->session().sql().Scalar(select));
}

}  // namespace qorhost::test

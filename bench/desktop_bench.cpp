// The desktop program: a unit opened against a plain item model, and operations through the window
// against the same at their desks.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <array>
#include <memory>

#include "bench/bench_store.h"
#include "bench/benchmarks.h"
#include "bench/check.h"
#include "bench/hand_written.h"
#include "frame/convert.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/dir_code_entry.h"
#include "host/desks/row_names.h"
#include "host/desks/store_file.h"
#include "host/desktop/binding/qt_text.h"
#include "host/desktop/shell/main_window.h"

namespace qorbench {

namespace {

constexpr const char* kOpen = "desktop/open";
constexpr const char* kOpenFloor = "desktop/open-items";
constexpr const char* kOperation = "desktop/operation";
constexpr const char* kOperationFloor = "desktop/operation-desk";
constexpr const char* kTyped = "desktop/typed";
constexpr const char* kTypedFloor = "desktop/typed-desk";
constexpr const char* kRange = "desktop/range";
constexpr const char* kRangeFloor = "desktop/range-desk";

constexpr std::int32_t kUnit = 1;
constexpr std::int32_t kMost = 32767;  // codes of a unit
constexpr std::int32_t kOperations = 400;

/// Works off what waits until a widget has been painted.
class Painted final : public QObject {
 public:
  explicit Painted(QWidget& widget) { widget.installEventFilter(this); }

  void Wait() {
    while (!painted_) {
      QApplication::processEvents();
    }
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return QObject::eventFilter(watched, event);
  }

 private:
  bool painted_ = false;
};

/// The program's window with settings of its own.
struct Program {
  QTemporaryDir folder;
  QSettings settings{folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
  qorhost::MainWindow window{settings, {}};
};

/// A store with as many credentials as a unit can have.
void Fill(const BenchStore& store) {
  qorhost::sqlite::Database database = store.OpenDatabase();
  (void)by_hand::IssuePrepared(database.handle(), std::array{RangeSave{kUnit, 1, kMost}});
}

void OpenUnit(benchmark::State& state) {
  const BenchStore store;
  Fill(store);
  Program program;
  program.window.show();
  Check(program.window.OpenStore(store.File()), "the store opens");
  program.window.ShowUnit(kUnit);
  program.window.ShowScreen(QStringLiteral("overview"));
  QApplication::processEvents();
  int rows = 0;
  for ([[maybe_unused]] auto iteration : state) {
    program.window.ShowScreen(QStringLiteral("credentials"));
    auto* list = program.window.page()->findChild<QListView*>(QStringLiteral("cboCredentials"));
    Painted(*list->viewport()).Wait();
    rows = list->model()->rowCount();
  }
  Check(rows == kMost + 1, "every credential is listed behind <Add New>");
  state.counters[kItems] = kMost;
}

void OpenItems(benchmark::State& state) {
  const BenchStore store;
  Fill(store);
  qorhost::DeskSession session(qorhost::OpenStoreFile(store.File(), qorhost::Access::kChange), {});
  int rows = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const qorhost::QueryResult read = session.sql().Select(
        fmt::format("SELECT RID, CredentialType, PINNo FROM CREDENTIALBANK WHERE UnitKey={} ORDER "
                    "BY CredentialType, PINNo",
                    kUnit));
    QStandardItemModel items;
    for (const qorhost::ResultRow row : read.rows()) {
      auto* item = new QStandardItem(qorhost::ToQt(qorcred::TextOrEmpty(row[2])));
      item->setData(qorcred::ToLong(row[0]), Qt::UserRole);
      items.appendRow(item);
    }
    QListView list;
    list.setModel(&items);
    list.show();
    Painted(*list.viewport()).Wait();
    rows = items.rowCount();
  }
  Check(rows == kMost, "every credential is an item");
  state.counters[kItems] = kMost;
}

/// A key with a letter, as a person types it.
void Type(QWidget& widget, char letter) {
  QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QLatin1Char(letter)));
  QApplication::sendEvent(&widget, &press);
}

constexpr std::int32_t kCodes = 20;

/// The last of the operations is what is stored.
void CheckPhones(qorhost::DeskSession& session) {
  Check(qorcred::TextOrEmpty(session.sql().Scalar(
            "SELECT Count(*) FROM DIRECTORYCODE WHERE UNITKEY=1 AND PHONENUMBER='8'")) == "1",
        "the code has the phone number that was entered last");
}

/// A button pressed with the mouse, and let go.
void Press(QWidget& button) {
  const QPointF middle(button.rect().center());
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, middle, button.mapToGlobal(middle), Qt::LeftButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(&button, &event);
  }
}

/// What of an operation counts: what Save does when it is chosen, until the window shows it; or all
/// that a person does with keys and mouse and all that is painted of it, the button that goes down
/// and up included.
enum class Counted : bool { kSaving, kEntryToo };

void PutCodesInto(const BenchStore& store) {
  qorhost::sqlite::Database database = store.OpenDatabase();
  PutDirCodes(database, kCodes);
}

void OperateInWindow(benchmark::State& state, Counted counted) {
  const BenchStore store;
  PutCodesInto(store);
  Program program;
  program.window.show();
  Check(program.window.OpenStore(store.File()), "the store opens");
  program.window.ShowUnit(kUnit);
  program.window.ShowScreen(QStringLiteral("dir_codes"));
  auto* list = program.window.page()->findChild<QListView*>(QStringLiteral("cbodirectorycode"));
  auto* phone = program.window.page()->findChild<QLineEdit*>(QStringLiteral("txtPhoneNo"));
  auto* save = program.window.page()->findChild<QPushButton*>(QStringLiteral("saveButton"));
  list->setCurrentIndex(list->model()->index(1, 0));
  QApplication::processEvents();
  for ([[maybe_unused]] auto iteration : state) {
    for (std::int32_t time = 0; time < kOperations; ++time) {
      if (counted == Counted::kSaving) state.PauseTiming();
      phone->setFocus(Qt::MouseFocusReason);
      phone->selectAll();
      Type(*phone, time % 2 == 0 ? '7' : '8');
      if (counted == Counted::kSaving) {
        QApplication::processEvents();
        state.ResumeTiming();
        save->click();
      } else {
        Press(*save);
      }
      QApplication::processEvents();
    }
  }
  CheckPhones(program.window.place()->session());
  state.counters[kItems] = kOperations;
}

void OperateAtDesk(benchmark::State& state, Counted counted) {
  const BenchStore store;
  PutCodesInto(store);
  qorhost::DeskSession session(qorhost::OpenStoreFile(store.File(), qorhost::Access::kChange), {});
  qorhost::DirCodeDesk desk(session, kUnit);
  const std::int32_t rid = desk.codes().ItemData(1);
  (void)desk.Select(qorhost::RowName(rid));
  for ([[maybe_unused]] auto iteration : state) {
    for (std::int32_t time = 0; time < kOperations; ++time) {
      if (counted == Counted::kSaving) state.PauseTiming();
      qorhost::DirCodeEntry entry;
      entry.phone = time % 2 == 0 ? "7" : "8";
      (void)qorhost::EnterDirCodeChange(desk, entry);
      if (counted == Counted::kSaving) state.ResumeTiming();
      Check(desk.SaveEdited().done(), "the code is saved");
      (void)desk.Select(qorhost::RowName(rid));
    }
  }
  CheckPhones(session);
  state.counters[kItems] = kOperations;
}

constexpr std::int32_t kRangeCount = 10000;
constexpr const char* kFacility = "7";

/// All of the range are stored, and the list shows them.
void CheckRange(qorhost::DeskSession& session, int listed) {
  Check(qorcred::TextOrEmpty(session.sql().Scalar(
            "SELECT Count(*) FROM CREDENTIALBANK WHERE UnitKey=1 AND FacilityCode=7")) ==
            std::to_string(kRangeCount),
        "the range is stored");
  Check(listed == kRangeCount + 1, "the range is listed behind <Add New>");
}

void IssueInWindow(benchmark::State& state) {
  const BenchStore store;
  Program program;
  program.window.show();
  Check(program.window.OpenStore(store.File()), "the store opens");
  program.window.ShowUnit(kUnit);
  program.window.ShowScreen(QStringLiteral("credentials"));
  QWidget& page = *program.window.page();
  const auto type = [&page](const char* line, const std::string& text) {
    auto* edit = page.findChild<QLineEdit*>(QString::fromLatin1(line));
    edit->selectAll();
    for (const char letter : text) {
      Type(*edit, letter);
    }
  };
  auto* types = page.findChild<QComboBox*>(QStringLiteral("cboCredentialType"));
  QApplication::processEvents();
  for ([[maybe_unused]] auto iteration : state) {
    types->setCurrentIndex(types->findText(QStringLiteral("Standard 26-Bit Card")));
    page.findChild<QRadioButton*>(QStringLiteral("severalCredentials"))->click();
    type("txtPINStart", "1");
    type("txtPINEND", std::to_string(kRangeCount));
    type("txtFacilityCode", kFacility);
    page.findChild<QPushButton*>(QStringLiteral("saveButton"))->click();
    QApplication::processEvents();
  }
  CheckRange(program.window.place()->session(),
             page.findChild<QListView*>(QStringLiteral("cboCredentials"))->model()->rowCount());
  state.counters[kItems] = kRangeCount;
}

void IssueAtDesk(benchmark::State& state) {
  const BenchStore store;
  qorhost::DeskSession session(qorhost::OpenStoreFile(store.File(), qorhost::Access::kChange), {});
  qorhost::CredentialDesk desk(session, kUnit, qorhost::DeskScreen::kCredentials);
  for ([[maybe_unused]] auto iteration : state) {
    qorhost::NewCredentials entry;
    entry.type = "card26";
    entry.first = "1";
    entry.last = std::to_string(kRangeCount);
    entry.facility = kFacility;
    qorhost::EnterCredentials(desk, entry);
    const qorhost::IssuedCredentials issued = desk.SaveNew();
    Check(issued.done(), "the range is saved");
    desk.RefreshCredentials();
    desk.SelectCredential(desk.credentials().FindData(issued.lastRid));
  }
  CheckRange(session, desk.credentials().count());
  state.counters[kItems] = kRangeCount;
}

}  // namespace

std::shared_ptr<void> StartDesktop() {
  // Its arguments have to live as long as it does.
  static int count = 1;
  static std::array<char, 9> name{"qorbench"};
  static std::array<char*, 2> arguments{name.data(), nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  auto application = std::make_shared<QApplication>(count, arguments.data());
  qorhost::Apply({});
  return application;
}

std::vector<Comparison> AddDesktopBenchmarks(Size /*size*/) {
  benchmark::RegisterBenchmark(kOpen, OpenUnit)->Iterations(1);
  benchmark::RegisterBenchmark(kOpenFloor, OpenItems)->Iterations(1);
  benchmark::RegisterBenchmark(kOperation, OperateInWindow, Counted::kSaving)->Iterations(1);
  benchmark::RegisterBenchmark(kOperationFloor, OperateAtDesk, Counted::kSaving)->Iterations(1);
  benchmark::RegisterBenchmark(kTyped, OperateInWindow, Counted::kEntryToo)->Iterations(1);
  benchmark::RegisterBenchmark(kTypedFloor, OperateAtDesk, Counted::kEntryToo)->Iterations(1);
  benchmark::RegisterBenchmark(kRange, IssueInWindow)->Iterations(1);
  benchmark::RegisterBenchmark(kRangeFloor, IssueAtDesk)->Iterations(1);
  constexpr double kOpenGoal = 3.0;
  constexpr double kOperationGoal = 1.2;
  return {{"desktop-open-32767", kOpen, kOpenFloor, kOpenGoal},
          {"desktop-operation", kOperation, kOperationFloor, kOperationGoal},
          {"desktop-operation-typed", kTyped, kTypedFloor, kOperationGoal},
          {"desktop-range", kRange, kRangeFloor, kOperationGoal},
          AddDesktopStartBenchmarks()};
}

}  // namespace qorbench

#include "host/desktop/shell/main_window.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QVBoxLayout>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/shell/backing_up.h"
#include "host/desktop/shell/checking.h"
#include "host/desktop/shell/language.h"
#include "host/desktop/shell/page_room.h"
#include "host/desktop/shell/server_choice.h"
#include "host/desktop/words/desk_words.h"
#include "host/store/server_passwords.h"

namespace qorhost {

namespace {

constexpr QSize kUsualSize(1040, 800);
constexpr int kUnitName = Qt::UserRole + 1;

/// What is made under a look need not be changed to it.
Appearance Applied(const Appearance& appearance) {
  Apply(appearance);
  return appearance;
}

}  // namespace

MainWindow::MainWindow(QSettings& settings, WorkSurroundings surroundings)
    : remembered_(settings),
      surroundings_(std::move(surroundings)),
      appearance_(Applied(remembered_.appearance())),
      bar_(new BusyBar(this)),
      runner_(*bar_),
      start_(new StartPage(this)),
      pages_(new PageStack(runner_, start_, this)),
      sides_(new QWidget(this)),
      calls_(new CallLogDock(surroundings_.clock, this)),
      screens_(new QListWidget(sides_)),
      units_(new QComboBox(sides_)),
      ofStore_(new QActionGroup(this)) {
  ofStore_->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
  MakeSides();
  addDockWidget(Qt::BottomDockWidgetArea, calls_);
  calls_->hide();
  calls_->toggleViewAction()->setChecked(false);  // nothing tells it before the first showing
  MakeMenus();
  auto* center = new QWidget(this);
  auto* row = new QHBoxLayout(center);
  row->addWidget(sides_);
  row->addWidget(new PageRoom(pages_, *sides_, center), 1);
  setCentralWidget(center);
  statusBar()->addPermanentWidget(bar_, 1);
  connect(&start_->demoButton(), &QPushButton::clicked, this, [this] { (void)OpenDemo(); });
  connect(&start_->openButton(), &QPushButton::clicked, this, [this] { ChooseStore(); });
  connect(&start_->serverButton(), &QPushButton::clicked, this, [this] { ChooseServer(); });
  connect(&start_->newButton(), &QPushButton::clicked, this, [this] { ChooseNewStore(); });
  connect(&start_->existingButton(), &QPushButton::clicked, this, [this] { ChooseExisting(); });
  AskForPasswords([this](const std::string& store) {
    const OpenGate open(runner_.gate());
    return AskForPassword(*this, ToQt(store));
  });
  keepingOnScreen_.setSingleShot(true);
  connect(&keepingOnScreen_, &QTimer::timeout, this, [this] { KeepOnScreen(); });
  leavingUnit_.setSingleShot(true);
  connect(&leavingUnit_, &QTimer::timeout, this, [this] { LeaveUnitThatIsGone(); });
  TakeUpLayout();
  // Afterwards: what is being shown cannot be hidden again.
  connect(
      calls_, &QDockWidget::visibilityChanged, this, [this](bool shown) { FollowCalls(shown); },
      Qt::QueuedConnection);
  calls_->OnStartOver([this] {
    if (MayLeave()) {
      ReopenScreens();
    }
  });
}

MainWindow::~MainWindow() {
  AskForPasswords({});
  pages_->Drop();
}

void MainWindow::MakeSides() {
  auto* column = new QVBoxLayout(sides_);
  column->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(tr("Unit:"), sides_);
  label->setBuddy(units_);
  units_->setObjectName(QStringLiteral("unitChooser"));
  units_->setAccessibleName(tr("Unit"));
  screens_->setObjectName(QStringLiteral("screenChooser"));
  screens_->setAccessibleName(tr("Screens"));
  for (const ScreenEntry& screen : Screens()) {
    screens_->addItem(TitleOf(screen));
  }
  screens_->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
  column->addWidget(label);
  column->addWidget(units_);
  column->addWidget(screens_, 1);
  sides_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  sides_->hide();
  connect(screens_, &QListWidget::currentRowChanged, this, [this](int row) { ShowPage(row); });
  connect(units_, &QComboBox::activated, this,
          [this](int index) { ShowUnit(units_->itemData(index).toInt()); });
}

void MainWindow::MakeMenus() {
  MakeStoreMenu();
  MakeScreensMenu();
  MakeViewMenu();
  ofStore_->setEnabled(false);
  // Their titles have no letters of their own: the screens use them all.
  auto* open = new QShortcut(QKeySequence(Qt::Key_F10), this);
  connect(open, &QShortcut::activated, this,
          [this] { menuBar()->setActiveAction(menuBar()->actions().front()); });
}

void MainWindow::MakeStoreMenu() {
  QMenu* store = menuBar()->addMenu(tr("Store"));
  store->addAction(tr("New…"), QKeySequence::New, this, [this] { ChooseNewStore(); });
  store->addAction(tr("Open…"), QKeySequence::Open, this, [this] { ChooseStore(); });
  store->addAction(tr("Open server…"), this, [this] { ChooseServer(); });
  store->addAction(tr("New from existing building…"), this, [this] { ChooseExisting(); });
  store->addAction(tr("Demo building"), this, [this] { (void)OpenDemo(); });
  ofStore_->addAction(store->addAction(tr("Back up…"), this, [this] { BackUpStore(*place_); }));
  store->addAction(tr("Restore a backup…"), this, [this] { RestoreBackup(); });
  ofStore_->addAction(
      store->addAction(tr("Check the store…"), this, [this] { CheckStore(*place_); }));
  ofStore_->addAction(
      store->addAction(tr("Close"), QKeySequence::Close, this, [this] { (void)CloseStore(); }));
  store->addSeparator();
  store->addAction(tr("Quit"), QKeySequence::Quit, this, [this] { close(); });
}

void MainWindow::MakeScreensMenu() {
  QMenu* go = menuBar()->addMenu(tr("Screens"));
  int row = 0;
  for (const ScreenEntry& screen : Screens()) {
    QAction* action =
        go->addAction(TitleOf(screen), this, [this, row] { screens_->setCurrentRow(row); });
    action->setShortcut(QKeySequence(QString::fromLatin1(screen.shortcut)));
    ofStore_->addAction(action);
    ++row;
  }
  go->addSeparator();
  ofStore_->addAction(
      go->addAction(tr("Refresh"), QKeySequence::Refresh, this, [this] { ShowAgain(); }));
}

void MainWindow::MakeViewMenu() {
  calls_->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("Ctrl+L")));
  const ViewMenu::Choices choices{
      [this](const Appearance& appearance) { SetAppearance(appearance); },
      [this](const QString& language) {
        remembered_.SetLanguage(language);
        statusBar()->showMessage(tr("The language holds from the next start on."), kToldFor);
      }};
  view_ =
      new ViewMenu(*calls_->toggleViewAction(), LanguageFor(remembered_.language()), choices, this);
  menuBar()->addMenu(view_);
  view_->Tick(appearance_);
}

void MainWindow::SetAppearance(const Appearance& appearance) {
  appearance_ = appearance;
  Apply(appearance_);
  view_->Tick(appearance_);
  KeepOnScreenLater();
}

void MainWindow::TakeUpLayout() {
  resize(kUsualSize);
  (void)restoreGeometry(remembered_.geometry());
  (void)restoreState(remembered_.places());
  setWindowTitle(QCoreApplication::applicationName());
  SetFolderOfFiles(remembered_.folder());
  KeepOnScreenLater();
}

/// Behind the layout of what has changed: text that was larger has made the window larger.
void MainWindow::KeepOnScreenLater() {
  keepingOnScreen_.start(0);
}

void MainWindow::KeepOnScreen() {
  const QRect room = RoomOnScreen(*this);
  if (isMaximized() || isFullScreen() || room.contains(frameGeometry())) {
    return;
  }
  const QSize frame = frameGeometry().size() - size();
  resize(size().boundedTo(room.size() - frame));
  const QRect now = frameGeometry();
  move(std::max(room.left(), std::min(now.left(), room.right() - now.width())),
       std::max(room.top(), std::min(now.top(), room.bottom() - now.height())));
}

void MainWindow::Remember() {
  remembered_.SetLayout(saveGeometry(), saveState());
  remembered_.SetAppearance(appearance_);
  remembered_.SetFolder(FolderOfFiles());
  RememberPlace();
}

void MainWindow::RememberPlace() {
  if (place_ != nullptr) {
    const int row = screens_->currentRow();
    remembered_.SetPlace(
        RememberedAs(place_->file()), place_->unitKey(),
        row < 0 ? QString() : QString::fromLatin1(Screens()[static_cast<std::size_t>(row)].key));
  }
}

bool MainWindow::MayLeave() {
  if (runner_.busy()) {
    return false;
  }
  const QStringList entered = pages_->WithEntries();
  return entered.isEmpty() || AskToGoOn(this, tr("What you entered is not saved (%1). Leave it?")
                                                  .arg(entered.join(QStringLiteral(", "))));
}

/// Controllers are followed from their making on: the screens are opened again.
void MainWindow::FollowCalls(bool shown) {
  // It goes and comes with the window, too: that changes nothing.
  if (place_ == nullptr || shown == calls_->isHidden() || shown == calls_->follows()) {
    return;
  }
  if (shown && !MayLeave()) {
    calls_->hide();
  } else if (shown || !pages_->HasEntries()) {
    ReopenScreens();
  }
}

void MainWindow::ReopenScreens() {
  pages_->Drop();
  calls_->Follow(place_.get());
  ShowPage(screens_->currentRow());
}

void MainWindow::ShowAgain() {
  if (place_ == nullptr || !MayLeave()) {
    return;
  }
  const std::int32_t before = place_->unitKey();
  const QString name = units_->currentText();
  if (!ReadUnits(before != 0 ? before : remembered_.unit(RememberedAs(place_->file())))) {
    return;
  }
  if (before != 0 && place_->unitKey() != before) {
    LeaveUnit(name);
  } else if (ScreenPage* shown = page()) {
    shown->Refresh();
  } else {
    ShowPage(screens_->currentRow());
  }
}

/// Whether they could be read; what went wrong is told.
bool MainWindow::ReadUnits(std::int32_t wanted) {
  try {
    std::vector<UnitName> units;
    const bool ran =
        runner_.Run(tr("Reading the units"), [&] { units = place_->session().Units(); });
    if (ran) {
      FillUnits(units, wanted);
    }
    return ran;
  } catch (const std::exception& failure) {
    if (!runner_.cancelled()) {
      TellFailure(this, tr("The units cannot be read."), Told(failure.what()));
    }
  }
  return false;
}

/// Others have deleted the unit: its screens go, and another one is shown.
void MainWindow::LeaveUnit(const QString& name) {
  pages_->Drop();
  ShowPage(screens_->currentRow());
  TellFailure(
      this, tr("%1 was deleted.").arg(name),
      units_->count() == 0
          ? tr("Somebody else has deleted it. The store has no other one.")
          : tr("Somebody else has deleted it. %1 is shown now.").arg(units_->currentText()));
}

/// When the screen that has found it gone is done with what it does.
void MainWindow::LeaveUnitLater() {
  leavingUnit_.start(0);
}

void MainWindow::LeaveUnitThatIsGone() {
  constexpr int kUntilDone = 20;  // milliseconds
  if (runner_.busy()) {
    leavingUnit_.start(kUntilDone);
    return;
  }
  if (place_ == nullptr) {
    return;
  }
  const std::int32_t before = place_->unitKey();
  const QString name = units_->currentText();
  if (ReadUnits(before) && place_->unitKey() != before) {
    LeaveUnit(name);
  }
}

/// Units were changed on their own screen. What shows a unit that is gone goes with it.
void MainWindow::TakeUnits() {
  const std::int32_t before = place_->unitKey();
  if (ReadUnits(before) && place_->unitKey() != before) {
    pages_->DropOthers();
  }
}

void MainWindow::FillUnits(const std::vector<UnitName>& units, std::int32_t wanted) {
  const QSignalBlocker quiet(units_);
  units_->clear();
  for (const UnitName& unit : units) {
    units_->addItem(unit.name.empty() ? tr("Unit %1").arg(unit.key)
                                      : tr("%1 (%2)").arg(ToQt(unit.name)).arg(unit.key),
                    unit.key);
    units_->setItemData(units_->count() - 1, ToQt(unit.name), kUnitName);
  }
  units_->setCurrentIndex(std::max(units_->findData(wanted), units_->count() > 0 ? 0 : -1));
  TakeUnit(units_->currentIndex());
}

void MainWindow::TakeUnit(int index) {
  place_->SetUnit(units_->itemData(index).toInt(), units_->itemData(index, kUnitName).toString());
}

void MainWindow::ShowUnit(std::int32_t unitKey) {
  if (place_ == nullptr || unitKey == place_->unitKey()) {
    return;
  }
  if (MayLeave()) {
    pages_->Drop();
    TakeUnit(units_->findData(unitKey));
    ShowPage(screens_->currentRow());
  }
  const QSignalBlocker quiet(units_);
  units_->setCurrentIndex(units_->findData(place_->unitKey()));
}

void MainWindow::ShowScreen(const QString& key) {
  int found = 0;
  for (int row = 0; row < screens_->count(); ++row) {
    if (key == QLatin1String(Screens()[static_cast<std::size_t>(row)].key)) {
      found = row;
    }
  }
  if (screens_->currentRow() == found) {
    ShowPage(found);
  } else {
    screens_->setCurrentRow(found);
  }
}

void MainWindow::ShowPage(int row) {
  statusBar()->clearMessage();  // what was told was told of another screen
  pages_->Show(row);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (runner_.busy() || !MayLeave()) {
    event->ignore();
    return;
  }
  Remember();
  event->accept();
}

}  // namespace qorhost

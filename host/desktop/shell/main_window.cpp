#include "host/desktop/shell/main_window.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QVBoxLayout>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/shell/backing_up.h"

namespace qorhost {

namespace {

constexpr int kToldFor = 15000;  // milliseconds
constexpr QSize kUsualSize(1040, 800);
constexpr int kBetweenScreens = 3;  // pixels around each
constexpr int kUnitName = Qt::UserRole + 1;
constexpr int kMostDigits = 9;  // screens that have a shortcut

namespace setting {
const QString kGeometry = QStringLiteral("window/geometry");
const QString kPlaces = QStringLiteral("window/places");
const QString kTheme = QStringLiteral("look/theme");
const QString kText = QStringLiteral("look/text");
const QString kStore = QStringLiteral("last/store");
const QString kUnit = QStringLiteral("last/unit");
const QString kScreen = QStringLiteral("last/screen");
}  // namespace setting

QString FileFilter() {
  return MainWindow::tr("Stores (*.db);;All files (*)");
}

}  // namespace

MainWindow::MainWindow(QSettings& settings, WorkSurroundings surroundings)
    : settings_(settings),
      surroundings_(std::move(surroundings)),
      bar_(new BusyBar(this)),
      runner_(*bar_),
      pages_(new QStackedWidget(this)),
      start_(new StartPage(pages_)),
      sides_(new QWidget(this)),
      calls_(new CallLogDock(surroundings_.clock, this)),
      screens_(new QListWidget(sides_)),
      units_(new QComboBox(sides_)),
      made_(Screens().size(), nullptr),
      outdated_(Screens().size(), false) {
  pages_->addWidget(start_);
  MakeSides();
  addDockWidget(Qt::BottomDockWidgetArea, calls_);
  calls_->hide();
  calls_->toggleViewAction()->setChecked(false);  // nothing tells it before the first showing
  MakeMenus();
  auto* center = new QWidget(this);
  auto* row = new QHBoxLayout(center);
  row->addWidget(sides_);
  row->addWidget(pages_, 1);
  setCentralWidget(center);
  statusBar()->addPermanentWidget(bar_, 1);
  connect(&start_->demoButton(), &QPushButton::clicked, this, [this] { (void)OpenDemo(); });
  connect(&start_->openButton(), &QPushButton::clicked, this, [this] { ChooseStore(); });
  connect(&start_->newButton(), &QPushButton::clicked, this, [this] { ChooseNewStore(); });
  Restore();
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
  DropPages();
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
  screens_->setSpacing(kBetweenScreens);
  screens_->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
  column->addWidget(label);
  column->addWidget(units_);
  column->addWidget(screens_, 1);
  sides_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  sides_->hide();
  connect(screens_, &QListWidget::currentRowChanged, this, [this](int row) { ShowPage(row); });
  connect(units_, &QComboBox::activated, this,
          [this](int index) { ShowUnit(units_->itemData(index).toInt()); });
}

void MainWindow::MakeMenus() {
  QMenu* store = menuBar()->addMenu(tr("Store"));
  store->addAction(tr("New…"), QKeySequence::New, this, [this] { ChooseNewStore(); });
  store->addAction(tr("Open…"), QKeySequence::Open, this, [this] { ChooseStore(); });
  store->addAction(tr("Demo building"), this, [this] { (void)OpenDemo(); });
  store->addAction(tr("Back up…"), this, [this] {
    if (place_ != nullptr) {
      BackUpStore(*place_);
    }
  });
  store->addAction(tr("Close"), QKeySequence::Close, this, [this] { (void)CloseStore(); });
  store->addSeparator();
  store->addAction(tr("Quit"), QKeySequence::Quit, this, [this] { close(); });

  QMenu* go = menuBar()->addMenu(tr("Screens"));
  int row = 0;
  for (const ScreenEntry& screen : Screens()) {
    QAction* action =
        go->addAction(TitleOf(screen), this, [this, row] { screens_->setCurrentRow(row); });
    ++row;
    if (row <= kMostDigits) {
      action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(row)));
    }
  }
  go->addSeparator();
  go->addAction(tr("Refresh"), QKeySequence::Refresh, this, [this] {
    if (ScreenPage* shown = page(); shown != nullptr && MayLeave()) {
      shown->Refresh();
    }
  });

  QMenu* look = menuBar()->addMenu(tr("View"));
  calls_->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("Ctrl+L")));
  look->addAction(calls_->toggleViewAction());
  look->addSeparator();
  look->addAction(tr("Light"), this, [this] {
    SetAppearance({Theme::kLight, appearance_.textPercent});
  });
  look->addAction(tr("Dark"), this, [this] {
    SetAppearance({Theme::kDark, appearance_.textPercent});
  });
  look->addSeparator();
  for (const int percent : {100, 125, 150, 200}) {
    look->addAction(tr("Text at %1 %").arg(percent), this, [this, percent] {
      SetAppearance({appearance_.theme, percent});
    });
  }
}

void MainWindow::SetAppearance(const Appearance& appearance) {
  appearance_ = appearance;
  Apply(appearance_);
}

void MainWindow::Restore() {
  const int theme = settings_.value(setting::kTheme, 0).toInt();
  SetAppearance({theme == static_cast<int>(Theme::kDark) ? Theme::kDark : Theme::kLight,
                 settings_.value(setting::kText, kUsualTextPercent).toInt()});
  resize(kUsualSize);
  (void)restoreGeometry(settings_.value(setting::kGeometry).toByteArray());
  (void)restoreState(settings_.value(setting::kPlaces).toByteArray());
  setWindowTitle(QCoreApplication::applicationName());
}

void MainWindow::Remember() {
  settings_.setValue(setting::kGeometry, saveGeometry());
  settings_.setValue(setting::kPlaces, saveState());
  settings_.setValue(setting::kTheme, static_cast<int>(appearance_.theme));
  settings_.setValue(setting::kText, appearance_.textPercent);
  if (place_ != nullptr) {
    settings_.setValue(setting::kUnit, place_->unitKey());
    const int row = screens_->currentRow();
    if (row >= 0) {
      settings_.setValue(setting::kScreen,
                         QString::fromLatin1(Screens()[static_cast<std::size_t>(row)].key));
    }
  }
}

ScreenPage* MainWindow::page() const {
  return qobject_cast<ScreenPage*>(pages_->currentWidget());
}

bool MainWindow::HasEntries() const {
  return std::any_of(made_.begin(), made_.end(), [](const QWidget* made) {
    const auto* screen = qobject_cast<const ScreenPage*>(made);
    return screen != nullptr && screen->HasEntries();
  });
}

bool MainWindow::MayLeave() {
  return !HasEntries() || AskToGoOn(this, tr("What you entered is not saved. Leave it?"));
}

/// Controllers are followed from their making on: the screens are opened again.
void MainWindow::FollowCalls(bool shown) {
  // It goes and comes with the window, too: that changes nothing.
  if (place_ == nullptr || shown == calls_->isHidden() || shown == calls_->follows()) {
    return;
  }
  if (shown && !MayLeave()) {
    calls_->hide();
  } else if (shown || !HasEntries()) {
    ReopenScreens();
  }
}

void MainWindow::ReopenScreens() {
  DropPages();
  calls_->Follow(place_.get());
  ShowPage(screens_->currentRow());
}

bool MainWindow::OpenStore(const std::filesystem::path& file) {
  if (!MayLeave()) {
    return false;
  }
  const QString name = QString::fromStdString(file.string());
  try {
    std::unique_ptr<Store> store;
    const bool ran = runner_.Run(tr("Opening the store"), [&] {
      store = OpenStoreFile(file, Access::kChange, runner_.patience());
    });
    if (!ran) {
      return false;
    }
    TakeStore(std::move(store), file, name);
    settings_.setValue(setting::kStore, name);
    return true;
  } catch (const std::exception& failure) {
    TellFailure(this, tr("%1 cannot be opened.").arg(name), ToQt(failure.what()));
  }
  return false;
}

bool MainWindow::OpenDemo() {
  if (!MayLeave()) {
    return false;
  }
  try {
    TakeStore(DemoStoreInMemory(surroundings_.clock), {}, tr("Demo building"));
    return true;
  } catch (const std::exception& failure) {
    TellFailure(this, tr("The demo building cannot be opened."), ToQt(failure.what()));
  }
  return false;
}

bool MainWindow::CreateStoreAt(const std::filesystem::path& file, bool demo) {
  try {
    const bool ran = runner_.Run(tr("Making the store"), [&] {
      CreateStore(file, demo, surroundings_.clock, surroundings_.author);
    });
    return ran && OpenStore(file);
  } catch (const std::exception& failure) {
    TellFailure(this, tr("No store can be made at %1.").arg(QString::fromStdString(file.string())),
                ToQt(failure.what()));
  }
  return false;
}

bool MainWindow::CloseStore() {
  if (!MayLeave()) {
    return false;
  }
  Remember();
  DropPages();
  calls_->Follow(nullptr);
  place_.reset();
  sides_->hide();
  pages_->setCurrentWidget(start_);
  setWindowTitle(QCoreApplication::applicationName());
  settings_.remove(setting::kStore);
  return true;
}

void MainWindow::OpenLastStore() {
  const QString last = settings_.value(setting::kStore).toString();
  std::error_code unreadable;
  const std::filesystem::path file(last.toStdString());
  if (!last.isEmpty() && std::filesystem::exists(file, unreadable)) {
    (void)OpenStore(file);
  }
}

void MainWindow::TakeStore(std::unique_ptr<Store> store, const std::filesystem::path& file,
                           const QString& name) {
  auto place = std::make_unique<Workplace>(*this, runner_, std::move(store), file, surroundings_);
  DropPages();
  place_ = std::move(place);
  calls_->Follow(place_.get());
  place_->OnTell([this](const QString& what) { statusBar()->showMessage(what, kToldFor); });
  place_->OnChanged([this] {
    for (std::size_t row = 0; row < outdated_.size(); ++row) {
      outdated_[row] = made_[row] != nullptr && made_[row] != pages_->currentWidget();
    }
  });
  setWindowTitle(tr("%1 – %2").arg(name, QCoreApplication::applicationName()));
  FillUnits();
  sides_->show();
  const QString last = settings_.value(setting::kScreen).toString();
  ShowScreen(last.isEmpty() ? QString::fromLatin1(Screens().front().key) : last);
}

void MainWindow::FillUnits() {
  const QSignalBlocker quiet(units_);
  units_->clear();
  const int last = settings_.value(setting::kUnit).toInt();
  for (const UnitName& unit : place_->session().Units()) {
    units_->addItem(unit.name.empty() ? tr("Unit %1").arg(unit.key)
                                      : tr("%1 (%2)").arg(ToQt(unit.name)).arg(unit.key),
                    unit.key);
    units_->setItemData(units_->count() - 1, ToQt(unit.name), kUnitName);
  }
  units_->setCurrentIndex(std::max(units_->findData(last), units_->count() > 0 ? 0 : -1));
  TakeUnit(units_->currentIndex());
}

void MainWindow::TakeUnit(int index) {
  place_->SetUnit(units_->itemData(index).toInt(), units_->itemData(index, kUnitName).toString());
}

void MainWindow::DropPages() {
  for (QWidget*& made : made_) {
    delete made;
    made = nullptr;
  }
  std::fill(outdated_.begin(), outdated_.end(), false);
}

void MainWindow::ShowUnit(std::int32_t unitKey) {
  if (place_ == nullptr || unitKey == place_->unitKey()) {
    return;
  }
  if (MayLeave()) {
    DropPages();
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
  if (place_ == nullptr || row < 0) {
    return;
  }
  statusBar()->clearMessage();  // what was told was told of another screen
  const auto at = static_cast<std::size_t>(row);
  const ScreenEntry& screen = Screens()[at];
  if (made_[at] == nullptr && screen.needsUnit && units_->count() == 0) {
    ShowProblem(row, tr("The store has no units yet: this screen shows what is in one."));
    return;
  }
  if (made_[at] == nullptr) {
    try {
      made_[at] = screen.make(*place_).release();
      pages_->addWidget(made_[at]);
    } catch (const std::exception& failure) {
      ShowProblem(row, ToQt(failure.what()));
      return;
    }
  }
  pages_->setCurrentWidget(made_[at]);
  auto* shown = qobject_cast<ScreenPage*>(made_[at]);
  if (shown != nullptr && outdated_[at] && !shown->HasEntries()) {
    outdated_[at] = false;
    shown->Refresh();
  }
}

/// A screen that cannot be opened says why, and is tried again when it is looked at again.
void MainWindow::ShowProblem(int row, const QString& why) {
  const auto at = static_cast<std::size_t>(row);
  auto* problem = new QLabel(tr("%1 cannot be shown: %2").arg(TitleOf(Screens()[at]), why), pages_);
  problem->setTextFormat(Qt::PlainText);
  problem->setWordWrap(true);
  problem->setAlignment(Qt::AlignCenter);
  pages_->addWidget(problem);
  pages_->setCurrentWidget(problem);
  connect(pages_, &QStackedWidget::currentChanged, problem, &QObject::deleteLater);
}

void MainWindow::ChooseStore() {
  const QString file = QFileDialog::getOpenFileName(this, tr("Open a store"), {}, FileFilter());
  if (!file.isEmpty()) {
    (void)OpenStore(std::filesystem::path(file.toStdString()));
  }
}

void MainWindow::ChooseNewStore() {
  QString file = QFileDialog::getSaveFileName(this, tr("Make a new store"),
                                              QStringLiteral("building.db"), FileFilter());
  if (file.isEmpty() || !MayLeave()) {
    return;
  }
  const bool demo = QMessageBox::question(
                        this, tr("New store"), tr("Put the demo building into it?"),
                        QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
  (void)CreateStoreAt(std::filesystem::path(file.toStdString()), demo);
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

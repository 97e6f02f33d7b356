// How the window comes to a store, and leaves it.
#include <QMessageBox>
#include <QStatusBar>

#include "host/desktop/binding/qt_text.h"
#include "host/desktop/running/file_choice.h"
#include "host/desktop/running/messages.h"
#include "host/desktop/shell/backing_up.h"
#include "host/desktop/shell/bringing_in.h"
#include "host/desktop/shell/checking.h"
#include "host/desktop/shell/main_window.h"
#include "host/desktop/shell/server_choice.h"
#include "host/desktop/words/desk_words.h"
#include "host/store/server_name.h"

namespace qorhost {

bool MainWindow::OpenStore(const std::filesystem::path& file) {
  return MayLeave() && OpenUnasked(file);
}

bool MainWindow::OpenUnasked(const std::filesystem::path& file) {
  const QString name = QString::fromStdString(file.string());
  const QString shown = IsServerName(file.string()) ? WithoutPassword(name) : name;
  try {
    std::unique_ptr<Store> store;
    const bool ran = runner_.Run(tr("Opening the store"), [&] {
      store = OpenStoreFile(file, Access::kChange, runner_.patience());
    });
    if (!ran) {
      return false;
    }
    if (!TakeStore(std::move(store), file, name)) {
      return false;
    }
    remembered_.SetStore(name);
    return true;
  } catch (const std::exception& failure) {
    TellNotOpened(tr("%1 cannot be opened.").arg(shown), failure);
  }
  return false;
}

bool MainWindow::OpenDemo() {
  if (!MayLeave()) {
    return false;
  }
  try {
    std::unique_ptr<Store> store;
    const bool ran = runner_.Run(tr("Making the demo building"), [&] {
      store = DemoStoreInMemory(surroundings_.clock, runner_.patience());
    });
    return ran && TakeStore(std::move(store), {}, tr("Demo building"));
  } catch (const std::exception& failure) {
    TellNotOpened(tr("The demo building cannot be opened."), failure);
  }
  return false;
}

bool MainWindow::CreateStoreAt(const std::filesystem::path& file, bool demo) {
  return MayLeave() && CreateUnasked(file, demo);
}

bool MainWindow::CreateUnasked(const std::filesystem::path& file, bool demo) {
  try {
    const bool ran = runner_.Run(tr("Making the store"), [&] {
      PutStore(file, {demo, surroundings_.clock, surroundings_.author}, Standing::kStays,
               runner_.patience());
    });
    return ran && OpenUnasked(file);
  } catch (const std::exception& failure) {
    TellNotOpened(tr("No store can be made at %1.").arg(QString::fromStdString(file.string())),
                  failure);
  }
  return false;
}

void MainWindow::OpenLastStore() {
  const QString last = remembered_.store();
  std::error_code unreadable;
  const std::filesystem::path file(last.toStdString());
  const bool isThere =
      IsServerName(file.string()) || std::filesystem::exists(file, unreadable);  // or is asked
  if (last.isEmpty()) {
    return;
  }
  if (isThere) {
    (void)OpenStore(file);
  } else {
    statusBar()->showMessage(
        tr("The store that was open the last time is not there: %1").arg(last));
  }
}

bool MainWindow::TakeStore(std::unique_ptr<Store> store, const std::filesystem::path& file,
                           const QString& name) {
  auto place = std::make_unique<Workplace>(*this, runner_, std::move(store), file, surroundings_);
  std::vector<UnitName> units;
  if (!runner_.Run(tr("Reading the units"), [&] { units = place->session().Units(); })) {
    return false;
  }
  RememberPlace();
  pages_->Drop();
  place_ = std::move(place);
  pages_->Take(place_.get());
  calls_->Follow(place_.get());
  place_->OnTell([this](const QString& what) { statusBar()->showMessage(what, kToldFor); });
  place_->OnChanged([this] { pages_->NoteChange(); });
  place_->OnUnits([this] { TakeUnits(); });
  place_->OnUnitGone([this] { LeaveUnitLater(); });
  setWindowTitle(tr("%1 – %2").arg(name, QCoreApplication::applicationName()));
  FillUnits(units, remembered_.unit(RememberedAs(file)));
  sides_->show();
  ofStore_->setEnabled(true);
  const QString last = remembered_.screen();
  ShowScreen(last.isEmpty() ? QString::fromLatin1(Screens().front().key) : last);
  return true;
}

QString MainWindow::RememberedAs(const std::filesystem::path& store) {
  if (store.empty() || IsServerName(store.string())) {
    return WithoutPassword(QString::fromStdString(store.string()));
  }
  return QString::fromStdString(std::filesystem::absolute(store).lexically_normal().string());
}

void MainWindow::TellNotOpened(const QString& what, const std::exception& failure) {
  if (runner_.cancelled()) {
    statusBar()->showMessage(tr("Cancelled. Nothing was opened."), kToldFor);
  } else {
    TellFailure(this, what, Told(failure.what()));
  }
}

bool MainWindow::CloseStore() {
  if (!MayLeave()) {
    return false;
  }
  LetGo();
  remembered_.SetStore({});
  return true;
}

void MainWindow::LetGo() {
  Remember();
  pages_->Take(nullptr);
  calls_->Follow(nullptr);
  place_.reset();
  sides_->hide();
  ofStore_->setEnabled(false);
  setWindowTitle(QCoreApplication::applicationName());
}

void MainWindow::RestoreBackup() {
  if (!MayLeave()) {
    return;
  }
  const std::filesystem::path open = place_ == nullptr ? std::filesystem::path() : place_->file();
  const std::optional<Restoring> restoring = AskWhatToRestore(*this, open);
  if (!restoring) {
    return;
  }
  const bool isOpen = restoring->store == open;
  if (isOpen) {
    LetGo();  // it is another file afterwards
  }
  const RestoreEnding ending = PutBackupInPlace(*this, runner_, *restoring, surroundings_.clock());
  if ((isOpen || ending.done) && !OpenUnasked(restoring->store)) {
    return;
  }
  statusBar()->showMessage(ending.told, kToldFor);
}

void MainWindow::ChooseStore() {
  const QString file = AskForStore(this, tr("Open a store"));
  if (!file.isEmpty()) {
    (void)OpenStore(std::filesystem::path(file.toStdString()));
  }
}

void MainWindow::ChooseServer() {
  const QString name =
      AskForServer(*this, serverAsked_.isEmpty() ? remembered_.server() : serverAsked_);
  if (!name.isEmpty()) {
    serverAsked_ = WithoutPassword(name);  // to be mended, where it cannot be opened
  }
  if (!name.isEmpty() && OpenStore(std::filesystem::path(name.toStdString()))) {
    remembered_.SetServer(name);
  }
}

void MainWindow::ChooseExisting() {
  if (!MayLeave()) {
    return;
  }
  const std::filesystem::path made = BringBuildingIn(
      *this, runner_, surroundings_, place_ == nullptr ? std::filesystem::path() : place_->file(),
      remembered_.server());
  if (made.empty()) {
    return;
  }
  if (!OpenUnasked(made)) {
    return;
  }
  if (IsServerName(made.string())) {
    remembered_.SetServer(ToQt(made.string()));
  }
  CheckStore(*place_);  // it tells what was wrong in the file already
}

void MainWindow::ChooseNewStore() {
  const QString file = AskForNewStore(this, tr("Make a new store"));
  if (file.isEmpty() || !MayLeave()) {
    return;
  }
  const auto answer = QMessageBox::question(
      this, tr("New store"), tr("Put the demo building into it?"),
      QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::No);
  if (answer == QMessageBox::Yes || answer == QMessageBox::No) {
    (void)CreateUnasked(std::filesystem::path(file.toStdString()), answer == QMessageBox::Yes);
  }
}

}  // namespace qorhost

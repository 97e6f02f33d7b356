// The window: a store that is open, its units, and the screens.
#pragma once

#include <QActionGroup>
#include <QComboBox>
#include <QListWidget>
#include <QMainWindow>
#include <QSettings>
#include <QString>
#include <QTimer>
#include <exception>
#include <filesystem>
#include <memory>
#include <vector>

#include "host/desks/store_file.h"
#include "host/desktop/calls/call_log_dock.h"
#include "host/desktop/running/workplace.h"
#include "host/desktop/shell/appearance.h"
#include "host/desktop/shell/page_stack.h"
#include "host/desktop/shell/remembered.h"
#include "host/desktop/shell/start_page.h"
#include "host/desktop/shell/view_menu.h"

namespace qorhost {

/// One store at a time. What goes wrong with it is told in a box, and the program goes on.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// The settings keep the layout, the look, and the last store, unit and screen; they must outlive
  /// the window.
  MainWindow(QSettings& settings, WorkSurroundings surroundings);
  ~MainWindow() override;

  /// Each asks before entries that are not saved are lost; false when it was not done.
  bool OpenStore(const std::filesystem::path& file);
  bool OpenDemo();
  bool CreateStoreAt(const std::filesystem::path& file, bool demo);
  bool CloseStore();
  /// The store of the last time, where it is there still; else its name is told.
  void OpenLastStore();

  /// Brings a screen of the table to the front, by its key.
  void ShowScreen(const QString& key);
  void ShowUnit(std::int32_t unitKey);
  /// The screen in front; null where none is.
  [[nodiscard]] ScreenPage* page() const { return pages_->page(); }
  /// Null while no store is open.
  [[nodiscard]] Workplace* place() { return place_.get(); }
  [[nodiscard]] OperationRunner& runner() { return runner_; }
  [[nodiscard]] CallLogDock& calls() { return *calls_; }
  void SetAppearance(const Appearance& appearance);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  static constexpr int kToldFor = 15000;  // milliseconds

  void MakeMenus();
  void MakeStoreMenu();
  void MakeScreensMenu();
  void MakeViewMenu();
  void MakeSides();
  /// False when another operation runs. Raises what reading its units raises; the store that was
  /// open stays so then.
  bool TakeStore(std::unique_ptr<Store> store, const std::filesystem::path& file,
                 const QString& name);
  /// The units and the screen in front as they are stored now.
  void ShowAgain();
  [[nodiscard]] bool ReadUnits(std::int32_t wanted);
  void TakeUnits();
  void LeaveUnit(const QString& name);
  void LeaveUnitLater();
  void LeaveUnitThatIsGone();
  // For those who have asked before entries that are not saved are lost.
  bool OpenUnasked(const std::filesystem::path& file);
  bool CreateUnasked(const std::filesystem::path& file, bool demo);
  void TellNotOpened(const QString& what, const std::exception& failure);
  /// Chooses the wanted unit, where it is there, else the first one.
  void FillUnits(const std::vector<UnitName>& units, std::int32_t wanted);
  void TakeUnit(int index);
  void ShowPage(int row);
  void ChooseStore();
  void ChooseServer();
  void ChooseExisting();
  void ChooseNewStore();
  [[nodiscard]] bool MayLeave();
  void FollowCalls(bool shown);
  void ReopenScreens();
  /// Closes the store, which stays the one that is opened the next time.
  void LetGo();
  void RestoreBackup();
  /// Of the window, as it was the last time.
  void TakeUpLayout();
  void KeepOnScreenLater();
  void KeepOnScreen();
  void Remember();
  /// The unit of the store that is open, and the screen in front.
  void RememberPlace();
  /// The name under which a store is known the next time, whatever folder that is begun in.
  [[nodiscard]] static QString RememberedAs(const std::filesystem::path& store);

  Remembered remembered_;
  WorkSurroundings surroundings_;
  Appearance appearance_;
  QString serverAsked_;  // the last time, whether it was opened or not
  BusyBar* bar_;
  OperationRunner runner_;
  std::unique_ptr<Workplace> place_;
  StartPage* start_;
  PageStack* pages_;
  QWidget* sides_;
  CallLogDock* calls_;
  QListWidget* screens_;
  QComboBox* units_;
  QActionGroup* ofStore_;  // what there is only while a store is open
  QTimer keepingOnScreen_;
  QTimer leavingUnit_;
  ViewMenu* view_ = nullptr;
};

}  // namespace qorhost

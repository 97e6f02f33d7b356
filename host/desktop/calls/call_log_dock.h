// A window beside the screens that shows every call between the controllers and their host.
#pragma once

#include <QDockWidget>
#include <filesystem>
#include <functional>
#include <memory>

#include "host/desktop/calls/call_log.h"
#include "host/desktop/running/workplace.h"

namespace Ui {
class CallLogPanel;
}

namespace qorhost {

/// Follows the calls of a workplace while it is shown, from the opening of its screens on: what is
/// saved can be replayed as long as no line had to go.
class CallLogDock final : public QDockWidget {
  Q_OBJECT

 public:
  explicit CallLogDock(Clock clock, QWidget* parent = nullptr);
  ~CallLogDock() override;

  /// Begins anew with this workplace; null: none is open. No screen may be open. The workplace must
  /// not outlive the dock.
  void Follow(Workplace* place);
  /// Called by the button that begins anew: to close the screens, to call Follow() and to open
  /// them again.
  void OnStartOver(std::function<void()> handler) { onStartOver_ = std::move(handler); }

  [[nodiscard]] bool follows() const { return follows_; }
  [[nodiscard]] CallLog& log() { return log_; }

  /// What it shows is made when it is shown first: most programs end without that.
  void setVisible(bool visible) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void MakePanel();
  void ConnectWidgets();
  void ShowState();
  void Copy() const;
  void Save();
  void SaveTo(const std::filesystem::path& file);

  std::unique_ptr<Ui::CallLogPanel> ui_;
  CallLog log_;
  Workplace* place_ = nullptr;
  bool follows_ = false;
  bool looksAtLatest_ = true;
  std::function<void()> onStartOver_;
};

}  // namespace qorhost

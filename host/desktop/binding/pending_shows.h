// What controls have changed and widgets do not show yet.
#pragma once

#include <QEvent>
#include <QObject>
#include <vector>

namespace qorhost {

/// What shows changes when it is told to.
class ShownLater {
 public:
  /// Shows what was put off.
  virtual void Flush() = 0;

 protected:
  ~ShownLater() = default;
};

/// Shows together what an operation does to a screen's controls, when it is done: at Flush(), or
/// when the window comes to its events. An operation clears most controls and fills them again with
/// what was there; a widget that shows that already has nothing to do. What is
/// noted must outlive it. One thread.
class PendingShows final : public QObject {
 public:
  /// To be called once for each until it is flushed.
  void Note(ShownLater& later);
  void Flush();

  bool event(QEvent* event) override;

 private:
  std::vector<ShownLater*> changed_;
  bool posted_ = false;
};

}  // namespace qorhost

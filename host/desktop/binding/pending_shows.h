// What controls have changed and widgets do not show yet.
#pragma once

#include <QEvent>
#include <QObject>
#include <vector>

namespace qorhost {

class ControlBinding;

/// Shows together what an operation does to a screen's controls, when it is done: at Flush(), or
/// when the window comes to its events. An operation clears most controls and fills them again with
/// what was there; a widget that shows that already has nothing to do. The bindings must outlive
/// what is noted of them. One thread.
class PendingShows final : public QObject {
 public:
  /// To be called once for a binding until it is flushed.
  void Note(ControlBinding& binding);
  void Flush();

  bool event(QEvent* event) override;

 private:
  std::vector<ControlBinding*> changed_;
  bool posted_ = false;
};

}  // namespace qorhost

// Ends a process once its window has been painted.
#pragma once

#include <QEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>
#include <cstdlib>

namespace qorbench {

/// For a window that is not painted yet, which owns it. The process ends as it is: what it would
/// let go of first is not measured.
class EndWhenPainted final : public QObject {
 public:
  explicit EndWhenPainted(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      // Behind the painting of all that is in the window.
      QTimer::singleShot(0, [] { std::_Exit(EXIT_SUCCESS); });
    }
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace qorbench

// Keeps a person's input away from the windows while an operation runs.
#pragma once

#include <QAbstractButton>
#include <QEvent>
#include <QGuiApplication>
#include <QObject>
#include <QPointer>

namespace qorhost {

/// While it is shut, mouse, keys, wheel, drops, shortcuts and closing reach nothing but the one
/// button; Escape presses it. What is not let through is gone: it was not meant for what a window
/// shows later. Painting and timers go on.
class InputGate final : public QObject {
 public:
  /// `cancel` must outlive it, or be null.
  explicit InputGate(QAbstractButton* cancel, QObject* parent = nullptr);
  ~InputGate() override;

  void Shut();
  void Open();
  [[nodiscard]] bool isShut() const { return shut_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool Holds(QObject* watched, QEvent* event);

  QPointer<QAbstractButton> cancel_;
  bool shut_ = false;
};

/// Lets input through while it lives, for a message that is shown meanwhile.
class OpenGate {
 public:
  explicit OpenGate(InputGate& gate) : gate_(gate), wasShut_(gate.isShut()) {
    gate_.Open();
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~OpenGate() {
    QGuiApplication::restoreOverrideCursor();
    if (wasShut_) {
      gate_.Shut();
    }
  }
  OpenGate(const OpenGate&) = delete;
  OpenGate& operator=(const OpenGate&) = delete;

 private:
  InputGate& gate_;
  bool wasShut_;
};

}  // namespace qorhost

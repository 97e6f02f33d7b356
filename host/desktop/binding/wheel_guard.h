// Keeps a wheel that turns over an editor, on its way down a form, from changing it.
#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

namespace qorhost {

/// An event filter for editors, owned by the one that it watches.
class WheelGuard final : public QObject {
 public:
  /// From now on the editor turns with the wheel only while it has the focus.
  static void Watch(QWidget& editor) {
    editor.setFocusPolicy(Qt::StrongFocus);
    editor.installEventFilter(new WheelGuard(&editor));
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && widget != nullptr && !widget->hasFocus()) {
      event->ignore();
      return true;
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  using QObject::QObject;
};

}  // namespace qorhost

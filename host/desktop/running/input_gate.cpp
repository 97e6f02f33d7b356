#include "host/desktop/running/input_gate.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace qorhost {

namespace {

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

}  // namespace

InputGate::InputGate(QAbstractButton* cancel, QObject* parent) : QObject(parent), cancel_(cancel) {}

InputGate::~InputGate() {
  Open();
}

void InputGate::Shut() {
  if (!shut_) {
    shut_ = true;
    QCoreApplication::instance()->installEventFilter(this);
  }
}

void InputGate::Open() {
  if (shut_) {
    shut_ = false;
    QCoreApplication::instance()->removeEventFilter(this);
  }
}

bool InputGate::Holds(QObject* watched, QEvent* event) {
  // A window hands what it gets on to the widget that it is meant for.
  if (!IsInput(event->type()) || (watched->isWindowType() && event->type() != QEvent::Close)) {
    return false;
  }
  if (event->type() == QEvent::KeyPress && cancel_ != nullptr &&
      dynamic_cast<QKeyEvent&>(*event).key() == Qt::Key_Escape) {
    cancel_->click();
    return true;
  }
  return watched != cancel_;
}

bool InputGate::eventFilter(QObject* watched, QEvent* event) {
  if (!Holds(watched, event)) {
    return QObject::eventFilter(watched, event);
  }
  event->setAccepted(event->type() != QEvent::Close);
  return true;
}

}  // namespace qorhost

#include "host/desktop/screens/typing_pause.h"

#include <QEvent>
#include <QKeyEvent>
#include <utility>

namespace qorhost {

namespace {

constexpr int kPause = 200;  // milliseconds between the keys of somebody who types

bool IsShortcut(const QEvent& event) {
  return event.type() == QEvent::ShortcutOverride &&
         (static_cast<const QKeyEvent&>(event).modifiers() &
          (Qt::AltModifier | Qt::ControlModifier)) != Qt::NoModifier;
}

}  // namespace

TypingPause::TypingPause(QLineEdit& line, std::function<void(bool next)> find)
    : QObject(&line), line_(line), find_(std::move(find)) {
  pause_.setSingleShot(true);
  pause_.setInterval(kPause);
  connect(&pause_, &QTimer::timeout, this, [this] { Find(false); });
  connect(&line_, &QLineEdit::textChanged, this, [this] { pause_.start(); });
  connect(&line_, &QLineEdit::returnPressed, this, [this] { Find(!pause_.isActive()); });
}

void TypingPause::EndWhenLeft() {
  line_.installEventFilter(this);
}

bool TypingPause::eventFilter(QObject* watched, QEvent* event) {
  // A line that is being destroyed loses the focus, too, as no line any more.
  const bool isThere = qobject_cast<QLineEdit*>(watched) != nullptr;
  if (isThere && pause_.isActive() && (event->type() == QEvent::FocusOut || IsShortcut(*event))) {
    Find(false);
  }
  return QObject::eventFilter(watched, event);
}

void TypingPause::Find(bool next) {
  pause_.stop();
  find_(next);
}

void NarrowBy(QLineEdit& line, std::function<void(const QString& text)> narrow) {
  auto* pause = new TypingPause(line, [&line, narrow = std::move(narrow)](bool next) {
    if (!next) {
      narrow(line.text());
    }
  });
  pause->EndWhenLeft();
}

}  // namespace qorhost

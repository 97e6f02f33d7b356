#include "host/desktop/binding/pending_shows.h"

#include <QCoreApplication>
#include <utility>

#include "host/desktop/binding/control_binding.h"

namespace qorhost {

void PendingShows::Note(ControlBinding& binding) {
  changed_.push_back(&binding);
  if (!posted_) {
    posted_ = true;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }
}

void PendingShows::Flush() {
  for (ControlBinding* binding : std::exchange(changed_, {})) {
    binding->Flush();
  }
}

bool PendingShows::event(QEvent* event) {
  if (event->type() != QEvent::User) {
    return QObject::event(event);
  }
  posted_ = false;
  Flush();
  return true;
}

}  // namespace qorhost

#include "host/desktop/binding/pending_shows.h"

#include <QCoreApplication>
#include <utility>

namespace qorhost {

void PendingShows::Note(ShownLater& later) {
  changed_.push_back(&later);
  if (!posted_) {
    posted_ = true;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }
}

void PendingShows::Flush() {
  for (ShownLater* later : std::exchange(changed_, {})) {
    later->Flush();
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

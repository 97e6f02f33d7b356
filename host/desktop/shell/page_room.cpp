#include "host/desktop/shell/page_room.h"

#include <QEvent>
#include <QScreen>
#include <QScrollBar>

namespace qorhost {

namespace {

constexpr QSize kSmallestScreen(1280, 800);  // that the program is made for
constexpr int kLinesAround = 6;              // menus, the line below, the window's frame
constexpr int kAtTheSides = 40;              // pixels

}  // namespace

QRect RoomOnScreen(const QWidget& window) {
  const QRect room = window.screen()->availableGeometry();
  return {room.topLeft(), room.size().expandedTo(kSmallestScreen)};
}

PageRoom::PageRoom(QWidget* pages, const QWidget& beside, QWidget* parent)
    : QScrollArea(parent), beside_(beside) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidget(pages);
}

QSize PageRoom::minimumSizeHint() const {
  const QSize around(beside_.sizeHint().width() + kAtTheSides,
                     kLinesAround * fontMetrics().lineSpacing());
  return widget()->minimumSizeHint().boundedTo(RoomOnScreen(*this).size() - around);
}

QSize PageRoom::sizeHint() const {
  return widget()->sizeHint();
}

bool PageRoom::event(QEvent* event) {
  const bool done = QScrollArea::event(event);
  if (event->type() == QEvent::LayoutRequest) {
    updateGeometry();
    Fit();
  }
  return done;
}

void PageRoom::resizeEvent(QResizeEvent* event) {
  Fit();
  QScrollArea::resizeEvent(event);
}

/// A bar that has to be there takes some of the room itself.
void PageRoom::Fit() {
  const QSize least = widget()->minimumSizeHint();
  QSize room = maximumViewportSize();
  if (least.width() > room.width()) {
    room.rheight() -= horizontalScrollBar()->sizeHint().height();
  }
  if (least.height() > room.height()) {
    room.rwidth() -= verticalScrollBar()->sizeHint().width();
  }
  widget()->resize(room.expandedTo(least));
}

}  // namespace qorhost

#include "host/desktop/screens/fault_mark.h"

#include <QEvent>
#include <QPainter>
#include <QScrollArea>
#include <algorithm>

namespace qorhost {

namespace {
constexpr int kAround = 3;  // pixels between the widget and the frame
constexpr QColor kFrame(0xD0, 0x3B, 0x3B);
constexpr QColor kNote(0xB3, 0x2D, 0x2D);
}  // namespace

FaultMark::FaultMark(QWidget& page) : QWidget(&page), page_(page), note_(new QLabel(&page)) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  note_->setAttribute(Qt::WA_TransparentForMouseEvents);
  note_->setObjectName(QStringLiteral("faultNote"));
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  note_->setMargin(2 * kAround);
  note_->setAutoFillBackground(true);
  QPalette colors;
  colors.setColor(QPalette::Window, kNote);
  colors.setColor(QPalette::WindowText, Qt::white);
  note_->setPalette(colors);
  page_.installEventFilter(this);
  hide();
  note_->hide();
}

void FaultMark::Show(QWidget& widget, const QString& why) {
  Clear();
  marked_ = &widget;
  // Whatever the widget stands on may move it, as a scrolled form does.
  for (QWidget* moved = &widget; moved != &page_; moved = moved->parentWidget()) {
    moved->installEventFilter(this);
    if (auto* area = qobject_cast<QScrollArea*>(moved)) {
      area->ensureWidgetVisible(&widget);
    }
  }
  widget.setAccessibleDescription(why);
  note_->setText(why);
  Place();
  show();
  note_->show();
  raise();
  note_->raise();
}

void FaultMark::Clear() {
  if (marked_ != nullptr) {
    for (QWidget* moved = marked_; moved != &page_; moved = moved->parentWidget()) {
      moved->removeEventFilter(this);
    }
    marked_->setAccessibleDescription({});
    marked_ = nullptr;
  }
  hide();
  note_->hide();
}

void FaultMark::Place() {
  if (marked_ == nullptr) {
    return;
  }
  const QRect framed(marked_->mapTo(&page_, QPoint(0, 0)), marked_->size());
  setGeometry(framed.adjusted(-kAround, -kAround, kAround, kAround));
  const int widest = std::max(page_.width() - framed.left() - kAround, 1);
  const int oneLine =
      note_->fontMetrics().horizontalAdvance(note_->text()) + 2 * note_->margin() + kAround;
  const int width = std::min(oneLine, widest);
  const int height = note_->heightForWidth(width);
  const bool below = framed.bottom() + kAround + height <= page_.height();
  note_->setGeometry(framed.left(),
                     below ? framed.bottom() + kAround : framed.top() - kAround - height, width,
                     height);
}

bool FaultMark::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::LayoutRequest:
      Place();
      break;
    case QEvent::Hide:
      if (watched == marked_) {
        Clear();
      }
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void FaultMark::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(kFrame, 2));
  painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), kAround, kAround);
}

}  // namespace qorhost

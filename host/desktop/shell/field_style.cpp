#include "host/desktop/shell/field_style.h"

#include <QApplication>
#include <QIconEngine>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

namespace qorhost {

namespace {

// Fusion's own shades, so that all kinds of fields look alike.
constexpr int kOutlineShade = 140;
constexpr int kOutlineLight = 220;  // on a dark window nobody would see a darker line
constexpr int kFocusShade = 125;
constexpr int kGlow = 40;  // of 255

/// A line edit by itself: one that is a part of a spin box has no frame.
const QLineEdit* FramedEdit(const QWidget* widget) {
  const auto* edit = qobject_cast<const QLineEdit*>(widget);
  return edit != nullptr && edit->hasFrame() ? edit : nullptr;
}

bool IsDark(const QColor& window) {
  constexpr int kMiddle = 128;
  return window.lightness() < kMiddle;
}

QColor OutlineOn(const QColor& window) {
  return IsDark(window) ? window.lighter(kOutlineLight) : window.darker(kOutlineShade);
}

/// Four lines that leave the corners out.
void DrawLines(QPainter& painter, const QRect& rect, const QColor& color) {
  const QRect inner = rect.adjusted(1, 1, -1, -1);
  painter.fillRect(QRect(inner.left(), rect.top(), inner.width(), 1), color);
  painter.fillRect(QRect(inner.left(), rect.bottom(), inner.width(), 1), color);
  painter.fillRect(QRect(rect.left(), inner.top(), 1, inner.height()), color);
  painter.fillRect(QRect(rect.right(), inner.top(), 1, inner.height()), color);
}

void DrawFrame(QPainter& painter, const QStyleOption& option) {
  const QColor window = option.palette.color(QPalette::Window);
  const QRect& rect = option.rect;
  for (const QPoint corner :
       {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()}) {
    painter.fillRect(QRect(corner, QSize(1, 1)), window);
  }
  if (!option.state.testFlag(QStyle::State_HasFocus)) {
    DrawLines(painter, rect, OutlineOn(window));
    return;
  }
  QColor glow = option.palette.color(QPalette::Highlight);
  DrawLines(painter, rect, glow.darker(kFocusShade));
  glow.setAlpha(kGlow);
  DrawLines(painter, rect.adjusted(1, 1, -1, -1), glow);
}

/// Around a box or a button to tick, above Fusion's own line.
void DrawOutline(QStyle::PrimitiveElement element, QPainter& painter, const QStyleOption& option) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(OutlineOn(option.palette.color(QPalette::Window)));
  painter.setBrush(Qt::NoBrush);
  const QRectF outline = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (element == QStyle::PE_IndicatorRadioButton) {
    painter.drawEllipse(outline);
  } else {
    painter.drawRect(outline);
  }
  painter.restore();
}

/// Two angles that point to the right.
class MoreToTheRight final : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/,
             QIcon::State /*state*/) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QApplication::palette().color(QPalette::ButtonText), 1.5));
    const double step = rect.height() / 4.0;
    const double middle = rect.top() + rect.height() / 2.0;
    for (const double left : {rect.left() + step, rect.left() + 2 * step}) {
      painter->drawPolyline(
          QPolygonF{{left, middle - step}, {left + step, middle}, {left, middle + step}});
    }
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }
  [[nodiscard]] QIconEngine* clone() const override { return new MoreToTheRight; }
};

}  // namespace

FieldStyle::FieldStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void FieldStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  if (element == PE_FrameLineEdit && FramedEdit(widget) != nullptr) {
    DrawFrame(*painter, *option);
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool isTicked = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton ||
                        element == PE_IndicatorItemViewItemCheck;
  if (isTicked && IsDark(option->palette.color(QPalette::Window))) {
    DrawOutline(element, *painter, *option);
  }
}

void FieldStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  if (element == CE_DockWidgetTitle) {
    painter->setFont(QApplication::font("QDockWidgetTitle"));
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

QIcon FieldStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                               const QWidget* widget) const {
  return which == SP_ToolBarHorizontalExtensionButton
             ? QIcon(new MoreToTheRight)
             : QProxyStyle::standardIcon(which, option, widget);
}

QSize FieldStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                   const QSize& contents, const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  const int letter = option == nullptr ? 0 : option->fontMetrics.height();
  if (type == CT_PushButton) {
    size.setWidth(std::max(size.width(), contents.width() + letter * 3 / 2));
  } else if (type == CT_ItemViewItem && qobject_cast<const QListView*>(widget) != nullptr) {
    size.rheight() += letter / 3;
  }
  return size;
}

void FieldStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (FramedEdit(widget) != nullptr) {
    widget->setAttribute(Qt::WA_OpaquePaintEvent);
  }
}

void FieldStyle::unpolish(QWidget* widget) {
  if (FramedEdit(widget) != nullptr) {
    widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
  }
  QProxyStyle::unpolish(widget);
}

}  // namespace qorhost

#include "host/desktop/shell/field_style.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>

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

// How fields are drawn.
#pragma once

#include <QIcon>
#include <QProxyStyle>

namespace qorhost {

/// Fusion, but for the frames of line edits: straight lines with the corners left out look the
/// same, and Fusion's curves take longer to paint than all the rest of a field in which somebody
/// types. Such a field covers all that it stands on, which is not painted again below it. On a dark
/// window lines around fields and boxes are lighter than it, where Fusion's are darker. The title
/// of a dock has letters as large as all others, also after their size has changed. Texts of
/// buttons and of lists have more room around them. What leads to entries of a menu bar that has no
/// room for them is painted: a picture would have every part of Qt that reads pictures loaded at
/// the start.
class FieldStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  FieldStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                     const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  void polish(QWidget* widget) override;
  void unpolish(QWidget* widget) override;

  using QProxyStyle::polish;
  using QProxyStyle::unpolish;
};

}  // namespace qorhost

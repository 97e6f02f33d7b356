#include "host/desktop/shell/appearance.h"

#include <QFont>
#include <QFontInfo>
#include <QPointer>
#include <QStyle>
#include <algorithm>

#include "host/desktop/shell/field_style.h"

namespace qorhost {

namespace {

constexpr double kHeadingSize = 1.4;  // of the text

struct Colors {
  QColor window;
  QColor base;
  QColor alternate;
  QColor text;
  QColor weakText;
  QColor button;
  QColor accent;
  QColor link;
};

const Colors kLightColors{QColor(0xF3, 0xF4, 0xF6), QColor(0xFF, 0xFF, 0xFF),
                          QColor(0xF6, 0xF8, 0xFA), QColor(0x1B, 0x1F, 0x24),
                          QColor(0x7A, 0x82, 0x8C), QColor(0xE9, 0xEB, 0xEE),
                          QColor(0x1F, 0x6F, 0xB5), QColor(0x0B, 0x5C, 0xAD)};
const Colors kDarkColors{QColor(0x23, 0x27, 0x2E), QColor(0x2E, 0x33, 0x3C),
                         QColor(0x2A, 0x2F, 0x37), QColor(0xE6, 0xE9, 0xED),
                         QColor(0x9A, 0xA2, 0xAD), QColor(0x3C, 0x42, 0x4D),
                         QColor(0x2F, 0x7F, 0xC4), QColor(0x6C, 0xB6, 0xF2)};

}  // namespace

QPalette PaletteOf(Theme theme) {
  const Colors& colors = theme == Theme::kDark ? kDarkColors : kLightColors;
  QPalette palette(colors.text, colors.button, colors.button.lighter(), colors.button.darker(),
                   colors.weakText, colors.text, Qt::white, colors.base, colors.window);
  palette.setColor(QPalette::AlternateBase, colors.alternate);
  palette.setColor(QPalette::ButtonText, colors.text);
  palette.setColor(QPalette::Highlight, colors.accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, colors.link);
  palette.setColor(QPalette::LinkVisited, colors.link);
  palette.setColor(QPalette::PlaceholderText, colors.weakText);
  palette.setColor(QPalette::ToolTipBase, colors.alternate);
  palette.setColor(QPalette::ToolTipText, colors.text);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, colors.weakText);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, colors.window);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.weakText);
  return palette;
}

void Apply(const Appearance& appearance) {
  static const QFont system = QApplication::font();
  // The application owns it, and deletes it for another one.
  static QPointer<FieldStyle> style;
  if (style.isNull()) {
    style = new FieldStyle;
    QApplication::setStyle(style);
  }
  QApplication::setPalette(PaletteOf(appearance.theme));
  QFont font = system;
  const int percent = std::clamp(appearance.textPercent, kUsualTextPercent, kLargestTextPercent);
  if (system.pointSizeF() > 0) {
    font.setPointSizeF(system.pointSizeF() * percent / kUsualTextPercent);
  } else {
    font.setPixelSize(system.pixelSize() * percent / kUsualTextPercent);
  }
  QApplication::setFont(font);
  QApplication::setFont(font, "QDockWidgetTitle");  // else of a size of their own on some platforms
  QFont heading = font;
  heading.setPointSizeF(QFontInfo(font).pointSizeF() * kHeadingSize);
  QApplication::setFont(heading, "qorhost::Heading");
}

}  // namespace qorhost

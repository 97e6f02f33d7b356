// Texts of the desks, UTF-8, and texts of widgets, UTF-16.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace qorhost {

[[nodiscard]] inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

}  // namespace qorhost

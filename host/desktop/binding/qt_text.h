// Texts and days of the desks, and those of widgets: UTF-8 and UTF-16.
#pragma once

#include <QDate>
#include <QString>
#include <string>
#include <string_view>

#include "frame/date.h"

namespace qorhost {

[[nodiscard]] inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The day of a date.
[[nodiscard]] inline QDate ToQtDay(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  return {civil.year, civil.month, civil.day};
}

[[nodiscard]] inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

}  // namespace qorhost

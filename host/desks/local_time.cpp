#include "host/desks/local_time.h"

#include <fmt/format.h>

#include <cstdlib>
#include <ctime>

#include "frame/date.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

std::string WithOffset(const qorcred::Value& time) {
  const auto* date = time.As<qorcred::Date>();
  if (date == nullptr) {
    return {};
  }
  constexpr int kFirstYear = 1900;
  constexpr int kSecondsInMinute = 60;
  constexpr int kMinutesInHour = 60;
  const qorcred::CivilTime civil = qorcred::ToCivil(*date);
  std::tm parts{};
  parts.tm_year = civil.year - kFirstYear;
  parts.tm_mon = civil.month - 1;
  parts.tm_mday = civil.day;
  parts.tm_hour = civil.hour;
  parts.tm_min = civil.minute;
  parts.tm_sec = civil.second;
  parts.tm_isdst = -1;  // the system's to say
  (void)std::mktime(&parts);
  const auto minutes = static_cast<int>(parts.tm_gmtoff / kSecondsInMinute);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}{}{:02}:{:02}", civil.year, civil.month,
                     civil.day, civil.hour, civil.minute, civil.second, minutes < 0 ? '-' : '+',
                     std::abs(minutes) / kMinutesInHour, std::abs(minutes) % kMinutesInHour);
}

std::string WithUtcOffset(qorcred::Date time) {
  std::string text = dialect::CanonicalDate(time) + "+00:00";
  text.replace(text.find(' '), 1, "T");
  return text;
}

}  // namespace qorhost

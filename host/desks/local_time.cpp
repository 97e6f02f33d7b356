#include "host/desks/local_time.h"

#include <fmt/format.h>

#include <cstdlib>
#include <ctime>

#include "frame/date.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

constexpr int kFirstYear = 1900;
constexpr int kSecondsInMinute = 60;

std::tm BrokenDown(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  std::tm parts{};
  parts.tm_year = civil.year - kFirstYear;
  parts.tm_mon = civil.month - 1;
  parts.tm_mday = civil.day;
  parts.tm_hour = civil.hour;
  parts.tm_min = civil.minute;
  parts.tm_sec = civil.second;
  parts.tm_isdst = -1;  // the system's to say
  return parts;
}

}  // namespace

std::string WithOffset(const qorcred::Value& time) {
  const auto* date = time.As<qorcred::Date>();
  if (date == nullptr) {
    return {};
  }
  constexpr int kMinutesInHour = 60;
  const qorcred::CivilTime civil = qorcred::ToCivil(*date);
  std::tm parts = BrokenDown(*date);
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

qorcred::Date TimeOn(TimeOf clock, qorcred::Date time, int offset) {
  if (clock == TimeOf::kCalendar) {
    return time;
  }
  std::tm parts = BrokenDown(time);
  const std::time_t moment = timegm(&parts) - static_cast<std::time_t>(offset) * kSecondsInMinute;
  (void)(clock == TimeOf::kUtc ? gmtime_r(&moment, &parts) : localtime_r(&moment, &parts));
  return qorcred::FromCivil({parts.tm_year + kFirstYear, parts.tm_mon + 1, parts.tm_mday,
                             parts.tm_hour, parts.tm_min, parts.tm_sec});
}

}  // namespace qorhost

#include "host/desks/activity.h"

#include <algorithm>

#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

constexpr std::int64_t kDaysInWeek = 7;

qorcred::Date MondayOf(qorcred::Date day) {
  const qorcred::Date someMonday = qorcred::FromCivil({2024, 1, 1});
  const std::int64_t since = qorcred::DaysBetween(someMonday, day) % kDaysInWeek;
  const std::int64_t back = since < 0 ? since + kDaysInWeek : since;
  return qorcred::AddDays(qorcred::DayOf(day), -static_cast<double>(back));
}

}  // namespace

std::vector<WeekOfWork> ActivityByWeek(DeskSession& session, std::optional<std::int32_t> unitKey,
                                       std::size_t weeks) {
  const qorcred::Date last = MondayOf(session.Today());
  std::vector<WeekOfWork> activity(weeks);
  for (std::size_t at = 0; at < weeks; ++at) {
    const auto back = static_cast<double>(kDaysInWeek * static_cast<std::int64_t>(weeks - 1 - at));
    activity[at].monday = qorcred::AddDays(last, -back);
  }
  if (activity.empty()) {
    return activity;
  }
  for (const WorkEntry& entry : session.sql().audit().After(0, unitKey)) {
    const auto moment = dialect::FromCanonicalDate(entry.at);
    const std::int64_t days = moment ? qorcred::DaysBetween(activity.front().monday, *moment) : -1;
    if (days >= 0) {
      const auto week = static_cast<std::size_t>(days / kDaysInWeek);
      ++activity[std::min(week, weeks - 1)].entries;
    }
  }
  return activity;
}

}  // namespace qorhost

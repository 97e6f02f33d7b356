#include "host/desks/attention_days.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/desks/listed_rows.h"

namespace qorhost {

std::int64_t AttentionDays::Until(qorcred::Date end) const {
  return qorcred::DaysBetween(today, end);
}

std::string AttentionDays::SoonIn(std::string_view column) const {
  const auto text = [](qorcred::Date day) { return qorcred::DateText(qorcred::DayOf(day)); };
  return fmt::format("{0} >= #{1}# AND {0} < #{2}#", column, text(today),
                     text(qorcred::AddDays(today, within + 1)));
}

std::string CodesThatEnd() {
  return fmt::format("ACTIVE=True AND {}", kIsListedCode);
}

}  // namespace qorhost

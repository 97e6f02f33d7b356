#include "host/desks/unit_default_end.h"

#include <string_view>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/text.h"
#include "host/desks/list_entries.h"
#include "host/desks/shown_value.h"
#include "host/desks/typed_input.h"
#include "host/desks/unit_fields.h"

namespace qorhost {

using qorcred::Null;
using qorcred::Value;

std::vector<Field> ReadDefaultEnd(const std::string& given) {
  const std::string_view text = qorcred::Trim(given);
  const std::string_view inFront = text.substr(0, text.empty() ? 0 : text.size() - 1);
  const bool isDays = (text.ends_with('d') || text.ends_with('D')) && !inFront.empty() &&
                      qorcred::IsDigits(inFront);
  Value kind = std::int32_t{kNever};
  Value date = Null{};
  Value days = Null{};
  if (isDays) {
    kind = std::int32_t{kAfterDays};
    days = ReadLong(unit_input::kDefaultEnd, inFront, {1, unit_bound::kDays});
  } else if (!SaysNone(text)) {
    kind = std::int32_t{kOnDate};
    date = qorcred::DayOf(ReadDate(unit_input::kDefaultEnd, text).date);
  }
  return {{"RECORDDEACTIVATION", kind}, {"DEACTIVATIONDATE", date}, {"DEACTIVATIONDAYS", days}};
}

std::string DefaultEndShown(const Value& kind, const Value& date, const Value& days) {
  switch (static_cast<int>(qorcred::NumericValue(kind))) {
    case kOnDate:
      if (const auto* day = date.As<qorcred::Date>()) {
        return ShownDay(*day);
      }
      return "";
    case kAfterDays:
      return qorcred::TextOrEmpty(days) + "d";
    default:
      return std::string(kNoneWord);
  }
}

}  // namespace qorhost

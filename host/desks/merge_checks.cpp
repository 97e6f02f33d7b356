#include "host/desks/merge_checks.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "frame/convert.h"
#include "frame/schedules.h"
#include "frame/text.h"
#include "host/desks/typed_input.h"
#include "host/store/rows.h"

namespace qorhost {

namespace {

using qorcred::unit_place::Place;

struct Named {
  Place place;
  std::string_view name;
};

constexpr std::array kTyped{Named{Place::kPhone, "the phone number"},
                            Named{Place::kExtension, "the extension"},
                            Named{Place::kCfPhone, "the call-forward phone number"},
                            Named{Place::kCfExtension, "the call-forward extension"},
                            Named{Place::kDisplayName, "the display name"}};
constexpr std::array kChosen{Named{Place::kDndSchedule, "do-not-disturb schedule"},
                             Named{Place::kCfSchedule, "call-forward schedule"}};

bool IsOn(const UnitCode& code, Place flag) {
  return code[flag] == "1";
}

bool IsBlank(const UnitCode& code, Place text) {
  return qorcred::Trim(code[text]).empty();
}

/// Whether an active code ends before it has begun.
bool HasNoPeriod(const UnitCode& code) {
  const bool limited = IsOn(code, Place::kStartDateUsed) && IsOn(code, Place::kEndDateUsed);
  // YYMMDDhhmm sorts as the dates do: all of them are of one century.
  return IsOn(code, Place::kActive) && limited &&
         code[Place::kEndDate] + code[Place::kEndTime] <=
             code[Place::kStartDate] + code[Place::kStartTime];
}

}  // namespace

ScheduleIds OfferedSchedules(DeskSession& session, std::int32_t unitKey) {
  ScheduleIds ids;
  for (const qorcred::FixedSchedule& fixed : {qorcred::kNoAccess, qorcred::kFullAccess}) {
    ids.insert(std::to_string(fixed.id));
  }
  const QueryResult rows = session.sql().Select(qorcred::StoredSchedulesQuery(unitKey));
  for (const ResultRow row : rows.rows()) {
    ids.insert(qorcred::TextOrEmpty(row[0]));
  }
  return ids;
}

std::string FaultOnScreen(const UnitCode& code, const ScheduleIds& schedules) {
  for (const Named& text : kTyped) {
    if (!IsTypable(code[text.place])) {
      return fmt::format("{} holds control characters", text.name);
    }
  }
  if (IsBlank(code, Place::kPhone)) {
    return "the phone number is empty";
  }
  for (const Named& schedule : kChosen) {
    const std::string& id = code[schedule.place];
    if (!id.empty() && !schedules.contains(id)) {
      return fmt::format("the {} {} is none of this unit's schedules", schedule.name, id);
    }
  }
  if (IsOn(code, Place::kIsDndChecked) && IsBlank(code, Place::kDndSchedule)) {
    return "do not disturb is on, but has no schedule";
  }
  if (IsOn(code, Place::kIsCfChecked) && IsBlank(code, Place::kCfSchedule)) {
    return "call forwarding is on, but has no schedule";
  }
  if (IsOn(code, Place::kIsCfChecked) && IsBlank(code, Place::kCfPhone)) {
    return "call forwarding is on, but has no phone number";
  }
  return HasNoPeriod(code) ? "the end date is not later than the start date" : "";
}

}  // namespace qorhost

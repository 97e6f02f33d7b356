#include "host/desks/merge_checks.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "frame/text.h"
#include "host/components/application_object.h"
#include "host/desks/desk_error.h"
#include "host/desks/typed_input.h"
#include "host/desks/unit_settings.h"

namespace qorhost {

namespace {

using qorcred::unit_place::Place;

constexpr std::array kTyped{PlaceName{Place::kPhone, "the phone number"},
                            PlaceName{Place::kExtension, "the extension"},
                            PlaceName{Place::kCfPhone, "the call-forward phone number"},
                            PlaceName{Place::kCfExtension, "the call-forward extension"},
                            PlaceName{Place::kDisplayName, "the display name"}};
constexpr std::array kChosen{PlaceName{Place::kDndSchedule, "do-not-disturb schedule"},
                             PlaceName{Place::kCfSchedule, "call-forward schedule"}};

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

std::string FaultOnScreen(const UnitCode& code, const ScheduleIds& schedules) {
  for (const PlaceName& text : kTyped) {
    if (!IsTypable(code[text.place])) {
      return fmt::format("{} holds control characters", text.name);
    }
  }
  if (IsBlank(code, Place::kPhone)) {
    return "the phone number is empty";
  }
  for (const PlaceName& schedule : kChosen) {
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

void RequireRoom(DeskSession& session, std::int32_t unitKey, const MergePlan& plan,
                 const std::vector<UnitCode>& unit) {
  const std::optional<std::int32_t> digits = CodeDigitsOf(session, unitKey);
  for (const MergeStep& step : plan.steps) {
    if (step.action == MergeAction::kDelete || !digits) {
      continue;
    }
    const std::string number = std::to_string(NumberOf(unit[step.unitCode]));
    if (number.size() > static_cast<std::size_t>(*digits)) {
      throw RefusedError(fmt::format(
          "the directory code {} is longer than the {} digits of this unit's codes; nothing was "
          "changed",
          number, *digits));
    }
  }
  const auto inserts = static_cast<std::int64_t>(plan.Count(MergeAction::kInsert));
  const auto deletions = static_cast<std::int64_t>(plan.Count(MergeAction::kDelete));
  const std::optional<std::int32_t> capacity = CapacityOf(session, unitKey);
  if (!capacity || inserts <= deletions) {
    return;
  }
  const std::int64_t then =
      ReadUnitStatus(session.sql(), unitKey).CodesInUse() + inserts - deletions;
  if (then > *capacity) {
    throw RefusedError(
        fmt::format("the unit would hold {} combined codes, and its type allows {}; nothing was "
                    "changed",
                    then, *capacity));
  }
}

}  // namespace qorhost

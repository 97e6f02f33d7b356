#include "host/desks/unit_settings.h"

#include <fmt/format.h>

#include <array>
#include <string>

#include "frame/capacity.h"
#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "host/desks/credential_types.h"
#include "host/desks/desk_error.h"
#include "host/desks/unit_default_end.h"
#include "host/desks/unit_fields.h"

namespace qorhost {

namespace {

constexpr std::string_view kDaysColumn = "DEACTIVATIONDAYS";
constexpr std::array kBounds{
    SettingBound{"MaxDigitsDirectoryCode", unit_input::kCodeDigits, 1, unit_bound::kDigits,
                 "--code-digits N"},
    SettingBound{"MaxDigitsEntryCode", unit_input::kEntryDigits, 1, unit_bound::kDigits,
                 "--entry-digits N"},
    SettingBound{kDaysColumn, "days to the default end", 1, unit_bound::kDays,
                 "--default-end DAYSd"},
    SettingBound{"CARDDEFAULTFACILITYCODE", unit_input::kCardFacility, 0,
                 credential_bound::kFacility, "--card-facility F"},
    SettingBound{"RFDEFAULTFACILITYCODE", unit_input::kTransmitterFacility, 0,
                 credential_bound::kFacility, "--transmitter-facility F"},
};

}  // namespace

std::vector<const SettingBound*> BrokenBounds(
    const std::function<std::optional<std::int32_t>(std::string_view column)>& number) {
  std::vector<const SettingBound*> broken;
  for (const SettingBound& bound : kBounds) {
    const std::optional<std::int32_t> given = number(bound.column);
    const bool counts = bound.column != kDaysColumn || number("RECORDDEACTIVATION") == kAfterDays;
    if (given && counts && (*given < bound.lowest || *given > bound.highest)) {
      broken.push_back(&bound);
    }
  }
  return broken;
}

std::string NoSettingsText(std::int32_t unitKey, const std::string& name) {
  return fmt::format(
      "unit {0}{1} has no settings: give it a type ('qorhost units edit {0} --type TYPE')", unitKey,
      name.empty() ? "" : ", " + name + ",");
}

void RequireSettings(DeskSession& session, std::int32_t unitKey) {
  const std::optional<UnitFacts> facts = session.sql().units().Find(unitKey);
  if (!facts || !facts->hasSettings) {
    throw FailureError(NoSettingsText(unitKey, facts ? facts->name : ""));
  }
}

namespace {

QueryResult StoredCapacity(DeskSession& session, std::int32_t unitKey) {
  return session.sql().Select(qorcred::CapacityQuery(unitKey));
}

}  // namespace

std::optional<std::int32_t> CapacityOf(DeskSession& session, std::int32_t unitKey) {
  const QueryResult answer = StoredCapacity(session, unitKey);
  qorcred::Base64Decoder decoder;
  try {
    return qorcred::ToInteger(qorcred::DecodedCapacity(
        session.ownHost(), decoder, qorcred::TableView(qorcred::ObjectRef(answer.table))));
  } catch (const qorcred::RuntimeError&) {
    return std::nullopt;
  }
}

bool HasNoCapacity(DeskSession& session, std::int32_t unitKey) {
  return qorcred::IsEmptyText(StoredCapacity(session, unitKey).table->At(0, 0));
}

std::optional<std::int32_t> CodeDigitsOf(DeskSession& session, std::int32_t unitKey) {
  const qorcred::Value digits = session.sql().Scalar(
      fmt::format("SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey={}", unitKey));
  const auto* number = digits.As<std::int32_t>();
  return number == nullptr || *number < 1 ? std::nullopt : std::optional(*number);
}

}  // namespace qorhost

// What a unit needs before a controller works on it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/session.h"

namespace qorhost {

/// "unit 2, Linden Park, has no settings: ..."
[[nodiscard]] std::string NoSettingsText(std::int32_t unitKey, const std::string& name);

/// Raises FailureError that names the unit when the store has no settings for it: controllers would
/// fail without a word about the reason.
void RequireSettings(DeskSession& session, std::int32_t unitKey);

/// A number among a unit's settings, and what it may be.
struct SettingBound {
  std::string_view column;
  std::string_view name;  ///< as people call it
  std::int32_t lowest = 0;
  std::int32_t highest = 0;
  std::string_view option;  ///< of 'units edit', which sets it; with what it takes
};

/// Those that the settings of a unit break; what is Null, and what does not count for them, breaks
/// none. `number` gives a column's number.
[[nodiscard]] std::vector<const SettingBound*> BrokenBounds(
    const std::function<std::optional<std::int32_t>(std::string_view column)>& number);

/// The most combined codes of the unit's type; nothing when the store does not say, or says what is
/// no number. Past every tracing: the answer is for the host alone.
[[nodiscard]] std::optional<std::int32_t> CapacityOf(DeskSession& session, std::int32_t unitKey);

/// Whether the store says nothing about it.
[[nodiscard]] bool HasNoCapacity(DeskSession& session, std::int32_t unitKey);

/// The most digits of the unit's directory codes; nothing when the store does not say.
[[nodiscard]] std::optional<std::int32_t> CodeDigitsOf(DeskSession& session, std::int32_t unitKey);

}  // namespace qorhost

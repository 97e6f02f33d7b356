// Which rows the application lists: a deleted one stays until the unit knows of it.
#pragma once

#include <string_view>

#include "frame/convert.h"
#include "frame/row_state.h"
#include "frame/value.h"

namespace qorhost {

/// Whether a row is deleted, by its MODIFIED.
[[nodiscard]] inline bool IsDeleted(const qorcred::Value& modified) {
  return qorcred::NumericValue(modified) == qorcred::row_state::kDeleted;
}

/// Whether a row of DIRECTORYCODE is a directory code that is listed: those below 0 are none.
[[nodiscard]] inline bool IsListedCode(const qorcred::Value& code, const qorcred::Value& modified) {
  return qorcred::NumericValue(code) >= 0 && !IsDeleted(modified);
}

/// The same as conditions of a SELECT.
inline constexpr std::string_view kIsNotDeleted = "(MODIFIED IS NULL OR MODIFIED<>3)";
inline constexpr std::string_view kIsListedCode =
    "DIRECTORYCODE>=0 AND (MODIFIED IS NULL OR MODIFIED<>3)";
static_assert(qorcred::row_state::kDeleted == 3, "the conditions say 3");

}  // namespace qorhost

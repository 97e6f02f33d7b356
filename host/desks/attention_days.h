// Which periods are over, and which are soon.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorhost {

/// How many days from today on count as soon, when nobody says.
inline constexpr std::int32_t kUsualSoon = 30;

/// Which days are past and which come soon. Days count, not their hours: what ends today is not
/// past.
struct AttentionDays {
  qorcred::Date today;
  std::int32_t within = kUsualSoon;  ///< from 0, which is today alone

  /// The days from today to the day of `end`; below 0 for one that is past.
  [[nodiscard]] std::int64_t Until(qorcred::Date end) const;
  [[nodiscard]] bool IsPast(qorcred::Date end) const { return Until(end) < 0; }
  [[nodiscard]] bool IsSoon(qorcred::Date end) const {
    return !IsPast(end) && Until(end) <= within;
  }
  /// The same as a condition of a SELECT on that column.
  [[nodiscard]] std::string SoonIn(std::string_view column) const;
};

/// The rows of DIRECTORYCODE whose periods count, as a condition of a SELECT: those that are kept,
/// of codes that are listed.
[[nodiscard]] std::string CodesThatEnd();

}  // namespace qorhost

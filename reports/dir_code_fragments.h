// The conditions that the filter rows of the directory-code report stand for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qorcred {

/// Identifiers of the report's fields: RIDs of the stored field choices.
namespace report_field {
inline constexpr std::int16_t kDirectoryCode = 51;
inline constexpr std::int16_t kPhoneNumber = 52;
inline constexpr std::int16_t kExtension = 53;
inline constexpr std::int16_t kTimeDelay = 54;
inline constexpr std::int16_t kIsDndChecked = 55;
inline constexpr std::int16_t kDndSchedule = 56;
inline constexpr std::int16_t kIsCfChecked = 57;
inline constexpr std::int16_t kCfSchedule = 58;
inline constexpr std::int16_t kCfPhoneNumber = 59;
inline constexpr std::int16_t kCfExtension = 60;
inline constexpr std::int16_t kCfTimeDelay = 61;
inline constexpr std::int16_t kActive = 62;
inline constexpr std::int16_t kStartDate = 63;
inline constexpr std::int16_t kEndDate = 64;
inline constexpr std::int16_t kDisplayName = 65;
inline constexpr std::int16_t kShowDisplayName = 66;
inline constexpr std::int16_t kShowDirectoryCode = 67;
inline constexpr std::int16_t kLast = 69;
}  // namespace report_field

/// The value of a number field that was left empty.
inline constexpr std::string_view kNoNumber = "NULL";

/// Whether the field's values are numbers: their texts are read as such, and "" as kNoNumber.
[[nodiscard]] bool HasNumberValues(std::int16_t field) noexcept;

/// What a condition is made of. The texts go into it as they are.
struct ConditionTerms {
  std::string_view column;   ///< {C}
  std::string_view value;    ///< {V}
  std::string_view answer;   ///< {B}: "Yes" or "No"
  std::string_view from;     ///< {F}: the first date's text
  std::string_view to;       ///< {T}: the second date's text
  std::string_view fromDay;  ///< {D}: the first date's day, "DD MM YYYY"
  std::int32_t unitKey = 0;  ///< {U}
};

/// The condition for a field and the operator at place `operation` (0 to 7) of `cboFilter`; ""
/// where there is none.
[[nodiscard]] std::string ConditionFor(std::int16_t field, std::int32_t operation,
                                       const ConditionTerms& terms);

}  // namespace qorcred

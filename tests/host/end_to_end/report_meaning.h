// What conditions on a report's rows mean, said in plain C++: texts without regard to case,
// patterns with % and _, and comparisons of which a Null makes the outcome unknown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qortest {

/// True, False, or nothing: unknown.
using Truth = std::optional<bool>;

[[nodiscard]] Truth Not(Truth one);
[[nodiscard]] Truth Or(Truth one, Truth other);
/// A row is selected by what is known to be true.
[[nodiscard]] inline bool Holds(Truth truth) {
  return truth.value_or(false);
}

/// The code points of a text without regard to case: ASCII letters and those of kCasePairs.
[[nodiscard]] std::u32string Plain(std::string_view text);
/// The same text in the other case, where a letter has one.
[[nodiscard]] std::string OtherCase(std::string_view text);

/// Null makes each of these unknown. `text` and `pattern` are Plain() ones.
[[nodiscard]] Truth EqualTexts(const qorcred::Value& cell, std::u32string_view text);
[[nodiscard]] Truth MatchesText(const qorcred::Value& cell, std::u32string_view pattern);
/// Negative, zero or positive as the number in the cell lies to the other one.
[[nodiscard]] std::optional<int> OrderOfNumbers(const qorcred::Value& cell, double number);

[[nodiscard]] bool IsNull(const qorcred::Value& cell);
/// A Boolean counts as -1 and 0; nothing for Null and for a text that is not digits alone.
[[nodiscard]] std::optional<double> NumberIn(const qorcred::Value& cell);
/// Seconds on a scale of its own, for dates in any order.
[[nodiscard]] std::int64_t Moment(qorcred::Date date);
/// The same for days.
[[nodiscard]] std::int64_t DayNumber(qorcred::Date date);

}  // namespace qortest

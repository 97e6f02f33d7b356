// The conversions between value types, after the rules of the desktop Basic in which the hosts and
// the behaviour of the controllers were written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorcred {

/// Text of a value: numbers without a trailing point and with up to 15 digits, then E notation
/// (1E+15, 1E-05); "True"/"False"; dates as DateText(); Empty is "".
/// Raises kInvalidUseOfNull for Null and kTypeMismatch for objects, arrays and Missing.
[[nodiscard]] std::string ToText(const Value& value);
[[nodiscard]] std::string ToText(Value&& value);

/// The value with "" appended: as ToText(), but Null gives "".
[[nodiscard]] std::string TextOrEmpty(const Value& value);
[[nodiscard]] std::string TextOrEmpty(Value&& value);

/// False for 0 and Empty, True for every other number; the words True and False in any case and
/// numeric texts. Raises kTypeMismatch for other texts and objects, kInvalidUseOfNull for Null.
[[nodiscard]] bool ToBoolean(const Value& value);

/// Whole numbers, rounded half to even; True is -1; Empty is 0; texts must be numeric as a whole.
/// Raise kOverflow outside the range, kTypeMismatch for texts that are not numeric, and
/// kInvalidUseOfNull for Null.
[[nodiscard]] std::int16_t ToInteger(const Value& value);
[[nodiscard]] std::int32_t ToLong(const Value& value);

/// As above, without rounding.
[[nodiscard]] double ToDouble(const Value& value);

/// Dates themselves, texts that ParseDate() reads, numbers as serial days. Raises kTypeMismatch for
/// other texts, kOverflow for a number outside the calendar, otherwise as above.
[[nodiscard]] Date ToDate(const Value& value);

/// Whether the value is a number or a text that is one as a whole: blanks around it, one sign in
/// front or behind, grouping commas before the point, one point, an exponent (E or D), &H and &O
/// forms, brackets for a negative number, a currency sign ($). Empty and Booleans are numeric;
/// Null, dates, "" and what no double can hold are not.
[[nodiscard]] bool IsNumeric(const Value& value);
[[nodiscard]] bool IsNumeric(std::string_view text);
[[nodiscard]] inline bool IsNumeric(const std::string& text) {
  return IsNumeric(std::string_view(text));
}

/// The number at the start of a text, 0 when there is none. Blanks, tabs and line feeds are
/// skipped, also inside the number; one sign, one point, an exponent (E or D) and &H / &O forms
/// (16 bit when four hex digits or fewer) are read; more than 32 bits count as no number. Never
/// raises but for kOverflow beyond the range of a double.
[[nodiscard]] double Val(std::string_view text);

/// Val() of the value with "" appended: Null and Empty give 0.
[[nodiscard]] double NumericValue(const Value& value);

/// Rounds to a whole number, half to even, whatever the process's rounding mode is.
[[nodiscard]] double RoundHalfToEven(double number) noexcept;

/// The same as an integer; raises kOverflow outside the range.
[[nodiscard]] std::int16_t RoundToInteger(double number);
[[nodiscard]] std::int32_t RoundToLong(double number);

/// The text of a number as in ToText().
[[nodiscard]] std::string NumberText(double number);

/// Whether a cell or control value counts as the empty string: Empty, Null or "".
[[nodiscard]] bool IsEmptyText(const Value& value);

/// The language's "=": numbers, Booleans (True is -1) and dates by value; two texts by their bytes;
/// a text and a number by the text's number (kTypeMismatch when it is not numeric); Empty is 0 or
/// "". A comparison with Null is never true. Objects and arrays raise kTypeMismatch.
[[nodiscard]] bool Equals(const Value& one, const Value& other);

}  // namespace qorcred

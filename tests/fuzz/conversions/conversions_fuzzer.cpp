// Reads any text as a number, a Boolean, a date, a statement and a picture. The first line of an
// input is the value; what follows is a picture for it and a text to compare it with.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/format.h"
#include "frame/runtime_error.h"
#include "frame/sql_text.h"
#include "frame/text.h"
#include "tests/fuzz/check.h"

namespace {

using qorcred::ErrorNumber;
using qorcred::Value;
using qortest::Check;

/// The result of `call`, or nothing when it raises one of the errors that `allowed` accepts.
template <typename Call, typename Allowed>
auto Try(Call call, Allowed allowed) -> std::optional<decltype(call())> {
  try {
    return call();
  } catch (const qorcred::RuntimeError& failure) {
    Check(allowed(failure.number()), "only the documented errors are raised");
    return std::nullopt;
  }
}

bool IsOverflow(ErrorNumber number) {
  return number == ErrorNumber::kOverflow;
}

bool IsConversionError(ErrorNumber number) {
  return number == ErrorNumber::kOverflow || number == ErrorNumber::kTypeMismatch;
}

bool IsOutsideCalendar(ErrorNumber number) {
  return number == ErrorNumber::kInvalidProcedureCall;
}

void CheckNumberText(double number) {
  Check(std::isfinite(number), "numbers are finite");
  // With 15 digits the text of the largest doubles is larger than they are.
  constexpr double kReadable = 1.7976E308;
  const std::string text = qorcred::NumberText(number);
  if (std::fabs(number) > kReadable) return;
  Check(qorcred::IsNumeric(text), "the text of a number is numeric");
  Check(qorcred::NumberText(qorcred::Val(text)) == text, "the text of a number reads back");
}

void CheckNumbers(const std::string& text) {
  const Value value(text);
  const auto leading = Try([&] { return qorcred::Val(text); }, IsOverflow);
  if (leading) CheckNumberText(*leading);

  const auto number = Try([&] { return qorcred::ToDouble(value); }, IsConversionError);
  Check(number.has_value() == qorcred::IsNumeric(value), "numeric texts convert");
  const auto wide = Try([&] { return qorcred::ToLong(value); }, IsConversionError);
  const auto narrow = Try([&] { return qorcred::ToInteger(value); }, IsConversionError);
  if (narrow) Check(wide && *wide == *narrow, "both widths round alike");
  if (wide) Check(number && std::fabs(*number - *wide) <= 0.5, "rounding goes to the nearest");
  if (number) {
    CheckNumberText(*number);
    Check(qorcred::Equals(value, *number), "a text equals its number");
  }
  static_cast<void>(Try([&] { return qorcred::ToBoolean(value); }, IsConversionError));
}

void CheckDate(qorcred::Date date) {
  const qorcred::CivilTime civil = qorcred::ToCivil(date);
  Check(civil.month >= 1 && civil.month <= 12 && civil.day >= 1 && civil.day <= 31 &&
            civil.hour <= 23 && civil.minute <= 59 && civil.second <= 59,
        "the parts of a date lie in their ranges");
  const qorcred::Date whole = qorcred::FromCivil(civil);
  Check(qorcred::SecondsBetween(date, whole) == 0, "a date and its parts are the same second");
  Check(qorcred::ParseDate(qorcred::DateText(whole)) == whole, "the text of a date reads back");
  Check(qorcred::DaysBetween(qorcred::DayOf(date), whole) == 0, "a date lies on its day");
}

void CheckDates(const std::string& text) {
  const auto date = qorcred::ParseDate(text);
  if (date) CheckDate(*date);
  const auto leading = Try([&] { return qorcred::Val(text); }, IsOverflow);
  if (!leading) return;
  if (qorcred::IsInCalendar(*leading)) CheckDate(qorcred::Date{*leading});
  const qorcred::Date start = date.value_or(qorcred::Date{});
  const auto later = Try([&] { return qorcred::AddDays(start, *leading); }, IsOutsideCalendar);
  if (later) {
    const auto days = static_cast<double>(qorcred::DaysBetween(start, *later));
    Check(std::fabs(days - *leading) <= 0.5, "days are added to the nearest whole one");
  }
}

void CheckFormats(const std::string& text, std::string_view picture) {
  static_cast<void>(qorcred::Format(text, picture));
  Check(qorcred::Format(qorcred::Null(), picture).empty(), "Null is formatted as nothing");
  const auto leading = Try([&] { return qorcred::Val(text); }, IsOverflow);
  if (!leading) return;
  static_cast<void>(Try([&] { return qorcred::Format(*leading, picture); }, IsOverflow));
}

void CheckStatement(const std::string& text) {
  const std::string filled = qorcred::ReplaceEmptyWithNull(text);
  const std::string fixed = qorcred::FixNullValues(text);
  for (const std::string_view hole : {", ,", "''", "= ,"}) {
    Check(!qorcred::Contains(filled, hole), "no hole is left");
    Check(!qorcred::Contains(fixed, hole), "no hole is left");
  }
  Check(!qorcred::Contains(fixed, "-1"), "no -1 is left");
  Check(fixed == qorcred::ReplaceAll(filled, "-1", "Null"), "the passes differ in -1 only");
}

void CheckTexts(std::string_view one, std::string_view other) {
  Check(qorcred::CompareIgnoringCase(one, one) == 0, "a text equals itself");
  Check(qorcred::CompareIgnoringCase(one, other) == -qorcred::CompareIgnoringCase(other, one),
        "the order of two texts does not depend on who asks");
  const std::size_t units = qorcred::Utf16Length(one);
  Check(qorcred::LeftUtf16(one, units) == one, "a text is as long as its length");
  const std::string_view half = qorcred::LeftUtf16(one, units / 2);
  const std::size_t halfUnits = qorcred::Utf16Length(half);
  Check(halfUnits <= units / 2 && halfUnits + 1 >= units / 2, "a prefix has the units asked for");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(data, data + size);
  const std::size_t lineEnd = std::min(input.find('\n'), input.size());
  const std::string value = input.substr(0, lineEnd);
  const std::string_view rest = std::string_view(input).substr(std::min(lineEnd + 1, input.size()));
  CheckNumbers(value);
  CheckDates(value);
  CheckFormats(value, rest);
  CheckStatement(input);
  CheckTexts(value, rest);
  return 0;
}

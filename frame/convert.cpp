#include "frame/convert.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

#include "frame/date.h"
#include "frame/number_text.h"
#include "frame/object.h"
#include "frame/runtime_error.h"
#include "frame/text.h"

namespace qorcred {
namespace {

constexpr double kTrue = -1.0;

std::string WholeNumberText(std::int32_t number) {
  std::array<char, 11> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  return {buffer.data(), end};
}

double Finite(double number) {
  if (!std::isfinite(number)) throw RuntimeError(ErrorNumber::kOverflow);
  return number;
}

double NumberOf(std::string_view text) {
  const TextNumber result = ReadNumber(text);
  switch (result.reading) {
    case NumberReading::kNumber:
      return result.number;
    case NumberReading::kTooLarge:
      throw RuntimeError(ErrorNumber::kOverflow);
    case NumberReading::kNotNumeric:
      break;
  }
  throw RuntimeError(ErrorNumber::kTypeMismatch);
}

std::optional<bool> WordOf(std::string_view text) noexcept {
  const std::string_view word = Trim(text);
  if (SameMember(word, "True")) return true;
  if (SameMember(word, "False")) return false;
  return std::nullopt;
}

template <typename Whole>
Whole RoundTo(double number) {
  const double rounded = RoundHalfToEven(number);
  // Written so that a NaN is refused as well.
  if (!(rounded >= std::numeric_limits<Whole>::min() &&
        rounded <= std::numeric_limits<Whole>::max())) {
    throw RuntimeError(ErrorNumber::kOverflow);
  }
  return static_cast<Whole>(rounded);
}

/// The number that a text stands for beside a value of another type.
double NumberBeside(const std::string& text, const Value& other) {
  if (other.Is(ValueType::kDate)) return ToDate(text).serial;
  if (other.Is(ValueType::kBoolean)) {
    if (const std::optional<bool> word = WordOf(text)) return *word ? kTrue : 0.0;
  }
  return NumberOf(text);
}

bool IsComparable(const Value& value) noexcept {
  switch (value.type()) {
    case ValueType::kObject:
    case ValueType::kStringArray:
    case ValueType::kMissing:
      return false;
    default:
      return true;
  }
}

}  // namespace

std::string ToText(const Value& value) {
  switch (value.type()) {
    case ValueType::kEmpty:
      return {};
    case ValueType::kNull:
      throw RuntimeError(ErrorNumber::kInvalidUseOfNull);
    case ValueType::kBoolean:
      return *value.As<bool>() ? "True" : "False";
    case ValueType::kInteger:
      return WholeNumberText(*value.As<std::int16_t>());
    case ValueType::kLong:
      return WholeNumberText(*value.As<std::int32_t>());
    case ValueType::kDouble:
      return NumberText(*value.As<double>());
    case ValueType::kDate:
      return DateText(*value.As<Date>());
    case ValueType::kString:
      return *value.As<std::string>();
    case ValueType::kObject:
    case ValueType::kStringArray:
    case ValueType::kMissing:
      break;
  }
  throw RuntimeError(ErrorNumber::kTypeMismatch);
}

std::string ToText(Value&& value) {
  if (std::string* text = value.As<std::string>()) return std::move(*text);
  return ToText(std::as_const(value));
}

std::string TextOrEmpty(const Value& value) {
  return value.Is(ValueType::kNull) ? std::string() : ToText(value);
}

std::string TextOrEmpty(Value&& value) {
  return value.Is(ValueType::kNull) ? std::string() : ToText(std::move(value));
}

bool ToBoolean(const Value& value) {
  if (const bool* flag = value.As<bool>()) return *flag;
  if (const std::string* text = value.As<std::string>()) {
    if (const std::optional<bool> word = WordOf(*text)) return *word;
  }
  return ToDouble(value) != 0.0;
}

std::int16_t ToInteger(const Value& value) {
  if (const std::int16_t* number = value.As<std::int16_t>()) return *number;
  return RoundToInteger(ToDouble(value));
}

std::int32_t ToLong(const Value& value) {
  if (const std::int32_t* number = value.As<std::int32_t>()) return *number;
  return RoundToLong(ToDouble(value));
}

double ToDouble(const Value& value) {
  switch (value.type()) {
    case ValueType::kEmpty:
      return 0.0;
    case ValueType::kNull:
      throw RuntimeError(ErrorNumber::kInvalidUseOfNull);
    case ValueType::kBoolean:
      return *value.As<bool>() ? kTrue : 0.0;
    case ValueType::kInteger:
      return *value.As<std::int16_t>();
    case ValueType::kLong:
      return *value.As<std::int32_t>();
    case ValueType::kDouble:
      return Finite(*value.As<double>());
    case ValueType::kDate:
      return Finite(value.As<Date>()->serial);
    case ValueType::kString:
      return NumberOf(*value.As<std::string>());
    case ValueType::kObject:
    case ValueType::kStringArray:
    case ValueType::kMissing:
      break;
  }
  throw RuntimeError(ErrorNumber::kTypeMismatch);
}

Date ToDate(const Value& value) {
  if (const std::string* text = value.As<std::string>()) {
    const std::optional<Date> date = ParseDate(*text);
    if (!date) throw RuntimeError(ErrorNumber::kTypeMismatch);
    return *date;
  }
  const double serial = ToDouble(value);
  if (!IsInCalendar(serial)) throw RuntimeError(ErrorNumber::kOverflow);
  return Date{serial};
}

bool IsNumeric(const Value& value) {
  switch (value.type()) {
    case ValueType::kEmpty:
    case ValueType::kBoolean:
    case ValueType::kInteger:
    case ValueType::kLong:
    case ValueType::kDouble:
      return true;
    case ValueType::kString:
      return IsNumeric(*value.As<std::string>());
    default:
      return false;
  }
}

double NumericValue(const Value& value) {
  // What follows would give the same numbers by way of their text.
  if (const std::int32_t* number = value.As<std::int32_t>()) return *number;
  if (const std::string* text = value.As<std::string>()) return Val(*text);
  return Val(TextOrEmpty(value));
}

double RoundHalfToEven(double number) noexcept {
  const double below = std::floor(number);
  const double rest = number - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1.0;
  return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

std::int16_t RoundToInteger(double number) {
  return RoundTo<std::int16_t>(number);
}

std::int32_t RoundToLong(double number) {
  return RoundTo<std::int32_t>(number);
}

bool IsEmptyText(const Value& value) {
  if (const std::string* text = value.As<std::string>()) return text->empty();
  return value.Is(ValueType::kEmpty) || value.Is(ValueType::kNull);
}

bool Equals(const Value& one, const Value& other) {
  if (!IsComparable(one) || !IsComparable(other)) throw RuntimeError(ErrorNumber::kTypeMismatch);
  if (one.Is(ValueType::kNull) || other.Is(ValueType::kNull)) return false;

  const std::string* oneText = one.As<std::string>();
  const std::string* otherText = other.As<std::string>();
  if (oneText != nullptr && otherText != nullptr) return *oneText == *otherText;
  if (oneText != nullptr && other.Is(ValueType::kEmpty)) return oneText->empty();
  if (otherText != nullptr && one.Is(ValueType::kEmpty)) return otherText->empty();
  if (oneText != nullptr) return NumberBeside(*oneText, other) == ToDouble(other);
  if (otherText != nullptr) return ToDouble(one) == NumberBeside(*otherText, one);
  return ToDouble(one) == ToDouble(other);
}

}  // namespace qorcred

#include "host/desks/moving_in/cell_conversion.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "frame/control_characters.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "frame/text.h"
#include "frame/utf8.h"
#include "host/desks/words.h"
#include "host/dialect/canonical_date.h"
#include "host/files/csv_reader.h"
#include "host/files/visible_text.h"

namespace qorhost {

namespace {

using dialect::ColumnType;
using qorcred::Null;
using qorcred::Value;

constexpr std::int64_t kPartsOfOne = 10'000;  // of a Currency
constexpr double kSecondsOfDay = 86'400;
constexpr double kFirstDay =
    -657'434;  // 1 January 100; its hours lie below, for they count forward
constexpr double kLastDay = 2'958'465;  // 31 December 9999
constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";

ConvertedCell Refused(std::string_view kind, std::string reason) {
  return {Null{}, CellRemark{Settlement::kRefused, kind, std::move(reason)}};
}

ConvertedCell Adjusted(Value value, std::string_view kind, std::string reason) {
  return {std::move(value), CellRemark{Settlement::kAdjusted, kind, std::move(reason)}};
}

ConvertedCell OfOtherType(std::string_view is, std::string_view takes) {
  return Refused("other-type", fmt::format("it is {}, and the column takes {}", is, takes));
}

// ---- Numbers
// -------------------------------------------------------------------------------------

/// A number that is written in digits, with a point at most: no comma, no exponent, no currency,
/// and not so many digits that no number is as large, or as small.
std::optional<double> NumberInDigits(std::string_view text) {
  std::string_view digits = text;
  if (digits.starts_with('+') || digits.starts_with('-')) digits.remove_prefix(1);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  if (!qorcred::IsDigits(digits.substr(0, point)) ||
      (point + 1 < digits.size() && !qorcred::IsDigits(digits.substr(point + 1)))) {
    return std::nullopt;
  }
  double number = 0;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

std::string Canonical(double number) {
  return fmt::format("{}", number);
}

ConvertedCell LongOf(double number) {
  if (!std::isfinite(number) || number != std::trunc(number)) {
    return Refused("number-range", "it is no whole number");
  }
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    return Refused("number-range", "it is beyond 32 bits");
  }
  return {static_cast<std::int32_t>(number), std::nullopt};
}

ConvertedCell DoubleOf(double number) {
  if (!std::isfinite(number)) {
    return Refused("number-range", "it is no number");
  }
  return {number, std::nullopt};
}

ConvertedCell NumberOf(double number, ColumnType type) {
  return type == ColumnType::kDouble ? DoubleOf(number) : LongOf(number);
}

ConvertedCell NumberOfText(std::string_view text, ColumnType type) {
  const std::string_view trimmed = qorcred::Trim(text);
  if (trimmed.empty()) {
    return Adjusted(Null{}, "number-as-text", "an empty text in the place of a number");
  }
  const std::optional<double> number = NumberInDigits(trimmed);
  if (!number) {
    return Refused("text-for-number", "it is a text, and the column takes numbers in digits");
  }
  ConvertedCell converted = NumberOf(*number, type);
  if (converted.remark) {
    converted.remark->kind = "text-for-number";
  } else if (text != Canonical(*number)) {
    converted.remark =
        CellRemark{Settlement::kAdjusted, "number-as-text", "a number that is written as a text"};
  }
  return converted;
}

ConvertedCell ToNumber(const DesktopCell& cell, ColumnType type) {
  constexpr std::string_view kTakes = "numbers";
  if (const auto* flag = std::get_if<bool>(&cell)) return NumberOf(*flag ? -1 : 0, type);
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    return NumberOf(static_cast<double>(*whole), type);
  }
  if (const auto* number = std::get_if<double>(&cell)) return NumberOf(*number, type);
  if (const auto* amount = std::get_if<DesktopCurrency>(&cell)) {
    return NumberOf(static_cast<double>(amount->parts) / kPartsOfOne, type);
  }
  if (const auto* text = std::get_if<DesktopText>(&cell)) return NumberOfText(text->utf8, type);
  return OfOtherType(std::holds_alternative<DesktopDate>(cell) ? "a date" : "of another kind",
                     kTakes);
}

// ---- Yes and no
// ----------------------------------------------------------------------------------

ConvertedCell NoFlag() {
  return Adjusted(false, "null-flag", "Yes and No have no Null");
}

ConvertedCell FlagOfText(std::string_view text) {
  constexpr std::string_view kKind = "flag-as-text";
  const std::string_view trimmed = qorcred::Trim(text);
  if (trimmed.empty()) {  // it counts as Null, as in the place of a number
    return NoFlag();
  }
  if (const std::optional<bool> flag = YesOrNo(trimmed)) {
    return Adjusted(*flag, kKind, "Yes or No that is written as a text");
  }
  if (const std::optional<double> number = NumberInDigits(trimmed)) {
    return Adjusted(*number != 0, kKind, "Yes or No that is written as a number in a text");
  }
  return Refused("text-for-flag", "it is a text, and the column takes Yes or No");
}

ConvertedCell ToFlag(const DesktopCell& cell) {
  const auto ofNumber = [](double number) -> ConvertedCell {
    if (number == 0 || number == -1 || number == 1) return {number != 0, std::nullopt};
    return Adjusted(true, "number-for-flag", "any number but 0 is Yes");
  };
  if (std::holds_alternative<DesktopNull>(cell)) {
    return NoFlag();
  }
  if (const auto* flag = std::get_if<bool>(&cell)) return {*flag, std::nullopt};
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    return ofNumber(static_cast<double>(*whole));
  }
  if (const auto* number = std::get_if<double>(&cell)) return ofNumber(*number);
  if (const auto* text = std::get_if<DesktopText>(&cell)) return FlagOfText(text->utf8);
  return OfOtherType("of another kind", "Yes or No");
}

// ---- Dates
// ---------------------------------------------------------------------------------------

/// The same, but within the last second there is its beginning: rounded it would be of the year
/// 10000.
double WithinLastSecond(double serial) {
  constexpr double kBegin = kLastDay + (kSecondsOfDay - 1) / kSecondsOfDay;
  return serial > kBegin && serial < kLastDay + 1 ? kBegin : serial;
}

/// As a store keeps it; nothing for what is no date of its years.
std::optional<std::string> StoredDate(double serial) {
  const bool isOfItsYears = serial > kFirstDay - 1 && serial < kLastDay + 1;
  return isOfItsYears ? std::optional(dialect::CanonicalDate({WithinLastSecond(serial)}))
                      : std::nullopt;
}

ConvertedCell DateOf(double serial) {
  constexpr double kThousandth = 0.001;
  std::optional<std::string> text = StoredDate(serial);
  if (!text) {
    return Refused("date-range", "it is no date of the years 100 to 9999");
  }
  const double seconds = std::abs(serial - std::trunc(serial)) * kSecondsOfDay;
  const double cut = (serial - WithinLastSecond(serial)) * kSecondsOfDay;
  if (std::abs(seconds - std::round(seconds)) > kThousandth || cut > kThousandth) {
    return Adjusted(*std::move(text), "seconds", "a part of a second, which is rounded");
  }
  return {*std::move(text), std::nullopt};
}

ConvertedCell ToDate(const DesktopCell& cell) {
  if (const auto* date = std::get_if<DesktopDate>(&cell)) return DateOf(date->serial);
  if (const auto* text = std::get_if<DesktopText>(&cell)) {
    const std::string trimmed(qorcred::Trim(text->utf8));
    if (trimmed.empty()) {
      return Adjusted(Null{}, "text-for-date", "an empty text in the place of a date");
    }
    if (dialect::FromCanonicalDate(trimmed)) {
      return Adjusted(trimmed, "text-for-date", "a date that is written as a text");
    }
    return Refused("text-for-date", "it is a text, and the column takes dates");
  }
  return OfOtherType("no date", "dates");
}

// ---- Texts
// ---------------------------------------------------------------------------------------

bool Steers(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, at);
    if (qorcred::SteersDisplay(character.codePoint)) return true;
    at += character.length;
  }
  return false;
}

ConvertedCell ToText(const DesktopText& text) {
  using namespace std::string_view_literals;
  if (!text.isWhole) {
    return Adjusted(qorcred::ReplaceAll(text.utf8, "\0"sv, kNoCharacter), "broken-text",
                    "half a character, in the place of which U+FFFD stands");
  }
  if (qorcred::Contains(text.utf8, "\0"sv)) {
    return Adjusted(qorcred::ReplaceAll(text.utf8, "\0"sv, kNoCharacter), "control-character",
                    "the character U+0000, in the place of which U+FFFD stands");
  }
  ConvertedCell converted{text.utf8, std::nullopt};
  if (Steers(text.utf8)) {
    converted.remark = CellRemark{Settlement::kKept, "control-character",
                                  "it has characters that steer a display instead of being shown"};
  } else if (text.utf8.size() > CsvReader::kLongestCell) {
    converted.remark =
        CellRemark{Settlement::kKept, "long-text",
                   fmt::format("it has {} bytes, and a cell of an import file {} at most",
                               text.utf8.size(), CsvReader::kLongestCell)};
  }
  return converted;
}

/// What is no text, written as one; nothing for what cannot be.
std::optional<std::string> Written(const DesktopCell& cell) {
  if (const auto* flag = std::get_if<bool>(&cell)) return *flag ? "-1" : "0";
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
  if (const auto* number = std::get_if<double>(&cell)) return Canonical(*number);
  if (const auto* amount = std::get_if<DesktopCurrency>(&cell)) {
    return Canonical(static_cast<double>(amount->parts) / kPartsOfOne);
  }
  if (const auto* date = std::get_if<DesktopDate>(&cell)) {
    return StoredDate(date->serial);
  }
  return std::nullopt;
}

ConvertedCell ToText(const DesktopCell& cell) {
  if (const auto* text = std::get_if<DesktopText>(&cell)) return ToText(*text);
  if (std::optional<std::string> written = Written(cell)) {
    return Adjusted(*std::move(written), "other-type",
                    "the column takes texts: it is written as one");
  }
  return OfOtherType("of another kind", "texts");
}

/// With the thousandths of a second that a store does not keep.
std::string ShownDate(double serial) {
  const std::optional<std::string> stored = StoredDate(serial);
  if (!stored) return fmt::format("day {}", serial);
  const double day = std::trunc(serial);
  const double thousandths = std::round(std::abs(serial - day) * kSecondsOfDay * 1000);
  const double parts = std::fmod(thousandths, 1000);
  if (parts == 0) return *stored;
  const double whole = (thousandths - parts) / 1000 / kSecondsOfDay;
  return fmt::format("{}.{:03.0f}", dialect::CanonicalDate({day + std::copysign(whole, serial)}),
                     parts);
}

std::string Shortened(std::string_view text) {
  constexpr std::size_t kMostUnits = 60;
  std::string shown = VisibleText(text);
  if (qorcred::Utf16Length(shown) <= kMostUnits) return shown;
  return std::string(qorcred::LeftUtf16(shown, kMostUnits)) + "…";
}

}  // namespace

ConvertedCell Converted(const DesktopCell& cell, ColumnType type) {
  if (type == ColumnType::kBoolean) return ToFlag(cell);
  if (std::holds_alternative<DesktopNull>(cell)) return {Null{}, std::nullopt};
  switch (type) {
    case ColumnType::kDate:
      return ToDate(cell);
    case ColumnType::kText:
      return ToText(cell);
    default:
      return ToNumber(cell, type);
  }
}

std::string ShownCell(const DesktopCell& cell) {
  if (std::holds_alternative<DesktopNull>(cell)) return "Null";
  if (const auto* flag = std::get_if<bool>(&cell)) return *flag ? "Yes" : "No";
  if (const auto* text = std::get_if<DesktopText>(&cell)) return '"' + Shortened(text->utf8) + '"';
  if (const auto* date = std::get_if<DesktopDate>(&cell)) return ShownDate(date->serial);
  if (std::optional<std::string> written = Written(cell)) return *std::move(written);
  return fmt::format("{} bytes", std::get<DesktopBytes>(cell).bytes.size());
}

std::string ShownStored(const Value& value) {
  if (value.Is(qorcred::ValueType::kNull)) return "Null";
  if (const auto* flag = value.As<bool>()) return *flag ? "Yes" : "No";
  if (const auto* number = value.As<double>()) return Canonical(*number);
  if (const auto* text = value.As<std::string>()) return '"' + Shortened(*text) + '"';
  return qorcred::TextOrEmpty(value);
}

}  // namespace qorhost

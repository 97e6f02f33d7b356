#include "host/dialect/format_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/format.h"
#include "frame/number_text.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/dialect/decimal_text.h"
#include "host/dialect/names.h"
#include "host/dialect/refusal.h"

namespace qorhost::dialect {

namespace {

using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

// Named formats of dates: those of a host in the United States, whose default text of a date is
// M/D/YYYY.
struct DateFormat {
  std::string_view name;
  std::string_view picture;  // none for the default text
};

constexpr std::array kDateFormats{
    DateFormat{"General Date", ""},           DateFormat{"Long Date", "dddd, mmmm d, yyyy"},
    DateFormat{"Medium Date", "dd-mmm-yy"},   DateFormat{"Short Date", "m/d/yyyy"},
    DateFormat{"Long Time", "h:nn:ss AM/PM"}, DateFormat{"Medium Time", "hh:nn AM/PM"},
    DateFormat{"Short Time", "hh:nn"},
};

struct NumberFormat {
  std::string_view name;
  std::string (*text)(double);
};

std::string Fixed(double number) {
  return DecimalText(number, {});
}

std::string Standard(double number) {
  return DecimalText(number, {.grouped = true});
}

std::string Percent(double number) {
  return DecimalText(number, {.shift = 2}) + "%";
}

// Negative amounts stand in brackets.
std::string Currency(double number) {
  const std::string text = Standard(number);
  return text.front() == '-' ? "($" + text.substr(1) + ")" : "$" + text;
}

std::string YesOrNo(double number) {
  return number != 0.0 ? "Yes" : "No";
}

std::string TrueOrFalse(double number) {
  return number != 0.0 ? "True" : "False";
}

std::string OnOrOff(double number) {
  return number != 0.0 ? "On" : "Off";
}

constexpr std::array kNumberFormats{
    NumberFormat{"General Number", qorcred::NumberText},
    NumberFormat{"Currency", Currency},
    NumberFormat{"Fixed", Fixed},
    NumberFormat{"Standard", Standard},
    NumberFormat{"Percent", Percent},
    NumberFormat{"Scientific", ScientificText},
    NumberFormat{"Yes/No", YesOrNo},
    NumberFormat{"True/False", TrueOrFalse},
    NumberFormat{"On/Off", OnOrOff},
};

template <typename Formats>
auto FindFormat(const Formats& formats, std::string_view name) {
  const auto found = std::find_if(formats.begin(), formats.end(), [name](const auto& format) {
    return SameName(format.name, name);
  });
  return found == formats.end() ? nullptr : &*found;
}

constexpr auto kDateParts =
    std::to_array<std::string_view>({"d", "dd", "ddd", "dddd", "m", "mm", "mmm", "mmmm", "yy",
                                     "yyyy", "h", "hh", "n", "nn", "s", "ss"});
constexpr std::string_view kSeparators = " -/.,:";
constexpr std::string_view kHalfDay = "AM/PM";

// The length of the part of a date that begins a picture; 0 when none does.
std::size_t DatePartAt(std::string_view picture) {
  if (picture.substr(0, kHalfDay.size()) == kHalfDay) {
    return kHalfDay.size();
  }
  const char letter = qorcred::LowerAscii(picture.front());
  const auto* const end = std::find_if(picture.begin(), picture.end(), [letter](char other) {
    return qorcred::LowerAscii(other) != letter;
  });
  const std::string_view run = picture.substr(0, static_cast<std::size_t>(end - picture.begin()));
  const bool isPart = std::any_of(kDateParts.begin(), kDateParts.end(),
                                  [run](std::string_view part) { return SameName(part, run); });
  return isPart ? run.size() : 0;
}

bool IsDatePicture(std::string_view picture) {
  bool hasPart = false;
  while (!picture.empty()) {
    const bool isSeparator = kSeparators.find(picture.front()) != std::string_view::npos;
    const std::size_t length = isSeparator ? 1 : DatePartAt(picture);
    if (length == 0) {
      return false;
    }
    hasPart = hasPart || !isSeparator;
    picture.remove_prefix(length);
  }
  return hasPart;
}

bool IsPlainPicture(std::string_view picture) {
  return picture.find_first_not_of('0') == std::string_view::npos || IsDatePicture(picture);
}

[[noreturn]] void RefusePicture(std::string_view picture) {
  throw RuntimeError(ErrorNumber::kInvalidProcedureCall,
                     "Format does not know the picture " + Quoted(picture) +
                         ": it takes parts of dates such as 'dd mm yyyy', zeros such as '000', "
                         "and named formats such as 'Short Date'");
}

std::optional<qorcred::Date> DateOf(const Value& value) {
  const auto* text = value.As<std::string>();
  if (text == nullptr) {
    return qorcred::ToDate(value);
  }
  if (const std::optional<qorcred::Date> date = qorcred::ParseDate(*text)) {
    return date;
  }
  const qorcred::TextNumber read = qorcred::ReadNumber(*text);
  const bool isSerial = read.reading == qorcred::NumberReading::kNumber;
  return isSerial && qorcred::IsInCalendar(read.number) ? std::optional(qorcred::Date{read.number})
                                                        : std::nullopt;
}

std::optional<double> NumberOf(const Value& value) {
  const auto* text = value.As<std::string>();
  if (text == nullptr) {
    return qorcred::ToDouble(value);
  }
  const qorcred::TextNumber read = qorcred::ReadNumber(*text);
  if (read.reading == qorcred::NumberReading::kNumber) {
    return read.number;
  }
  if (SameName(*text, "True") || SameName(*text, "False")) {
    return SameName(*text, "True") ? -1.0 : 0.0;
  }
  const std::optional<qorcred::Date> date = qorcred::ParseDate(*text);
  return date ? std::optional(date->serial) : std::nullopt;
}

}  // namespace

void RequirePicture(std::string_view picture) {
  if (FindFormat(kDateFormats, picture) == nullptr &&
      FindFormat(kNumberFormats, picture) == nullptr && !IsPlainPicture(picture)) {
    RefusePicture(picture);
  }
}

std::string FormatValue(const Value& value, std::string_view picture) {
  if (const auto* number = value.As<double>(); number != nullptr && !std::isfinite(*number)) {
    throw RuntimeError(ErrorNumber::kOverflow);
  }
  if (const auto* format = FindFormat(kNumberFormats, picture); format != nullptr) {
    const std::optional<double> number = NumberOf(value);
    return number ? format->text(*number) : qorcred::ToText(value);
  }
  if (const auto* format = FindFormat(kDateFormats, picture); format != nullptr) {
    const std::optional<qorcred::Date> date = DateOf(value);
    if (!date) {
      return qorcred::ToText(value);
    }
    return format->picture.empty() ? qorcred::DateText(*date)
                                   : qorcred::Format(Value(*date), format->picture);
  }
  if (!IsPlainPicture(picture)) {
    RefusePicture(picture);
  }
  return qorcred::Format(value, picture);
}

}  // namespace qorhost::dialect

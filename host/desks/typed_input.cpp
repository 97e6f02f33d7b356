#include "host/desks/typed_input.h"

#include <fmt/format.h>

#include "frame/control_characters.h"
#include "frame/convert.h"
#include "frame/date.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "frame/utf8.h"
#include "host/desks/input_fault.h"

namespace qorhost {

bool IsTypable(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const qorcred::Utf8Character character = qorcred::ReadUtf8(text, position);
    if (character.codePoint >= qorcred::kInvalidByte || qorcred::IsControl(character.codePoint)) {
      return false;
    }
    position += character.length;
  }
  return true;
}

const std::string& TypedText(std::string_view field, const std::string& text) {
  if (!IsTypable(text)) {
    throw InputFault(field, text,
                     "{field} '{value}' cannot be typed into a box: it has control characters or "
                     "bytes that are not UTF-8");
  }
  return text;
}

std::string WithTypographicApostrophes(std::string_view text) {
  return qorcred::ReplaceAll(std::string(text), "'", "\xE2\x80\x99");
}

bool IsWholeNumber(std::string_view text) {
  std::string_view digits = qorcred::Trim(text);
  if (digits.starts_with('-') || digits.starts_with('+')) {
    digits.remove_prefix(1);
  }
  return qorcred::IsDigits(digits);
}

std::string TypedNumber(std::string_view field, const std::string& text) {
  if (IsWholeNumber(TypedText(field, text))) {
    std::string_view digits = qorcred::Trim(text);
    digits.remove_prefix(digits.starts_with('+') ? 1 : 0);
    return std::string(digits);
  }
  if (qorcred::IsNumeric(text)) {
    throw InputFault(field, text, "{field} '{value}' is no whole number: write it in digits alone");
  }
  return text;
}

TakenNumber NumberTaken(std::string_view text) {
  try {
    const double value = qorcred::Val(text);
    return {value, qorcred::IsNumeric(text) && qorcred::ToDouble(text) == value};
  } catch (const qorcred::RuntimeError&) {
    return {};
  }
}

std::int32_t ReadLong(std::string_view field, std::string_view given, NumberRange range) {
  const auto number = WholeNumberIn(given, range);
  if (!number) {
    throw InputFault(field, given,
                     fmt::format("{{field}} '{{value}}' must be a whole number from {} to {}, in "
                                 "digits alone",
                                 range.lowest, range.highest));
  }
  return static_cast<std::int32_t>(*number);
}

namespace {

/// Where the time stands behind a date as programs write it, a T or a blank in front of it.
constexpr std::size_t kBehindDay = 10;

std::string WithoutT(std::string_view given) {
  std::string text(qorcred::Trim(given));
  if (text.size() > kBehindDay + 1 && text[kBehindDay] == 'T' && text[4] == '-') {
    text[kBehindDay] = ' ';
  }
  return text;
}

/// A time as it is written in front of its offset, and that in minutes.
struct OffsetTime {
  std::string time;
  int offset = 0;
};

/// Nothing where no offset stands behind a time.
std::optional<OffsetTime> SplitOffset(std::string text) {
  constexpr std::size_t kDayAndMinute = 16;  // "2026-01-31 14:05"
  if (text.ends_with('Z') && text.size() > kDayAndMinute) {
    text.pop_back();
    return OffsetTime{text, 0};
  }
  constexpr std::size_t kOffset = 6;  // "+01:00"
  if (text.size() < kDayAndMinute + kOffset) {
    return std::nullopt;
  }
  const std::string offset = text.substr(text.size() - kOffset);
  const std::string hours = offset.substr(1, 2);
  const std::string minutes = offset.substr(4);
  if ((offset[0] != '+' && offset[0] != '-') || offset[3] != ':' || !qorcred::IsDigits(hours) ||
      !qorcred::IsDigits(minutes)) {
    return std::nullopt;
  }
  constexpr int kMinutesInHour = 60;
  const int east = std::stoi(hours) * kMinutesInHour + std::stoi(minutes);
  text.resize(text.size() - kOffset);
  return OffsetTime{text, offset[0] == '-' ? -east : east};
}

}  // namespace

GivenDate ReadDate(std::string_view field, std::string_view given) {
  const auto date = qorcred::ParseDate(WithoutT(given));
  // Below a day's serial there is only a time.
  if (!date || (date->serial >= 0 && date->serial < 1)) {
    throw InputFault(field, given,
                     "{field} '{value}' is no date: write it as 2026-12-31, 12/31/2026 or 31 Dec "
                     "2026, with a time as in '2026-12-31 18:00'");
  }
  return {*date, given.find(':') != std::string_view::npos};
}

GivenDate ReadMoment(std::string_view field, std::string_view given, TimeOf clock) {
  const std::optional<OffsetTime> split =
      clock == TimeOf::kCalendar ? std::nullopt : SplitOffset(WithoutT(given));
  if (!split) {
    return ReadDate(field, given);
  }
  try {
    return {TimeOn(clock, ReadDate(field, split->time).date, split->offset), true};
  } catch (const InputFault& fault) {
    throw InputFault(field, given, fault.reason());
  } catch (const qorcred::RuntimeError&) {
    throw InputFault(field, given, "{field} '{value}' lies outside the years 100 to 9999");
  }
}

void ChooseDate(PickerModel& picker, std::string_view field, std::string_view given, bool isEnd) {
  const GivenDate date = ReadDate(field, given);
  qorcred::CivilTime time = qorcred::ToCivil(date.date);
  if (isEnd && !date.hasTime) {
    time.hour = 23;
    time.minute = 59;
    time.second = 59;
  }
  ChooseIn(picker, field, qorcred::FromCivil(time), given);
}

void ChooseIn(PickerModel& picker, std::string_view field, qorcred::Date date,
              std::string_view given) {
  try {
    picker.Choose(date);
  } catch (const qorcred::RuntimeError&) {
    throw InputFault(field, given,
                     "{field} '{value}' lies outside the years that the screen offers");
  }
}

}  // namespace qorhost

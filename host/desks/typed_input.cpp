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

GivenDate ReadDate(std::string_view field, std::string_view given) {
  const auto date = qorcred::ParseDate(given);
  // Below a day's serial there is only a time.
  if (!date || (date->serial >= 0 && date->serial < 1)) {
    throw InputFault(field, given,
                     "{field} '{value}' is no date: write it as 2026-12-31, 12/31/2026 or 31 Dec "
                     "2026, with a time as in '2026-12-31 18:00'");
  }
  return {*date, given.find(':') != std::string_view::npos};
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

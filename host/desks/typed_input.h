// What a person types: texts, numbers and dates as a screen takes them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"
#include "host/desks/local_time.h"
#include "host/desks/whole_number.h"
#include "host/screens/picker_model.h"

namespace qorhost {

/// Whether the text is UTF-8 without control characters, as a person types it into a box.
[[nodiscard]] bool IsTypable(std::string_view text);

/// `text` itself; raises InputFault when it is not typable.
[[nodiscard]] const std::string& TypedText(std::string_view field, const std::string& text);

/// A whole number without blanks around it and without a plus sign; any other text as it is. Raises
/// InputFault when it is not typable, and for a number that a controller would round: 1.5, 1e3.
/// What is no number at all is the controller's to refuse.
[[nodiscard]] std::string TypedNumber(std::string_view field, const std::string& text);

/// The text with typographic apostrophes: what can be written where a plain one would end the text
/// in a statement.
[[nodiscard]] std::string WithTypographicApostrophes(std::string_view text);

/// Whether the text is digits alone, perhaps behind a sign; blanks around do not count.
[[nodiscard]] bool IsWholeNumber(std::string_view text);

/// What a controller makes of a text where it wants a number.
struct TakenNumber {
  std::optional<double> value;  ///< that the text begins with, 0 without one; nothing: too large
  bool isAll = false;           ///< whether nothing else stands in the text
};
[[nodiscard]] TakenNumber NumberTaken(std::string_view text);

/// A whole number in the range, which 32 bits hold. Raises InputFault for anything else.
[[nodiscard]] std::int32_t ReadLong(std::string_view field, std::string_view given,
                                    NumberRange range = {});

/// A date as the pickers show one, with its time or without, or with a T between them. Raises
/// InputFault for anything else.
struct GivenDate {
  qorcred::Date date;
  bool hasTime = false;
};
[[nodiscard]] GivenDate ReadDate(std::string_view field, std::string_view given);
/// The same for a clock: a time with its offset ("2026-01-31T14:05:09+01:00", or Z) is read as
/// well, as what that clock shows then. A calendar has no offset.
[[nodiscard]] GivenDate ReadMoment(std::string_view field, std::string_view given, TimeOf clock);

/// Chooses the date that ReadDate() reads; as an end, without a time, it is the day's last second.
/// Raises InputFault also for a date that the picker does not offer.
void ChooseDate(PickerModel& picker, std::string_view field, std::string_view given, bool isEnd);

/// Chooses the date that was given as `given`. Raises InputFault when the picker does not offer it.
void ChooseIn(PickerModel& picker, std::string_view field, qorcred::Date date,
              std::string_view given);

}  // namespace qorhost

// What the options of a command mean in terms of the screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"
#include "host/screens/list_model.h"
#include "host/screens/picker_model.h"

namespace qorhost {

/// The index of the entry that `given` names: by its attached number or by its text, letter case
/// and blanks around not counting. The first `placeholders` entries stand for no row and are found
/// by text alone. `kind` ("tenant", "schedule") is for the messages. Raises UsageError when no
/// entry or more than one has the text.
[[nodiscard]] std::int32_t FindEntry(const ListModel& list, std::string_view given,
                                     std::string_view kind, std::int32_t placeholders);

/// The entry of a door list: by position from 1 or by name; 0 or "none" is the entry for no door.
[[nodiscard]] std::int32_t FindDoor(const ListModel& doors, std::string_view given);

/// A date as the pickers show one, with its time or without. Raises UsageError for anything else.
struct GivenDate {
  qorcred::Date date;
  bool hasTime = false;
};
[[nodiscard]] GivenDate ReadDate(std::string_view option, std::string_view given);

/// Chooses the date that ReadDate() reads; as an end, without a time, it is the day's last second.
/// Raises UsageError also for a date that the picker does not offer.
void ChooseDate(PickerModel& picker, std::string_view option, std::string_view given, bool isEnd);

/// `text` itself; raises UsageError when nobody could type it into a box (control characters, bytes
/// that are not UTF-8).
[[nodiscard]] const std::string& TypedText(std::string_view option, const std::string& text);

/// A 32-bit whole number. Raises UsageError for anything else.
[[nodiscard]] std::int32_t ReadLong(std::string_view what, std::string_view given);

}  // namespace qorhost

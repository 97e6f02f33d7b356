// Who may go in where, and when.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/desks/list.h"
#include "host/desks/session.h"

namespace qorhost {

/// What the inputs are called in an InputFault.
namespace access_input {
inline constexpr std::string_view kOn = "day";
}  // namespace access_input

/// A moment, or a whole day from its first second to its last.
struct AccessTime {
  qorcred::Date from;
  qorcred::Date to;
};

/// The day, or with a time the moment, that is given; the session's day where nothing is. Raises
/// InputFault for what is no date.
[[nodiscard]] AccessTime ReadAccessTime(DeskSession& session, std::string_view given);

/// A row for each tenant, by name, and each door that the store has of the unit, one to four; of a
/// unit without stored doors all four. `access` holds where the schedule is another one than No
/// Access and the tenant's period, if it is kept, covers some of the time. Neither the hours of a
/// schedule are known to a store nor whether somebody without a card knows an entry code.
[[nodiscard]] List AccessList(DeskSession& session, std::int32_t unitKey, const AccessTime& time);

}  // namespace qorhost

// Finding the entry of a list that a person means.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/screens/list_model.h"

namespace qorhost {

/// The entry of lists of doors and of schedules that stands for none.
inline constexpr std::string_view kNoneEntry = "<None>";
/// What a person says for no door and no date.
inline constexpr std::string_view kNoneWord = "none";
/// Whether a person says so, in any letter case, blanks around not counting.
[[nodiscard]] bool SaysNone(std::string_view given);

/// How many entries at the start of a screen's list stand for no row.
namespace placeholders {
inline constexpr std::int32_t kInSchedules = 0;    // "No Access" and "Full Access" have ids
inline constexpr std::int32_t kInTenants = 1;      // "<Unassigned>"
inline constexpr std::int32_t kInCredentials = 1;  // "<Add New>"
inline constexpr std::int32_t kInDirCodes = 1;     // "<Add New>"
inline constexpr std::int32_t kInDoors = 1;        // kNoneEntry
}  // namespace placeholders

/// The indexes of the entries with a text, letter case and blanks around not counting, behind the
/// first `placeholders`.
[[nodiscard]] std::vector<std::int32_t> EntriesWithText(const ListModel& list,
                                                        std::string_view text,
                                                        std::int32_t placeholders);

/// The index of the entry that `given` names: by its attached number or by its text, letter case
/// and blanks around not counting. The first `placeholders` entries stand for no row and are found
/// by text alone. A "tenant" is found as by TenantsNamed(), too: by words of the name. `kind`
/// ("tenant", "schedule") is for the messages. Raises InputFault when no entry or more than one is
/// meant.
[[nodiscard]] std::int32_t FindEntry(const ListModel& list, std::string_view field,
                                     std::string_view given, std::string_view kind,
                                     std::int32_t placeholders);

/// The entry of a door list: by position from 1 or by name; 0 or "none" is the entry for no door.
[[nodiscard]] std::int32_t FindDoor(const ListModel& doors, std::string_view field,
                                    std::string_view given);

}  // namespace qorhost

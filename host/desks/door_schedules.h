// Schedules that are entered for the doors one behind the other: "Full Access,Late Shift,1,0".
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace qorhost {

/// Hands out each schedule with its door, from 0, blanks around it left out. Raises InputFault for
/// more of them than doors, and for an empty one: what is named has no gaps.
void ForEachDoor(std::string_view field, const std::string& given,
                 const std::function<void(std::size_t door, std::string_view schedule)>& take);

}  // namespace qorhost

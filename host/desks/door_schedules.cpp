#include "host/desks/door_schedules.h"

#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"

namespace qorhost {

void ForEachDoor(std::string_view field, const std::string& given,
                 const std::function<void(std::size_t door, std::string_view schedule)>& take) {
  std::string_view rest = given;
  std::size_t door = 0;
  for (bool more = true; more; ++door) {
    if (door == qorcred::kScheduleLists.size()) {
      throw InputFault(field, given, "{field} takes at most four schedules, one for each door");
    }
    const std::size_t comma = rest.find(',');
    const std::string_view schedule = qorcred::Trim(rest.substr(0, comma));
    if (schedule.empty()) {
      // Whoever is new has "Full Access": an empty text must not open a door.
      throw InputFault(field, given,
                       "{field} '{value}' has an empty schedule: name one for every door up to the "
                       "last that you name, as in 'Full Access,1'");
    }
    take(door, schedule);
    more = comma != std::string_view::npos;
    rest.remove_prefix(more ? comma + 1 : rest.size());
  }
}

}  // namespace qorhost

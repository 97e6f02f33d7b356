// The names of a unit's doors.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/outcome.h"
#include "host/desks/seen_row.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What the inputs are called in an InputFault.
namespace door_input {
inline constexpr std::string_view kDoor = "door";
inline constexpr std::string_view kName = "name";
}  // namespace door_input

/// In their order: the first is that of door 1.
[[nodiscard]] std::vector<std::string> DoorNames(DeskSession& session, std::int32_t unitKey);
/// The doors with their numbers and names.
[[nodiscard]] List DoorList(DeskSession& session, std::int32_t unitKey);

/// Done or stale.
struct ChangedDoor : Outcome {
  std::int32_t door = 0;  ///< its number, from 1
  std::string former;
  std::string name;
};

/// Gives a door, named by its number or its name, another name. Of a trial nothing is stored.
/// Raises InputFault for a door that is not there, and for a name that is empty, that another door
/// of the unit has, or by which a person means a number or no door. Of a door that was seen in
/// DoorList() and has another name by now, or is gone, nothing is changed: it is stale.
[[nodiscard]] ChangedDoor RenameDoor(DeskSession& session, std::int32_t unitKey,
                                     std::string_view door, const std::string& name, Trial trial,
                                     const std::optional<SeenRow>& seen = std::nullopt);

struct NewDoorName {
  std::string door;
  std::string name;
};
/// The same of several, one after the other, as one unit of work: all of them or none.
[[nodiscard]] std::vector<ChangedDoor> RenameDoors(DeskSession& session, std::int32_t unitKey,
                                                   const std::vector<NewDoorName>& renamed,
                                                   Trial trial);

}  // namespace qorhost

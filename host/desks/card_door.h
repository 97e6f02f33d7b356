// The door that a card opens, as a file says it.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/desks/session.h"
#include "host/screens/list_model.h"

namespace qorhost {

/// The place in the screen's list of doors that a cell means; 0 is none. Raises InputFault for an
/// unknown door, and for a door of a transmitter, which has none.
[[nodiscard]] std::int32_t DoorInCell(const ListModel& doors, double type, std::string_view given);

/// Stores it. No controller's operation writes a door alone.
void WriteDoor(DeskSession& session, std::int32_t unitKey, std::int32_t rid, std::int32_t door);

}  // namespace qorhost

#include "host/desks/card_door.h"

#include <fmt/format.h>

#include "credentials/credential_type.h"
#include "host/desks/credential_fields.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"

namespace qorhost {

std::int32_t DoorInCell(const ListModel& doors, double type, std::string_view given) {
  const std::int32_t door = FindDoor(doors, credential_field::kDoor, given);
  if (type == qorcred::kTransmitter && door != 0) {
    throw InputFault(credential_field::kDoor, given,
                     "{field} '{value}' must be left empty: only cards have a door");
  }
  return door;
}

void WriteDoor(DeskSession& session, std::int32_t unitKey, std::int32_t rid, std::int32_t door) {
  (void)session.sql().Change(
      fmt::format("UPDATE CREDENTIALBANK SET DOORCODE={}, LASTMODIFIEDDATE='_LMDATE_' WHERE "
                  "UnitKey={} AND RID={}",
                  door, unitKey, rid),
      dialect::StatementKind::kUpdate);
}

}  // namespace qorhost

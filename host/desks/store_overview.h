// What a store holds at a glance: units, doors, waiting programming steps.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/desks/session.h"
#include "host/files/table.h"

namespace qorhost {

/// The units with their codes in use, their capacity and the steps that wait for them.
[[nodiscard]] Table UnitTable(DeskSession& session, const std::vector<UnitName>& units);

/// What units lack, so that nothing can be stored in them; a sentence for each: "unit 9, Annex,
/// has no settings: ...".
[[nodiscard]] std::vector<std::string> MissingSettings(DeskSession& session,
                                                       const std::vector<UnitName>& units);

/// The units' doors with their names and their captions on the credential screen.
[[nodiscard]] Table DoorTable(DeskSession& session, const std::vector<UnitName>& units);

/// The queue of programming steps, of one unit or of all, in the order in which it is sent.
[[nodiscard]] Table StepTable(DeskSession& session, std::optional<std::int32_t> unitKey);

}  // namespace qorhost

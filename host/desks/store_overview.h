// What a store holds at a glance: units, doors, waiting programming steps.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/components/application_object.h"
#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/store/step_queue.h"

namespace qorhost {

/// A unit at a glance; unknown and without a name where the store has none.
[[nodiscard]] UnitStatus UnitStatusOf(DeskSession& session, std::int32_t unitKey);

/// The units with their codes in use, their capacity and the steps that wait for them.
[[nodiscard]] List UnitList(DeskSession& session, const std::vector<UnitName>& units);

/// What units lack, so that nothing can be stored in them; a sentence for each: "unit 9, Annex,
/// has no settings: ...".
[[nodiscard]] std::vector<std::string> MissingSettings(DeskSession& session,
                                                       const std::vector<UnitName>& units);

/// The units' doors with their names and their captions on the credential screen.
[[nodiscard]] List DoorList(DeskSession& session, const std::vector<UnitName>& units);

/// The queue of programming steps, of one unit or of all, in the order in which it is sent.
[[nodiscard]] std::vector<ProgramStep> StepsOf(DeskSession& session,
                                               std::optional<std::int32_t> unitKey);
/// Whom or what a step is about: the tenant, "Elena Hollis", or the directory code as it is now,
/// behind the code that the unit knows where that is another one, "101 to 102".
[[nodiscard]] std::string SubjectOf(DeskSession& session, const ProgramStep& step);
/// The queue as rows.
[[nodiscard]] List StepList(DeskSession& session, std::optional<std::int32_t> unitKey);

}  // namespace qorhost

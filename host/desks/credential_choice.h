// Finding the credential that a person means.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/desks/session.h"
#include "host/screens/list_model.h"

namespace qorhost {

/// The place in the screen's list of the credential that `given` names: by the number that is
/// printed on it, by its entry as in "Transmitter-301" or by its row as in "rid:17". Raises
/// InputFault when there is none or more than one.
[[nodiscard]] std::int32_t FindCredential(DeskSession& session, std::int32_t unitKey,
                                          const ListModel& credentials, std::string_view given);

}  // namespace qorhost

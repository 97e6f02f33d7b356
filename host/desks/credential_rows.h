// The rows behind the entries of the credential screen's list.
#pragma once

#include <cstdint>

#include "host/desks/session.h"
#include "host/screens/list_model.h"

namespace qorhost {

enum class EntryRows : std::uint8_t {
  kOwn,     ///< every entry has its own row, and every row an entry
  kMended,  ///< rows of types that the screen does not know have theirs at the end
  kOlder,   ///< the rows have changed since the list was filled
};

/// The controller makes no entry for a credential whose type it does not know, and leaves its row
/// with the entry in front of it: whoever chose that one would change or delete the other. Gives
/// every entry of a list that was just filled its own row, and such rows entries at its end.
[[nodiscard]] EntryRows GiveEntriesTheirRows(DeskSession& session, std::int32_t unitKey,
                                             ListModel& credentials);

}  // namespace qorhost

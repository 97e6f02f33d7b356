// Which tables the audit follows.
#pragma once

#include <string_view>

namespace qorhost {

/// Whether the audit keeps the changes of a table's rows. It leaves out what follows from other
/// rows (the queue of steps, counters, copies of tenants), the seal of a store's log, and itself.
/// The name is as the store spells it.
[[nodiscard]] bool IsAudited(std::string_view table);

}  // namespace qorhost

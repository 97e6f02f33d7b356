// The tenants of a unit with their cards and directory codes, as a file that an import takes back.
#pragma once

#include <cstdint>

#include "host/desks/session.h"
#include "host/files/table.h"

namespace qorhost {

/// A row for each tenant, then for each card and each directory code that nobody has, in the order
/// of their RIDs, under the headings of TenantFileColumns(). What a tenant refers to and is not
/// there stands as nothing.
[[nodiscard]] Table ExportedTenants(DeskSession& session, std::int32_t unitKey);

}  // namespace qorhost

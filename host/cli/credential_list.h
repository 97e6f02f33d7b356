// The credentials of a unit as rows.
#pragma once

#include "host/cli/credential_desk.h"
#include "host/cli/store_session.h"
#include "host/cli/table.h"

namespace qorhost {

/// Every credential in the screen's list, in its order, with its codes, door and tenant.
[[nodiscard]] Table CredentialTable(StoreSession& session, CredentialDesk& desk);

}  // namespace qorhost

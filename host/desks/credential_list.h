// The credentials of a unit as rows.
#pragma once

#include "host/desks/credential_desk.h"
#include "host/desks/list.h"
#include "host/desks/session.h"

namespace qorhost {

/// Every credential in the screen's list, in its order, with its codes, door and tenant.
[[nodiscard]] List CredentialList(DeskSession& session, CredentialDesk& desk);

}  // namespace qorhost

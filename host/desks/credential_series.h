// Changes of several credentials of a unit as one unit of work.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/desks/several.h"

namespace qorhost {

/// A credential as it is now, and who lost what by it.
struct EditedCredential {
  ChangedCredential changed;
  AssignmentLosses losses;
};

/// Changes the credentials that `names` name, all alike. Refused when the tenant cannot hold all
/// of them. `edited` is what became of each. Raises what CredentialDesk::Select() and EnterChange()
/// raise; nothing was changed then.
[[nodiscard]] SeveralOutcome EditCredentials(DeskSession& session, std::int32_t unitKey,
                                             const std::vector<std::string>& names,
                                             const CredentialChange& change, const Consent& consent,
                                             std::vector<EditedCredential>& edited);

/// Deletes them. `deleted` is what they were.
[[nodiscard]] SeveralOutcome DeleteCredentials(DeskSession& session, std::int32_t unitKey,
                                               const std::vector<std::string>& names,
                                               const Consent& consent,
                                               std::vector<ShownCredential>& deleted);

}  // namespace qorhost

// Who holds a credential, and who would by a save.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/session.h"
#include "host/screens/list_model.h"

namespace qorhost {

/// A credential, and the tenant who is chosen as its holder.
struct Assignment {
  std::int32_t unitKey = 0;
  std::int32_t rid = 0;                  ///< the credential's
  std::optional<std::int32_t> tenantId;  ///< nothing for nobody
};

/// Whom a save of what is chosen takes a credential from.
struct AssignmentLosses {
  std::vector<std::string> holders;  ///< who lose the credential that is selected, by their names
  std::string replaced;  ///< what the chosen tenant loses for it: "Transmitter-301 (RID 17)"

  [[nodiscard]] bool any() const { return !holders.empty() || !replaced.empty(); }
};

/// A SELECT of the whole rows of the tenant who is chosen.
[[nodiscard]] std::string SelectOfTaker(const Assignment& chosen);

/// Who would lose what. `credentials` is the screen's list, which names what the tenant loses.
[[nodiscard]] AssignmentLosses LossesOf(DeskSession& session, const Assignment& chosen,
                                        const ListModel& credentials);

/// The question to be asked before losses: "Hollis Elena loses Transmitter-301 (RID 17). Go on?".
/// `credential` is what is assigned, with its RID, `tenant` who is to hold it. Nothing is asked
/// where nobody loses anything, nor where nobody is to hold it: taking it back is what was asked
/// for.
[[nodiscard]] std::optional<std::string> QuestionOf(const AssignmentLosses& losses,
                                                    std::string_view credential,
                                                    std::string_view tenant);

/// Whether the tenant who is chosen holds the credential; so when nobody is chosen.
[[nodiscard]] bool IsHeldAsChosen(DeskSession& session, const Assignment& chosen);
/// Whether the tenant who is chosen holds it and nobody else does; nobody when nobody is chosen.
[[nodiscard]] bool IsHeldByChosenAlone(DeskSession& session, const Assignment& chosen);

/// Queues the step of everyone who holds the credential. A failure goes to the host's log.
void QueueHoldersSteps(DeskSession& session, std::int32_t unitKey, std::int32_t rid);

/// Who holds a credential, by their tenant ids.
struct CredentialHolders {
  std::vector<std::int32_t> tenants;
  std::vector<std::int32_t> residents;
};
[[nodiscard]] CredentialHolders HoldersOf(DeskSession& session, std::int32_t unitKey,
                                          std::int32_t rid);

/// Takes a credential that the controller has just deleted from everyone who held it, and queues
/// their steps: the controller teaches the unit one tenant, and forgets residents. A failure goes
/// to the host's log.
void ReleaseHolders(DeskSession& session, std::int32_t unitKey, std::int32_t rid,
                    const CredentialHolders& holders);

}  // namespace qorhost

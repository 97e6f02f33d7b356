// Settles what the list of a unit's matters has: leases that end, tenants whose lease is over,
// cards that nobody holds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/attention_list.h"
#include "host/desks/credential_report.h"
#include "host/desks/session.h"
#include "host/desks/tenant_desk.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What is done about tenants who are in AttentionList().
enum class AttentionStep : std::uint8_t {
  /// Leases that end after today, and soon, end today, and the cards are free at once.
  kEnd,
  /// Who is expired holds no card any more and has No Access at every door. The period stays: one
  /// that is not kept would let the tenant in again.
  kDeactivate,
};

/// One step about the tenants who are in the list for its reason and meet conditions on the list.
/// What somebody else changes after the desk was opened makes it stale.
class AttentionDesk {
 public:
  /// Reads the list and chooses; perhaps nobody. The session must outlive the desk. Raises
  /// InputFault for what is no condition.
  AttentionDesk(DeskSession& session, std::int32_t unitKey, const AttentionDays& days,
                std::vector<std::string> conditions, AttentionStep step);

  [[nodiscard]] const std::vector<TenantRow>& chosen() const { return tenants_.chosen(); }
  /// Does it as one unit of work. Nobody is chosen then.
  ChangedTenants Run(Trial trial);

 private:
  [[nodiscard]] std::vector<std::int32_t> Meant();

  DeskSession& session_;
  std::int32_t unitKey_;
  AttentionDays days_;
  std::vector<std::string> conditions_;
  AttentionStep step_;
  TenantDesk tenants_;
};

/// The credentials of the unit that nobody holds, as AttentionList() has them and conditions narrow
/// them, and their deletion by the credential report.
class FreeCards {
 public:
  FreeCards(DeskSession& session, std::int32_t unitKey, const AttentionDays& days,
            std::vector<std::string> conditions);

  struct Card {
    std::int32_t rid = 0;
    std::string entry;  ///< "Transmitter-301"
  };
  [[nodiscard]] const std::vector<Card>& cards() const { return cards_; }
  /// Deletes them all, unless somebody holds one by now: refused then. There must be one.
  DeletedCredentials Delete();

 private:
  CredentialReport report_;
  std::vector<Card> cards_;
};

}  // namespace qorhost

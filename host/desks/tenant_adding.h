// Adding tenants to a unit, one or many in one unit of work.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/session.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

/// Reads once what every new tenant of a unit has. To be made and used inside a unit of work that
/// nobody else writes beside.
class TenantAdding {
 public:
  /// The session must live as long. Raises FailureError when the unit's screen cannot be opened.
  TenantAdding(DeskSession& session, std::int32_t unitKey);

  /// A new tenant of the unit's group zero with Full Access and the unit's default period.
  [[nodiscard]] const TenantRow& fresh() const { return fresh_; }
  /// Stores the tenant with the next link code. Puts the tenant's row into `tenant`.
  void Store(TenantRow& tenant);
  /// Stores what goes with all of them: backup rows, the steps "program tenant" in their order, and
  /// that the link codes are taken. To be called behind the last tenant.
  void Finish();

 private:
  DeskSession& session_;
  std::int32_t unitKey_;
  std::string insert_;  // up to the values of a row
  TenantRow fresh_;
  std::int64_t nextLinkCode_ = 0;   // once a tenant was stored
  std::vector<std::int32_t> rids_;  // of those that were stored
};

/// The RID of the unit's group zero; 0 when it has none.
[[nodiscard]] std::int32_t GroupZeroOf(DeskSession& session, std::int32_t unitKey);

}  // namespace qorhost

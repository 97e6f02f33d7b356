// The floors on a server: the same rows by hand with libpq, as a program would that does nothing
// else. All of them end the program when a call fails.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/server_store.h"

namespace qorbench::by_hand {

/// Issues the numbers 1 to kServerRange in unit 1 in one transaction: one prepared INSERT for each,
/// in pipeline mode, whose identity comes back; while one batch is under way the answers of the one
/// before are read. With tenants: all credentials, then the next link code, all tenants, and all
/// backup rows and steps.
void IssueOnServer(HandConnection& connection, bool withTenants);

/// Gives a credential of a unit another number, as a unit of work of its own does: the unit's
/// version locked, whether the number is free, whether the row is as it was, the change, its entry
/// in the history with the row as it was and is, the version raised; prepared, one round trip for
/// each. Any program that keeps the store's promises has to do that much.
class ServerRenumbering {
 public:
  explicit ServerRenumbering(const std::string& name);
  void Renumber(std::int32_t unit, std::int64_t rid, std::int64_t number);

 private:
  HandConnection connection_;
};

/// Steps a query in single-row mode and keeps its cells; returns the number of rows.
[[nodiscard]] std::size_t StepQuery(HandConnection& connection, const std::string& sql,
                                    const std::vector<std::optional<std::string>>& values);

}  // namespace qorbench::by_hand

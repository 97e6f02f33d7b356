// What a save of new credentials tells.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/outcome.h"

namespace qorhost {

/// The numbers are those that were accepted. A range is stored in one go: its rows stand behind
/// each other.
struct IssuedCredentials : Outcome {
  std::string type;  ///< the screen's label
  std::int64_t first = 0;
  std::int64_t last = 0;
  std::int32_t lastRid = 0;
  std::string newTenantIds;  ///< a comma behind each; "" without new tenants

  [[nodiscard]] std::int64_t Count() const { return last - first + 1; }
  /// The row of a number from the first to the last.
  [[nodiscard]] std::int32_t RidOf(std::int64_t number) const {
    return lastRid - static_cast<std::int32_t>(last - number);
  }
  /// Its entry in the list: "Transmitter-301"
  [[nodiscard]] std::string EntryOf(std::int64_t number) const;
  /// The ids of the new tenants.
  [[nodiscard]] std::vector<double> NewTenants() const;
};

}  // namespace qorhost

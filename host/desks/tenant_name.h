// What tenants are called.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// Last and first name, as expressions of a SELECT on Tenants; blanks around are to be trimmed.
inline constexpr std::string_view kTenantName = "LastName & ' ' & FirstName";
/// First and last name.
inline constexpr std::string_view kTenantSpokenName = "FirstName & ' ' & LastName";

/// The parts of a full name, as columns of such a SELECT.
inline constexpr std::string_view kFullNameColumns = "LastName, FirstName, MiddleInitial";

/// The full name of which the parts stand in a row from column `first` on: those that there are,
/// with a blank between.
[[nodiscard]] inline std::string FullNameIn(const ResultRow& tenant, std::int32_t first) {
  std::string name;
  for (std::int32_t column = first; column < first + 3; ++column) {
    const std::string part = qorcred::TextOrEmpty(tenant[column]);
    if (!part.empty()) {
      name += (name.empty() ? "" : " ") + part;
    }
  }
  return name;
}

}  // namespace qorhost

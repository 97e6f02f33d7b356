// What tenants are called.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// Last and first name, as expressions of a SELECT on Tenants; blanks around are to be trimmed.
inline constexpr std::string_view kTenantName = "LastName & ' ' & FirstName";
/// First and last name.
inline constexpr std::string_view kTenantSpokenName = "FirstName & ' ' & LastName";

/// The parts of a full name, as columns of such a SELECT.
inline constexpr std::string_view kFullNameColumns = "LastName, FirstName, MiddleInitial";

/// The parts that there are, with a blank between; blanks around a part are left out.
[[nodiscard]] inline std::string FullName(std::string_view lastName, std::string_view firstName,
                                          std::string_view initial) {
  std::string name;
  for (const std::string_view given : {lastName, firstName, initial}) {
    const std::string_view part = qorcred::Trim(given);
    if (!part.empty()) {
      name.append(name.empty() ? "" : " ").append(part);
    }
  }
  return name;
}

/// The full name of which the parts stand in a row from column `first` on.
[[nodiscard]] inline std::string FullNameIn(const ResultRow& tenant, std::int32_t first) {
  return FullName(qorcred::TextOrEmpty(tenant[first]), qorcred::TextOrEmpty(tenant[first + 1]),
                  qorcred::TextOrEmpty(tenant[first + 2]));
}

}  // namespace qorhost

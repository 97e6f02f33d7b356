// What tenants are called in statements of the dialect.
#pragma once

#include <string_view>

namespace qorhost {

/// Last and first name, as expressions of a SELECT on Tenants; blanks around are to be trimmed.
inline constexpr std::string_view kTenantName = "LastName & ' ' & FirstName";
/// First and last name.
inline constexpr std::string_view kTenantSpokenName = "FirstName & ' ' & LastName";
/// Last and first name with the middle initial.
inline constexpr std::string_view kTenantFullName =
    "LastName & ' ' & FirstName & ' ' & MiddleInitial";

}  // namespace qorhost

// The types of credentials by everything that people call them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qorhost {

struct CredentialTypeWords {
  std::int16_t type = 0;        ///< as it is stored
  std::string_view word;        ///< in commands and files: "card26"
  std::string_view reportName;  ///< "Standard 26 Bit card"; the screen's own label says "26-Bit"
};

/// Every type that reports know, by its stored number. Those before kReportedTypesOnly are on the
/// credential screen.
[[nodiscard]] std::span<const CredentialTypeWords> CredentialTypes();
inline constexpr std::int16_t kReportedTypesOnly = 3;

/// The type that is called so, by its word or its name; letter case and hyphens do not count. Null
/// when there is none.
[[nodiscard]] const CredentialTypeWords* FindCredentialType(std::string_view given);

/// What the credential screen calls a stored type; "" for a type that is not on it.
[[nodiscard]] std::string_view ScreenLabelOf(double type);

}  // namespace qorhost

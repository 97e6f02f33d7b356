// The types of credentials by everything that people call them, and the bounds of their numbers.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "credentials/credential_type.h"

namespace qorhost {

/// The highest numbers that the screen takes; credential numbers begin with 1, the others with 0.
namespace credential_bound {
inline constexpr std::int32_t kNumber = qorcred::kHighestCredentialNumber;
inline constexpr std::int32_t kFacility = qorcred::kHighestFacilityCode;
inline constexpr std::int32_t kCorvinFacility = qorcred::kHighestCorvinFacilityCode;
inline constexpr std::int32_t kIdCode = qorcred::kHighestIdCode;
inline constexpr std::int32_t kSequence = qorcred::kHighestSequenceCode;
}  // namespace credential_bound

struct CredentialTypeWords {
  std::int16_t type = 0;        ///< as it is stored
  std::string_view word;        ///< in commands and files: "card26"
  std::string_view reportName;  ///< in the report's statement: "Standard 26 Bit card"; people read
                                ///< TypeNameOf()
};

/// Every type that reports know, by its stored number.
[[nodiscard]] std::span<const CredentialTypeWords> CredentialTypes();
/// Those among them that are entered on the credential screen.
[[nodiscard]] std::span<const CredentialTypeWords> EnteredTypes();

/// The words, or the names, of the types that are entered, with `between` between two of them and
/// `last` before the last: "card30, card26 and transmitter".
[[nodiscard]] std::string EnteredWords(std::string_view between, std::string_view last);
[[nodiscard]] std::string EnteredNames(std::string_view between, std::string_view last);

/// The type among `types` that is called so, by its word or its name; letter case and hyphens do
/// not count. Null when there is none.
[[nodiscard]] const CredentialTypeWords* FindCredentialType(
    std::span<const CredentialTypeWords> types, std::string_view given);

/// What the credential screen calls a stored type; "" for a type that is not on it.
[[nodiscard]] std::string_view ScreenLabelOf(double type);
/// What people read of a stored type: the screen's label; of one that reports alone know, their
/// name; "" for any other.
[[nodiscard]] std::string_view TypeNameOf(double type);

/// A card as the screens list it: "Transmitter-301"; "Credential-301" of a type that is not on it.
[[nodiscard]] std::string CardEntry(double type, std::string_view number);

}  // namespace qorhost

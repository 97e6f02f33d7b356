// A credential of a unit is unique within its type: a transmitter by number, facility code, ID
// code, sequence code and button; a card by number and facility code.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "credentials/entry.h"
#include "frame/data_services.h"
#include "frame/host.h"

namespace qorcred {

/// Stands for "the number that the screen shows".
inline constexpr std::int32_t kNumberFromScreen = -1;

/// Where a check looks and whom it tells.
struct DuplicateCheck {
  Host& host;
  const DatabaseManager& manager;
  const ObjectRef& connection;
  std::int32_t unitKey;
  DatabaseError& error;
};

/// What identifies a credential, as the texts that stand in the statement and the message.
struct CredentialTexts {
  std::string number;
  std::string facilityCode;
  std::string idCode;
  std::string sequenceCode;
  std::string button;
};

/// Whether no row of the unit is the same credential; shows the message when one is.
/// `rowToLeaveOut` is the RID of a row that does not count, or empty.
[[nodiscard]] bool IsUnusedCredential(const DuplicateCheck& check, std::int16_t type,
                                      const CredentialTexts& credential,
                                      std::string_view rowToLeaveOut);

/// The same with all values given as numbers; no row is left out.
[[nodiscard]] bool pvValidateCredentialValues(const DuplicateCheck& check, std::int16_t type,
                                              std::int32_t number, std::int32_t facilityCode,
                                              std::int32_t idCode, std::int16_t sequenceCode,
                                              std::int16_t button);

/// Whether no number of the range is taken; the message names the lowest one that is.
[[nodiscard]] bool pvValidateCredentialRange(const DuplicateCheck& check,
                                             const CredentialEntry& range);

/// Whether the number is not taken within its type by any row but `rowToLeaveOut`, whatever the
/// other codes are.
[[nodiscard]] bool IsUnusedNumber(const DuplicateCheck& check, std::int16_t type,
                                  std::int32_t number, std::int32_t rowToLeaveOut);

}  // namespace qorcred

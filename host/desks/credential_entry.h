// What an operator types into the credential screen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/screens/screen_model.h"

namespace qorhost {

class CredentialDesk;

/// What the inputs are called in an InputFault.
namespace credential_field {
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kFirst = "number";
inline constexpr std::string_view kLast = "last number";
inline constexpr std::string_view kFacility = "facility code";
inline constexpr std::string_view kIdCode = "ID code";
inline constexpr std::string_view kSequence = "sequence code";
inline constexpr std::string_view kButton = "button";
inline constexpr std::string_view kNewTenants = "new tenants";
inline constexpr std::string_view kSchedules = "schedules";
inline constexpr std::string_view kStart = "first day";
inline constexpr std::string_view kEnd = "last day";
inline constexpr std::string_view kCredential = "credential";
inline constexpr std::string_view kDoor = "door";
inline constexpr std::string_view kTenant = "tenant";
inline constexpr std::string_view kNewNumber = "new number";
}  // namespace credential_field

/// New credentials. Texts are typed as they are: whether they are numbers and within bounds is the
/// controller's to say, but numbers that it would round are refused.
struct NewCredentials {
  std::string type;  ///< the word of one of EnteredTypes(): "card26"
  std::string first;
  std::optional<std::string> last;  ///< none: a single credential
  std::optional<std::string> facility;
  std::optional<std::string> idCode;
  std::optional<std::string> sequence;
  std::optional<std::string> button;  ///< "1" or "4"
  bool withTenants = false;
  std::optional<std::string> schedules;  ///< up to four ids or names between commas
  std::optional<std::string> from;
  std::optional<std::string> to;
};

/// A change of one credential; what is not given stays.
struct CredentialChange {
  std::optional<std::string> door;    ///< its number, its name or "none"
  std::optional<std::string> tenant;  ///< an id or a name
  bool release = false;               ///< takes the credential from its tenant
};

/// Set the screen's controls as the entry says. Raise InputFault for what the screen does not let
/// an operator enter: a control that is hidden or disabled, an entry that a list does not have.
void EnterCredentials(CredentialDesk& desk, const NewCredentials& entry);
void EnterChange(CredentialDesk& desk, const CredentialChange& change);

/// The new number of a credential, 1 to 65535. Raises InputFault for anything else.
[[nodiscard]] std::int32_t ReadCredentialNumber(std::string_view given);

/// The numbers on the screen, read as the controller reads them.
struct EnteredNumbers {
  std::int64_t first = 0;
  std::int64_t last = 0;

  [[nodiscard]] std::int64_t Count() const { return last - first + 1; }
};

/// Nothing when the boxes hold no range of credential numbers.
[[nodiscard]] std::optional<EnteredNumbers> ReadEntered(const ScreenModel& screen);

}  // namespace qorhost

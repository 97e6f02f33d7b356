// What an operator types into the credential screen.
#pragma once

#include <optional>
#include <string>

#include "host/desks/credential_fields.h"

namespace qorhost {

class CredentialDesk;

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
/// What is typed into the screen's boxes for new credentials, to be entered so: a box that is empty
/// or that the screen hides gives nothing, but the last number of a range is given as it is.
[[nodiscard]] NewCredentials TypedCredentials(CredentialDesk& desk, bool isRange);
void EnterChange(CredentialDesk& desk, const CredentialChange& change);

}  // namespace qorhost

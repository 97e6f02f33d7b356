// The commands that issue, change and delete credentials.
#pragma once

#include <optional>
#include <string>

#include "host/cli/console.h"
#include "host/desks/session.h"

namespace qorhost {

/// What an operator types into the screen for new credentials. Texts are typed as they are: whether
/// they are numbers and within bounds is the controller's to say.
struct AddOptions {
  std::string type;
  std::string start;
  std::optional<std::string> end;  ///< none: a single credential
  std::optional<std::string> facility;
  std::optional<std::string> idCode;
  std::optional<std::string> sequence;
  std::optional<std::string> button;  ///< "1" or "4"
  bool withTenants = false;
  std::optional<std::string> schedules;  ///< up to four ids or names between commas
  std::optional<std::string> from;
  std::optional<std::string> to;
};

/// A credential is named by its RID or by its entry in the list ("Transmitter-301").
struct EditOptions {
  std::string credential;
  std::optional<std::string> door;
  std::optional<std::string> tenant;
  bool release = false;  ///< takes the credential from its tenant
};

struct RenumberOptions {
  std::string credential;
  std::string number;
};

ExitStatus RunList(const GlobalOptions& global, Console& console);
ExitStatus RunAdd(const GlobalOptions& global, const AddOptions& options, Console& console);
/// `credentials edit` and `credentials assign`.
ExitStatus RunEdit(const GlobalOptions& global, const EditOptions& options, Console& console);
ExitStatus RunRenumber(const GlobalOptions& global, const RenumberOptions& options,
                       Console& console);
ExitStatus RunDelete(const GlobalOptions& global, const std::string& credential, Console& console);

}  // namespace qorhost

// The commands that issue, change and delete credentials: what they say.
#pragma once

#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/desks/credential_entry.h"
#include "host/desks/credential_replacement.h"

namespace qorhost {

struct CredentialAddOptions {
  NewCredentials entry;
  bool trial = false;  ///< tells what it would do
};

/// A credential is named by its number ("301"), by its entry in the list ("Transmitter-301") or by
/// its row ("rid:17").
struct CredentialEditOptions {
  std::vector<std::string> credentials;
  CredentialChange change;
  bool trial = false;
};

struct CredentialRenumberOptions {
  std::string credential;
  std::string number;
  bool trial = false;
};

struct CredentialDeleteOptions {
  std::vector<std::string> credentials;
  bool trial = false;
};

struct CredentialReplaceOptions {
  CredentialExchange replacement;
  bool trial = false;  ///< tells what it would do
};

ExitStatus RunCredentialList(const GlobalOptions& global, const ListOptions& options,
                             Console& console);
ExitStatus RunCredentialAdd(const GlobalOptions& global, const CredentialAddOptions& options,
                            Console& console);
/// `credentials edit` and `credentials assign`; of several credentials all are changed or none.
ExitStatus RunCredentialEdit(const GlobalOptions& global, const CredentialEditOptions& options,
                             Console& console);
ExitStatus RunCredentialRenumber(const GlobalOptions& global,
                                 const CredentialRenumberOptions& options, Console& console);
ExitStatus RunCredentialReplace(const GlobalOptions& global,
                                const CredentialReplaceOptions& options, Console& console);
ExitStatus RunCredentialDelete(const GlobalOptions& global, const CredentialDeleteOptions& options,
                               Console& console);

}  // namespace qorhost

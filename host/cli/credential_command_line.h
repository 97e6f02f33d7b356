// The words of the commands for credentials.
#pragma once

#include "host/cli/commands.h"
#include "host/cli/credential_commands.h"
#include "host/cli/import_commands.h"

namespace qorhost {

/// Everything that their options write to.
struct CredentialChoice {
  ListOptions list;
  CredentialDeleteOptions toDelete;
  CredentialAddOptions add;
  CredentialEditOptions edit;
  CredentialRenumberOptions renumber;
  CredentialReplaceOptions replace;
  ImportOptions imported;
};

/// Adds `credentials` with its commands. `global` and `choice` must outlive the parsing and the
/// run.
void DescribeCredentials(CommandPlace place, const GlobalOptions& global, CredentialChoice& choice);

}  // namespace qorhost

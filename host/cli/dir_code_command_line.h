// The words of the commands for directory codes.
#pragma once

#include <string>

#include "host/cli/commands.h"
#include "host/cli/dir_code_commands.h"
#include "host/cli/dir_code_exchange_commands.h"
#include "host/cli/import_commands.h"

namespace qorhost {

/// Everything that their options write to.
struct DirCodeChoice {
  ListOptions list;
  std::vector<std::string> shown;
  DirCodeDeleteOptions toDelete;
  DirCodeAddOptions add;
  DirCodeEditOptions edit;
  DirCodeRenumberOptions renumber;
  DirCodeSyncOptions sync;
  DirCodeExportOptions exported;
  ImportOptions imported;
};

/// Adds `dircodes` with its commands. `global` and `choice` must outlive the parsing and the run.
void DescribeDirCodes(CommandPlace place, const GlobalOptions& global, DirCodeChoice& choice);

}  // namespace qorhost

// The commands that keep a store safe: backup, restore, check.
#pragma once

#include <string>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"

namespace qorhost {

struct BackupOptions {
  std::string file;    ///< the backup
  bool force = false;  ///< replace one that is there
  bool trial = false;  ///< tells what it would do
};

/// Adds `backup`, `restore` and `check`. `global` and `options` must outlive the parsing and the
/// run.
void DescribeBackup(CommandPlace place, const GlobalOptions& global, BackupOptions& options);

/// Writes a copy of the store, reads it back, and prints where the history ends in it.
ExitStatus RunBackup(const GlobalOptions& global, const BackupOptions& options, Console& console);
/// Puts a backup in the store's place, which is kept under another name.
ExitStatus RunRestore(const GlobalOptions& global, const BackupOptions& options, Console& console);
/// Looks the store over and tells how to mend what is wrong.
ExitStatus RunCheck(const GlobalOptions& global, Console& console);

}  // namespace qorhost

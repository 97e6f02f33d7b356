// The commands that import a CSV file.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/desks/import_run.h"

namespace qorhost {

struct ImportOptions {
  std::string file;      ///< "-" for standard input
  bool dryRun = false;   ///< does all of it, then undoes it
  bool columns = false;  ///< prints the columns and does nothing
};

/// One of the imports: what it reads, what does it, and what the things are called.
struct ImportCommand {
  std::span<const ImportColumn> columns;
  ImportReport (*import)(DeskSession& session, std::int32_t unitKey, ImportFile& file,
                         const ImportRules& rules, const Progress& progress) = nullptr;
  std::string_view one;
  std::string_view many;
};

/// Adds `import`. `global` and `options` must outlive the parsing and the run.
void DescribeImport(CommandPlace place, const char* description, const char* examples,
                    const GlobalOptions& global, ImportOptions& options, ImportCommand command);

}  // namespace qorhost

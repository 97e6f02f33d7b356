// The commands that take tenants in from a spreadsheet, and write them as one.
#pragma once

#include <string>

#include "host/cli/commands.h"
#include "host/cli/import_commands.h"

namespace qorhost {

struct TenantImportOptions {
  ImportOptions common;
  bool skipExisting = false;
  bool update = false;
  std::string cardType;  ///< of lines that do not say it; "" for none
  std::string facility;
};

struct TenantExportOptions {
  std::string to = "-";
  std::string delimiter = ",";
  bool force = false;
  bool trial = false;  ///< tells what it would write
};

/// Adds `import` and `export`. `global` and the options must outlive the parsing and the run.
void DescribeTenantExchange(CommandPlace tenants, const GlobalOptions& global,
                            TenantImportOptions& imported, TenantExportOptions& exported);

}  // namespace qorhost

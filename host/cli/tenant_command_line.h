// The words of the commands for tenants.
#pragma once

#include <string>

#include "host/cli/commands.h"
#include "host/cli/tenant_commands.h"
#include "host/cli/tenant_exchange_commands.h"

namespace qorhost {

/// Everything that their options write to.
struct TenantChoice {
  ListOptions list;
  std::vector<std::string> shown;
  TenantEditOptions added;
  TenantEditOptions edited;
  TenantEndOptions ended;
  TenantDeleteOptions deleted;
  TenantImportOptions imported;
  TenantExportOptions exported;
};

/// Adds `tenants` with its commands. `global` and `choice` must outlive the parsing and the run.
void DescribeTenants(CommandPlace place, const GlobalOptions& global, TenantChoice& choice);

}  // namespace qorhost

// The commands for the tenants of a unit.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/desks/tenant_desk.h"
#include "host/desks/tenant_entry.h"

namespace qorhost {

/// Which tenants are meant: by name, or by conditions.
struct TenantChoiceOptions {
  std::vector<std::string> names;
  std::vector<std::string> conditions;
};

struct TenantEditOptions {
  TenantChoiceOptions who;
  TenantEntry entry;
  std::optional<std::string> schedules;  ///< "A,B,C,D"
  bool trial = false;
};

struct TenantEndOptions {
  TenantChoiceOptions who;
  std::string on;
  bool freeCards = false;
  bool trial = false;
};

struct TenantDeleteOptions {
  TenantChoiceOptions who;
  bool trial = false;
};

/// Tells what became of tenants, in lines or as one object; `verb` is what was done, "Changed".
ExitStatus TellChangedTenants(const ChangedTenants& changed, const UnitName& unit,
                              std::string_view verb, const GlobalOptions& global, Console& console);

ExitStatus RunTenantList(const GlobalOptions& global, const ListOptions& options, Console& console);
ExitStatus RunTenantShow(const GlobalOptions& global, const std::string& name, Console& console);
/// The entry alone counts.
ExitStatus RunTenantAdd(const GlobalOptions& global, const TenantEditOptions& options,
                        Console& console);
ExitStatus RunTenantEdit(const GlobalOptions& global, const TenantEditOptions& options,
                         Console& console);
ExitStatus RunTenantEnd(const GlobalOptions& global, const TenantEndOptions& options,
                        Console& console);
ExitStatus RunTenantDelete(const GlobalOptions& global, const TenantDeleteOptions& options,
                           Console& console);

}  // namespace qorhost

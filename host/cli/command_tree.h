// All commands of qorhost as the parser has to know them.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "host/cli/access_commands.h"
#include "host/cli/attention_commands.h"
#include "host/cli/backup_commands.h"
#include "host/cli/building_command_line.h"
#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/cli/copy_commands.h"
#include "host/cli/credential_command_line.h"
#include "host/cli/dir_code_command_line.h"
#include "host/cli/export_commands.h"
#include "host/cli/find_commands.h"
#include "host/cli/history_command_line.h"
#include "host/cli/overview_commands.h"
#include "host/cli/report_command_line.h"
#include "host/cli/step_command_line.h"
#include "host/cli/store_commands.h"
#include "host/cli/tenant_command_line.h"

namespace qorhost {

/// Everything that options write to, and the command that was chosen.
struct Choice {
  GlobalOptions global;
  InitOptions init;
  SqlOptions sql;
  BuildingChoice building;
  StepOptions steps;
  CredentialChoice credentials;
  DirCodeChoice dircodes;
  ReportOptions report;
  HistoryOptions history;
  TenantChoice tenants;
  FindOptions find;
  AccessOptions access;
  AttentionOptions attention;
  OverviewOptions overview;
  BackupOptions backup;
  CopyOptions copy;
  ExportOptions exported;
  std::string shell;
  CommandRun run;
};

/// Describes every command to `app`, which writes what it parses to `choice`.
void DescribeCommands(CLI::App& app, Choice& choice);

/// Describes the commands alone whose first words are among `args`, which takes a fraction of that
/// time. False, and nothing is described, where `args` name a command that needs to know them all.
[[nodiscard]] bool DescribeNamedCommands(CLI::App& app, Choice& choice,
                                         const std::vector<std::string>& args);

}  // namespace qorhost

// What becomes of odd rows: the rules, table by table. Each settles the rows of its table and notes
// what it accepts for the tables behind it. docs/moving-in.md lists them all.
#pragma once

#include "host/desks/moving_in/rule_work.h"

namespace qorhost {

/// Whole, from 1 on and of one row alone. Where nobody refers to it a row gets another one instead.
void SettleIdentities(RuleWork& work);

void SettleUnits(RuleWork& work, AcceptedRows& accepted);
void SettleUnitTypes(RuleWork& work, AcceptedRows& accepted);
void SettleUnitSettings(RuleWork& work, AcceptedRows& accepted);
void SettleDoors(RuleWork& work, AcceptedRows& accepted);
void SettleSchedules(RuleWork& work, AcceptedRows& accepted);
void SettleGroups(RuleWork& work, AcceptedRows& accepted);
void SettleCredentials(RuleWork& work, AcceptedRows& accepted);
void SettleDirectoryCodes(RuleWork& work, AcceptedRows& accepted);
void SettleTenants(RuleWork& work, AcceptedRows& accepted);
void SettleTenantBackups(RuleWork& work, const AcceptedRows& accepted);
void SettleReportFields(RuleWork& work);

/// Tells which units have no settings, no group zero where the file has groups, and more codes than
/// they take: what is known when everything else is settled.
void TellOfUnits(RuleWork& units, RuleWork& settings, const AcceptedRows& accepted);

}  // namespace qorhost

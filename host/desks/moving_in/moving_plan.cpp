#include "host/desks/moving_in/moving_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "host/desks/desk_error.h"
#include "host/desks/moving_in/row_rules.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

/// A column that some table of units has, under whatever letter case.
bool HasUnit(const StagedTable& table) {
  return dialect::FindColumn(LayoutOf(table.known()), "UnitKey") != nullptr;
}

std::string KeysOf(const std::set<std::int32_t>& units) {
  return fmt::format("{}", fmt::join(units, ", "));
}

}  // namespace

MovingPlan::MovingPlan(const DesktopFile& file, std::string_view name,
                       std::optional<std::int32_t> unit) {
  Stage(file, name);
  for (const StagedTable& table : tables_) {
    if (table.isInFile()) RequireMeaning(table, name);
  }
  if (unit) {
    LeaveOtherUnits(*unit, name);
  }
  Settle();
  Count();
}

StagedTable& MovingPlan::Of(std::string_view table) {
  return *std::find_if(tables_.begin(), tables_.end(),
                       [&](const StagedTable& staged) { return staged.known().name == table; });
}

void MovingPlan::Stage(const DesktopFile& file, std::string_view name) {
  std::size_t found = 0;
  for (const DesktopTable& table : file.tables) {
    if (FindKnownTable(table.name) == nullptr) {
      left_.unknownTables.push_back(
          fmt::format("{}, {}", table.name, Counted(table.count, "row", "rows")));
    } else if (!table.isLinked) {
      ++found;
    }
  }
  if (found == 0 && left_.unknownTables.size() == file.tables.size()) {
    throw RefusedError(fmt::format(
        "'{}' is a database of another application: it has none of the tables of units, "
        "credentials and tenants. Name another file",
        name));
  }
  for (const KnownTable& known : KnownTables()) {
    const DesktopTable* own = nullptr;
    const DesktopTable* linked = nullptr;
    for (const DesktopTable& table : file.tables) {
      if (FindKnownTable(table.name) == &known) (table.isLinked ? linked : own) = &table;
    }
    if (own == nullptr && linked != nullptr) {
      throw RefusedError(fmt::format(
          "'{}' has only a link to the table '{}', whose rows stand in another file: name that "
          "file",
          name, linked->name));
    }
    if (own == nullptr) {
      tables_.emplace_back(known);
      left_.missingTables.push_back(fmt::format("{}: {}", known.name, known.without));
    } else {
      tables_.emplace_back(known, *own, settled_);
    }
  }
  if (!Of("Units").isInFile()) {
    throw RefusedError(fmt::format("'{}' has no table 'Units': {}. Name another file", name,
                                   Of("Units").known().without));
  }
}

void MovingPlan::RequireMeaning(const StagedTable& table, std::string_view name) const {
  const auto require = [&](std::string_view column) {
    throw RefusedError(
        fmt::format("the table '{}' of '{}' has no column '{}', without which its rows mean "
                    "nothing: name another file",
                    table.known().name, name, column));
  };
  for (const std::string_view column : table.known().needed) {
    if (!column.empty() && !table.IsGiven(table.At(column))) require(column);
  }
  const bool isTenants = table.known().name == "Tenants";
  if (table.known().identity == Identity::kReferred && !table.IsGiven(table.At("RID")) &&
      !(isTenants && table.IsGiven(table.At("TenantID")))) {
    require("RID");
  }
}

void MovingPlan::LeaveOtherUnits(std::int32_t unit, std::string_view name) {
  const StagedTable& units = Of("Units");
  std::set<std::int32_t> keys;
  for (const StagedRow& row : units.rows()) {
    if (const auto key = LongIn(row.cells[units.At("UnitKey")])) keys.insert(*key);
  }
  if (!keys.contains(unit)) {
    throw RefusedError(fmt::format("'{}' has no unit {}: it has {}", name, unit,
                                   keys.empty() ? "none" : KeysOf(keys)));
  }
  for (StagedTable& table : tables_) {
    MovedTable& numbers = numbers_.emplace_back();
    if (!HasUnit(table)) continue;
    const std::size_t key = table.At("UnitKey");
    std::set<std::size_t> left;
    std::erase_if(table.rows(), [&](const StagedRow& row) {
      const bool isOther = LongIn(row.cells[key]) != unit;
      if (isOther) left.insert(row.number);
      return isOther;
    });
    numbers.ofOtherUnits = left.size();
    std::erase_if(settled_, [&](const SettledCell& cell) {
      return cell.table == table.known().name && left.contains(cell.row);
    });
  }
}

void MovingPlan::Settle() {
  AcceptedRows accepted;
  const auto workOn = [this](std::string_view table) { return RuleWork(Of(table), settled_); };
  const auto withIdentities = [&](std::string_view table) {
    RuleWork work = workOn(table);
    SettleIdentities(work);
    return work;
  };
  RuleWork units = workOn("Units");
  SettleUnits(units, accepted);
  SettleIdentities(units);
  RuleWork types = workOn("UNITTYPES");
  SettleUnitTypes(types, accepted);
  SettleIdentities(types);
  RuleWork settings = workOn("UnitSettings");
  SettleUnitSettings(settings, accepted);
  SettleIdentities(settings);
  RuleWork doors = workOn("DOORS");
  SettleDoors(doors, accepted);
  SettleIdentities(doors);
  RuleWork schedules = workOn("Schedules");
  SettleSchedules(schedules, accepted);
  SettleIdentities(schedules);
  RuleWork groups = withIdentities("TenantGroup");
  SettleGroups(groups, accepted);
  RuleWork credentials = withIdentities("CredentialBank");
  SettleCredentials(credentials, accepted);
  RuleWork codes = withIdentities("DirectoryCode");
  SettleDirectoryCodes(codes, accepted);
  RuleWork tenants = workOn("Tenants");
  SettleTenants(tenants, accepted);
  RuleWork backups = workOn("TenantsBackup");
  SettleTenantBackups(backups, accepted);
  SettleIdentities(backups);
  RuleWork fields = withIdentities("TenantSelectionFields");
  SettleReportFields(fields);
  TellOfUnits(units, settings, accepted);
}

void MovingPlan::Count() {
  numbers_.resize(tables_.size());
  for (std::size_t at = 0; at < tables_.size(); ++at) {
    const StagedTable& table = tables_[at];
    MovedTable& numbers = numbers_[at];
    numbers.name = table.known().name;
    numbers.isInFile = table.isInFile();
    numbers.refused =
        static_cast<std::size_t>(std::count_if(table.rows().begin(), table.rows().end(),
                                               [](const StagedRow& row) { return row.isRefused; }));
    numbers.broughtIn = table.rows().size() - numbers.refused;
    numbers.inFile = table.rows().size() + numbers.ofOtherUnits;
    for (const std::string& column : table.unknown()) {
      left_.unknownColumns.push_back(fmt::format("{}.{}", numbers.name, column));
    }
    for (const std::string_view column : table.missing()) {
      left_.missingColumns.push_back(fmt::format("{}.{}", numbers.name, column));
    }
  }
  const auto placeOf = [this](const SettledCell& cell) {
    return std::find_if(numbers_.begin(), numbers_.end(),
                        [&](const MovedTable& table) { return table.name == cell.table; });
  };
  std::stable_sort(settled_.begin(), settled_.end(),
                   [&](const SettledCell& one, const SettledCell& other) {
                     const auto left = placeOf(one);
                     const auto right = placeOf(other);
                     return left != right ? left < right : one.row < other.row;
                   });
}

std::size_t MovingPlan::CountOf(Settlement settlement) const {
  return static_cast<std::size_t>(
      std::count_if(settled_.begin(), settled_.end(),
                    [&](const SettledCell& cell) { return cell.settlement == settlement; }));
}

std::size_t MovingPlan::refusedRows() const {
  std::size_t count = 0;
  for (const MovedTable& table : numbers_) count += table.refused;
  return count;
}

std::size_t MovingPlan::broughtInRows() const {
  std::size_t count = 0;
  for (const MovedTable& table : numbers_) count += table.broughtIn;
  return count;
}

}  // namespace qorhost

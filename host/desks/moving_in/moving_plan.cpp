#include "host/desks/moving_in/moving_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "host/desks/desk_error.h"
#include "host/desks/moving_in/row_rules.h"

namespace qorhost {

namespace {

std::string KeysOf(const StagedTable& units) {
  std::set<std::int32_t> keys;
  for (const StagedRow& row : units.rows()) {
    if (const auto key = LongIn(row.cells[units.At("UnitKey")])) keys.insert(*key);
  }
  return keys.empty() ? "none" : fmt::format("{}", fmt::join(keys, ", "));
}

std::string_view MeaningOfMissing(const StagedTable& table, std::string_view column) {
  const bool isTenants = table.known().name == "Tenants";
  if (column == "RID") {
    return isTenants ? "TenantID is taken for it" : "the rows get numbers of their own";
  }
  if (isTenants && column == "TenantID") {
    return "a tenant's is its RID";
  }
  return dialect::FindColumn(LayoutOf(table.known()), column)->type == dialect::ColumnType::kBoolean
             ? "No in every row"
             : "empty in every row";
}

/// The file's own table of those that a store knows, or null. Raises RefusedError for a link.
const DesktopTable* OwnTable(const DesktopFile& file, const KnownTable& known,
                             std::string_view name) {
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
  return own;
}

[[noreturn]] void RefuseRepeated(std::string_view what, std::string_view file) {
  throw RefusedError(fmt::format(
      "'{}' has {} twice, for letter case does not count: name another file", file, what));
}

/// Of two tables or columns of one name nobody knows which one is meant.
void RequireNamesOnce(const DesktopFile& file, std::string_view name) {
  std::set<const KnownTable*> tables;
  for (const DesktopTable& table : file.tables) {
    const KnownTable* known = FindKnownTable(table.name);
    if (known == nullptr) continue;
    if (!tables.insert(known).second) {
      RefuseRepeated(fmt::format("the table '{}'", known->name), name);
    }
    std::set<const dialect::Column*> columns;
    for (const DesktopColumn& source : table.columns) {
      const dialect::Column* column = dialect::FindColumn(LayoutOf(*known), source.name);
      if (column != nullptr && !columns.insert(column).second) {
        RefuseRepeated(fmt::format("the column '{}' of the table '{}'", column->name, known->name),
                       name);
      }
    }
  }
}

}  // namespace

MovingPlan::MovingPlan(const DesktopFile& file, std::string_view name,
                       std::optional<std::int32_t> unit)
    : codePage_(file.codePage) {
  LeaveUnknown(file, name);
  RequireNamesOnce(file, name);
  Stage(file, name, unit);
  for (const StagedTable& table : tables_) {
    if (!table.isInFile()) continue;
    RequireMeaning(table, name);
    NameColumns(table);
  }
  Settle();
  Count();
}

StagedTable& MovingPlan::Of(std::string_view table) {
  return *std::find_if(tables_.begin(), tables_.end(),
                       [&](const StagedTable& staged) { return staged.known().name == table; });
}

void MovingPlan::LeaveUnknown(const DesktopFile& file, std::string_view name) {
  for (const DesktopTable& table : file.tables) {
    if (FindKnownTable(table.name) == nullptr) {
      left_.push_back({table.name, "", table.count, table.isLinked});
    }
  }
  if (left_.size() == file.tables.size()) {
    throw RefusedError(fmt::format(
        "'{}' is a database of another application: it has none of the tables of units, "
        "credentials and tenants. Name another file",
        name));
  }
}

void MovingPlan::Stage(const DesktopFile& file, std::string_view name,
                       std::optional<std::int32_t> unit) {
  for (const KnownTable& known : KnownTables()) {
    const DesktopTable* own = OwnTable(file, known, name);
    if (own == nullptr) {
      tables_.emplace_back(known);
      missing_.push_back({known.name, "", known.without});
    } else {
      tables_.emplace_back(known, *own, unit, settled_);
    }
  }
  const StagedTable& units = Of("Units");
  if (!units.isInFile()) {
    throw RefusedError(fmt::format("'{}' has no table 'Units': {}. Name another file", name,
                                   units.known().without));
  }
  if (unit && units.rows().empty()) {
    SettledCells untold;
    const StagedTable all(units.known(), *OwnTable(file, units.known(), name), std::nullopt,
                          untold);
    throw RefusedError(fmt::format("'{}' has no unit {}: it has {}", name, *unit, KeysOf(all)));
  }
}

void MovingPlan::NameColumns(const StagedTable& table) {
  for (const std::string& column : table.unknown()) {
    left_.push_back({std::string(table.known().name), column, 0, false});
  }
  for (const std::string_view column : table.missing()) {
    missing_.push_back({table.known().name, column, MeaningOfMissing(table, column)});
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
  std::vector<std::string_view> names;
  for (const StagedTable& table : tables_) {
    MovedTable& numbers = numbers_.emplace_back();
    numbers.name = table.known().name;
    numbers.isInFile = table.isInFile();
    numbers.refused =
        static_cast<std::size_t>(std::count_if(table.rows().begin(), table.rows().end(),
                                               [](const StagedRow& row) { return row.isRefused; }));
    numbers.broughtIn = table.rows().size() - numbers.refused;
    numbers.ofOtherUnits = table.ofOtherUnits();
    numbers.inFile = table.rows().size() + numbers.ofOtherUnits;
    names.push_back(numbers.name);
  }
  settled_.Sort(names);
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

#include "host/store/postgres/placement.h"

#include <fmt/format.h>

#include "host/dialect/catalog.h"
#include "host/dialect/unit_key.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr std::string_view kUnits = "Units";

std::vector<PlacedTable> AllPlaced() {
  std::vector<PlacedTable> placed{{kUnits, "UnitKey"}};
  for (const dialect::Table& table : dialect::Tables()) {
    if (table.name != kUnits) {
      const dialect::Column* const unit = dialect::UnitColumnOf(table);
      placed.push_back({table.name, unit == nullptr ? std::string_view() : unit->name});
    }
  }
  placed.push_back({"AuditEntries", "HomeUnit"});
  placed.push_back({"AuditRows", "HomeUnit"});
  placed.push_back({"UnitVersions", "UnitKey"});
  return placed;
}

bool HasIdentity(const PlacedTable& table) {
  return table.name == "AuditEntries" || dialect::FindTable(table.name) != nullptr;
}

std::string PartitionsOf(const PlacedTable& table) {
  std::string text;
  for (int place = 0; place < kPartitions; ++place) {
    text += fmt::format(
        R"(CREATE TABLE "{0}_p{1}" PARTITION OF "{0}" FOR VALUES WITH (MODULUS {2}, REMAINDER {1});)"
        "\n",
        table.name, place, kPartitions);
  }
  return text;
}

std::string DistributionOf(const PlacedTable& table) {
  if (table.unitColumn.empty()) {
    return fmt::format("SELECT create_reference_table('\"{}\"');\n", table.name);
  }
  const std::string beside =
      table.name == kUnits ? "" : fmt::format(R"(, colocate_with => '"{}"')", kUnits);
  return fmt::format("SELECT create_distributed_table('\"{}\"', '{}'{});\n", table.name,
                     table.unitColumn, beside);
}

}  // namespace

const std::vector<PlacedTable>& PlacedTables() {
  static const std::vector<PlacedTable> placed = AllPlaced();
  return placed;
}

void RequireSpreading(Connection& connection, Spread spread) {
  if (spread != Spread::kServers) {
    return;
  }
  const Result found = connection.Run(
      "SELECT count(DISTINCT proname) FROM pg_proc WHERE pg_function_is_visible(oid) AND "
      "proname IN ('create_distributed_table', 'create_reference_table')");
  if (found.Number(0, 0) < 2) {
    throw StoreError(fmt::format(
        "The server of '{}' cannot spread tables over several servers: it has no functions "
        "create_distributed_table and create_reference_table. Make the store without that, or name "
        "a database that has them",
        connection.name()));
  }
}

std::string SpreadText(std::string_view createTables, Spread spread) {
  std::string text(createTables);
  if (spread != Spread::kPartitions) {
    return text;
  }
  constexpr std::string_view kEnd = "\n);";
  for (const PlacedTable& table : PlacedTables()) {
    const std::size_t begin = text.find(fmt::format("CREATE TABLE \"{}\" (", table.name));
    const std::size_t end = text.find(kEnd, begin);
    if (!table.unitColumn.empty() && end != std::string::npos) {
      text.replace(end, kEnd.size(),
                   fmt::format("\n) PARTITION BY HASH (\"{}\");", table.unitColumn));
    }
  }
  return text;
}

std::string PlacingText(Spread spread) {
  std::string text;
  for (const PlacedTable& table : PlacedTables()) {
    if (spread == Spread::kServers) {
      text += DistributionOf(table);
    } else if (spread == Spread::kPartitions && !table.unitColumn.empty()) {
      text += PartitionsOf(table);
    }
  }
  for (const PlacedTable& table : PlacedTables()) {
    if (!table.unitColumn.empty() && HasIdentity(table)) {
      text += fmt::format("CREATE {1}INDEX \"{0}_RID\" ON \"{0}\" (\"RID\");\n", table.name,
                          spread == Spread::kNone ? "UNIQUE " : "");
    }
  }
  return text;
}

std::vector<std::string> DoubleIdentities(Connection& connection) {
  std::vector<std::string> doubles;
  if (connection
          .Run(R"(SELECT 1 FROM pg_index WHERE indexrelid = '"Units_RID"'::regclass )"
               "AND NOT indisunique")
          .rows() == 0) {
    return doubles;
  }
  for (const PlacedTable& table : PlacedTables()) {
    if (table.unitColumn.empty() || !HasIdentity(table)) {
      continue;
    }
    const Result found = connection.Run(
        fmt::format(R"(SELECT "RID", string_agg("{1}"::text, ', ' ORDER BY "{1}") FROM "{0}" )"
                    R"(GROUP BY "RID" HAVING count(*) > 1 ORDER BY "RID")",
                    table.name, table.unitColumn));
    for (int row = 0; row < found.rows(); ++row) {
      doubles.push_back(fmt::format("the identity {} of {} stands in several units: {}",
                                    found.Number(row, 0), table.name, found.Text(row, 1)));
    }
  }
  return doubles;
}

}  // namespace qorhost::postgres

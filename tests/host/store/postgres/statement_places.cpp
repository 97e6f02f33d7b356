#include "statement_places.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host/store/postgres/placement.h"

namespace qorhost::postgres::test {

namespace {

using nlohmann::json;

/// The number behind "_p", by which a partition is called; nothing for other tables.
void AddPlaceOf(const std::string& relation, std::set<int>& places) {
  const std::size_t end = relation.size();
  if (end > 3 && relation.compare(end - 3, 2, "_p") == 0 &&
      std::isdigit(static_cast<unsigned char>(relation[end - 1])) != 0) {
    places.insert(relation[end - 1] - '0');
  }
}

void AddPlacesOf(const json& node, std::set<int>& places) {
  if (node.is_array()) {
    for (const json& each : node) {
      AddPlacesOf(each, places);
    }
  }
  if (!node.is_object()) {
    return;
  }
  for (const auto& [name, value] : node.items()) {
    if (name == "Relation Name") {
      AddPlaceOf(value.get<std::string>(), places);
    }
    AddPlacesOf(value, places);
  }
}

/// Whether an INSERT lists columns, and not the one by which rows are placed.
bool AddsWithoutUnit(const std::string& sql) {
  return std::any_of(PlacedTables().begin(), PlacedTables().end(), [&](const PlacedTable& table) {
    const std::string begin = "INSERT INTO \"" + std::string(table.name) + "\" (";
    if (table.unitColumn.empty() || sql.compare(0, begin.size(), begin) != 0) {
      return false;
    }
    const std::string columns = sql.substr(begin.size(), sql.find(')') - begin.size());
    return columns.find("\"" + std::string(table.unitColumn) + "\"") == std::string::npos;
  });
}

PlannedStatement StatementIn(const std::string& plan) {
  const json read = json::parse(plan, nullptr, false);
  if (read.is_discarded()) {
    throw std::runtime_error("the server's log has a plan that cannot be read: " + plan);
  }
  PlannedStatement statement;
  statement.sql = read.at("Query Text").get<std::string>();
  AddPlacesOf(read.at("Plan"), statement.places);
  statement.addsWithoutUnit = AddsWithoutUnit(statement.sql);
  return statement;
}

}  // namespace

std::vector<PlannedStatement> PlannedStatements(std::string_view log) {
  constexpr std::string_view kPlan = " plan:\n\t";
  std::vector<PlannedStatement> statements;
  for (std::size_t at = log.find(kPlan); at != std::string_view::npos; at = log.find(kPlan, at)) {
    // The lines that begin with a tabulator belong to the plan.
    std::string plan;
    for (at += kPlan.size() - 1; at < log.size() && log[at] == '\t';) {
      const std::size_t end = std::min(log.find('\n', at), log.size());
      plan.append(log.substr(at + 1, end - at - 1)).append("\n");
      at = std::min(end + 1, log.size());
    }
    statements.push_back(StatementIn(plan));
  }
  return statements;
}

}  // namespace qorhost::postgres::test

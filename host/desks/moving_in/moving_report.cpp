#include "host/desks/moving_in/moving_report.h"

#include <fmt/format.h>

#include <array>

#include "host/desks/words.h"
#include "host/files/visible_text.h"

namespace qorhost {

namespace {

struct Section {
  Settlement settlement;
  std::string_view title;
};
constexpr std::array kSections{
    Section{Settlement::kRefused, "Refused: these rows are not brought in"},
    Section{Settlement::kAdjusted, "Adjusted: these cells are brought in with another value"},
    Section{Settlement::kKept, "Kept: these are odd, and are brought in as they stand"},
};

std::string LineOf(const SettledCell& cell) {
  std::string line = fmt::format("{}, row {}", cell.table, cell.row);
  if (!cell.identity.empty()) line += fmt::format(" ({})", cell.identity);
  line += fmt::format(": {} {}", cell.column, cell.value);
  if (cell.settlement == Settlement::kAdjusted) line += fmt::format(" -> {}", cell.instead);
  return line + fmt::format(": {} [{}]", cell.reason, cell.kind);
}

void PrintSection(std::ostream& out, const MovingPlan& plan, const Section& section) {
  if (plan.CountOf(section.settlement) == 0) return;
  out << '\n' << section.title << '\n';
  for (const SettledCell& cell : plan.settled()) {
    if (cell.settlement == section.settlement) out << "  " << LineOf(cell) << '\n';
  }
}

void PrintNames(std::ostream& out, std::string_view title, const std::vector<std::string>& names) {
  if (names.empty()) return;
  out << '\n' << title << '\n';
  for (const std::string& name : names) out << "  " << VisibleText(name) << '\n';
}

void PrintNumbers(std::ostream& out, const MovingPlan& plan) {
  out << fmt::format("{:<22}{:>10}{:>12}{:>9}{:>16}\n", "Table", "In file", "Brought in", "Refused",
                     "Of other units");
  for (const MovedTable& table : plan.numbers()) {
    if (!table.isInFile) {
      out << fmt::format("{:<22}{:>10}\n", table.name, "none");
      continue;
    }
    out << fmt::format("{:<22}{:>10}{:>12}{:>9}{:>16}\n", table.name, table.inFile, table.broughtIn,
                       table.refused, table.ofOtherUnits);
  }
}

}  // namespace

std::string_view WordFor(Settlement settlement) {
  switch (settlement) {
    case Settlement::kRefused:
      return "refused";
    case Settlement::kAdjusted:
      return "adjusted";
    case Settlement::kKept:
      return "kept";
  }
  return "";
}

Table SettledCells(const MovingPlan& plan) {
  Table table;
  table.columns = {{"Settlement", "settlement"}, {"Table", "table"},   {"Row", "row"},
                   {"Identity", "identity"},     {"Column", "column"}, {"Value", "value"},
                   {"Instead", "instead"},       {"Kind", "kind"},     {"Reason", "reason"}};
  for (const SettledCell& cell : plan.settled()) {
    table.rows.push_back({std::string(WordFor(cell.settlement)), cell.table, CountCell(cell.row),
                          cell.identity, cell.column, cell.value, cell.instead, cell.kind,
                          cell.reason});
  }
  return table;
}

Table MovedTables(const MovingPlan& plan) {
  Table table;
  table.columns = {{"Table", "table"},
                   {"In file", "in_file"},
                   {"Brought in", "brought_in"},
                   {"Refused", "refused"},
                   {"Of other units", "of_other_units"}};
  for (const MovedTable& moved : plan.numbers()) {
    table.rows.push_back({std::string(moved.name), CountCell(moved.inFile),
                          CountCell(moved.broughtIn), CountCell(moved.refused),
                          CountCell(moved.ofOtherUnits)});
  }
  return table;
}

void PrintMovingReport(std::ostream& out, const MovingPlan& plan, std::string_view name) {
  out << fmt::format("{}: {} to bring in, {} refused, {} adjusted, {} kept as odd\n\n",
                     VisibleText(name), Counted(plan.broughtInRows(), "row", "rows"),
                     Counted(plan.refusedRows(), "row", "rows"),
                     Counted(plan.CountOf(Settlement::kAdjusted), "cell", "cells"),
                     plan.CountOf(Settlement::kKept));
  PrintNumbers(out, plan);
  for (const Section& section : kSections) PrintSection(out, plan, section);
  PrintNames(out, "The file does not have these tables", plan.left().missingTables);
  PrintNames(out, "The file does not have these columns, which are empty or as in new rows",
             plan.left().missingColumns);
  PrintNames(out, "Left: tables that a store does not have", plan.left().unknownTables);
  PrintNames(out, "Left: columns that a store does not have", plan.left().unknownColumns);
}

}  // namespace qorhost

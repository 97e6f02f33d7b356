#include "host/desks/moving_in/moving_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "host/desks/words.h"
#include "host/files/csv_writer.h"
#include "host/files/visible_text.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

struct Section {
  Settlement settlement;
  std::string_view title;
};
constexpr std::array kSections{
    Section{Settlement::kRefused, "Refused: these rows are not brought in"},
    Section{Settlement::kAdjusted, "Adjusted: these cells are brought in with another value"},
    Section{Settlement::kKept, "Kept: these are odd, and are brought in as they stand"},
};

std::string MoreText(std::size_t count) {
  return fmt::format("{} more, which the report alone lists", count);
}

void PrintSection(std::ostream& out, const MovingPlan& plan, const Section& section,
                  Extent extent) {
  if (plan.CountOf(section.settlement) == 0) return;
  out << '\n' << section.title << '\n';
  const auto print = [&](const SettledCell& cell) { out << "  " << LineOf(cell) << '\n'; };
  if (extent == Extent::kAll) {
    plan.settled().Each(print, section.settlement);
    return;
  }
  for (const SettledCell& cell : plan.settled().named()) {
    if (cell.settlement == section.settlement) print(cell);
  }
  if (const std::size_t more = plan.settled().UnnamedOf(section.settlement); more > 0) {
    out << "  " << MoreText(more) << '\n';
  }
}

void PrintNames(std::ostream& out, std::string_view title, const std::vector<std::string>& names) {
  if (names.empty()) return;
  out << '\n' << title << '\n';
  for (const std::string& name : names) out << "  " << VisibleText(name) << '\n';
}

Value OrNull(std::string_view text) {
  return text.empty() ? Value(Null{}) : Value(std::string(text));
}

/// One that is of no single cell.
void AddRow(Table& table, std::string_view settlement, std::string_view name,
            std::string_view column, std::string_view kind, std::string reason) {
  table.rows.push_back({std::string(settlement), std::string(name), Null{}, "", std::string(column),
                        "", "", std::string(kind), std::move(reason)});
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

std::vector<TableColumn> OddColumns() {
  return {{"Settlement", "settlement"}, {"Table", "table"},   {"Row", "row"},
          {"Identity", "identity"},     {"Column", "column"}, {"Value", "value"},
          {"Instead", "instead"},       {"Kind", "kind"},     {"Reason", "reason"}};
}

std::vector<Value> RowOf(const SettledCell& cell) {
  return {std::string(WordFor(cell.settlement)),
          cell.table,
          CountCell(cell.row),
          cell.identity,
          cell.column,
          cell.value,
          cell.instead,
          cell.kind,
          cell.reason};
}

void AddMissingAndLeft(Table& table, const MovingPlan& plan) {
  for (const MissingThing& thing : plan.missing()) {
    const bool isTable = thing.column.empty();
    AddRow(table, "missing", thing.table, thing.column,
           isTable ? "missing-table" : "missing-column",
           fmt::format("the file does not have {}: {}", isTable ? "this table" : "this column",
                       thing.means));
  }
  for (const LeftThing& thing : plan.left()) {
    if (thing.column.empty()) {
      AddRow(table, "left", thing.table, "", "unknown-table",
             thing.isLink ? "a store does not have this table: it is a link to another file"
                          : fmt::format("a store does not have this table: {} left",
                                        Counted(thing.rows, "row is", "rows are")));
    } else {
      AddRow(table, "left", thing.table, thing.column, "unknown-column",
             "a store does not have this column");
    }
  }
}

}  // namespace

std::string LineOf(const SettledCell& cell) {
  std::string line = fmt::format("{}, row {}", cell.table, cell.row);
  if (!cell.identity.empty()) line += fmt::format(" ({})", cell.identity);
  line += fmt::format(": {} {}", cell.column, cell.value);
  if (cell.settlement == Settlement::kAdjusted) line += fmt::format(" -> {}", cell.instead);
  return line + fmt::format(": {} [{}]", cell.reason, cell.kind);
}

NamedThings NamesOfMissing(const MovingPlan& plan) {
  NamedThings names;
  for (const MissingThing& thing : plan.missing()) {
    if (thing.column.empty()) {
      names.tables.push_back(fmt::format("{} ({})", thing.table, thing.means));
    } else {
      names.columns.push_back(fmt::format("{}.{} ({})", thing.table, thing.column, thing.means));
    }
  }
  return names;
}

std::vector<MissingColumns> MissingColumnsByMeaning(const MovingPlan& plan) {
  std::vector<MissingColumns> all;
  for (const MissingThing& thing : plan.missing()) {
    if (thing.column.empty()) continue;
    auto same = std::find_if(all.begin(), all.end(), [&](const MissingColumns& columns) {
      return columns.means == thing.means;
    });
    if (same == all.end()) same = all.insert(all.end(), {thing.means, {}});
    same->names.push_back(fmt::format("{}.{}", thing.table, thing.column));
  }
  return all;
}

NamedThings NamesOfLeft(const MovingPlan& plan) {
  NamedThings names;
  for (const LeftThing& thing : plan.left()) {
    if (thing.column.empty()) {
      names.tables.push_back(fmt::format(
          "{} ({})", thing.table,
          thing.isLink ? "a link to another file" : Counted(thing.rows, "row", "rows")));
    } else {
      names.columns.push_back(fmt::format("{}.{}", thing.table, thing.column));
    }
  }
  return names;
}

Table SettledTable(const MovingPlan& plan) {
  Table table{OddColumns(), {}};
  for (const SettledCell& cell : plan.settled().named()) table.rows.push_back(RowOf(cell));
  for (const Section& section : kSections) {
    if (const std::size_t more = plan.settled().UnnamedOf(section.settlement); more > 0) {
      AddRow(table, WordFor(section.settlement), "", "", "more", MoreText(more));
    }
  }
  return table;
}

Table OddTable(const MovingPlan& plan) {
  Table table = SettledTable(plan);
  AddMissingAndLeft(table, plan);
  return table;
}

void PrintOddCsv(std::ostream& out, const MovingPlan& plan) {
  Table rest{OddColumns(), {}};
  AddMissingAndLeft(rest, plan);
  PrintCsvTitles(out, rest.columns);
  plan.settled().Each([&](const SettledCell& cell) { PrintCsvRow(out, RowOf(cell)); });
  for (const auto& row : rest.rows) PrintCsvRow(out, row);
}

Table MissingTable(const MovingPlan& plan) {
  Table table;
  table.columns = {{"Table", "table"}, {"Column", "column"}, {"Means", "means"}};
  for (const MissingThing& thing : plan.missing()) {
    table.rows.push_back(
        {std::string(thing.table), OrNull(thing.column), std::string(thing.means)});
  }
  return table;
}

Table LeftTable(const MovingPlan& plan) {
  Table table;
  table.columns = {{"Table", "table"}, {"Column", "column"}, {"Rows", "rows"}};
  for (const LeftThing& thing : plan.left()) {
    table.rows.push_back(
        {thing.table, OrNull(thing.column),
         thing.column.empty() && !thing.isLink ? CountCell(thing.rows) : Value(Null{})});
  }
  return table;
}

std::string CodePageSentence(const MovingPlan& plan) {
  if (!plan.codePage()) return "";
  const auto [number, isGuessed] = *plan.codePage();
  return isGuessed ? fmt::format(
                         "The file tells no code page that is known: its texts are read in "
                         "{}. Look at names with accents.",
                         number)
                   : fmt::format("The texts of the file are read in the code page {}.", number);
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

void PrintMovingReport(std::ostream& out, const MovingPlan& plan, std::string_view name,
                       Extent extent) {
  out << fmt::format("{}: {} to bring in, {} refused, {} adjusted, {} kept as odd\n\n",
                     VisibleText(name), Counted(plan.broughtInRows(), "row", "rows"),
                     Counted(plan.refusedRows(), "row", "rows"),
                     Counted(plan.CountOf(Settlement::kAdjusted), "cell", "cells"),
                     plan.CountOf(Settlement::kKept));
  if (const std::string sentence = CodePageSentence(plan); !sentence.empty()) {
    out << sentence << "\n\n";
  }
  PrintNumbers(out, plan);
  for (const Section& section : kSections) PrintSection(out, plan, section, extent);
  const NamedThings missing = NamesOfMissing(plan);
  PrintNames(out, "The file does not have these tables", missing.tables);
  PrintNames(out, "The file does not have these columns", missing.columns);
  const NamedThings left = NamesOfLeft(plan);
  PrintNames(out, "Left: tables that a store does not have", left.tables);
  PrintNames(out, "Left: columns that a store does not have", left.columns);
}

}  // namespace qorhost

// What is told of a file that is brought in.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/moving_in/moving_plan.h"
#include "host/files/table.h"

namespace qorhost {

/// "Units, row 8 (RID 8): UnitKey 2: a unit before it has the key [duplicate-key]"
[[nodiscard]] std::string LineOf(const SettledCell& cell);

/// A row for each cell that was settled; where there are more than a person looks at, the others'
/// number stands behind them.
[[nodiscard]] Table SettledTable(const MovingPlan& plan);
/// The same, and behind them a row for each table and column that the file or a store lacks.
[[nodiscard]] Table OddTable(const MovingPlan& plan);
/// OddTable() with every cell, however many there are, as CSV. Raises FileError where they cannot
/// be read back.
void PrintOddCsv(std::ostream& out, const MovingPlan& plan);
/// Tables and columns by name, with what is to be known of them in brackets; they hold what the
/// file calls itself.
struct NamedThings {
  std::vector<std::string> tables;
  std::vector<std::string> columns;
};
/// What a store has and the file has not: "DOORS (the units have no doors)".
[[nodiscard]] NamedThings NamesOfMissing(const MovingPlan& plan);
/// The columns among them, once for each meaning: "Units.UnitName, Tenants.RID".
struct MissingColumns {
  std::string_view means;
  std::vector<std::string> names;
};
[[nodiscard]] std::vector<MissingColumns> MissingColumnsByMeaning(const MovingPlan& plan);
/// What the file has and a store has not: "AccessEvents (25 rows)", "Units.InstalledOn".
[[nodiscard]] NamedThings NamesOfLeft(const MovingPlan& plan);
/// What a store has and the file has not: table, column (Null of a whole table), what it means.
[[nodiscard]] Table MissingTable(const MovingPlan& plan);
/// What the file has and a store has not: table, column or rows.
[[nodiscard]] Table LeftTable(const MovingPlan& plan);
/// In which code page the texts of the file are read: a sentence, "" where there is no other.
[[nodiscard]] std::string CodePageSentence(const MovingPlan& plan);
/// A row for each table of the store.
[[nodiscard]] Table MovedTables(const MovingPlan& plan);

/// How many settled cells are told.
enum class Extent : std::uint8_t {
  kNamed,  ///< as many as SettledTable() has, and the number of the others
  kAll,
};

/// All of it to be read: the tables by numbers, the settled cells, what is left and what is
/// missing. Texts of the file stand in it on one line each, and steer nothing. Raises FileError
/// where all cells are wanted and cannot be read back.
void PrintMovingReport(std::ostream& out, const MovingPlan& plan, std::string_view name,
                       Extent extent);

}  // namespace qorhost

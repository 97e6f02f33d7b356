// Rows for people, as an aligned table.
#pragma once

#include <cstddef>
#include <ostream>

#include "host/files/table.h"
#include "host/terminal/console.h"

namespace qorhost {

/// An aligned table, numbers to the right, and the number of rows. Texts from outside are made
/// harmless. Where it is wider than `width` columns, the widest texts are cut, which "…" shows, and
/// the last columns are left out and named behind the number of rows; numbers are never cut. 0: as
/// wide as it is, with no text wider than `widestText`, where that is not 0.
void PrintTable(std::ostream& out, const Table& table, std::size_t width = 0,
                std::size_t widestText = 0);

/// How wide a table may be on the console: as the terminal, or 0 where it is none.
[[nodiscard]] inline std::size_t WidthOf(const Console& console) {
  return console.environment.outputIsTerminal ? console.environment.columns : 0;
}

/// How wide a text may be in a table that is not fitted into the console: one of tens of thousands
/// of characters, as notes may be, would push every row over pages of a terminal. What goes to a
/// pipe or a file is whole.
[[nodiscard]] inline std::size_t WidestText(const Console& console) {
  constexpr std::size_t kSomeLines = 400;
  return console.environment.outputIsTerminal ? kSomeLines : 0;
}

/// The table, with no text wider than that, or its rows as JSON.
void PrintRows(Console& console, const Table& table, bool asJson);

}  // namespace qorhost

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
/// wide as it is.
void PrintTable(std::ostream& out, const Table& table, std::size_t width = 0);

/// How wide a table may be on the console: as the terminal, or 0 where it is none.
[[nodiscard]] inline std::size_t WidthOf(const Console& console) {
  return console.environment.outputIsTerminal ? console.environment.columns : 0;
}

/// The table, or its rows as JSON.
void PrintRows(std::ostream& out, const Table& table, bool asJson);

}  // namespace qorhost

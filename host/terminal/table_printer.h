// Rows for people, as an aligned table.
#pragma once

#include <ostream>

#include "host/files/table.h"

namespace qorhost {

/// An aligned table, numbers to the right, and the number of rows. Texts from outside are made
/// harmless.
void PrintTable(std::ostream& out, const Table& table);

/// The table, or its rows as JSON.
void PrintRows(std::ostream& out, const Table& table, bool asJson);

}  // namespace qorhost

// Rows as comma-separated values (RFC 4180), safe to open in a spreadsheet.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/table.h"

namespace qorhost {

/// A field as it stands in a line: in quotes, with quotes doubled, where it has the delimiter, a
/// quote, a line end or a blank at either end.
[[nodiscard]] std::string CsvField(std::string_view text, char delimiter = ',');

/// A line of titles, then a line for each row, each ended by CR LF. Texts are WithoutFormula(),
/// numbers stand as they are, dates as "2026-01-31 14:05:09", Null as nothing.
void PrintCsv(std::ostream& out, const Table& table, char delimiter = ',');
/// The same line by line, for more rows than memory is to hold.
void PrintCsvTitles(std::ostream& out, const std::vector<TableColumn>& columns,
                    char delimiter = ',');
void PrintCsvRow(std::ostream& out, const std::vector<qorcred::Value>& row, char delimiter = ',');

}  // namespace qorhost

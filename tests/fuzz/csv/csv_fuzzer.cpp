// Reads any bytes as comma-separated values, as they are and as one cell that was written before.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/utf8.h"
#include "host/files/csv_formula.h"
#include "host/files/csv_reader.h"
#include "host/files/csv_writer.h"
#include "tests/fuzz/check.h"

namespace {

using qorhost::CsvReader;
using qorhost::CsvRecord;
using qortest::Check;

std::vector<CsvRecord> ReadAll(const std::string& text, char delimiter) {
  CsvReader reader(text, delimiter);
  std::vector<CsvRecord> records;
  CsvRecord record;
  while (reader.Next(record)) {
    Check(records.empty() || !records.back().unclosedQuote, "an unclosed quote ends the text");
    records.push_back(record);
  }
  return records;
}

void CheckRecords(const std::string& text, const std::vector<CsvRecord>& records) {
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  std::size_t before = 0;
  for (const CsvRecord& record : records) {
    Check(record.line > before && record.line <= lines, "a record begins at a line of its own");
    before = record.line;
    Check(!record.cells.empty(), "a record has a cell");
    Check(record.cells.size() <= CsvReader::kMostCells, "a record has no more cells than it may");
    for (const std::string& cell : record.cells) {
      Check(cell.size() <= CsvReader::kLongestCell, "a cell is no longer than it may be");
      Check(!record.fault.empty() || qorcred::IsUtf8(cell), "a cell without fault is UTF-8");
    }
    if (record.unclosedQuote) {
      Check(!record.fault.empty() && *record.unclosedQuote >= record.line &&
                *record.unclosedQuote <= lines,
            "an unclosed quote is a fault and stands in a line of the record");
    }
  }
}

/// What the writer makes of records is read as the same records.
void CheckRoundTrip(const std::vector<CsvRecord>& records, char delimiter) {
  std::string written;
  std::vector<std::vector<std::string>> meant;
  for (const CsvRecord& record : records) {
    // An empty line stands for no record.
    if (!record.fault.empty() || (record.cells.size() == 1 && record.cells.front().empty())) {
      continue;
    }
    meant.push_back(record.cells);
    for (std::size_t at = 0; at < record.cells.size(); ++at) {
      written += (at == 0 ? "" : std::string(1, delimiter)) +
                 qorhost::CsvField(record.cells[at], delimiter);
    }
    written += "\r\n";
  }
  // The writer writes no mark in front, and the reader passes one over.
  const std::vector<CsvRecord> again = ReadAll("first\r\n" + written, delimiter);
  Check(again.size() == meant.size() + 1, "every written record is read");
  for (std::size_t at = 0; at < meant.size(); ++at) {
    Check(again[at + 1].fault.empty(), "a written record has no fault");
    Check(again[at + 1].cells == meant[at], "a record is read as it was written");
  }
}

void CheckFormulaMark(const std::string& text) {
  const std::string safe = qorhost::WithoutFormula(text);
  Check(qorhost::WithoutFormulaMark(safe) == text, "a formula mark comes off again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  // Each text with each of the characters that files have between their cells.
  for (const char delimiter : {',', ';', '\t'}) {
    const std::vector<CsvRecord> records = ReadAll(text, delimiter);
    CheckRecords(text, records);
    CheckRoundTrip(records, delimiter);
  }
  CheckFormulaMark(text);
  return 0;
}

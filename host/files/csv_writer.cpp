#include "host/files/csv_writer.h"

#include <cstddef>

#include "frame/convert.h"
#include "host/dialect/canonical_date.h"
#include "host/files/csv_formula.h"

namespace qorhost {

namespace {

using qorcred::Value;

constexpr std::string_view kLineEnd = "\r\n";

std::string FieldOf(const Value& value, char delimiter) {
  if (const auto* text = value.As<std::string>()) {
    return CsvField(WithoutFormula(*text), delimiter);
  }
  if (const auto* date = value.As<qorcred::Date>()) {
    return dialect::CanonicalDate(*date);
  }
  return qorcred::TextOrEmpty(value);
}

}  // namespace

std::string CsvField(std::string_view text, char delimiter) {
  const bool plain = text.find(delimiter) == std::string_view::npos &&
                     text.find_first_of("\"\r\n") == std::string_view::npos &&
                     (text.empty() || (text.front() != ' ' && text.back() != ' '));
  if (plain) {
    return std::string(text);
  }
  std::string field = "\"";
  for (const char character : text) {
    field.append(character == '"' ? 2 : 1, character);
  }
  return field + '"';
}

void PrintCsvTitles(std::ostream& out, const std::vector<TableColumn>& columns, char delimiter) {
  const std::string between(1, delimiter);
  std::string line;
  for (std::size_t at = 0; at < columns.size(); ++at) {
    line += (at == 0 ? "" : between) + CsvField(WithoutFormula(columns[at].title), delimiter);
  }
  out << line << kLineEnd;
}

void PrintCsvRow(std::ostream& out, const std::vector<Value>& row, char delimiter) {
  const std::string between(1, delimiter);
  std::string line;
  for (std::size_t at = 0; at < row.size(); ++at) {
    line += (at == 0 ? "" : between) + FieldOf(row[at], delimiter);
  }
  out << line << kLineEnd;
}

void PrintCsv(std::ostream& out, const Table& table, char delimiter) {
  PrintCsvTitles(out, table.columns, delimiter);
  for (const auto& row : table.rows) PrintCsvRow(out, row, delimiter);
}

}  // namespace qorhost

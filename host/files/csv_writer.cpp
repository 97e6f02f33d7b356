#include "host/files/csv_writer.h"

#include <cstddef>

#include "frame/convert.h"
#include "host/dialect/canonical_date.h"
#include "host/files/csv_formula.h"

namespace qorhost {

namespace {

using qorcred::Value;

constexpr std::string_view kLineEnd = "\r\n";

std::string FieldOf(const Value& value) {
  if (const auto* text = value.As<std::string>()) {
    return CsvField(WithoutFormula(*text));
  }
  if (const auto* date = value.As<qorcred::Date>()) {
    return dialect::CanonicalDate(*date);
  }
  return qorcred::TextOrEmpty(value);
}

}  // namespace

std::string CsvField(std::string_view text) {
  const bool plain = text.find_first_of(",\"\r\n") == std::string_view::npos &&
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

void PrintCsv(std::ostream& out, const Table& table) {
  std::string line;
  for (std::size_t at = 0; at < table.columns.size(); ++at) {
    line += (at == 0 ? "" : ",") + CsvField(WithoutFormula(table.columns[at].title));
  }
  out << line << kLineEnd;
  for (const auto& row : table.rows) {
    line.clear();
    for (std::size_t at = 0; at < row.size(); ++at) {
      line += (at == 0 ? "" : ",") + FieldOf(row[at]);
    }
    out << line << kLineEnd;
  }
}

}  // namespace qorhost

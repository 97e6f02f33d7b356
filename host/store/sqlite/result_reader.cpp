#include "host/store/sqlite/result_reader.h"

#include <sqlite3.h>

#include <span>
#include <string_view>

#include "host/store/sqlite/table_text.h"

namespace qorhost::sqlite {

namespace {

using qorcred::Value;

std::string_view TextOf(sqlite3_value* cell) {
  const void* bytes = sqlite3_value_blob(cell);
  const int size = sqlite3_value_bytes(cell);
  return bytes == nullptr
             ? std::string_view()
             : std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

CellKind DeclaredKind(const Statement& statement, int column) {
  const char* declared = sqlite3_column_decltype(statement.handle(), column);
  const std::string_view type = declared == nullptr ? std::string_view() : declared;
  for (const auto one : {dialect::ColumnType::kBoolean, dialect::ColumnType::kDate}) {
    if (type == DeclaredType(one)) {
      return CellKindOf(one);
    }
  }
  return CellKind::kPlain;
}

}  // namespace

std::vector<CellKind> CellKindsOf(const Statement& statement,
                                  std::span<const std::optional<dialect::ColumnType>> types) {
  std::vector<CellKind> kinds;
  for (int column = 0; column < statement.columnCount(); ++column) {
    const auto at = static_cast<std::size_t>(column);
    const bool known = at < types.size() && types[at].has_value();
    kinds.push_back(known ? CellKindOf(*types[at]) : DeclaredKind(statement, column));
  }
  return kinds;
}

std::vector<std::string> ColumnNamesOf(const Statement& statement) {
  std::vector<std::string> names;
  for (int column = 0; column < statement.columnCount(); ++column) {
    const char* name = sqlite3_column_name(statement.handle(), column);
    names.emplace_back(name == nullptr ? "" : name);
  }
  return names;
}

Value PlainValue(sqlite3_value* cell) {
  switch (sqlite3_value_type(cell)) {
    case SQLITE_NULL:
      return {qorcred::Null{}};
    case SQLITE_INTEGER:
      return WholeNumber(sqlite3_value_int64(cell));
    case SQLITE_FLOAT:
      return {sqlite3_value_double(cell)};
    default:
      return {TextOf(cell)};
  }
}

Value ReadCell(const Statement& statement, int column, CellKind kind) {
  // One look at the row for the whole cell. Databases are opened without a mutex of their own, so
  // the value may be read in place.
  sqlite3_value* cell = sqlite3_column_value(statement.handle(), column);
  if (kind == CellKind::kPlain) {
    return PlainValue(cell);
  }
  const bool isBoolean = kind == CellKind::kBoolean;
  switch (sqlite3_value_type(cell)) {
    case SQLITE_NULL:
      return {qorcred::Null{}};
    case SQLITE_INTEGER: {
      const std::int64_t number = sqlite3_value_int64(cell);
      return isBoolean ? Value(number != 0) : DateOrNumber(static_cast<double>(number));
    }
    case SQLITE_FLOAT: {
      const double number = sqlite3_value_double(cell);
      return isBoolean ? Value(number != 0.0) : DateOrNumber(number);
    }
    default:
      return isBoolean ? Value(TextOf(cell)) : DateOrText(TextOf(cell));
  }
}

std::shared_ptr<qorcred::ResultTable> ReadRows(Statement& statement,
                                               const std::vector<CellKind>& kinds,
                                               std::size_t expectedRows, std::size_t& rowCount) {
  rowCount = 0;
  if (!statement.Step()) {
    return std::make_shared<qorcred::ResultTable>();
  }
  auto table = std::make_shared<qorcred::ResultTable>(std::size_t{0}, kinds.size());
  table->Reserve(expectedRows);
  std::size_t bytes = 0;
  do {
    const std::span<Value> row = table->AppendRow();
    for (std::size_t column = 0; column < kinds.size(); ++column) {
      row[column] = ReadCell(statement, static_cast<int>(column), kinds[column]);
      const auto* text = row[column].As<std::string>();
      bytes += sizeof(Value) + (text == nullptr ? 0 : text->size());
    }
    RequireBounded(++rowCount, bytes);
  } while (statement.Step());
  return table;
}

}  // namespace qorhost::sqlite

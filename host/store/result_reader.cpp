#include "host/store/result_reader.h"

#include <sqlite3.h>

#include <limits>
#include <span>
#include <string_view>

#include "frame/date.h"
#include "host/dialect/canonical_date.h"

namespace qorhost {

namespace {

using qorcred::Value;

Value WholeNumber(std::int64_t number) {
  const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                    number <= std::numeric_limits<std::int32_t>::max();
  return fits ? Value(static_cast<std::int32_t>(number)) : Value(static_cast<double>(number));
}

// A number in a date column counts days; one outside the calendar stays a number.
Value DateOrNumber(double serial) {
  const auto date = dialect::DateFromSerial(serial);
  return date.has_value() ? Value(*date) : Value(serial);
}

Value DateOrText(std::string_view text) {
  if (const auto canonical = dialect::FromCanonicalDate(text)) {
    return {*canonical};
  }
  if (const auto other = qorcred::ParseDate(text)) {
    return {*other};
  }
  return {text};
}

CellKind KindOf(dialect::ColumnType type) {
  switch (type) {
    case dialect::ColumnType::kBoolean:
      return CellKind::kBoolean;
    case dialect::ColumnType::kDate:
      return CellKind::kDate;
    default:
      return CellKind::kPlain;
  }
}

CellKind DeclaredKind(const Statement& statement, int column) {
  const char* declared = sqlite3_column_decltype(statement.handle(), column);
  const std::string_view type = declared == nullptr ? std::string_view() : declared;
  for (const auto one : {dialect::ColumnType::kBoolean, dialect::ColumnType::kDate}) {
    if (type == dialect::DeclaredType(one)) {
      return KindOf(one);
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
    kinds.push_back(known ? KindOf(*types[at]) : DeclaredKind(statement, column));
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

Value ReadCell(const Statement& statement, int column, CellKind kind) {
  sqlite3_stmt* handle = statement.handle();
  switch (sqlite3_column_type(handle, column)) {
    case SQLITE_NULL:
      return {qorcred::Null{}};
    case SQLITE_INTEGER: {
      const std::int64_t number = sqlite3_column_int64(handle, column);
      if (kind == CellKind::kBoolean) {
        return {number != 0};
      }
      return kind == CellKind::kDate ? DateOrNumber(static_cast<double>(number))
                                     : WholeNumber(number);
    }
    case SQLITE_FLOAT: {
      const double number = sqlite3_column_double(handle, column);
      if (kind == CellKind::kBoolean) {
        return {number != 0.0};
      }
      return kind == CellKind::kDate ? DateOrNumber(number) : Value(number);
    }
    default:
      return kind == CellKind::kDate ? DateOrText(statement.Text(column))
                                     : Value(statement.Text(column));
  }
}

std::shared_ptr<qorcred::ResultTable> ReadRows(Statement& statement,
                                               const std::vector<CellKind>& kinds,
                                               std::size_t& rowCount) {
  rowCount = 0;
  if (!statement.Step()) {
    return std::make_shared<qorcred::ResultTable>();
  }
  auto table = std::make_shared<qorcred::ResultTable>(std::size_t{0}, kinds.size());
  do {
    const std::span<Value> row = table->AppendRow();
    for (std::size_t column = 0; column < kinds.size(); ++column) {
      row[column] = ReadCell(statement, static_cast<int>(column), kinds[column]);
    }
    ++rowCount;
  } while (statement.Step());
  return table;
}

}  // namespace qorhost

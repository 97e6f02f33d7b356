#include "host/store/sqlite/table_text.h"

#include "host/dialect/names.h"

namespace qorhost::sqlite {

std::string_view DeclaredType(dialect::ColumnType type) {
  switch (type) {
    case dialect::ColumnType::kIdentity:
      return "INTEGER PRIMARY KEY AUTOINCREMENT";
    case dialect::ColumnType::kLong:
      return "LONG";
    case dialect::ColumnType::kDouble:
      return "DOUBLE";
    case dialect::ColumnType::kBoolean:
      return "BOOLEAN";
    case dialect::ColumnType::kDate:
      return "DATETIME";
    case dialect::ColumnType::kText:
      return "TEXT COLLATE \"DESKTOP\"";
  }
  return "TEXT";
}

std::string CreateTableText(const dialect::Table& table) {
  std::string text = "CREATE TABLE " + dialect::QuotedName(table.name) + " (";
  std::string_view separator;
  for (const dialect::Column& column : table.columns) {
    text.append(separator).append(dialect::QuotedName(column.name)).append(" ");
    text += DeclaredType(column.type);
    if (column.generated) {
      text += " GENERATED ALWAYS AS (\"RID\") VIRTUAL";
    }
    separator = ", ";
  }
  return text + ")";
}

}  // namespace qorhost::sqlite

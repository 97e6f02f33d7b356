#include "host/store/sql_session.h"

namespace qorhost {

std::vector<std::int32_t> SqlSession::AddRows(std::string_view table,
                                              std::span<const std::string_view> columns,
                                              std::span<const RowCells> rows) {
  std::vector<Field> fields(columns.size());
  std::vector<std::int32_t> identities;
  identities.reserve(rows.size());
  for (const RowCells& row : rows) {
    for (std::size_t at = 0; at < columns.size(); ++at) {
      fields[at] = {columns[at], row[at]};
    }
    identities.push_back(AddRow(table, fields));
  }
  return identities;
}

}  // namespace qorhost

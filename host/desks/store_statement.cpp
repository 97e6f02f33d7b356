#include "host/desks/store_statement.h"

#include <utility>
#include <vector>

#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/dialect/translator.h"

namespace qorhost {

namespace {

/// Runs `work`; what the dialect refuses is refused.
template <typename Work>
auto Refusing(Work&& work) {
  try {
    return work();
  } catch (const dialect::SqlError& error) {
    throw RefusedError(error.what());
  }
}

}  // namespace

StoreStatement::StoreStatement(std::string text) : text_(std::move(text)) {
  reads_ = Refusing([&] { return dialect::KindOf(text_); }) == dialect::StatementKind::kSelect;
}

Table StoreStatement::Read(DeskSession& session) const {
  const QueryResult result = Refusing([&] { return session.sql().Select(text_); });
  Table table;
  table.nullText = "Null";
  for (const std::string& column : result.columns) {
    table.columns.push_back({column, column});
  }
  for (const ResultRow row : result.rows()) {
    std::vector<qorcred::Value> cells;
    for (std::int32_t column = 0; column < static_cast<std::int32_t>(result.columns.size());
         ++column) {
      cells.push_back(row[column]);
    }
    table.rows.push_back(std::move(cells));
  }
  return table;
}

ChangedRows StoreStatement::Change(DeskSession& session) const {
  constexpr std::size_t kMostOfText = 200;  // what the audit keeps of it
  UnitOfWork& work = session.sql().work();
  WorkGuard guard(work, {{}, "sql: " + std::string(qorcred::LeftUtf16(text_, kMostOfText)), {}});
  const ChangeResult change = Refusing([&] { return session.sql().Change(text_, std::nullopt); });
  guard.Commit();
  return {change.rows, change.newRow};
}

}  // namespace qorhost

#include "host/desks/store_statement.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/desks/words.h"
#include "host/dialect/translator.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

Table TableOf(const QueryResult& result) {
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

}  // namespace

StoreStatements::StoreStatements(std::string text) {
  statements_.push_back({std::move(text)});
  LookAt();
}

StoreStatements StoreStatements::OfScript(std::string_view script) {
  StoreStatements all;
  all.isScript_ = true;
  try {
    all.statements_ = dialect::StatementsOf(script);
  } catch (const dialect::SqlError& error) {
    throw RefusedError(error.what());
  }
  all.LookAt();
  return all;
}

/// Runs `work` on a statement; what the dialect refuses is refused, named by its place.
template <typename Work>
auto StoreStatements::Named(std::size_t at, Work&& work) const {
  try {
    return work();
  } catch (const dialect::SqlError& error) {
    if (!isScript_) {
      throw RefusedError(error.what());
    }
    const dialect::ScriptStatement& statement = statements_[at];
    throw RefusedError(
        fmt::format("statement {}, line {}, column {}: {}; nothing was changed", at + 1,
                    statement.line + error.line() - 1,
                    error.line() == 1 ? statement.column + error.column() - 1 : error.column(),
                    error.message()));
  } catch (const StoreError& error) {
    if (!isScript_) {
      throw;
    }
    throw FailureError(fmt::format("statement {}, line {}: {}; nothing was changed", at + 1,
                                   statements_[at].line, error.what()));
  }
}

void StoreStatements::LookAt() {
  for (std::size_t at = 0; at < statements_.size(); ++at) {
    const bool selects = Named(at, [&] { return dialect::KindOf(statements_[at].text); }) ==
                         dialect::StatementKind::kSelect;
    selects_.push_back(selects);
    reads_ = reads_ && selects;
  }
}

std::vector<StatementResult> StoreStatements::Run(DeskSession& session) const {
  if (reads_) {
    return RunAll(session);
  }
  WorkGuard guard(session.sql().work(), {{}, Description(), {}});
  std::vector<StatementResult> results = RunAll(session);
  guard.Commit();
  return results;
}

std::vector<StatementResult> StoreStatements::RunAll(DeskSession& session) const {
  std::vector<StatementResult> results;
  for (std::size_t at = 0; at < statements_.size(); ++at) {
    results.push_back(Named(at, [&] { return RunOne(session, at); }));
  }
  return results;
}

StatementResult StoreStatements::RunOne(DeskSession& session, std::size_t at) const {
  const std::string& text = statements_[at].text;
  if (selects_[at]) {
    return TableOf(session.sql().Select(text));
  }
  const ChangeResult change = session.sql().Change(text, std::nullopt);
  return ChangedRows{change.rows, change.newRow};
}

/// As the audit names it.
std::string StoreStatements::Description() const {
  constexpr std::size_t kMostOfText = 200;
  const auto change = std::find(selects_.begin(), selects_.end(), false);
  const auto at = static_cast<std::size_t>(change - selects_.begin());
  const std::string text(qorcred::LeftUtf16(statements_[at].text, kMostOfText));
  return count() == 1
             ? "sql: " + text
             : fmt::format("sql, {}: {}; ...", Counted(count(), "statement", "statements"), text);
}

}  // namespace qorhost

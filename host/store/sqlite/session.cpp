#include "host/store/sqlite/session.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <utility>

#include "host/dialect/catalog.h"
#include "host/dialect/names.h"
#include "host/store/sqlite/printer.h"
#include "host/store/sqlite/work_limit.h"
#include "host/store/statement_rules.h"

namespace qorhost::sqlite {

namespace {

using dialect::StatementKind;
using qorcred::Value;

// More shapes than all screens and reports write; beyond that the cache starts anew.
constexpr std::size_t kMostPrepared = 200;

}  // namespace

Session::Session(Database& database, Clock clock)
    : database_(database),
      timeStamp_(std::move(clock)),
      translator_(&Print),
      transaction_(database, work_),
      savepoint_(database, work_),
      look_(database) {}

Session::Prepared& Session::PreparedFor(const std::shared_ptr<const dialect::Shape>& shape) {
  if (latest_ != nullptr && latest_->shape == shape) {
    return *latest_;
  }
  auto found = prepared_.find(shape.get());
  if (found == prepared_.end()) {
    Statement statement(database_, shape->sql);
    std::vector<CellKind> kinds = CellKindsOf(statement, shape->resultTypes);
    if (prepared_.size() >= kMostPrepared) {
      latest_ = nullptr;
      prepared_.clear();
    }
    found =
        prepared_.emplace(shape.get(), Prepared{shape, std::move(statement), std::move(kinds), 0})
            .first;
  }
  latest_ = &found->second;
  return found->second;
}

Session::Prepared& Session::Bound(std::string_view sql) {
  RequireUsable();
  const dialect::Translation translation = translator_.Translate(sql, timeStamp_.Now());
  Prepared& prepared = PreparedFor(translation.shape);
  try {
    int parameter = 0;
    for (const Value& value : translation.parameters) {
      prepared.statement.Bind(++parameter, value);
    }
  } catch (...) {
    prepared.statement.Reset();
    throw;
  }
  return prepared;
}

Session::Prepared& Session::BoundSelect(std::string_view sql) {
  Prepared& prepared = Bound(sql);
  try {
    const StatementKind kind = prepared.shape->kind;
    // What the engine would write for is no SELECT, whatever it says.
    const bool writes = kind == StatementKind::kSelect && !prepared.statement.changesNothing();
    RequireSelect(writes ? StatementKind::kUpdate : kind);
  } catch (...) {
    prepared.statement.Reset();
    throw;
  }
  return prepared;
}

QueryResult Session::Select(std::string_view sql) {
  Prepared& prepared = BoundSelect(sql);
  const StatementUse use(prepared.statement);
  const WorkLimit limit(database_);
  QueryResult result;
  result.columns = ColumnNamesOf(prepared.statement);
  result.table = ReadRows(prepared.statement, prepared.kinds, prepared.latestRows, result.rowCount);
  prepared.latestRows = result.rowCount;
  return result;
}

Value Session::Scalar(std::string_view sql) {
  Prepared& prepared = BoundSelect(sql);
  const StatementUse use(prepared.statement);
  const WorkLimit limit(database_);
  return use->Step() ? ReadCell(prepared.statement, 0, prepared.kinds.front()) : Value();
}

Session::Prepared& Session::BoundChange(std::string_view sql, std::optional<StatementKind> kind) {
  Prepared& prepared = Bound(sql);
  try {
    RequireChange(prepared.shape->kind, kind);
  } catch (...) {
    prepared.statement.Reset();
    throw;
  }
  return prepared;
}

ChangeResult Session::Change(std::string_view sql, std::optional<StatementKind> kind) {
  return Writing([&] {
    const StatementUse use(BoundChange(sql, kind).statement);
    return RunChange(*use);
  });
}

ChangeResult Session::RunChange(Statement& bound) {
  const WorkLimit limit(database_);
  bound.Step();
  const std::int64_t rows = ChangedRows();
  // SQLite's identity of the latest row outlives an INSERT that added none.
  return {rows, rows > 0 ? sqlite3_last_insert_rowid(database_.handle()) : 0};
}

bool Session::IsVersion(const RowVersion& version, std::string_view changedTable) {
  const dialect::Table* table = VersionedTable(version.table, changedTable);
  if (table == nullptr) {
    return true;
  }
  const StatementUse use(
      Own(fmt::format("SELECT LASTMODIFIEDDATE FROM \"{}\" WHERE RID=?1", table->name)));
  use->BindNumber(1, version.rid);
  if (!use->Step()) {
    return false;
  }
  return IsSameVersion(ReadCell(*use, 0, CellKind::kDate), version.lastModified);
}

ChangeResult Session::UpdateVersion(std::string_view sql, const RowVersion& version) {
  // The look and the change are one step for everybody else: in a transaction, of whoever it is.
  work_.BeforeWrite();
  std::optional<Undoable> oneStep;
  if (!inTransaction()) {
    oneStep.emplace(transaction_);
  }
  ChangeResult result;
  {
    Prepared& prepared = BoundChange(sql, StatementKind::kUpdate);
    const StatementUse use(prepared.statement);
    if (IsVersion(version, prepared.shape->table)) {
      result = Writing([&] { return RunChange(*use); });
    }
  }
  if (oneStep.has_value()) {
    oneStep->Keep();
  }
  return result;
}

std::int64_t Session::DeleteRow(std::string_view table, std::int32_t rid) {
  const dialect::Table& found = RequireTable(table);
  return Writing([&] {
    const StatementUse use(Own(fmt::format("DELETE FROM \"{}\" WHERE RID=?1", found.name)));
    use->BindNumber(1, rid);
    use->Step();
    return ChangedRows();
  });
}

std::int32_t Session::AddRow(std::string_view table, std::span<const Field> fields) {
  std::string columns;
  std::string places;
  for (const Field& field : fields) {
    const std::string_view separator = columns.empty() ? "" : ", ";
    columns.append(separator).append(dialect::QuotedName(field.column));
    places.append(separator).append("?");
  }
  return Writing([&] {
    const StatementUse use(Own(fmt::format("INSERT INTO {} ({}) VALUES ({})",
                                           dialect::QuotedName(table), columns, places)));
    int parameter = 0;
    for (const Field& field : fields) {
      use->Bind(++parameter, field.value);
    }
    use->Step();
    return static_cast<std::int32_t>(sqlite3_last_insert_rowid(database_.handle()));
  });
}

void Session::RequireUsable() {
  work_.RequireUsable();
  transaction_.CheckUsable();
}

Statement& Session::Own(std::string_view sql) {
  RequireUsable();
  const auto found = own_.find(sql);
  if (found != own_.end()) {
    return found->second;
  }
  return own_.emplace(sql, Statement(database_, sql)).first->second;
}

std::int64_t Session::ChangedRows() const noexcept {
  return sqlite3_changes64(database_.handle());
}

}  // namespace qorhost::sqlite

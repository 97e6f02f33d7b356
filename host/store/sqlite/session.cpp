#include "host/store/sqlite/session.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <limits>
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

// Of a table. They stay near the processor until they are written.
constexpr std::size_t kMostHeld = 256;

}  // namespace

Session::Session(Database& database, Clock clock)
    : database_(database),
      timeStamp_(std::move(clock)),
      translator_(&Print),
      rowInserts_(database),
      buffer_(rowInserts_, kMostHeld) {}

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
  return Bound(translator_.Translate(sql, timeStamp_.Now()));
}

Session::Prepared& Session::Bound(const dialect::Translation& translation) {
  work_.WriteHeld();
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

Session::Prepared& Session::BoundChange(const dialect::Translation& translation,
                                        std::optional<StatementKind> kind) {
  RequireChange(translation.shape->kind, kind);
  return Bound(translation);
}

ChangeResult Session::Change(std::string_view sql, std::optional<StatementKind> kind) {
  return Writing([&]() -> ChangeResult {
    RequireUsable();
    const dialect::Translation translation = translator_.Translate(sql, timeStamp_.Now());
    const auto& form = translation.shape->addedRow;
    if (form != nullptr) {
      RequireChange(StatementKind::kInsert, kind);
      if (const auto rid = Held(form, translation.parameters)) {
        return {1, *rid};
      }
    }
    const StatementUse use(BoundChange(translation, kind).statement);
    const ChangeResult result = RunChange(*use);
    if (form != nullptr && result.rows == 1) {
      NoteAdded(*form, translation.parameters, result.newRow);
    } else {
      Forget(translation.shape->kind == StatementKind::kInsert);
    }
    return result;
  });
}

bool Session::IsAlone() const noexcept {
  return database_.inTransaction() && (work_.locked() || transaction_.open());
}

std::optional<std::int32_t> Session::Held(const std::shared_ptr<const dialect::AddedRow>& form,
                                          std::span<const Value> values) {
  return IsAlone() ? buffer_.Hold(form, values) : std::nullopt;
}

/// A row was added at once: those behind it have the identities behind its own.
void Session::NoteAdded(const dialect::AddedRow& form, std::span<const Value> values,
                        std::int64_t rid) {
  buffer_.Withdraw(*form.table);
  if (IsAlone()) {
    buffer_.Grant(*form.table, rid + 1, std::numeric_limits<std::int32_t>::max());
    buffer_.NoteWritten(form, values);
  } else {
    buffer_.ForgetAll();
  }
}

std::int32_t Session::Add(const std::shared_ptr<const dialect::AddedRow>& form,
                          std::span<const Value> values) {
  return Writing([&] {
    RequireUsable();
    if (const auto held = Held(form, values)) {
      return *held;
    }
    std::int64_t rid = 0;
    {
      work_.WriteHeld();
      const StatementUse insert(Kept(InsertText(*form, 1)));
      int parameter = 0;
      std::size_t next = 0;
      for (const dialect::AddedRow::Cell& cell : form->cells) {
        insert->Bind(++parameter, cell.constant ? *cell.constant : values[next++]);
      }
      insert->Step();
      rid = sqlite3_last_insert_rowid(database_.handle());
    }
    NoteAdded(*form, values, rid);
    return static_cast<std::int32_t>(rid);
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
    RequireUsable();
    Prepared& prepared =
        BoundChange(translator_.Translate(sql, timeStamp_.Now()), StatementKind::kUpdate);
    const StatementUse use(prepared.statement);
    Forget(false);
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
  work_.WriteHeld();
  Statement& statement = Kept(sql);
  if (!statement.changesNothing()) {
    Forget(sql.starts_with("INSERT") || sql.starts_with("WITH"));
  }
  return statement;
}

/// Something is written past what is known. Deleting and changing rows changes no identity that is
/// given out later.
void Session::Forget(bool identitiesToo) {
  buffer_.linkCodes().Forget();
  if (identitiesToo) {
    buffer_.ForgetAll();
  }
}

Statement& Session::Kept(std::string_view sql) {
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

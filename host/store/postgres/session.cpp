#include "host/store/postgres/session.h"

#include <fmt/format.h>

#include <utility>

#include "host/dialect/names.h"
#include "host/dialect/unit_key.h"
#include "host/store/postgres/printer.h"
#include "host/store/statement_rules.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::QuotedName;
using dialect::StatementKind;
using qorcred::Value;

// More shapes than all screens and reports write; beyond that the cache starts anew.
constexpr std::size_t kMostPrepared = 200;

}  // namespace

Session::Session(Connection& connection, const Patience& patience, Clock clock)
    : connection_(connection),
      patience_(patience),
      timeStamp_(std::move(clock)),
      translator_(&Print),
      transaction_(*this),
      savepoint_(*this),
      look_(*this) {}

Session::Prepared& Session::PreparedFor(const std::shared_ptr<const dialect::Shape>& shape) {
  const auto found = prepared_.find(shape.get());
  if (found != prepared_.end()) {
    return found->second;
  }
  if (prepared_.size() >= kMostPrepared) {
    // The server forgets the engine's own texts with the others.
    prepared_.clear();
    own_.clear();
    connection_.RunAll("DEALLOCATE ALL");
  }
  return prepared_
      .emplace(shape.get(), Prepared{shape, {shape->sql, {}}, {shape->sqlInUnit, {}}, 0})
      .first->second;
}

Session::Bound Session::Bind(std::string_view sql) {
  RequireUsable();
  const dialect::Translation translation = translator_.Translate(sql, timeStamp_.Now());
  return {&PreparedFor(translation.shape), SentValues(translation.parameters)};
}

Result Session::Run(PreparedText& text, const SentValues& values, const TakeRow& take) {
  // A write of a unit of work that fails ends the work anyway.
  const bool guarded = inTransaction() && !work_.locked();
  return connection_.Run(text, values.sent(), guarded || (take && inTransaction()), take);
}

Result Session::Run(Bound& bound, const TakeRow& take) {
  Prepared& prepared = *bound.prepared;
  if (const auto unit = work_.unit(); unit && !prepared.inUnit.sql.empty()) {
    // Most likely the row is one of the operation's unit. One that is not is found all the same.
    SentValues inUnit = bound.values;
    inUnit.AddNumber(*unit);
    bool isFound = false;
    const TakeRow noted = [&](const Result& row) {
      isFound = true;
      take(row);
    };
    Result answer = Run(prepared.inUnit, inUnit, take ? noted : take);
    if (isFound || answer.affected() > 0) {
      return answer;
    }
  }
  return Run(prepared.text, bound.values, take);
}

QueryResult Session::Select(std::string_view sql) {
  Bound bound = Bind(sql);
  Prepared& prepared = *bound.prepared;
  RequireSelect(prepared.shape->kind);
  const auto& types = prepared.shape->resultTypes;
  QueryResult result;
  result.table = std::make_shared<qorcred::ResultTable>();
  std::size_t bytes = 0;
  const auto take = [&](const Result& answer) {
    if (result.rowCount == 0) {
      result.table = std::make_shared<qorcred::ResultTable>(std::size_t{0}, types.size());
      result.table->Reserve(prepared.latestRows);
    }
    const std::span<Value> row = result.table->AppendRow();
    for (std::size_t column = 0; column < types.size(); ++column) {
      row[column] = CellOf(answer, 0, static_cast<int>(column), types[column]);
      const auto* text = row[column].As<std::string>();
      bytes += sizeof(Value) + (text == nullptr ? 0 : text->size());
    }
    RequireBounded(++result.rowCount, bytes);
  };
  const Result answer = Run(bound, take);
  for (int column = 0; column < answer.columns(); ++column) {
    result.columns.emplace_back(answer.NameOf(column));
  }
  prepared.latestRows = result.rowCount;
  return result;
}

Value Session::Scalar(std::string_view sql) {
  Bound bound = Bind(sql);
  RequireSelect(bound.prepared->shape->kind);
  const auto& types = bound.prepared->shape->resultTypes;
  std::optional<Value> first;
  const auto take = [&](const Result& answer) {
    if (!first) {
      first = CellOf(answer, 0, 0, types.front());
    }
  };
  (void)Run(bound, take);
  return first.value_or(Value());
}

ChangeResult Session::Change(std::string_view sql, std::optional<StatementKind> kind) {
  return Writing([&] {
    Bound bound = Bind(sql);
    RequireChange(bound.prepared->shape->kind, kind);
    return RunChange(bound);
  });
}

ChangeResult Session::RunChange(Bound& bound) {
  const Result answer = Run(bound, nullptr);
  const bool isNew = bound.prepared->shape->kind == StatementKind::kInsert && answer.rows() > 0;
  return {answer.affected(), isNew ? answer.Number(0, 0) : 0};
}

bool Session::IsVersion(const RowVersion& version, std::string_view changedTable) {
  const dialect::Table* const table = VersionedTable(version.table, changedTable);
  if (table == nullptr) {
    return true;
  }
  SentValues values;
  values.AddNumber(version.rid);
  const Result stored =
      OwnOfRow(*table,
               fmt::format(R"(SELECT "LASTMODIFIEDDATE" FROM {} WHERE "RID"=$1::int4)",
                           QuotedName(table->name)),
               values);
  return stored.rows() > 0 &&
         IsSameVersion(CellOf(stored, 0, 0, dialect::ColumnType::kDate), version.lastModified);
}

ChangeResult Session::UpdateVersion(std::string_view sql, const RowVersion& version) {
  // The look and the change are one step for everybody else.
  return Writing([&] {
    Bound bound = Bind(sql);
    RequireChange(bound.prepared->shape->kind, StatementKind::kUpdate);
    return IsVersion(version, bound.prepared->shape->table) ? RunChange(bound) : ChangeResult();
  });
}

std::int64_t Session::DeleteRow(std::string_view table, std::int32_t rid) {
  const dialect::Table& found = RequireTable(table);
  return Writing([&] {
    SentValues values;
    values.AddNumber(rid);
    return OwnOfRow(found,
                    fmt::format("DELETE FROM {} WHERE \"RID\"=$1::int4", QuotedName(found.name)),
                    values)
        .affected();
  });
}

std::int32_t Session::AddRow(std::string_view table, std::span<const Field> fields) {
  const dialect::Table& found = RequireTable(table);
  return Writing([&] {
    std::string columns;
    std::string places;
    SentValues values;
    bool isGiven = false;
    for (const Field& field : fields) {
      const dialect::Column* const column = dialect::FindColumn(found, field.column);
      if (column == nullptr) {
        throw StoreError(
            fmt::format("There is no column '{}' in the table {}", field.column, found.name));
      }
      values.Add(field.value);
      isGiven = isGiven || column->type == dialect::ColumnType::kIdentity;
      const std::string_view separator = columns.empty() ? "" : ", ";
      columns.append(separator).append(QuotedName(column->name));
      places += fmt::format("{}${}::{}", separator, values.sent().size(), SentTypeOf(*column));
    }
    const std::string name = QuotedName(found.name);
    return static_cast<std::int32_t>(
        Own(fmt::format("INSERT INTO {} ({}) VALUES ({}) RETURNING {}", name, columns, places,
                        isGiven ? fmt::format("desktop.claimed('{}', \"RID\")", name) : "\"RID\""),
            values)
            .Number(0, 0));
  });
}

void Session::RequireUsable() {
  work_.RequireUsable();
  transaction_.CheckUsable();
}

Result Session::Own(std::string_view sql, const SentValues& values, const TakeRow& take) {
  RequireUsable();
  auto found = own_.find(sql);
  if (found == own_.end()) {
    found = own_.emplace(sql, PreparedText{std::string(sql), {}}).first;
  }
  return Run(found->second, values, take);
}

Result Session::OwnOfRow(const dialect::Table& table, const std::string& sql,
                         const SentValues& values) {
  const dialect::Column* const unitColumn = dialect::UnitColumnOf(table);
  if (const auto unit = work_.unit(); unit && unitColumn != nullptr) {
    SentValues inUnit = values;
    inUnit.AddNumber(*unit);
    Result answer = Own(
        fmt::format("{} AND {}=${}::int4", sql, QuotedName(unitColumn->name), inUnit.sent().size()),
        inUnit);
    if (answer.affected() > 0) {
      return answer;
    }
  }
  return Own(sql, values);
}

}  // namespace qorhost::postgres

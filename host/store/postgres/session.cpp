#include "host/store/postgres/session.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/dialect/names.h"
#include "host/dialect/unit_key.h"
#include "host/store/postgres/inline_values.h"
#include "host/store/postgres/many_rows.h"
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

// Rows of a table that are held, and identities that are reserved at once. What is reserved and not
// used is lost.
constexpr std::size_t kMostHeld = 1024;
constexpr std::int64_t kMostReserved = 2048;
// Rows that are added one by one before it is taken for a range.
constexpr std::int64_t kFewRows = 3;

std::string VersionText(const dialect::Table& table) {
  return fmt::format(R"(SELECT "LASTMODIFIEDDATE" FROM {} WHERE "RID"=$1::int4)",
                     QuotedName(table.name));
}

}  // namespace

Session::Session(Connection& connection, const Patience& patience, Clock clock)
    : connection_(connection),
      patience_(patience),
      timeStamp_(std::move(clock)),
      translator_(&Print),
      rowInserts_(connection),
      buffer_(rowInserts_, kMostHeld) {}

Session::Prepared& Session::PreparedFor(const std::shared_ptr<const dialect::Shape>& shape) {
  const auto found = prepared_.find(shape.get());
  if (found != prepared_.end()) {
    return found->second;
  }
  if (prepared_.size() >= kMostPrepared) {
    // The server forgets the engine's own texts with the others. What waits to be sent goes before.
    connection_.RunAll("DEALLOCATE ALL");
    prepared_.clear();
    own_.clear();
    rowInserts_.Forget();
  }
  return prepared_
      .emplace(shape.get(), Prepared{shape, {shape->sql, {}}, {shape->sqlInUnit, {}}, 0})
      .first->second;
}

Session::Bound Session::Bind(std::string_view sql) {
  RequireUsable();
  return Bind(translator_.Translate(sql, timeStamp_.Now()));
}

Session::Bound Session::Bind(const dialect::Translation& translation) {
  work_.WriteHeld();
  return {&PreparedFor(translation.shape), SentValues(translation.parameters)};
}

Result Session::Run(PreparedText& text, const SentValues& values, const TakeRow& take,
                    const Watch& watch) {
  // A write of a unit of work that fails ends the work anyway.
  const bool guarded = (inTransaction() && !work_.locked()) || (take && inTransaction());
  const std::vector<Sent> sent = values.sent();
  if (sent.size() <= kMostSent) {
    return connection_.Run(text, sent, guarded, take, watch);
  }
  PreparedText whole{WithValues(text.sql, sent), {}};
  Result result = connection_.Run(whole, {}, guarded, take, watch);
  connection_.RunAll("DEALLOCATE " + whole.name);  // it does not come again
  return result;
}

/// The engine's own statements take as long as they must: the work of many of them is the store's
/// size. An operator's are bounded.
Watch Session::OwnWatch() const {
  Watch watch;
  if (patience_.working) {
    watch.goesOn = [this](std::chrono::milliseconds) { return patience_.working(); };
  }
  return watch;
}

Result Session::Run(Bound& bound, const TakeRow& take) {
  Prepared& prepared = *bound.prepared;
  Watch watch = OwnWatch();
  watch.limit = patience_.work;
  if (const auto unit = work_.unit(); unit && !prepared.inUnit.sql.empty()) {
    // Most likely the row is one of the operation's unit. One that is not is found all the same.
    SentValues inUnit = bound.values;
    inUnit.AddNumber(*unit);
    bool isFound = false;
    const TakeRow noted = [&](const Result& row) {
      isFound = true;
      take(row);
    };
    Result answer = Run(prepared.inUnit, inUnit, take ? noted : take, watch);
    if (isFound || answer.affected() > 0) {
      return answer;
    }
  }
  return Run(prepared.text, bound.values, take, watch);
}

QueryResult Session::Select(std::string_view sql) {
  Bound bound = Bind(sql);
  Prepared& prepared = *bound.prepared;
  RequireSelect(prepared.shape->kind);
  const auto& types = prepared.shape->resultTypes;
  QueryResult result;
  result.table = std::make_shared<qorcred::ResultTable>();
  RowReader reader(types);
  std::size_t bytes = 0;
  const auto take = [&](const Result& answer) {
    if (result.rowCount == 0) {
      result.table = std::make_shared<qorcred::ResultTable>(std::size_t{0}, types.size());
      result.table->Reserve(prepared.latestRows);
    }
    bytes += reader.Read(answer, result.table->AppendRow());
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
  return Writing([&]() -> ChangeResult {
    RequireUsable();
    const dialect::Translation translation = translator_.Translate(sql, timeStamp_.Now());
    RequireChange(translation.shape->kind, kind);
    const auto& form = translation.shape->addedRow;
    if (form != nullptr) {
      if (const auto rid = Held(form, translation.parameters)) {
        return {1, *rid};
      }
    }
    Bound bound = Bind(translation);
    const ChangeResult result = RunChange(bound);
    if (form != nullptr && result.rows == 1) {
      NoteAdded(*form, translation.parameters);
    } else {
      Forget(bound.prepared->shape->kind == StatementKind::kInsert);
    }
    return result;
  });
}

bool Session::IsAlone() const noexcept {
  return connection_.inTransaction() && (work_.locked() || transaction_.open());
}

/// Something was written past what is known. Identities that are reserved stay so, unless rows were
/// added: the order of the rows is that of their identities.
void Session::Forget(bool identitiesToo) {
  buffer_.linkCodes().Forget();
  if (identitiesToo) {
    buffer_.ForgetAll();
    added_.clear();
  }
}

void Session::DropHeld() noexcept {
  buffer_.Discard();
  added_.clear();
  asked_.clear();
}

std::optional<std::int32_t> Session::Held(const std::shared_ptr<const dialect::AddedRow>& form,
                                          std::span<const Value> values) {
  if (!IsAlone() || !IsHeldTable(form->table->name)) {
    return std::nullopt;
  }
  std::int64_t& added = added_[form->table];
  if (added >= kFewRows && !buffer_.HasIdentities(*form->table)) {
    rowInserts_.Reserve(*form->table, std::min(2 * added, kMostReserved), buffer_);
  }
  const std::optional<std::int32_t> rid = buffer_.Hold(form, values);
  added += rid ? 1 : 0;
  return rid;
}

/// A row was added at once: its identity lies behind those that are reserved.
void Session::NoteAdded(const dialect::AddedRow& form, std::span<const Value> values) {
  const bool hasOthers = buffer_.HasIdentities(*form.table);
  buffer_.Withdraw(*form.table);
  if (IsAlone()) {
    std::int64_t& added = added_[form.table];
    added = hasOthers ? 1 : added + 1;
    buffer_.NoteWritten(form, values);
  } else {
    DropHeld();
  }
}

std::int32_t Session::Add(const std::shared_ptr<const dialect::AddedRow>& form,
                          std::span<const Value> values) {
  return Writing([&] {
    RequireUsable();
    if (const auto held = Held(form, values)) {
      return *held;
    }
    std::string columns;
    std::string places;
    SentValues sent;
    std::size_t next = 0;
    for (const dialect::AddedRow::Cell& cell : form->cells) {
      sent.Add(cell.constant ? *cell.constant : values[next++]);
      const std::string_view separator = columns.empty() ? "" : ", ";
      columns.append(separator).append(QuotedName(cell.column->name));
      places += fmt::format("{}${}::{}", separator, sent.sent().size(), SentTypeOf(*cell.column));
    }
    const auto rid = static_cast<std::int32_t>(
        RunOwn(fmt::format("INSERT INTO {} ({}) VALUES ({}) RETURNING \"RID\"",
                           QuotedName(form->table->name), columns, places),
               sent, nullptr)
            .Number(0, 0));
    NoteAdded(*form, values);
    return rid;
  });
}

ChangeResult Session::RunChange(Bound& bound) {
  const Result answer = Run(bound, nullptr);
  const bool isNew = bound.prepared->shape->kind == StatementKind::kInsert && answer.rows() > 0;
  return {answer.affected(), isNew ? answer.Number(0, 0) : 0};
}

/// The version of a row is read before it is changed: with the right to write, which the change
/// takes before.
void Session::AskWithTheRight(const RowVersion& version) {
  const dialect::Table* const table = VersionedTable(version.table, {});
  if (table == nullptr || work_.locked()) {
    return;
  }
  SentValues values;
  values.AddNumber(version.rid);
  if (const auto inUnit = InUnit(*table, VersionText(*table), values)) {
    AskWithTheRight(inUnit->first, inUnit->second);
  }
}

void Session::AskWithTheRight(const std::string& sql, const SentValues& values) {
  asked_.push_back({sql, values, Result(nullptr)});
}

std::vector<Step> Session::StepsWithTheRight() {
  std::vector<Step> steps;
  for (const Asked& one : asked_) {
    steps.push_back(OwnStep(one.sql, one.values));
  }
  return steps;
}

void Session::KeepAnswers(std::span<Result> answers) {
  for (std::size_t at = 0; at < answers.size(); ++at) {
    asked_[at].answer = std::move(answers[at]);
  }
}

bool Session::IsVersion(const RowVersion& version, std::string_view changedTable) {
  const dialect::Table* const table = VersionedTable(version.table, changedTable);
  if (table == nullptr) {
    return true;
  }
  SentValues values;
  values.AddNumber(version.rid);
  const Result stored = OwnOfRow(*table, VersionText(*table), values);
  return stored.rows() > 0 &&
         IsSameVersion(CellOf(stored, 0, 0, dialect::ColumnType::kDate), version.lastModified);
}

ChangeResult Session::UpdateVersion(std::string_view sql, const RowVersion& version) {
  AskWithTheRight(version);
  // The look and the change are one step for everybody else.
  return Writing([&] {
    Bound bound = Bind(sql);
    RequireChange(bound.prepared->shape->kind, StatementKind::kUpdate);
    Forget(false);
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

std::vector<std::int32_t> Session::AddRows(std::string_view table,
                                           std::span<const std::string_view> columns,
                                           std::span<const RowCells> rows) {
  return Writing([&] { return AddManyRows(*this, table, columns, rows); });
}

void Session::RequireUsable() {
  work_.RequireUsable();
  transaction_.CheckUsable();
}

Result Session::Own(std::string_view sql, const SentValues& values, const TakeRow& take) {
  Result result = RunOwn(sql, values, take);
  if (!sql.starts_with("SELECT")) {
    Forget(sql.starts_with("INSERT"));
  }
  return result;
}

Result Session::RunOwn(std::string_view sql, const SentValues& values, const TakeRow& take) {
  RequireUsable();
  work_.WriteHeld();
  const auto asked = std::find_if(asked_.begin(), asked_.end(), [&](const Asked& one) {
    return one.answer.get() != nullptr && one.sql == sql && one.values == values;
  });
  if (asked != asked_.end()) {
    return std::exchange(asked->answer, Result(nullptr));
  }
  return Run(OwnText(sql), values, take, OwnWatch());
}

PreparedText& Session::OwnText(std::string_view sql) {
  const auto found = own_.find(sql);
  return found != own_.end() ? found->second
                             : own_.emplace(sql, PreparedText{std::string(sql), {}}).first->second;
}

void Session::OwnLater(std::string_view sql, const SentValues& values) {
  RequireUsable();
  work_.WriteHeld();
  connection_.RunLater(OwnText(sql), values.sent());
}

Step Session::OwnStep(std::string_view sql, const SentValues& values) {
  Step step;
  step.prepared = &OwnText(sql);
  step.values = SentTexts(values.sent());
  return step;
}

Result Session::OwnOfRow(const dialect::Table& table, const std::string& sql,
                         const SentValues& values) {
  if (const auto inUnit = InUnit(table, sql, values)) {
    Result answer = Own(inUnit->first, inUnit->second);
    if (answer.affected() > 0) {
      return answer;
    }
  }
  return Own(sql, values);
}

/// The same where the row is one of the operation's unit; nothing where there is no such unit.
std::optional<std::pair<std::string, SentValues>> Session::InUnit(const dialect::Table& table,
                                                                  const std::string& sql,
                                                                  const SentValues& values) const {
  const dialect::Column* const unitColumn = dialect::UnitColumnOf(table);
  const std::optional<std::int32_t> unit = work_.unit();
  if (!unit || unitColumn == nullptr) {
    return std::nullopt;
  }
  SentValues inUnit = values;
  inUnit.AddNumber(*unit);
  return std::pair(
      fmt::format("{} AND {}=${}::int4", sql, QuotedName(unitColumn->name), inUnit.sent().size()),
      std::move(inUnit));
}

}  // namespace qorhost::postgres

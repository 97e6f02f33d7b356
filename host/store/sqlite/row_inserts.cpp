#include "host/store/sqlite/row_inserts.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>

#include "host/dialect/names.h"
#include "host/store/sqlite/engine_error.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

// Rows of one statement. The engine looks up the next identity and begins its journal once for each
// statement; more rows gain little beside what each row takes.
constexpr std::array<std::size_t, 3> kSizes{64, 8, 1};

// More than all screens and imports write; beyond that the statements are prepared anew.
constexpr std::size_t kMostForms = 32;

void BindCell(Statement& statement, int parameter, const HeldRows& rows, const HeldCell& cell) {
  switch (cell.kind) {
    case HeldCell::Kind::kNumber:
      return statement.BindNumber(parameter, cell.number);
    case HeldCell::Kind::kText:
      return statement.BindText(parameter, rows.TextIn(cell));
    case HeldCell::Kind::kDouble:
      return statement.Bind(parameter, HeldRows::DoubleIn(cell));
    case HeldCell::Kind::kNull:
      return;  // what nothing is bound to
  }
}

std::string NameOf(const HeldRows& rows, std::size_t first, std::size_t size) {
  const std::int32_t from = rows.rids()[first];
  const std::int32_t to = rows.rids()[first + size - 1];
  return from == to
             ? fmt::format("Row {} of {} could not be stored", from, rows.table().name)
             : fmt::format("Rows {} to {} of {} could not be stored", from, to, rows.table().name);
}

}  // namespace

std::string InsertText(const dialect::AddedRow& form, std::size_t rows) {
  std::string columns;
  std::string values;
  for (const dialect::AddedRow::Cell& cell : form.cells) {
    const std::string_view separator = columns.empty() ? "" : ", ";
    columns.append(separator).append(dialect::QuotedName(cell.column->name));
    values.append(separator).append("?");
  }
  std::string text = fmt::format("INSERT INTO {} ({}) VALUES ({})",
                                 dialect::QuotedName(form.table->name), columns, values);
  for (std::size_t row = 1; row < rows; ++row) {
    text.append(", (").append(values).append(")");
  }
  return text;
}

Statement& RowInserts::StatementFor(const HeldRows& rows, std::size_t size) {
  auto found = std::find_if(forms_.begin(), forms_.end(),
                            [&rows](const Form& form) { return form.form == rows.form(); });
  if (found == forms_.end()) {
    if (forms_.size() == kMostForms) {
      forms_.clear();
    }
    forms_.push_back({rows.form(), {}});
    found = forms_.end() - 1;
    found->sized.resize(kSizes.size());
  }
  const auto place =
      static_cast<std::size_t>(std::find(kSizes.begin(), kSizes.end(), size) - kSizes.begin());
  std::unique_ptr<Statement>& statement = found->sized.at(place);
  if (statement == nullptr) {
    statement = std::make_unique<Statement>(database_, InsertText(*rows.form(), size));
  }
  return *statement;
}

bool RowInserts::TakesAnyRow(const dialect::Table& table) {
  if (rules_ == nullptr) {
    rules_ = std::make_unique<Statement>(
        database_,
        "SELECT 1 FROM sqlite_schema WHERE tbl_name=?1 AND (type='trigger' OR "
        "(type='index' AND sql LIKE 'CREATE UNIQUE%')) LIMIT 1");
  }
  const StatementUse rules(*rules_);
  rules->BindText(1, table.name);
  return !rules->Step();
}

void RowInserts::Write(const HeldRows& rows) {
  std::size_t first = 0;
  for (const std::size_t size : kSizes) {
    for (; rows.count() - first >= size; first += size) {
      WriteSome(rows, first, size);
    }
  }
}

void RowInserts::WriteSome(const HeldRows& rows, std::size_t first, std::size_t size) {
  try {
    Run(rows, first, size);
  } catch (const StoreError& error) {
    // Which of them it was, the engine tells of one at a time, where it is the row's own fault.
    const bool isOfRow =
        error.fault() == StoreFault::kOther || error.fault() == StoreFault::kNoSuchUnit;
    if (isOfRow && size > 1 && database_.inTransaction()) {
      for (std::size_t row = first; row < first + size; ++row) {
        Run(rows, row, 1);
      }
    }
    throw;
  }
}

void RowInserts::Run(const HeldRows& rows, std::size_t first, std::size_t size) {
  const StatementUse insert(StatementFor(rows, size));
  int parameter = 0;
  for (std::size_t row = first; row < first + size; ++row) {
    for (const HeldCell& cell : rows.CellsOf(row)) {
      BindCell(*insert, ++parameter, rows, cell);
    }
  }
  if (sqlite3_step(insert->handle()) != SQLITE_DONE) {
    throw LastError(database_.handle(), NameOf(rows, first, size));
  }
  if (sqlite3_last_insert_rowid(database_.handle()) != rows.rids()[first + size - 1]) {
    throw StoreError(NameOf(rows, first, size) +
                     ": another program has added rows past this one meanwhile");
  }
}

void RowInserts::KeepLinkCode(std::int32_t unitKey, std::int64_t next) {
  if (keepLinkCode_ == nullptr) {
    keepLinkCode_ = std::make_unique<Statement>(
        database_,
        "INSERT INTO UnitCounters (UnitKey, NextLinkCode) VALUES (?1, ?2) "
        "ON CONFLICT (UnitKey) DO UPDATE SET NextLinkCode = ?2");
  }
  const StatementUse keep(*keepLinkCode_);
  keep->BindNumber(1, unitKey);
  keep->BindNumber(2, next);
  keep->Step();
}

}  // namespace qorhost::sqlite

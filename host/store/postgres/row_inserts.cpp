#include "host/store/postgres/row_inserts.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/dialect/names.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::QuotedName;

// More than all screens and imports write; beyond that the server reads the statements anew.
constexpr std::size_t kMostForms = 32;

std::string InsertText(const dialect::AddedRow& form) {
  std::string columns = "\"RID\"";
  std::string arrays = "$1::int4[]";
  int parameter = 1;
  for (const dialect::AddedRow::Cell& cell : form.cells) {
    columns += ", " + QuotedName(cell.column->name);
    arrays += fmt::format(", ${}::{}[]", ++parameter, SentTypeOf(*cell.column));
  }
  return fmt::format("INSERT INTO {} ({}) SELECT * FROM unnest({})", QuotedName(form.table->name),
                     columns, arrays);
}

void AppendQuoted(std::string& text, std::string_view content) {
  text += '"';
  for (const char character : content) {
    if (character == '"' || character == '\\') {
      text += '\\';
    }
    text += character;
  }
  text += '"';
}

std::string RidsText(const HeldRows& rows, std::size_t first, std::size_t size) {
  std::string text = "{";
  for (std::size_t row = first; row < first + size; ++row) {
    text += row == first ? "" : ",";
    text += fmt::format_int(rows.rids()[row]).c_str();
  }
  text += '}';
  return text;
}

std::string NameOf(const HeldRows& rows, std::size_t first, std::size_t size) {
  const std::int32_t from = rows.rids()[first];
  const std::int32_t to = rows.rids()[first + size - 1];
  return from == to
             ? fmt::format("Row {} of {} could not be stored", from, rows.table().name)
             : fmt::format("Rows {} to {} of {} could not be stored", from, to, rows.table().name);
}

}  // namespace

std::string ArrayText(const HeldRows& rows, std::size_t first, std::size_t size,
                      std::size_t column) {
  std::string text = "{";
  for (std::size_t row = first; row < first + size; ++row) {
    if (row > first) {
      text += ',';
    }
    const HeldCell& cell = rows.CellsOf(row)[column];
    switch (cell.kind) {
      case HeldCell::Kind::kNull:
        text += "NULL";
        break;
      case HeldCell::Kind::kNumber:
        text += fmt::format_int(cell.number).c_str();
        break;
      case HeldCell::Kind::kDouble:
        text += fmt::format("{}", HeldRows::DoubleIn(cell));
        break;
      case HeldCell::Kind::kText:
        AppendQuoted(text, rows.TextIn(cell));
        break;
    }
  }
  text += '}';
  return text;
}

PreparedText& RowInserts::TextFor(const HeldRows& rows) {
  const auto found = std::find_if(forms_.begin(), forms_.end(),
                                  [&rows](const Form& form) { return form.form == rows.form(); });
  if (found != forms_.end()) {
    return found->text;
  }
  if (forms_.size() == kMostForms) {
    for (const Form& form : forms_) {
      connection_.RunAll("DEALLOCATE " + form.text.name);
    }
    forms_.clear();
  }
  return forms_.emplace_back(Form{rows.form(), {InsertText(*rows.form()), {}}}).text;
}

/// The index of the identities is no rule that a row could break.
bool RowInserts::TakesAnyRow(const dialect::Table& table) {
  SentValues values;
  values.AddText(QuotedName(table.name));
  return connection_
             .Run(
                 "SELECT 1 FROM pg_index WHERE indrelid=$1::regclass AND indisunique AND NOT "
                 "indisprimary AND indkey::text <> (SELECT attnum::text FROM pg_attribute WHERE "
                 "attrelid=$1::regclass AND attname='RID') UNION ALL SELECT 1 FROM pg_trigger "
                 "WHERE tgrelid=$1::regclass AND "
                 "NOT tgisinternal AND tgname NOT LIKE 'Tell%'",
                 values.sent())
             .rows() == 0;
}

void RowInserts::Write(const HeldRows& rows) {
  try {
    WriteSome(rows, 0, rows.count());
  } catch (const StoreError& error) {
    // Which of them it was, the server tells of one at a time, where it is the row's own fault.
    const bool isOfRow =
        error.fault() == StoreFault::kOther || error.fault() == StoreFault::kNoSuchUnit;
    if (isOfRow && rows.count() > 1 && connection_.inTransaction()) {
      for (std::size_t row = 0; row < rows.count(); ++row) {
        WriteSome(rows, row, 1);
      }
    }
    throw;
  }
}

void RowInserts::WriteSome(const HeldRows& rows, std::size_t first, std::size_t size) {
  SentValues values;
  values.AddText(RidsText(rows, first, size));
  for (std::size_t column = 0; column < rows.columns(); ++column) {
    values.AddText(ArrayText(rows, first, size, column));
  }
  try {
    (void)connection_.Run(TextFor(rows), values.sent(), size > 1);
  } catch (const StoreError& error) {
    throw StoreError(fmt::format("{}: {}", NameOf(rows, first, size), error.what()), error.fault());
  }
}

void RowInserts::KeepLinkCode(std::int32_t unitKey, std::int64_t next) {
  SentValues values;
  values.AddNumber(unitKey);
  values.AddNumber(next);
  (void)connection_.Run(
      R"(INSERT INTO "UnitCounters" ("UnitKey", "NextLinkCode") VALUES ($1::int4, $2::int8) )"
      R"(ON CONFLICT ("UnitKey") DO UPDATE SET "NextLinkCode" = $2::int8)",
      values.sent());
}

void RowInserts::Reserve(const dialect::Table& table, std::int64_t number, WriteBuffer& buffer) {
  SentValues values;
  values.AddText(QuotedName(table.name));
  values.AddNumber(number);
  // Others may take some in between.
  const Result runs = connection_.Run(
      R"(SELECT min(identity), max(identity) FROM (SELECT identity, identity - row_number() OVER )"
      R"((ORDER BY identity) AS run FROM (SELECT nextval(pg_get_serial_sequence($1::text, 'RID')) )"
      R"(AS identity FROM generate_series(1, $2::int4)) AS taken) AS numbered GROUP BY run ORDER BY 1)",
      values.sent());
  for (int run = 0; run < runs.rows(); ++run) {
    buffer.Grant(table, runs.Number(run, 0), runs.Number(run, 1));
  }
}

}  // namespace qorhost::postgres

#include "host/store/postgres/many_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "host/dialect/names.h"
#include "host/store/postgres/session.h"
#include "host/store/statement_rules.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::Column;
using dialect::QuotedName;

// A statement is worth its way from here on, and its values stay far below what a server takes.
constexpr std::size_t kMostRowsAtOnce = 2000;
constexpr std::size_t kMostBytesAtOnce = std::size_t{4} << 20U;

/// The values of one column, as the server reads an array.
class ColumnOfValues {
 public:
  explicit ColumnOfValues(const Column& column) : column_(column) {}

  void Add(const qorcred::Value& value) {
    SentValues one;
    one.Add(value);
    text_ += text_.empty() ? '{' : ',';
    if (const Sent sent = one.sent().front()) {
      AddQuoted(*sent);
    } else {
      text_ += "NULL";
    }
  }
  [[nodiscard]] const Column& column() const { return column_; }
  [[nodiscard]] std::size_t bytes() const { return text_.size(); }
  /// Begins anew.
  [[nodiscard]] std::string Take() {
    std::string whole = text_ + '}';
    text_.clear();
    return whole;
  }

 private:
  void AddQuoted(std::string_view text) {
    text_ += '"';
    for (const char letter : text) {
      if (letter == '"' || letter == '\\') text_ += '\\';
      text_ += letter;
    }
    text_ += '"';
  }

  const Column& column_;
  std::string text_;
};

class ManyRows {
 public:
  ManyRows(Session& session, std::string_view table, std::span<const std::string_view> columns)
      : session_(session), table_(RequireTable(table)) {
    for (const std::string_view name : columns) {
      const Column* const column = dialect::FindColumn(table_, name);
      if (column == nullptr) {
        throw StoreError(fmt::format("There is no column '{}' in the table {}", name, table_.name));
      }
      isGiven_ = isGiven_ || column->type == dialect::ColumnType::kIdentity;
      columns_.emplace_back(*column);
    }
  }

  void Add(const RowCells& row) {
    for (std::size_t at = 0; at < columns_.size(); ++at) {
      columns_[at].Add(row[at]);
    }
    std::size_t bytes = 0;
    for (const ColumnOfValues& column : columns_) bytes += column.bytes();
    if (++waiting_ >= kMostRowsAtOnce || bytes >= kMostBytesAtOnce) Send();
  }

  [[nodiscard]] std::vector<std::int32_t> End() {
    if (waiting_ > 0) Send();
    if (isGiven_ && !identities_.empty()) Claim();
    return std::move(identities_);
  }

 private:
  void Send() {
    std::string names;
    std::string places;
    SentValues values;
    for (ColumnOfValues& column : columns_) {
      const std::string_view separator = names.empty() ? "" : ", ";
      values.AddText(column.Take());
      names.append(separator).append(QuotedName(column.column().name));
      places +=
          fmt::format("{}${}::{}[]", separator, values.sent().size(), SentTypeOf(column.column()));
    }
    // New identities are given in the order of the rows.
    const Result added = session_.Own(
        fmt::format("INSERT INTO {0} ({1}) SELECT {1} FROM unnest({2}) WITH ORDINALITY AS "
                    "given({1}, \"Place\") ORDER BY \"Place\" RETURNING \"RID\"",
                    QuotedName(table_.name), names, places),
        values);
    for (int row = 0; row < added.rows(); ++row) {
      identities_.push_back(static_cast<std::int32_t>(added.Number(row, 0)));
    }
    waiting_ = 0;
  }

  /// Identities that came with their rows are not given out again.
  void Claim() {
    SentValues values;
    values.AddNumber(*std::max_element(identities_.begin(), identities_.end()));
    (void)session_.Own(
        fmt::format("SELECT desktop.claimed('{}', $1::int4)", QuotedName(table_.name)), values);
  }

  Session& session_;
  const dialect::Table& table_;
  std::vector<ColumnOfValues> columns_;
  bool isGiven_ = false;
  std::size_t waiting_ = 0;
  std::vector<std::int32_t> identities_;
};

}  // namespace

std::vector<std::int32_t> AddManyRows(Session& session, std::string_view table,
                                      std::span<const std::string_view> columns,
                                      std::span<const RowCells> rows) {
  ManyRows many(session, table, columns);
  for (const RowCells& row : rows) {
    many.Add(row);
  }
  return many.End();
}

}  // namespace qorhost::postgres

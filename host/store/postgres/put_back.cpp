#include "host/store/postgres/put_back.h"

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <utility>

#include "host/dialect/catalog.h"
#include "host/dialect/names.h"
#include "host/dialect/unit_key.h"
#include "host/store/postgres/session.h"
#include "host/store/statement_rules.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::QuotedName;

constexpr std::string_view kChangedAt = "LASTMODIFIEDDATE";

const dialect::Column& ColumnOf(const dialect::Table& table, const StoredCell& cell) {
  const dialect::Column* const column = dialect::FindColumn(table, cell.column);
  if (column == nullptr) {
    throw StoreError(
        fmt::format("There is no column '{}' in the table {}", cell.column, table.name));
  }
  return *column;
}

/// A statement that is written from left to right together with its values.
class Written {
 public:
  explicit Written(std::string text) : text_(std::move(text)) {}

  Written& operator<<(std::string_view text) {
    text_ += text;
    return *this;
  }
  /// A parameter with its value, of that type.
  Written& Put(const qorcred::Value& value, std::string_view type) {
    values_.Add(value);
    return PutPlace(type);
  }
  Written& PutKey(std::int64_t key) {
    values_.AddNumber(key);
    return PutPlace("int4");
  }
  Written& PutText(std::string_view text) {
    values_.AddText(text);
    return PutPlace("text");
  }

  /// That the row is one of the unit, where it is known whose it most likely is.
  Written& In(const dialect::Table& table, std::optional<std::int32_t> unit) {
    const dialect::Column* const column = dialect::UnitColumnOf(table);
    if (unit && column != nullptr) {
      *this << " AND " << QuotedName(column->name) << "=";
      return PutKey(*unit);
    }
    return *this;
  }

  Result Run(Session& session) const { return session.Own(text_, values_); }

 private:
  Written& PutPlace(std::string_view type) {
    text_ += fmt::format("${}::{}", ++count_, type);
    return *this;
  }

  std::string text_;
  SentValues values_;
  int count_ = 0;
};

/// That a row holds the cells, letter for letter. The date is left out, which another one that was
/// undone has left on it.
void PutSame(Written& statement, const dialect::Table& table,
             const std::vector<StoredCell>& cells) {
  for (const StoredCell& cell : cells) {
    if (cell.column != kChangedAt) {
      statement << " AND " << QuotedName(cell.column) << " IS NOT DISTINCT FROM ";
      statement.Put(cell.value, SentTypeOf(ColumnOf(table, cell)));
    }
  }
}

std::optional<std::int64_t> RemoveRun(Session& session, const RowChange& change,
                                      std::optional<std::int32_t> unit) {
  const dialect::Table& table = RequireTable(change.table);
  const std::string name = QuotedName(table.name);
  Written first("SELECT 1 FROM " + name + " WHERE \"RID\"=");
  first.PutKey(change.rid);
  PutSame(first.In(table, unit), table, change.after);
  if (first.Run(session).rows() == 0) {
    return change.rid;
  }
  const auto run = [&](std::string_view text) {
    Written statement{std::string(text)};
    statement << name << " WHERE \"RID\" BETWEEN ";
    statement.PutKey(change.rid) << " AND ";
    return statement.PutKey(change.lastRid).In(table, unit);
  };
  const Result standing = (run("SELECT \"RID\" FROM ") << " ORDER BY \"RID\"").Run(session);
  for (std::int64_t rid = change.rid; rid <= change.lastRid; ++rid) {
    const auto row = static_cast<int>(rid - change.rid);
    if (row >= standing.rows() || standing.Number(row, 0) != rid) {
      return rid;
    }
  }
  (void)run("DELETE FROM ").Run(session);
  return std::nullopt;
}

std::optional<std::int64_t> WriteFormerCells(Session& session, const RowChange& change,
                                             std::optional<std::int32_t> unit) {
  const dialect::Table& table = RequireTable(change.table);
  Written update("UPDATE " + QuotedName(table.name) + R"( SET "RID"="RID")");
  for (const StoredCell& cell : change.before) {
    if (cell.column != kChangedAt) {
      update << ", " << QuotedName(cell.column) << "=";
      update.Put(cell.value, SentTypeOf(ColumnOf(table, cell)));
    }
  }
  if (dialect::FindColumn(table, kChangedAt) != nullptr) {
    update << ", \"LASTMODIFIEDDATE\"=desktop.later_than(";
    update.PutText(session.timeStamp().Now()) << ", \"LASTMODIFIEDDATE\")";
  }
  update << " WHERE \"RID\"=";
  update.PutKey(change.rid);
  PutSame(update.In(table, unit), table, change.after);
  return update.Run(session).affected() == 1 ? std::nullopt : std::optional(change.rid);
}

std::optional<std::int64_t> AddFormerRow(Session& session, const RowChange& change) {
  const dialect::Table& table = RequireTable(change.table);
  const std::string name = QuotedName(table.name);
  // Identities are given out once for all units: where none of the unit has it, none has.
  Written standing("SELECT 1 FROM " + name + " WHERE \"RID\"=");
  if (standing.PutKey(change.rid).In(table, session.work().unit()).Run(session).rows() > 0) {
    return change.rid;
  }
  std::string columns;
  for (const StoredCell& cell : change.before) {
    if (!ColumnOf(table, cell).generated) {
      columns.append(columns.empty() ? "" : ", ").append(QuotedName(cell.column));
    }
  }
  Written insert("INSERT INTO " + name + " (" + columns + ") VALUES (");
  std::string_view separator;
  for (const StoredCell& cell : change.before) {
    const dialect::Column& column = ColumnOf(table, cell);
    if (column.generated) {
      continue;
    }
    insert << separator;
    separator = ", ";
    if (cell.column == kChangedAt) {
      insert << "desktop.later_than(";
      insert.PutText(session.timeStamp().Now()) << ", ";
      insert.Put(cell.value, "text") << ")";
    } else {
      insert.Put(cell.value, SentTypeOf(column));
    }
  }
  (void)(insert << ") RETURNING desktop.claimed('" << name << "', \"RID\")").Run(session);
  return std::nullopt;
}

std::optional<std::int64_t> PutBackIn(std::optional<std::int32_t> unit, Session& session,
                                      const RowChange& change) {
  return change.kind == RowChangeKind::kInserted ? RemoveRun(session, change, unit)
                                                 : WriteFormerCells(session, change, unit);
}

}  // namespace

std::optional<std::int64_t> PutRowBack(Session& session, const RowChange& change) {
  if (change.kind == RowChangeKind::kDeleted) {
    return AddFormerRow(session, change);
  }
  // Most likely the rows are those of the operation's unit; where they are not, nothing was done.
  const std::optional<std::int32_t> unit = session.work().unit();
  const std::optional<std::int64_t> differing = PutBackIn(unit, session, change);
  return differing && unit ? PutBackIn(std::nullopt, session, change) : differing;
}

}  // namespace qorhost::postgres

#include "host/store/sqlite/put_back.h"

#include <fmt/format.h>

#include <span>
#include <string>
#include <string_view>

#include "host/dialect/catalog.h"
#include "host/dialect/names.h"
#include "host/store/sqlite/engine_names.h"
#include "host/store/sqlite/session.h"
#include "host/store/statement_rules.h"

namespace qorhost::sqlite {

namespace {

using dialect::QuotedName;

constexpr std::string_view kChangedAt = "LASTMODIFIEDDATE";

/// One parameter behind the other, and the text that names their columns.
class Terms {
 public:
  explicit Terms(int first) : next_(first) {}

  void Add(std::string_view pattern, const StoredCell& cell) {
    text_ += fmt::format(fmt::runtime(pattern), fmt::arg("column", QuotedName(cell.column)),
                         fmt::arg("number", next_++));
    cells_.push_back(&cell);
  }

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] int next() const { return next_; }
  void Bind(Statement& statement) const {
    int number = next_ - static_cast<int>(cells_.size());
    for (const StoredCell* cell : cells_) {
      statement.Bind(number++, cell->value);
    }
  }

 private:
  int next_;
  std::string text_;
  std::vector<const StoredCell*> cells_;
};

/// That a row holds the cells, letter for letter: comparisons of texts do without letter case else.
/// The date is left out, which another one that was undone has left on it.
Terms SameAs(const std::vector<StoredCell>& cells, int first) {
  Terms terms(first);
  for (const StoredCell& cell : cells) {
    if (cell.column == kChangedAt) {
      continue;
    }
    terms.Add(" AND {column} IS ?{number} COLLATE BINARY", cell);
  }
  return terms;
}

std::string LaterThan(std::string_view now, std::string_view date) {
  const LaterThanDate& later = kLaterThanDate;
  return fmt::format("{}{}{}{}{}", later.beforeTime, now, later.beforeDate, date, later.end);
}

std::optional<std::int64_t> RemoveRun(Session& session, const RowChange& change) {
  const std::string table = QuotedName(RequireTable(change.table).name);
  const Terms same = SameAs(change.after, 2);
  {
    const StatementUse first(
        session.Own(fmt::format("SELECT 1 FROM {} WHERE RID=?1{}", table, same.text())));
    first->BindNumber(1, change.rid);
    same.Bind(*first);
    if (!first->Step()) {
      return change.rid;
    }
  }
  {
    const StatementUse standing(session.Own(
        fmt::format("SELECT RID FROM {} WHERE RID BETWEEN ?1 AND ?2 ORDER BY RID", table)));
    standing->BindNumber(1, change.rid);
    standing->BindNumber(2, change.lastRid);
    for (std::int64_t rid = change.rid; rid <= change.lastRid; ++rid) {
      if (!standing->Step() || standing->Number(0) != rid) {
        return rid;
      }
    }
  }
  const StatementUse remove(
      session.Own(fmt::format("DELETE FROM {} WHERE RID BETWEEN ?1 AND ?2", table)));
  remove->BindNumber(1, change.rid);
  remove->BindNumber(2, change.lastRid);
  remove->Step();
  return std::nullopt;
}

std::optional<std::int64_t> WriteFormerCells(Session& session, const RowChange& change) {
  const dialect::Table& table = RequireTable(change.table);
  const bool isDated = dialect::FindColumn(table, kChangedAt) != nullptr;
  Terms former(3);
  for (const StoredCell& cell : change.before) {
    if (cell.column != kChangedAt) {
      former.Add(", {column}=?{number}", cell);
    }
  }
  const Terms same = SameAs(change.after, former.next());
  const std::string date = isDated ? fmt::format(", {}={}", QuotedName(kChangedAt),
                                                 LaterThan("?2", QuotedName(kChangedAt)))
                                   : std::string();
  const StatementUse update(
      session.Own(fmt::format("UPDATE {} SET RID=?1{}{} WHERE RID=?1{}", QuotedName(table.name),
                              former.text(), date, same.text())));
  update->BindNumber(1, change.rid);
  if (isDated) {
    update->BindText(2, session.timeStamp().Now());
  }
  former.Bind(*update);
  same.Bind(*update);
  update->Step();
  return session.ChangedRows() == 1 ? std::nullopt : std::optional(change.rid);
}

std::optional<std::int64_t> AddFormerRow(Session& session, const RowChange& change) {
  const dialect::Table& table = RequireTable(change.table);
  {
    const StatementUse standing(
        session.Own(fmt::format("SELECT 1 FROM {} WHERE RID=?1", QuotedName(table.name))));
    standing->BindNumber(1, change.rid);
    if (standing->Step()) {
      return change.rid;
    }
  }
  Terms places(2);
  std::string columns;
  for (const StoredCell& cell : change.before) {
    const dialect::Column* column = dialect::FindColumn(table, cell.column);
    if (column != nullptr && column->generated) {
      continue;
    }
    const std::string separator = columns.empty() ? "" : ", ";
    columns += separator + QuotedName(cell.column);
    places.Add(separator + (cell.column == kChangedAt ? LaterThan("?1", "?{number}") : "?{number}"),
               cell);
  }
  const StatementUse insert(session.Own(fmt::format(
      "INSERT INTO {} ({}) VALUES ({})", QuotedName(table.name), columns, places.text())));
  insert->BindText(1, session.timeStamp().Now());
  places.Bind(*insert);
  insert->Step();
  return std::nullopt;
}

}  // namespace

std::optional<std::int64_t> PutRowBack(Session& session, const RowChange& change) {
  switch (change.kind) {
    case RowChangeKind::kInserted:
      return RemoveRun(session, change);
    case RowChangeKind::kUpdated:
      return WriteFormerCells(session, change);
    case RowChangeKind::kDeleted:
      break;
  }
  return AddFormerRow(session, change);
}

}  // namespace qorhost::sqlite

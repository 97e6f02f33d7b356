// Statements of the dialect, run on a database.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/result_table.h"
#include "frame/value.h"
#include "host/dialect/translator.h"
#include "host/store/sqlite/database.h"
#include "host/store/sqlite/result_reader.h"
#include "host/store/sqlite/transaction.h"
#include "host/store/time_stamp.h"

namespace qorhost {

/// A SELECT's rows. `table` is never null; without rows it is one cell that holds "".
struct QueryResult {
  std::vector<std::string> columns;
  std::shared_ptr<qorcred::ResultTable> table;
  std::size_t rowCount = 0;
};

/// What an INSERT, UPDATE or DELETE did.
struct ChangeResult {
  std::int64_t rows = 0;
  std::int64_t newRow = 0;  ///< identity of the row that an INSERT added last
};

/// The version of a row that a change is meant for.
struct RowVersion {
  std::string_view table;  ///< as the caller names it; an unknown name means the changed table
  std::int32_t rid = 0;
  const qorcred::Value& lastModified;
};

/// Runs dialect statements, each parsed and prepared once per shape, and the host's own statements.
/// Raises dialect::SqlError for a statement that the dialect refuses and StoreError for one that
/// fails; either way the statement has changed nothing and holds nothing open.
class SqlSession {
 public:
  SqlSession(Database& database, Clock clock);

  /// Runs a SELECT.
  [[nodiscard]] QueryResult Select(std::string_view sql);
  /// The first cell of a SELECT; Empty without rows.
  [[nodiscard]] qorcred::Value Scalar(std::string_view sql);
  /// Runs an INSERT, UPDATE or DELETE: only that of `kind` when one is given.
  ChangeResult Change(std::string_view sql, std::optional<dialect::StatementKind> kind);
  /// Runs an UPDATE unless the row meant has another last-modified date by now: then 0 rows.
  ChangeResult UpdateVersion(std::string_view sql, const RowVersion& version);
  /// Deletes the row with that identity from a table of the catalog; returns the number of rows.
  std::int64_t DeleteRow(std::string_view table, std::int32_t rid);

  /// One of the host's own statements in SQLite's words, prepared once. Use it in a StatementUse.
  /// For texts that the host makes up itself, of which there are few.
  [[nodiscard]] Statement& Own(std::string_view sql);

  /// The rows that the latest INSERT, UPDATE or DELETE added, changed or deleted.
  [[nodiscard]] std::int64_t ChangedRows() const noexcept;

  [[nodiscard]] Database& database() const noexcept { return database_; }
  [[nodiscard]] Transaction& transaction() noexcept { return transaction_; }
  [[nodiscard]] const Transaction& transaction() const noexcept { return transaction_; }
  [[nodiscard]] TimeStamp& timeStamp() noexcept { return timeStamp_; }
  [[nodiscard]] const dialect::Translator& translator() const noexcept { return translator_; }

 private:
  struct Prepared {
    std::shared_ptr<const dialect::Shape> shape;  // keeps the key of the cache from being reused
    Statement statement;
    std::vector<CellKind> kinds;
    std::size_t latestRows = 0;  // of the last SELECT
  };

  Prepared& PreparedFor(const std::shared_ptr<const dialect::Shape>& shape);
  Prepared& Bound(std::string_view sql);
  Prepared& BoundSelect(std::string_view sql);
  Prepared& BoundChange(std::string_view sql, std::optional<dialect::StatementKind> kind);
  [[nodiscard]] bool IsVersion(const RowVersion& version, std::string_view changedTable);

  Database& database_;
  TimeStamp timeStamp_;
  dialect::Translator translator_;
  std::unordered_map<const dialect::Shape*, Prepared> prepared_;
  Prepared* latest_ = nullptr;
  std::map<std::string, Statement, std::less<>> own_;  // by text
  Transaction transaction_;
};

}  // namespace qorhost

// Work on a store, whatever its engine: statements of the dialect, and the host's own operations,
// which each engine has in its own words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/result_table.h"
#include "frame/value.h"
#include "host/dialect/translator.h"
#include "host/store/audit_log.h"
#include "host/store/carried_history.h"
#include "host/store/rows.h"
#include "host/store/step_queue.h"
#include "host/store/tenant_register.h"
#include "host/store/transaction.h"
#include "host/store/unit_of_work.h"
#include "host/store/unit_register.h"

namespace qorhost {

/// A SELECT's rows. `table` is never null; without rows it is one cell that holds "".
struct QueryResult {
  std::vector<std::string> columns;
  std::shared_ptr<qorcred::ResultTable> table;
  std::size_t rowCount = 0;

  /// To iterate over; valid as long as the result.
  [[nodiscard]] ResultRows rows() const { return {*table, rowCount}; }
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

/// One column of a new row.
struct Field {
  std::string_view column;
  qorcred::Value value;
};

/// The values of one new row among many, in the order of the columns that all of them have.
using RowCells = std::vector<qorcred::Value>;

/// Raises dialect::SqlError for a statement that the dialect refuses and StoreError for one that
/// fails; either way the statement has changed nothing and holds nothing open.
class SqlSession {
 public:
  virtual ~SqlSession() = default;
  SqlSession(const SqlSession&) = delete;
  SqlSession& operator=(const SqlSession&) = delete;

  /// Runs a SELECT.
  [[nodiscard]] virtual QueryResult Select(std::string_view sql) = 0;
  /// The first cell of a SELECT; Empty without rows.
  [[nodiscard]] virtual qorcred::Value Scalar(std::string_view sql) = 0;
  /// Runs an INSERT, UPDATE or DELETE: only that of `kind` when one is given.
  virtual ChangeResult Change(std::string_view sql, std::optional<dialect::StatementKind> kind) = 0;
  /// Runs an UPDATE unless the row meant has another last-modified date by now: then 0 rows.
  virtual ChangeResult UpdateVersion(std::string_view sql, const RowVersion& version) = 0;
  /// Deletes the row with that identity from a table of the catalog; returns the number of rows.
  virtual std::int64_t DeleteRow(std::string_view table, std::int32_t rid) = 0;
  /// Adds a row to a table of the store and returns its identity. Dates go in as canonical texts.
  virtual std::int32_t AddRow(std::string_view table, std::span<const Field> fields) = 0;
  /// Adds many rows in their order, as AddRow() does each, and returns their identities. On a
  /// server they take few statements.
  virtual std::vector<std::int32_t> AddRows(std::string_view table,
                                            std::span<const std::string_view> columns,
                                            std::span<const RowCells> rows);

  /// The transaction of the connection, which controllers begin and end.
  [[nodiscard]] virtual Transaction& transaction() noexcept = 0;
  /// What an operator does, around it and everything else.
  [[nodiscard]] virtual UnitOfWork& work() noexcept = 0;
  /// One part of a unit of work that has taken the right to write: it may fail and be undone alone.
  [[nodiscard]] virtual Transaction& savepoint() noexcept = 0;
  /// Reading that sees one state of the store, whatever others store meanwhile; nobody waits for
  /// it. Nothing may be written in it. Inside anything that is open already it is a part of that.
  [[nodiscard]] virtual Transaction& look() noexcept = 0;
  /// Whether any of them is open. False where one should be means that the store gave it up and
  /// undid everything (a full disk, for example).
  [[nodiscard]] virtual bool inTransaction() const noexcept = 0;

  [[nodiscard]] virtual AuditLog& audit() noexcept = 0;
  [[nodiscard]] virtual CarriedHistory& carriedHistory() noexcept = 0;
  [[nodiscard]] virtual StepQueue& steps() noexcept = 0;
  [[nodiscard]] virtual TenantRegister& tenants() noexcept = 0;
  [[nodiscard]] virtual UnitRegister& units() noexcept = 0;

 protected:
  SqlSession() = default;
};

}  // namespace qorhost

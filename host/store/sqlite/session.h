// A session on a SQLite database.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/result_table.h"
#include "frame/value.h"
#include "host/dialect/translator.h"
#include "host/store/sql_session.h"
#include "host/store/sqlite/audit_log.h"
#include "host/store/sqlite/carried_history.h"
#include "host/store/sqlite/database.h"
#include "host/store/sqlite/result_reader.h"
#include "host/store/sqlite/row_inserts.h"
#include "host/store/sqlite/step_queue.h"
#include "host/store/sqlite/tenant_register.h"
#include "host/store/sqlite/transaction.h"
#include "host/store/sqlite/unit_of_work.h"
#include "host/store/sqlite/unit_register.h"
#include "host/store/time_stamp.h"
#include "host/store/write_buffer.h"

namespace qorhost::sqlite {

/// Each statement of the dialect is parsed and prepared once per shape, each of the engine's own
/// texts once. Inside a transaction the first row that is added to a table is written at once, and
/// tells the identities of those behind it; these are held, and written before anything else runs.
class Session final : public SqlSession {
 public:
  Session(Database& database, Clock clock);

  [[nodiscard]] QueryResult Select(std::string_view sql) override;
  [[nodiscard]] qorcred::Value Scalar(std::string_view sql) override;
  ChangeResult Change(std::string_view sql, std::optional<dialect::StatementKind> kind) override;
  ChangeResult UpdateVersion(std::string_view sql, const RowVersion& version) override;
  std::int64_t DeleteRow(std::string_view table, std::int32_t rid) override;
  std::int32_t AddRow(std::string_view table, std::span<const Field> fields) override;

  [[nodiscard]] WorkTransaction& transaction() noexcept override { return transaction_; }
  [[nodiscard]] UnitOfWork& work() noexcept override { return work_; }
  [[nodiscard]] Savepoint& savepoint() noexcept override { return savepoint_; }
  [[nodiscard]] Look& look() noexcept override { return look_; }
  [[nodiscard]] bool inTransaction() const noexcept override { return database_.inTransaction(); }

  [[nodiscard]] AuditLog& audit() noexcept override { return audit_; }
  [[nodiscard]] CarriedHistory& carriedHistory() noexcept override { return carriedHistory_; }
  [[nodiscard]] StepQueue& steps() noexcept override { return steps_; }
  [[nodiscard]] TenantRegister& tenants() noexcept override { return tenants_; }
  [[nodiscard]] UnitRegister& units() noexcept override { return units_; }

  /// Runs what may write, as a part of the open unit of work, which is void when it fails.
  template <typename Write>
  auto Writing(Write&& write) {
    work_.BeforeWrite();
    try {
      return write();
    } catch (...) {
      work_.AfterFailedWrite();
      throw;
    }
  }

  /// Adds a row, the values being those of the form's parameters, and returns its identity.
  std::int32_t Add(const std::shared_ptr<const dialect::AddedRow>& form,
                   std::span<const qorcred::Value> values);
  /// Rows that are added and not written yet. Whoever asks it while nobody else can write may
  /// answer from it.
  [[nodiscard]] WriteBuffer& buffer() noexcept { return buffer_; }
  [[nodiscard]] const WriteBuffer& buffer() const noexcept { return buffer_; }
  /// Whether nobody else can write until an end that this session is told of.
  [[nodiscard]] bool IsAlone() const noexcept;

  /// A statement in SQLite's words, prepared once: for texts that this engine makes up itself, of
  /// which there are few. What is held is written before. Use it in a StatementUse.
  [[nodiscard]] Statement& Own(std::string_view sql);
  /// The rows that the latest INSERT, UPDATE or DELETE added, changed or deleted.
  [[nodiscard]] std::int64_t ChangedRows() const noexcept;

  [[nodiscard]] Database& database() const noexcept { return database_; }
  [[nodiscard]] TimeStamp& timeStamp() noexcept { return timeStamp_; }
  [[nodiscard]] const dialect::Translator& translator() const noexcept { return translator_; }

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
      return std::hash<std::string_view>{}(text);
    }
  };
  struct Prepared {
    std::shared_ptr<const dialect::Shape> shape;  // keeps the key of the cache from being reused
    Statement statement;
    std::vector<CellKind> kinds;
    std::size_t latestRows = 0;  // of the last SELECT
  };

  void RequireUsable();
  Statement& Kept(std::string_view sql);
  Prepared& PreparedFor(const std::shared_ptr<const dialect::Shape>& shape);
  Prepared& Bound(std::string_view sql);
  Prepared& Bound(const dialect::Translation& translation);
  Prepared& BoundSelect(std::string_view sql);
  Prepared& BoundChange(const dialect::Translation& translation,
                        std::optional<dialect::StatementKind> kind);
  ChangeResult RunChange(Statement& bound);
  [[nodiscard]] std::optional<std::int32_t> Held(
      const std::shared_ptr<const dialect::AddedRow>& form, std::span<const qorcred::Value> values);
  void Forget(bool identitiesToo);
  void NoteAdded(const dialect::AddedRow& form, std::span<const qorcred::Value> values,
                 std::int64_t rid);
  [[nodiscard]] bool IsVersion(const RowVersion& version, std::string_view changedTable);

  Database& database_;
  TimeStamp timeStamp_;
  dialect::Translator translator_;
  std::unordered_map<const dialect::Shape*, Prepared> prepared_;
  Prepared* latest_ = nullptr;
  std::unordered_map<std::string, Statement, TextHash, std::equal_to<>> own_;  // by text
  RowInserts rowInserts_;
  WriteBuffer buffer_;
  UnitOfWork work_{*this};
  TransactionEngine transactions_{database_};
  WorkTransaction transaction_{transactions_, work_};
  Savepoint savepoint_{transactions_, work_};
  Look look_{transactions_};
  AuditLog audit_{*this};
  CarriedHistory carriedHistory_{*this};
  StepQueue steps_{*this};
  TenantRegister tenants_{*this};
  UnitRegister units_{*this};
};

}  // namespace qorhost::sqlite

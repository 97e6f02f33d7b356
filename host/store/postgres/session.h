// A session on a PostgreSQL server.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/dialect/translator.h"
#include "host/store/patience.h"
#include "host/store/postgres/audit_log.h"
#include "host/store/postgres/carried_history.h"
#include "host/store/postgres/cells.h"
#include "host/store/postgres/connection.h"
#include "host/store/postgres/row_inserts.h"
#include "host/store/postgres/step_queue.h"
#include "host/store/postgres/tenant_register.h"
#include "host/store/postgres/transaction.h"
#include "host/store/postgres/unit_of_work.h"
#include "host/store/postgres/unit_register.h"
#include "host/store/sql_session.h"
#include "host/store/time_stamp.h"
#include "host/store/write_buffer.h"

namespace qorhost::postgres {

/// Each statement of the dialect is parsed and prepared once per shape, each of the engine's own
/// texts once. A write outside of a unit of work and of a transaction is one of its own, alone on
/// the store. Inside one the first rows that are added to a table are written at once; for those
/// behind them identities are reserved, in blocks that grow, and they are held, and written before
/// anything else runs.
class Session final : public SqlSession {
 public:
  /// The patience is the store's, and lives longer.
  Session(Connection& connection, const Patience& patience, Clock clock);

  [[nodiscard]] QueryResult Select(std::string_view sql) override;
  [[nodiscard]] qorcred::Value Scalar(std::string_view sql) override;
  ChangeResult Change(std::string_view sql, std::optional<dialect::StatementKind> kind) override;
  ChangeResult UpdateVersion(std::string_view sql, const RowVersion& version) override;
  std::int64_t DeleteRow(std::string_view table, std::int32_t rid) override;
  std::int32_t AddRow(std::string_view table, std::span<const Field> fields) override;
  std::vector<std::int32_t> AddRows(std::string_view table,
                                    std::span<const std::string_view> columns,
                                    std::span<const RowCells> rows) override;

  [[nodiscard]] WorkTransaction& transaction() noexcept override { return transaction_; }
  [[nodiscard]] UnitOfWork& work() noexcept override { return work_; }
  [[nodiscard]] Savepoint& savepoint() noexcept override { return savepoint_; }
  [[nodiscard]] Look& look() noexcept override { return look_; }
  [[nodiscard]] bool inTransaction() const noexcept override { return connection_.inTransaction(); }

  [[nodiscard]] AuditLog& audit() noexcept override { return audit_; }
  [[nodiscard]] CarriedHistory& carriedHistory() noexcept override { return carriedHistory_; }
  [[nodiscard]] StepQueue& steps() noexcept override { return steps_; }
  [[nodiscard]] TenantRegister& tenants() noexcept override { return tenants_; }
  [[nodiscard]] UnitRegister& units() noexcept override { return units_; }

  /// Runs what may write, as a part of the open unit of work, which is void when it fails.
  template <typename Write>
  auto Writing(Write&& write) {
    work_.BeforeWrite();
    if (!work_.open() && !inTransaction()) {
      AloneOnStore alone(connection_, patience_);
      auto result = write();
      alone.Keep();
      return result;
    }
    try {
      return write();
    } catch (...) {
      asked_.clear();  // what was learnt may be undone with the part that has failed
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
  /// Drops what is held, and what is known of identities and link codes.
  void DropHeld() noexcept;
  /// Whether nobody else can write until an end that this session is told of.
  [[nodiscard]] bool IsAlone() const noexcept;

  /// Runs a text of this engine's own, of which there are few: it is prepared once. What is held is
  /// written before.
  Result Own(std::string_view sql, const SentValues& values = {}, const TakeRow& take = nullptr);
  /// The same for a text whose answer nobody waits for: it goes with what runs next.
  void OwnLater(std::string_view sql, const SentValues& values);
  /// The same for a text that goes with others.
  [[nodiscard]] Step OwnStep(std::string_view sql, const SentValues& values);
  /// A text that is asked as soon as the right to write is taken goes with that: Own() has its
  /// answer then, once.
  void AskWithTheRight(const std::string& sql, const SentValues& values);
  /// The steps of such texts, and their answers.
  [[nodiscard]] std::vector<Step> StepsWithTheRight();
  void KeepAnswers(std::span<Result> answers);
  /// The same for a text that ends with the condition that names a row of a table by its identity:
  /// the row is looked for in the operation's unit first, and only then in all.
  Result OwnOfRow(const dialect::Table& table, const std::string& sql, const SentValues& values);

  [[nodiscard]] Connection& connection() const noexcept { return connection_; }
  [[nodiscard]] const Patience& patience() const noexcept { return patience_; }
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
    PreparedText text;
    PreparedText inUnit;         // see Shape::sqlInUnit
    std::size_t latestRows = 0;  // of the last SELECT
  };
  /// A text of the engine's own that is asked before its answer is needed.
  struct Asked {
    std::string sql;
    SentValues values;
    Result answer{nullptr};
  };
  /// A translated statement with its values.
  struct Bound {
    Prepared* prepared = nullptr;
    SentValues values;
  };

  [[nodiscard]] Bound Bind(std::string_view sql);
  [[nodiscard]] Bound Bind(const dialect::Translation& translation);
  [[nodiscard]] std::optional<std::int32_t> Held(
      const std::shared_ptr<const dialect::AddedRow>& form, std::span<const qorcred::Value> values);
  void NoteAdded(const dialect::AddedRow& form, std::span<const qorcred::Value> values);
  void Forget(bool identitiesToo);
  PreparedText& OwnText(std::string_view sql);
  Result RunOwn(std::string_view sql, const SentValues& values, const TakeRow& take);
  Prepared& PreparedFor(const std::shared_ptr<const dialect::Shape>& shape);
  Result Run(PreparedText& text, const SentValues& values, const TakeRow& take, const Watch& watch);
  Result Run(Bound& bound, const TakeRow& take);
  ChangeResult RunChange(Bound& bound);
  void AskWithTheRight(const RowVersion& version);
  [[nodiscard]] Watch OwnWatch() const;
  [[nodiscard]] std::optional<std::pair<std::string, SentValues>> InUnit(
      const dialect::Table& table, const std::string& sql, const SentValues& values) const;
  [[nodiscard]] bool IsVersion(const RowVersion& version, std::string_view changedTable);
  void RequireUsable();

  Connection& connection_;
  const Patience& patience_;
  TimeStamp timeStamp_;
  dialect::Translator translator_;
  std::unordered_map<const dialect::Shape*, Prepared> prepared_;
  std::unordered_map<std::string, PreparedText, TextHash, std::equal_to<>> own_;  // by text
  RowInserts rowInserts_;
  WriteBuffer buffer_;
  std::map<const dialect::Table*, std::int64_t> added_;  // rows, one after the other
  std::vector<Asked> asked_;                             // with the right to write
  UnitOfWork work_{*this};
  TransactionEngine transactions_{connection_, patience_};
  WorkTransaction transaction_{transactions_, work_};
  Savepoint savepoint_{transactions_, work_};
  Look look_{transactions_};
  AuditLog audit_{*this};
  CarriedHistory carriedHistory_{*this};
  StepQueue steps_{*this};
  TenantRegister tenants_{*this};
  UnitRegister units_{*this};
};

}  // namespace qorhost::postgres

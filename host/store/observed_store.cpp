#include "host/store/observed_store.h"

#include <fmt/format.h>

#include <string>
#include <utility>

namespace qorhost {

namespace {

class ObservedSession final : public SqlSession {
  /// Runs the statement and tells what came of it.
  template <typename Statement, typename Counting>
  auto Told(std::string_view text, Statement&& statement, Counting&& rowsOf) {
    try {
      auto result = statement();
      observer_(text, rowsOf(result), nullptr);
      return result;
    } catch (const std::exception& failure) {
      observer_(text, 0, &failure);
      throw;
    }
  }

 public:
  ObservedSession(std::unique_ptr<SqlSession> inner, const StatementObserver& observer)
      : inner_(std::move(inner)), observer_(observer) {}

  QueryResult Select(std::string_view sql) override {
    return Told(
        sql, [&] { return inner_->Select(sql); },
        [](const QueryResult& result) { return static_cast<std::int64_t>(result.rowCount); });
  }
  qorcred::Value Scalar(std::string_view sql) override {
    return Told(
        sql, [&] { return inner_->Scalar(sql); },
        [](const qorcred::Value& value) {
          return value.Is(qorcred::ValueType::kEmpty) ? std::int64_t{0} : std::int64_t{1};
        });
  }
  ChangeResult Change(std::string_view sql, std::optional<dialect::StatementKind> kind) override {
    return Told(
        sql, [&] { return inner_->Change(sql, kind); },
        [](const ChangeResult& result) { return result.rows; });
  }
  ChangeResult UpdateVersion(std::string_view sql, const RowVersion& version) override {
    return Told(
        sql, [&] { return inner_->UpdateVersion(sql, version); },
        [](const ChangeResult& result) { return result.rows; });
  }
  std::int64_t DeleteRow(std::string_view table, std::int32_t rid) override {
    return Told(
        fmt::format("DELETE FROM {} WHERE RID={}", table, rid),
        [&] { return inner_->DeleteRow(table, rid); }, [](std::int64_t rows) { return rows; });
  }
  std::int32_t AddRow(std::string_view table, std::span<const Field> fields) override {
    std::string columns;
    for (const Field& field : fields) {
      columns += columns.empty() ? "" : ",";
      columns += field.column;
    }
    return Told(
        fmt::format("INSERT INTO {}({})", table, columns),
        [&] { return inner_->AddRow(table, fields); },
        [](std::int32_t) { return std::int64_t{1}; });
  }

  std::vector<std::int32_t> AddRows(std::string_view table,
                                    std::span<const std::string_view> columns,
                                    std::span<const RowCells> rows) override {
    return Told(
        fmt::format("INSERT INTO {}({})", table, fmt::join(columns, ",")),
        [&] { return inner_->AddRows(table, columns, rows); },
        [](const auto& added) { return static_cast<std::int64_t>(added.size()); });
  }

  Transaction& transaction() noexcept override { return inner_->transaction(); }
  UnitOfWork& work() noexcept override { return inner_->work(); }
  Transaction& savepoint() noexcept override { return inner_->savepoint(); }
  Transaction& look() noexcept override { return inner_->look(); }
  bool inTransaction() const noexcept override { return inner_->inTransaction(); }
  AuditLog& audit() noexcept override { return inner_->audit(); }
  CarriedHistory& carriedHistory() noexcept override { return inner_->carriedHistory(); }
  StepQueue& steps() noexcept override { return inner_->steps(); }
  TenantRegister& tenants() noexcept override { return inner_->tenants(); }
  UnitRegister& units() noexcept override { return inner_->units(); }

 private:
  std::unique_ptr<SqlSession> inner_;
  const StatementObserver& observer_;  // the store's, which outlives its sessions
};

class ObservedStore final : public Store {
 public:
  ObservedStore(std::unique_ptr<Store> inner, StatementObserver observer)
      : inner_(std::move(inner)), observer_(std::move(observer)) {}

  std::unique_ptr<SqlSession> StartSession(Clock clock) override {
    return std::make_unique<ObservedSession>(inner_->StartSession(std::move(clock)), observer_);
  }
  void SetPatience(Patience patience) override { inner_->SetPatience(std::move(patience)); }
  void CopyInto(const std::filesystem::path& emptyFile) override { inner_->CopyInto(emptyFile); }
  [[nodiscard]] std::vector<std::string> Damages() override { return inner_->Damages(); }
  void GatherInFile() override { inner_->GatherInFile(); }
  const std::string& name() const noexcept override { return inner_->name(); }
  bool readOnly() const noexcept override { return inner_->readOnly(); }
  int busyStatements() const noexcept override { return inner_->busyStatements(); }

 private:
  std::unique_ptr<Store> inner_;
  StatementObserver observer_;
};

}  // namespace

std::unique_ptr<Store> Observed(std::unique_ptr<Store> store, StatementObserver observer) {
  return std::make_unique<ObservedStore>(std::move(store), std::move(observer));
}

}  // namespace qorhost

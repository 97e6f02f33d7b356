// A store in a SQLite database.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/store/sqlite/database.h"
#include "host/store/store.h"

namespace qorhost::sqlite {

class Store final : public qorhost::Store {
 public:
  /// Takes a database that schema.h has opened.
  explicit Store(Database database);

  [[nodiscard]] std::unique_ptr<SqlSession> StartSession(Clock clock) override;
  void SetPatience(Patience patience) override;
  void GatherInFile() override;
  void CopyInto(const std::filesystem::path& emptyFile) override;
  [[nodiscard]] std::vector<std::string> Damages() override;
  [[nodiscard]] const std::string& name() const noexcept override;
  [[nodiscard]] bool readOnly() const noexcept override;
  [[nodiscard]] int busyStatements() const noexcept override;

  [[nodiscard]] Database& database() noexcept { return database_; }

 private:
  Database database_;
};

/// The database of a store, for tests and measurements that look past the contract. The store must
/// be one of this engine.
[[nodiscard]] Database& DatabaseOf(qorhost::Store& store);

}  // namespace qorhost::sqlite

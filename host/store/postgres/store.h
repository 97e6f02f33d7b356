// A store on a PostgreSQL server.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/store/postgres/connection.h"
#include "host/store/store.h"

namespace qorhost::postgres {

class Store final : public qorhost::Store {
 public:
  /// Takes a connection that schema.h has opened.
  Store(Connection connection, Patience patience, bool readOnly);

  [[nodiscard]] std::unique_ptr<SqlSession> StartSession(Clock clock) override;
  void SetPatience(Patience patience) override;
  /// A server's store is no file: raises StoreError.
  void GatherInFile() override;
  /// Not yet: raises StoreError.
  void CopyInto(const std::filesystem::path& emptyFile) override;
  /// Its pages are looked after by the server: identities that are there twice, which no server
  /// that has the rows of units in several places keeps out.
  [[nodiscard]] std::vector<std::string> Damages() override;
  [[nodiscard]] const std::string& name() const noexcept override;
  [[nodiscard]] bool readOnly() const noexcept override { return readOnly_; }
  /// Statements end before their calls do.
  [[nodiscard]] int busyStatements() const noexcept override { return 0; }

  [[nodiscard]] Connection& connection() noexcept { return connection_; }

 private:
  Connection connection_;
  Patience patience_;
  bool readOnly_;
};

}  // namespace qorhost::postgres

// A database in memory with the catalog's tables, filled from seed.sql, on which statements of the
// dialect run.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string_view>

#include "host/store/sqlite/printer.h"
#include "tests/host/dialect/case_database.h"

namespace qorhost::dialect::test {

/// Prints for the engine on which the tests run.
class Translator : public dialect::Translator {
 public:
  Translator() : dialect::Translator(&sqlite::Print) {}
};

class TestDatabase final : public CaseDatabase {
 public:
  /// Raises std::runtime_error when the seed does not run.
  TestDatabase();

  Outcome Run(std::string_view sql) override;

  [[nodiscard]] Translator& translator() override { return translator_; }
  [[nodiscard]] sqlite3* handle() const { return database_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };
  using Handle = std::unique_ptr<sqlite3, Close>;
  struct Anew {};

  explicit TestDatabase(Anew);
  [[nodiscard]] static Handle OpenEmpty();

  Handle database_;
  Translator translator_;
};

}  // namespace qorhost::dialect::test

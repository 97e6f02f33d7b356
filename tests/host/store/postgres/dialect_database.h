// A database on the tests' server with the catalog's tables, filled from seed.sql, on which
// statements of the dialect run. What they change is gone with the object.
#pragma once

#include "host/store/postgres/connection.h"
#include "host/store/postgres/printer.h"
#include "tests/host/dialect/case_database.h"

namespace qorhost::postgres::test {

class DialectDatabase final : public dialect::test::CaseDatabase {
 public:
  DialectDatabase();
  ~DialectDatabase() override;
  DialectDatabase(const DialectDatabase&) = delete;
  DialectDatabase& operator=(const DialectDatabase&) = delete;

  dialect::test::Outcome Run(std::string_view sql) override;
  [[nodiscard]] dialect::Translator& translator() override { return translator_; }
  [[nodiscard]] Connection& connection() { return connection_; }

 private:
  Connection& connection_;  // one for all: the tables are made once
  dialect::Translator translator_{&Print};
};

}  // namespace qorhost::postgres::test

// A database in memory with the catalog's tables, filled from seed.sql, on which statements of the
// dialect run.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/translator.h"
#include "host/store/sqlite/printer.h"

namespace qorhost::dialect::test {

/// The clock of the tests, in the canonical text form.
inline constexpr std::string_view kNow = "2026-01-31 14:05:09";

/// Prints for the engine on which the tests run.
class Translator : public dialect::Translator {
 public:
  Translator() : dialect::Translator(&sqlite::Print) {}
};

/// The rows that a SELECT gave, each cell printed: Null, a number, or a text in single quotes; and
/// the number of rows that another statement changed.
struct Outcome {
  std::vector<std::vector<std::string>> rows;
  int changes = 0;
};

class TestDatabase {
 public:
  /// Raises std::runtime_error when the seed does not run.
  TestDatabase();

  /// Translates and runs a statement. Raises SqlError when the dialect refuses it and
  /// std::runtime_error with the engine's text when it fails there.
  Outcome Run(std::string_view sql);

  [[nodiscard]] Translator& translator() { return translator_; }
  [[nodiscard]] sqlite3* handle() const { return database_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };

  std::unique_ptr<sqlite3, Close> database_;
  Translator translator_;
};

/// A bound value printed like a cell.
[[nodiscard]] std::string Printed(const qorcred::Value& value);

/// The lines of a file of the tests' folder.
[[nodiscard]] std::vector<std::string> LinesOf(const std::string& file);

}  // namespace qorhost::dialect::test

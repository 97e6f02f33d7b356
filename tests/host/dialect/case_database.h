// What the dialect's cases run on, whatever the engine.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/translator.h"

namespace qorhost::dialect::test {

/// The clock of the tests, in the canonical text form.
inline constexpr std::string_view kNow = "2026-01-31 14:05:09";

/// The rows that a SELECT gave, each cell printed: Null, a number, or a text in single quotes; and
/// the number of rows that another statement changed.
struct Outcome {
  std::vector<std::vector<std::string>> rows;
  int changes = 0;
};

/// The catalog's tables, filled from seed.sql.
class CaseDatabase {
 public:
  virtual ~CaseDatabase() = default;
  CaseDatabase(const CaseDatabase&) = delete;
  CaseDatabase& operator=(const CaseDatabase&) = delete;

  /// Translates and runs a statement. Raises SqlError when the dialect refuses it and
  /// std::runtime_error with the engine's text when it fails there.
  virtual Outcome Run(std::string_view sql) = 0;

  /// Prints for the engine.
  [[nodiscard]] virtual dialect::Translator& translator() = 0;

 protected:
  CaseDatabase() = default;
};

/// Runs the statements of seed.sql. Raises std::runtime_error for one that adds no row.
void RunSeed(CaseDatabase& database);

/// A bound value printed like a cell.
[[nodiscard]] std::string Printed(const qorcred::Value& value);

/// The lines of a file of the tests' folder.
[[nodiscard]] std::vector<std::string> LinesOf(const std::string& file);

}  // namespace qorhost::dialect::test

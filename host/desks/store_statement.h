// Statements of the desktop SQL dialect, run on a store by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/desks/session.h"
#include "host/dialect/script.h"
#include "host/files/table.h"

namespace qorhost {

struct ChangedRows {
  std::int64_t rows = 0;
  std::int64_t newRid = 0;  ///< identity of the row that an INSERT added last
};

/// The rows of a SELECT, or what another statement has changed.
using StatementResult = std::variant<Table, ChangedRows>;

/// Looked at before a store is opened for it. What the dialect does not know, and what a table does
/// not have, is a RefusedError with line and column; a failure of the store is a FailureError. Of a
/// script both name the statement by its number and line.
class StoreStatements {
 public:
  /// One statement.
  explicit StoreStatements(std::string text);
  /// All that stand in a script, in their order.
  [[nodiscard]] static StoreStatements OfScript(std::string_view script);

  [[nodiscard]] std::size_t count() const { return statements_.size(); }
  /// Whether they only read.
  [[nodiscard]] bool reads() const { return reads_; }

  /// Runs them as one unit of work, each seeing what those before it have done. When one fails
  /// nothing is stored.
  [[nodiscard]] std::vector<StatementResult> Run(DeskSession& session) const;

 private:
  StoreStatements() = default;

  void LookAt();
  template <typename Work>
  auto Named(std::size_t at, Work&& work) const;
  [[nodiscard]] std::vector<StatementResult> RunAll(DeskSession& session) const;
  [[nodiscard]] StatementResult RunOne(DeskSession& session, std::size_t at) const;
  [[nodiscard]] std::string Description() const;

  std::vector<dialect::ScriptStatement> statements_;
  std::vector<bool> selects_;
  bool reads_ = true;
  bool isScript_ = false;
};

}  // namespace qorhost

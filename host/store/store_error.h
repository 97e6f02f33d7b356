// Failures of the store, as people read them.
#pragma once

#include <stdexcept>
#include <string>

struct sqlite3;

namespace qorhost {

/// A failure of the database underneath. what() says what went wrong and what to do about it.
class StoreError : public std::runtime_error {
 public:
  /// `code` is SQLite's extended result code, 0 when the store itself refuses.
  explicit StoreError(const std::string& message, int code = 0);

  [[nodiscard]] int code() const noexcept { return code_; }

 private:
  int code_;
};

/// What a person can do about a failure with this result code (extended or primary); empty when
/// SQLite's own text says it all.
[[nodiscard]] std::string AdviceFor(int code);

/// The last failure of `database` as an error: what was being done, SQLite's text and the advice.
[[nodiscard]] StoreError LastError(sqlite3* database, const std::string& doing);

}  // namespace qorhost

// Statements that go to a server together, and its answers: the way there and back is what a short
// statement costs most.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/postgres/result.h"
#include "host/store/postgres/waiting.h"

struct pg_conn;

namespace qorhost::postgres {

/// A value that is sent with a statement: a text of its type, or Null.
using Sent = std::optional<std::string_view>;

/// The values of a statement as libpq takes them.
class SentTexts {
 public:
  SentTexts() = default;
  /// Raises StoreError for a text that holds NUL.
  explicit SentTexts(std::span<const Sent> values);

  [[nodiscard]] int count() const { return static_cast<int>(texts_.size()); }
  /// Valid until the next call.
  [[nodiscard]] const char* const* pointers();

 private:
  std::vector<std::optional<std::string>> texts_;
  std::vector<const char*> pointers_;
};

/// A statement in the server's words, which the server reads once for each connection.
struct PreparedText {
  std::string sql;
  std::string name;             ///< as the server knows it; empty before it has read it
  std::int64_t connection = 0;  ///< in which of the connections that were made one after the other
};

/// One of the statements, and what is answered to it.
struct Step {
  PreparedText* prepared = nullptr;  ///< lives longer than the step; null: the text as it stands
  const char* text = "";
  SentTexts values;  ///< of a prepared one
  TakeRow takeRow;   ///< is handed the rows one by one, so that the answer has none
  Result answer{nullptr};
};

/// The names that a server has statements by.
struct StatementNames {
  std::int64_t connection = 0;  ///< see PreparedText
  std::int64_t given = 0;
};

/// Sends all the steps at once and reads the answers; what comes behind one that is refused is not
/// done. Raises StoreError when they cannot be sent. `answered`, which may be empty, is called
/// behind the answers to each step and what the server had to say beside them.
[[nodiscard]] Failure RunTogether(pg_conn* handle, StatementNames& names, std::span<Step> steps,
                                  const Watch& watch, const std::function<void()>& answered);

}  // namespace qorhost::postgres

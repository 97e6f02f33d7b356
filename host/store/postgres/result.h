// What a PostgreSQL server answers to a statement.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

struct pg_result;

namespace qorhost::postgres {

/// The rows or the effect of a statement. Rows and columns count from 0.
class Result {
 public:
  explicit Result(pg_result* result) : result_(result) {}

  [[nodiscard]] int rows() const noexcept;
  [[nodiscard]] int columns() const noexcept;
  [[nodiscard]] std::string_view NameOf(int column) const;
  /// The number by which the server knows a column's type.
  [[nodiscard]] std::uint32_t TypeOf(int column) const;
  [[nodiscard]] bool IsNull(int row, int column) const;
  /// "" for Null; valid as long as the result.
  [[nodiscard]] std::string_view Text(int row, int column) const;
  /// Nothing for Null.
  [[nodiscard]] std::optional<std::string_view> Cell(int row, int column) const;
  /// The whole number that the text is; 0 for Null.
  [[nodiscard]] std::int64_t Number(int row, int column) const;
  /// How many rows an INSERT, UPDATE or DELETE added, changed or deleted; the rows of a SELECT.
  [[nodiscard]] std::int64_t affected() const;

  /// What the server says that it has done: "COMMIT", "INSERT 0 1".
  [[nodiscard]] std::string_view done() const;
  /// Whether the statement has come to its end.
  [[nodiscard]] bool isDone() const noexcept;

  [[nodiscard]] const pg_result* get() const noexcept { return result_.get(); }

 private:
  struct Clear {
    void operator()(pg_result* result) const noexcept;
  };
  std::unique_ptr<pg_result, Clear> result_;
};

/// Is handed each row of a SELECT, which is the only one of its result.
using TakeRow = std::function<void(const Result&)>;

}  // namespace qorhost::postgres

// A connection to a PostgreSQL server and the results of its statements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

struct pg_conn;
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
  /// The whole number that the text is; 0 for Null.
  [[nodiscard]] std::int64_t Number(int row, int column) const;
  /// How many rows an INSERT, UPDATE or DELETE added, changed or deleted; the rows of a SELECT.
  [[nodiscard]] std::int64_t affected() const;

  [[nodiscard]] const pg_result* get() const noexcept { return result_.get(); }

 private:
  struct Clear {
    void operator()(pg_result* result) const noexcept;
  };
  std::unique_ptr<pg_result, Clear> result_;
};

/// A value that is sent with a statement: a text of its type, or Null.
using Sent = std::optional<std::string_view>;

/// Used by one thread. Everything raises StoreError: with the server's own words where it refuses a
/// statement, and StoreFault::kNoServer where it cannot be reached any more.
class Connection {
 public:
  /// Connects to the server and database of `name`: a URI ("postgresql://host/database") or
  /// "service=name" and the like, as libpq reads it, which also asks its own files and variables
  /// for what is left out (host, user, password, certificates). Raises StoreError when the server
  /// cannot be reached within 10 seconds (or connect_timeout), refuses, is older than 15 or keeps
  /// texts in another encoding than UTF-8, and when the name holds a password: every other program
  /// of the machine can read the arguments of this one.
  explicit Connection(const std::string& name);
  ~Connection();
  Connection(Connection&&) noexcept = default;
  Connection& operator=(Connection&&) noexcept = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Runs one statement with the values of its parameters.
  Result Run(const std::string& sql, std::span<const Sent> values = {});
  /// Runs statements without parameters one after the other.
  void RunAll(const std::string& sql);

  /// Whether a transaction is open, usable or not.
  [[nodiscard]] bool inTransaction() const noexcept;
  /// How the store is called in messages: the name without what follows a "?".
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  [[nodiscard]] pg_conn* handle() const noexcept { return handle_.get(); }

 private:
  struct Finish {
    void operator()(pg_conn* handle) const noexcept;
  };
  void RequireServer();

  std::string name_;
  std::unique_ptr<pg_conn, Finish> handle_;
};

/// Whether a name is that of a store on a server, and not of a file: it begins with "postgresql:"
/// or "postgres:", or is "service=" with a word.
[[nodiscard]] bool IsServerName(std::string_view name);

}  // namespace qorhost::postgres

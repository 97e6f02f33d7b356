// The rows that a unit of work changes, written down while SQLite changes them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/store/row_change.h"
#include "host/store/sqlite/database.h"

namespace qorhost::sqlite {

/// Watches a database from its beginning to its end; one at a time. What follows from other rows is
/// left out: the queue of steps, counters, copies of tenants, and the audit itself.
class ChangeLog {
 public:
  explicit ChangeLog(Database& database);
  ~ChangeLog();
  ChangeLog(const ChangeLog&) = delete;
  ChangeLog& operator=(const ChangeLog&) = delete;

  /// From here on changes are kept, from none.
  void Start();
  void Stop() noexcept;

  /// A place to go back to, when what came behind it is undone.
  struct Place {
    std::int64_t touched = 0;
    std::size_t changes = 0;
    std::map<std::string, std::size_t, std::less<>> runs;
    std::vector<std::int64_t> runEnds;
  };
  [[nodiscard]] Place Here() const;
  void GoBackTo(const Place& place);

  [[nodiscard]] const std::vector<RowChange>& changes() const { return changes_; }
  /// Whether any row of the store was written, also one that is left out.
  [[nodiscard]] bool anything() const noexcept { return touched_ > 0; }
  /// Raises when a change could not be kept: memory is out.
  void RequireComplete() const;

 private:
  struct Hook;
  friend struct Hook;

  void OnInsert(const char* table, std::int64_t rid);
  void OnUpdate(const char* table, std::int64_t rid);
  void OnDelete(const char* table, std::int64_t rid);
  void ReadColumns();

  Database& database_;
  bool on_ = false;
  bool incomplete_ = false;
  std::int64_t touched_ = 0;
  std::vector<RowChange> changes_;
  std::map<std::string, std::size_t, std::less<>> runs_;  // the latest run of new rows, by table
  std::map<std::string, std::vector<std::string>, std::less<>> columns_;  // of the tables kept
};

}  // namespace qorhost::sqlite

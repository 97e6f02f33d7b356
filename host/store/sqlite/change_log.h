// The rows that a unit of work changes, written down while SQLite changes them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/row_change.h"
#include "host/store/sqlite/database.h"
#include "host/store/sqlite/kept_counts.h"

namespace qorhost::sqlite {

/// Watches the audited tables of a database from its beginning to its end; one at a time.
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
    struct Run {
      std::optional<std::size_t> change;
      std::int64_t end = 0;
    };
    std::int64_t touched = 0;
    std::int64_t steps = 0;
    std::size_t changes = 0;
    std::vector<Run> runs;  // in the order of the tables
    KeptCounts::Place counts;
  };
  /// Puts it into `place`, whose room is used again.
  void NoteHere(Place& place) const;
  void GoBackTo(const Place& place);

  [[nodiscard]] const std::vector<RowChange>& changes() const { return changes_; }
  /// The counts of units, of which those that are followed are kept until the end.
  [[nodiscard]] KeptCounts& counts() noexcept { return counts_; }
  /// How many rows of the store were written, those that are left out, too.
  [[nodiscard]] std::int64_t touched() const noexcept { return touched_; }
  /// How many of the programming steps that it has queued still wait; also of the work that has
  /// ended.
  [[nodiscard]] std::int64_t steps() const noexcept { return steps_; }
  /// Raises when a change could not be kept: memory is out.
  void RequireComplete() const;

 private:
  struct Hook;
  friend struct Hook;

  struct WatchedTable {
    std::string name;
    std::vector<std::string> columns;
    std::optional<std::size_t> run;  // the latest run of new rows, in changes_
  };

  void ReadTables();
  [[nodiscard]] WatchedTable* Find(std::string_view name);
  void CountStep(int operation, std::string_view table, std::int64_t rid) noexcept;
  void OnInsert(WatchedTable& table, std::int64_t rid);
  void OnUpdate(const WatchedTable& table, std::int64_t rid);
  void OnDelete(const WatchedTable& table, std::int64_t rid);

  Database& database_;
  bool on_ = false;
  bool incomplete_ = false;
  std::int64_t touched_ = 0;
  std::int64_t steps_ = 0;
  std::int64_t firstStep_ = 0;  // its RID; 0 before there is one
  std::vector<RowChange> changes_;
  std::vector<WatchedTable> tables_;
  KeptCounts counts_;
  std::size_t latest_ = 0;  // the table that was found last: rows of one come one after the other
};

}  // namespace qorhost::sqlite

// The rows that a unit of work changes, as an engine tells of them one by one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/row_change.h"

namespace qorhost {

class ChangeList {
 public:
  /// An audited table with its columns.
  struct Watched {
    std::string name;
    std::vector<std::string> columns;
    std::optional<std::size_t> run;  ///< the latest run of new rows, among the changes
  };

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
  };

  /// Has no tables yet.
  [[nodiscard]] bool empty() const noexcept { return tables_.empty(); }
  /// Tables are watched from the beginning to the end; IsAudited() says which.
  void Watch(std::string table, std::vector<std::string> columns);
  /// Null for a table that is not watched.
  [[nodiscard]] Watched* Find(std::string_view table);

  /// From no changes.
  void Start();
  /// Puts it into `place`, whose room is used again.
  void NoteHere(Place& place) const;
  void GoBackTo(const Place& place);

  /// A row of the store was written, also of a table that is not watched.
  void Touch() noexcept { ++touched_; }
  /// A programming step was queued, or taken back.
  void CountStep(bool isNew, std::int64_t rid) noexcept;
  /// Whether a new row goes on the latest run of its table, which has it then: of such rows the
  /// identity is kept alone.
  [[nodiscard]] bool JoinsRun(const Watched& table, std::int64_t rid);
  void AddInserted(Watched& table, std::int64_t rid, std::vector<StoredCell> row);
  /// `before` and `after` hold the cells that differ; without any it is no change.
  void AddUpdated(const Watched& table, std::int64_t rid, std::vector<StoredCell> before,
                  std::vector<StoredCell> after);
  void AddDeleted(const Watched& table, std::int64_t rid, std::vector<StoredCell> row);
  /// Brings those from a place among the changes on into the order of their identities; those of
  /// the same identity stay as they came.
  void OrderFrom(std::size_t first);

  [[nodiscard]] const std::vector<RowChange>& changes() const { return changes_; }
  /// How many rows of the store were written, those that are left out, too.
  [[nodiscard]] std::int64_t touched() const noexcept { return touched_; }
  /// How many of the programming steps that it has queued still wait; also of the work that has
  /// ended.
  [[nodiscard]] std::int64_t steps() const noexcept { return steps_; }

 private:
  std::int64_t touched_ = 0;
  std::int64_t steps_ = 0;
  std::int64_t firstStep_ = 0;  // its RID; 0 before there is one
  std::vector<RowChange> changes_;
  std::vector<Watched> tables_;
  std::size_t latest_ = 0;  // the table that was found last: rows of one come one after the other
};

}  // namespace qorhost

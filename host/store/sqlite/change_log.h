// The rows that a unit of work changes, written down while SQLite changes them.
#pragma once

#include <cstdint>
#include <vector>

#include "host/store/change_list.h"
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
    ChangeList::Place list;
    KeptCounts::Place counts;
  };
  /// Puts it into `place`, whose room is used again.
  void NoteHere(Place& place) const;
  void GoBackTo(const Place& place);

  [[nodiscard]] const std::vector<RowChange>& changes() const { return list_.changes(); }
  /// The counts of units, of which those that are followed are kept until the end.
  [[nodiscard]] KeptCounts& counts() noexcept { return counts_; }
  /// How many rows of the store were written, those that are left out, too.
  [[nodiscard]] std::int64_t touched() const noexcept { return list_.touched(); }
  /// How many of the programming steps that it has queued still wait; also of the work that has
  /// ended.
  [[nodiscard]] std::int64_t steps() const noexcept { return list_.steps(); }
  /// Raises when a change could not be kept: memory is out.
  void RequireComplete() const;

 private:
  struct Hook;
  friend struct Hook;

  using Watched = ChangeList::Watched;

  void ReadTables();
  void OnInsert(Watched& table, std::int64_t rid);
  void OnUpdate(const Watched& table, std::int64_t rid);
  void OnDelete(const Watched& table, std::int64_t rid);

  Database& database_;
  bool on_ = false;
  bool incomplete_ = false;
  ChangeList list_;
  KeptCounts counts_;
};

}  // namespace qorhost::sqlite

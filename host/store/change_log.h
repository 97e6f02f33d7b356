// The rows that a unit of work changes, written down while they are changed.
#pragma once

#include <cstdint>
#include <vector>

#include "host/store/change_list.h"
#include "host/store/followed_units.h"
#include "host/store/row_change.h"

namespace qorhost {

/// An engine derives from it what is told of each row by SQLite or by the server. One at a time for
/// each connection.
class ChangeLog {
 public:
  virtual ~ChangeLog() = default;
  ChangeLog(const ChangeLog&) = delete;
  ChangeLog& operator=(const ChangeLog&) = delete;

  /// From here on changes are kept, from none. Raises StoreError.
  virtual void Start();
  void Stop() noexcept;

  /// A place to go back to, when what came behind it is undone.
  struct Place {
    ChangeList::Place list;
    FollowedUnits::Place units;
  };
  /// Puts it into `place`, whose room is used again.
  void NoteHere(Place& place) const;
  void GoBackTo(const Place& place);

  [[nodiscard]] const std::vector<RowChange>& changes() const { return list_.changes(); }
  /// How many rows of the store were written, those that are left out, too.
  [[nodiscard]] std::int64_t touched() const noexcept { return list_.touched(); }
  /// How many of the programming steps that it has queued still wait; also of the work that has
  /// ended.
  [[nodiscard]] std::int64_t steps() const noexcept { return list_.steps(); }
  /// Raises StoreError when a change could not be kept: memory is out, or what was told of it is
  /// not understood.
  void RequireComplete() const;

  /// Follows every change of the unit's rows from now on, which are so many. Raises StoreError.
  virtual void Follow(std::int32_t unitKey, const UnitCounts& now);
  /// What is kept of units until the end.
  [[nodiscard]] FollowedUnits& units() noexcept { return units_; }

 protected:
  ChangeLog() = default;

  [[nodiscard]] bool on() const noexcept { return on_; }
  [[nodiscard]] ChangeList& list() noexcept { return list_; }
  /// Why a change that was told is not written down.
  enum class Missed : std::uint8_t { kNone, kNoMemory, kNotUnderstood };
  void MissOne(Missed why) noexcept { missed_ = why; }

 private:
  ChangeList list_;
  FollowedUnits units_;
  bool on_ = false;
  Missed missed_ = Missed::kNone;
};

}  // namespace qorhost

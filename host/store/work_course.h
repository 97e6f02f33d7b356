// The course of a unit of work, which is the same on every engine.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "host/store/audit_log.h"
#include "host/store/change_log.h"
#include "host/store/unit_of_work.h"
#include "host/store/write_buffer.h"

namespace qorhost {

/// An engine derives from it how it takes the right to write, stores and undoes. Its destructor
/// calls Undo(), for by the time of this one's it has gone.
class WorkCourse : public UnitOfWork {
 public:
  void SignAs(Author author) final;

  void Begin(WorkOrder order) final;
  void Lock() final;
  bool Commit() final;
  [[nodiscard]] std::optional<UnitVersion> Committed(std::int32_t unitKey) const final;
  void OnlyTry() noexcept final { onlyTried_ = true; }
  [[nodiscard]] const std::vector<RowChange>& tried() const noexcept final { return tried_; }
  void Undo() noexcept final;
  void Void(VoidReason reason) noexcept final;

  [[nodiscard]] bool open() const noexcept final { return open_; }
  [[nodiscard]] std::int64_t written() const noexcept final;
  [[nodiscard]] std::int64_t stepsQueued() const noexcept final;
  [[nodiscard]] bool locked() const noexcept final { return locked_; }
  [[nodiscard]] VoidReason voided() const noexcept final { return void_; }

  // For the session, whose statements run in it.

  /// The only unit that the open work is about; nothing for several, for the whole store, and
  /// without a work.
  [[nodiscard]] std::optional<std::int32_t> unit() const {
    return open_ && order_.units.size() == 1 ? std::optional(order_.units.front()) : std::nullopt;
  }

  /// Before any statement: raises when the work is void.
  void RequireUsable();
  /// Before a statement that may write: takes the right to write for the work's first.
  void BeforeWrite();
  /// A statement that should have written has failed.
  void AfterFailedWrite() noexcept;
  /// Writes the rows that the session holds: before anything else runs.
  void WriteHeld();
  /// Drops them, with what is known of them: what they belong to is undone.
  virtual void DropHeld() noexcept { buffer_.Discard(); }

  /// Counts that are kept until the work's end; see UnitRegister.
  void KeepCounts(std::int32_t unitKey, const UnitCounts& now);
  /// What is kept of units until the work's end.
  [[nodiscard]] FollowedUnits& units() noexcept { return log_.units(); }

  /// Where the work stands, to go back to when what comes behind it is undone.
  void NoteHere(ChangeLog::Place& place) const { log_.NoteHere(place); }
  void GoBackTo(const ChangeLog::Place& place) { log_.GoBackTo(place); }
  /// The part that has failed was undone, so that the rest may go on.
  void Forgive() noexcept;

 protected:
  using Versions = std::map<std::int32_t, UnitVersion>;

  /// The clock and what is held are the session's, the log the engine's; all live longer than the
  /// calls of this.
  WorkCourse(TimeStamp& clock, WriteBuffer& buffer, ChangeLog& log)
      : clock_(clock), buffer_(buffer), log_(log) {}

  [[nodiscard]] const WorkOrder& order() const noexcept { return order_; }

 private:
  // What an engine does in its own way.

  /// Whether the engine holds a transaction open.
  [[nodiscard]] virtual bool isInTransaction() const noexcept = 0;
  /// Begins a transaction in which nobody else writes to the units of the order. Raises StoreError,
  /// having made the work void where the reason is another one than a failure. The version that the
  /// order's first unit has then, where the engine has learnt it.
  [[nodiscard]] virtual std::optional<UnitVersion> TakeRight() = 0;
  /// Adds the entry with the changes of the log to the audit, raises the versions of the order's
  /// units and commits; the versions as they are then. `previous` is the unit's last entry, 0 for
  /// none. Raises StoreError.
  virtual Versions Store(WorkEntry entry, std::int64_t previous) = 0;
  /// Ends the transaction with nothing stored, if there is one.
  virtual void GiveRightBack() noexcept = 0;

  void TakeRightToWrite();
  void ReleaseRightToWrite() noexcept;
  [[nodiscard]] WorkEntry EntryNow() const;

  TimeStamp& clock_;
  WriteBuffer& buffer_;
  ChangeLog& log_;
  Author author_;
  WorkOrder order_;
  bool open_ = false;
  bool locked_ = false;
  UnitVersion before_;  // of the order's first unit, read with the right to write
  bool onlyTried_ = false;
  std::vector<RowChange> tried_;
  VoidReason void_ = VoidReason::kNone;
  Versions committed_;
};

}  // namespace qorhost

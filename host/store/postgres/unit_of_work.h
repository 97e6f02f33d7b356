// A unit of work as one transaction on the server.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "host/store/postgres/change_log.h"
#include "host/store/unit_of_work.h"

namespace qorhost::postgres {

class Session;

/// The right to write is a unit's row, locked, or the table of all units. What the work has read
/// before that is compared by the version and never locked.
class UnitOfWork final : public qorhost::UnitOfWork {
 public:
  explicit UnitOfWork(Session& session);
  ~UnitOfWork() override;

  [[nodiscard]] UnitVersion VersionOf(std::int32_t unitKey) override;
  void SignAs(Author author) override;

  void Begin(WorkOrder order) override;
  void Lock() override;
  bool Commit() override;
  [[nodiscard]] std::optional<UnitVersion> Committed(std::int32_t unitKey) const override;
  void OnlyTry() noexcept override { onlyTried_ = true; }
  [[nodiscard]] const std::vector<RowChange>& tried() const noexcept override { return tried_; }
  void Undo() noexcept override;
  void Void(VoidReason reason) noexcept override;

  [[nodiscard]] bool open() const noexcept override { return open_; }
  [[nodiscard]] std::int64_t written() const noexcept override {
    return locked_ ? log_.touched() : 0;
  }
  [[nodiscard]] std::int64_t stepsQueued() const noexcept override { return log_.steps(); }
  [[nodiscard]] bool locked() const noexcept override { return locked_; }
  [[nodiscard]] VoidReason voided() const noexcept override { return void_; }

  // For the session, whose statements run in it.

  /// The only unit that the open work is about; nothing for the whole store, and without a work.
  [[nodiscard]] std::optional<std::int32_t> unit() const {
    return open_ && order_.units.size() == 1 ? std::optional(order_.units.front()) : std::nullopt;
  }

  /// Before any statement: raises when the work is void.
  void RequireUsable();
  /// Before a statement that may write: takes the right to write for the work's first.
  void BeforeWrite();
  /// A statement that should have written has failed.
  void AfterFailedWrite() noexcept;

  /// Counts that are kept until the work's end; see UnitRegister.
  void KeepCounts(std::int32_t unitKey, const UnitCounts& now);
  [[nodiscard]] const ChangeLog& log() const noexcept { return log_; }

  /// Where the work stands, to go back to when what comes behind it is undone.
  void NoteHere(ChangeLog::Place& place) const { log_.NoteHere(place); }
  void GoBackTo(const ChangeLog::Place& place) { log_.GoBackTo(place); }
  /// The part that has failed was undone, so that the rest may go on.
  void Forgive() noexcept;

 private:
  void TakeRightToWrite();
  void LockUnits();
  void StoreAll();
  void RaiseVersions(std::int64_t entry);
  void ReleaseRightToWrite() noexcept;

  Session& session_;
  ChangeLog log_;
  Author author_;
  WorkOrder order_;
  bool open_ = false;
  bool locked_ = false;
  UnitVersion before_;  // of the order's only unit, read with the right to write
  bool onlyTried_ = false;
  std::vector<RowChange> tried_;
  VoidReason void_ = VoidReason::kNone;
  std::map<std::int32_t, UnitVersion> committed_;
};

}  // namespace qorhost::postgres

// A unit of work as one transaction of SQLite.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/store/sqlite/change_log.h"
#include "host/store/unit_of_work.h"

namespace qorhost::sqlite {

class Session;

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
  [[nodiscard]] std::int64_t written() const noexcept override;
  [[nodiscard]] std::int64_t stepsQueued() const noexcept override;
  [[nodiscard]] bool locked() const noexcept override { return locked_; }
  [[nodiscard]] VoidReason voided() const noexcept override { return void_; }

  // For the session, whose statements run in it.

  /// Before any statement: raises when the work is void.
  void RequireUsable();
  /// Before a statement that may write: takes the right to write for the work's first.
  void BeforeWrite();
  /// A statement that should have written has failed.
  void AfterFailedWrite() noexcept;
  /// Writes the rows that the session holds: before anything else runs.
  void WriteHeld();
  /// Drops them with what else was undone.
  void DropHeld() noexcept;

  /// Counts that are kept until the work's end; see UnitRegister.
  void KeepCounts(std::int32_t unitKey, const UnitCounts& now);
  [[nodiscard]] KeptCounts& keptCounts() noexcept { return log_.counts(); }

  /// Where the work stands, to go back to when what comes behind it is undone.
  void NoteHere(ChangeLog::Place& place) const { log_.NoteHere(place); }
  void GoBackTo(const ChangeLog::Place& place) { log_.GoBackTo(place); }
  /// The part that has failed was undone, so that the rest may go on.
  void Forgive() noexcept;

 private:
  void RequireInPlace();
  void TakeRightToWrite();
  void StoreAll();
  void StoreEntry();
  void RaiseVersions(std::int64_t entry);
  void RaiseVersion(std::int32_t unitKey, std::int64_t entry);
  void ReleaseRightToWrite() noexcept;

  Session& session_;
  OftenRun begin_{"BEGIN IMMEDIATE"};
  OftenRun commit_{"COMMIT"};
  ChangeLog log_;
  Author author_;
  WorkOrder order_;
  bool open_ = false;
  bool locked_ = false;
  UnitVersion before_;  // of the order's first unit, read with the right to write
  bool onlyTried_ = false;
  std::vector<RowChange> tried_;
  VoidReason void_ = VoidReason::kNone;
  std::map<std::int32_t, UnitVersion> committed_;
};

}  // namespace qorhost::sqlite

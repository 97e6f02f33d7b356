// The transactions of a session, which are the same on every engine.
#pragma once

#include <cstdint>

#include "host/store/change_log.h"
#include "host/store/transaction.h"

namespace qorhost {

class WorkCourse;

/// What an engine does for them. Failures raise StoreError.
class TransactionEngine {
 public:
  virtual ~TransactionEngine() = default;
  TransactionEngine(const TransactionEngine&) = delete;
  TransactionEngine& operator=(const TransactionEngine&) = delete;

  /// Whether one is open, usable or not.
  [[nodiscard]] virtual bool isOpen() const noexcept = 0;

  /// Begins one in which nobody else writes from here on; leaves none behind where it raises.
  virtual void BeginAlone() = 0;
  virtual void CommitAlone() = 0;
  /// Begins, keeps and undoes what a connection's user holds open inside one.
  virtual void BeginInner() = 0;
  virtual void CommitInner() = 0;
  virtual void UndoInner() = 0;
  /// The same of a part of a unit of work.
  virtual void BeginPart() = 0;
  virtual void CommitPart() = 0;
  virtual void UndoPart() = 0;
  /// Begins one that only reads, and sees one state of the store.
  virtual void BeginLook() = 0;

  /// Undoes all that is open, and is done with what was lost. May raise; UndoWhatIsOpen() is
  /// silent.
  virtual void UndoAll() = 0;
  virtual void UndoWhatIsOpen() noexcept = 0;

 protected:
  TransactionEngine() = default;
};

/// The one that a connection's users may hold open. In a unit of work it is a part of that: undone
/// alone, and final with the whole. Engine and work live longer.
class WorkTransaction final : public Transaction {
 public:
  WorkTransaction(TransactionEngine& engine, WorkCourse& work) : engine_(engine), work_(work) {}
  /// Rolls back what is still open.
  ~WorkTransaction() override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return state_ == State::kOpen; }

  /// Raises when the engine gave up the open transaction by itself (a full disk, a server that has
  /// gone): until it is rolled back, a statement would be kept although those before it are lost.
  void CheckUsable() const;

 private:
  enum class State : std::uint8_t { kNone, kOpen, kCommitFailed };

  void Keep();
  void UndoOwn();

  TransactionEngine& engine_;
  WorkCourse& work_;
  State state_ = State::kNone;
  bool inner_ = false;
  ChangeLog::Place begun_;
};

/// A part of a unit of work that has taken the right to write. Undone, it is forgotten that
/// something failed in it.
class Savepoint final : public Transaction {
 public:
  Savepoint(TransactionEngine& engine, WorkCourse& work) : engine_(engine), work_(work) {}

  void Begin() override;
  void Commit() override;
  /// Does nothing where the engine gave everything up already.
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  TransactionEngine& engine_;
  WorkCourse& work_;
  ChangeLog::Place begun_;
  bool open_ = false;
};

/// Reading that sees one state of the store. May be begun inside itself.
class Look final : public Transaction {
 public:
  explicit Look(TransactionEngine& engine) : engine_(engine) {}
  /// Ends what is still open.
  ~Look() override;

  void Begin() override;
  void Commit() override { Rollback(); }
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return depth_ > 0; }

 private:
  TransactionEngine& engine_;
  int depth_ = 0;
  bool isOwn_ = false;  // not a part of what was open before
};

}  // namespace qorhost

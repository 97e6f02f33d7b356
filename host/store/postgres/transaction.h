// The transactions of a connection.
#pragma once

#include <cstdint>
#include <string>

#include "host/store/patience.h"
#include "host/store/postgres/change_log.h"
#include "host/store/postgres/connection.h"
#include "host/store/transaction.h"

namespace qorhost::postgres {

class Session;

/// Keeps everybody else from writing until the open transaction ends, and gives its number, by
/// which it is committed.
[[nodiscard]] std::string LockStore(Connection& connection, const Patience& patience);

/// A transaction in which nobody else writes to the store, from its making on; undone at its end
/// unless it was kept.
class AloneOnStore {
 public:
  AloneOnStore(Connection& connection, const Patience& patience);
  ~AloneOnStore() { connection_.UndoWhatIsOpen(); }
  AloneOnStore(const AloneOnStore&) = delete;
  AloneOnStore& operator=(const AloneOnStore&) = delete;

  void Keep();

 private:
  Connection& connection_;
  std::string number_;
};

/// The one that a connection's users may hold open. In a unit of work it is a part of that: undone
/// alone, and final with the whole.
class Transaction final : public qorhost::Transaction {
 public:
  explicit Transaction(Session& session) : session_(session) {}
  /// Rolls back what is still open.
  ~Transaction() override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return state_ == State::kOpen; }

  /// Raises when the server gave up the open transaction, or has gone.
  void CheckUsable();

 private:
  enum class State : std::uint8_t { kNone, kOpen, kCommitFailed };

  void UndoOwn() noexcept;

  Session& session_;
  State state_ = State::kNone;
  bool inner_ = false;
  std::string number_;  // of one that is not inside another
  ChangeLog::Place begun_;
};

/// A part of a unit of work that has taken the right to write. Undone, it is forgotten that
/// something failed in it.
class Savepoint final : public qorhost::Transaction {
 public:
  explicit Savepoint(Session& session) : session_(session) {}

  void Begin() override;
  void Commit() override;
  /// Does nothing where everything is undone already.
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  Session& session_;
  ChangeLog::Place begun_;
  bool open_ = false;
};

/// Reading that sees one state of the store. May be begun inside itself.
class Look final : public qorhost::Transaction {
 public:
  explicit Look(Session& session) : session_(session) {}

  void Begin() override;
  void Commit() override { Rollback(); }
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return depth_ > 0; }

 private:
  Session& session_;
  int depth_ = 0;
  bool isOwn_ = false;  // not a part of what was open before
};

}  // namespace qorhost::postgres

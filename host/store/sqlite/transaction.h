// The transactions of a database.
#pragma once

#include <cstdint>

#include "host/store/sqlite/change_log.h"
#include "host/store/sqlite/database.h"
#include "host/store/transaction.h"

namespace qorhost::sqlite {

class UnitOfWork;

/// The one that a connection's users may hold open. In a unit of work it is a part of that: undone
/// alone, and final with the whole.
class Transaction final : public qorhost::Transaction {
 public:
  Transaction(Database& database, UnitOfWork& work);
  /// Rolls back what is still open.
  ~Transaction() override;

  void Begin() override;
  void Commit() override;
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return state_ == State::kOpen; }

  /// Raises when SQLite gave up the open transaction by itself (a full disk, for example): until it
  /// is rolled back, a statement would be kept although those before it are lost.
  void CheckUsable();

 private:
  enum class State : std::uint8_t { kNone, kOpen, kCommitFailed };

  Database& database_;
  UnitOfWork& work_;
  State state_ = State::kNone;
  bool inner_ = false;
  ChangeLog::Place begun_;
  OftenRun beginInner_{"SAVEPOINT inner_transaction"};
  OftenRun commitInner_{"RELEASE inner_transaction"};
};

/// A part of a unit of work that has taken the right to write. Undone, it is forgotten that
/// something failed in it.
class Savepoint final : public qorhost::Transaction {
 public:
  Savepoint(Database& database, UnitOfWork& work) : database_(database), work_(work) {}

  void Begin() override;
  void Commit() override;
  /// Does nothing where SQLite gave everything up already.
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  Database& database_;
  UnitOfWork& work_;
  ChangeLog::Place begun_;
  OftenRun begin_{"SAVEPOINT part"};
  OftenRun commit_{"RELEASE part"};
  bool open_ = false;
};

/// Reading that sees one state of the store. May be begun inside itself.
class Look final : public qorhost::Transaction {
 public:
  explicit Look(Database& database) : database_(database) {}

  void Begin() override;
  void Commit() override { Rollback(); }
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return depth_ > 0; }

 private:
  Database& database_;
  int depth_ = 0;
  bool isOwn_ = false;  // not a part of what was open before
};

/// One around everything on a database that has no session yet: nobody else writes from its
/// beginning on.
class WholeTransaction final : public qorhost::Transaction {
 public:
  explicit WholeTransaction(Database& database) : database_(database) {}

  void Begin() override;
  void Commit() override;
  /// Does nothing where SQLite gave everything up already.
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  Database& database_;
  bool open_ = false;
};

}  // namespace qorhost::sqlite

// The one transaction that a connection's users may hold open.
#pragma once

#include <cstdint>

#include "host/store/sqlite/database.h"

namespace qorhost {

/// Begins, commits and rolls back on one database. Failures raise StoreError and leave no
/// transaction behind, except where a member says otherwise. Where the host began a transaction on
/// the database itself, this one is a part of it: kept or undone alone, and final with the whole.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(database) {}
  /// Rolls back what is still open.
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Refuses a second one inside the first.
  void Begin();
  /// A commit that fails undoes all changes before it raises.
  void Commit();
  /// Refuses when nothing is open; after a failed commit there is nothing left to do.
  void Rollback();

  /// Raises when SQLite gave up the open transaction by itself (a full disk, for example): until it
  /// is rolled back, a statement would be kept although those before it are lost.
  void CheckUsable();

  /// Whether a transaction was begun and not yet ended.
  [[nodiscard]] bool open() const noexcept { return state_ == State::kOpen; }

 private:
  enum class State : std::uint8_t { kNone, kOpen, kCommitFailed };

  Database& database_;
  State state_ = State::kNone;
  bool inner_ = false;
};

}  // namespace qorhost

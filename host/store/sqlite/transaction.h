// The transactions of a database.
#pragma once

#include <cstdint>
#include <string>

#include "host/store/sqlite/database.h"
#include "host/store/transaction.h"

namespace qorhost::sqlite {

/// The one that a connection's users may hold open. Where the host began one on the database
/// itself, this one is a part of it: kept or undone alone, and final with the whole.
class Transaction final : public qorhost::Transaction {
 public:
  explicit Transaction(Database& database) : database_(database) {}
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
  State state_ = State::kNone;
  bool inner_ = false;
};

/// One that the host itself begins and ends, with the texts that do so.
class HostTransaction final : public qorhost::Transaction {
 public:
  /// Around everything: nobody else writes from its beginning on.
  [[nodiscard]] static HostTransaction Outer(Database& database);
  /// A part of the outer one.
  [[nodiscard]] static HostTransaction Savepoint(Database& database);

  void Begin() override;
  void Commit() override;
  /// Does nothing where SQLite gave everything up already.
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  HostTransaction(Database& database, std::string begin, std::string commit, std::string rollback);

  Database& database_;
  std::string begin_;
  std::string commit_;
  std::string rollback_;
  bool open_ = false;
};

}  // namespace qorhost::sqlite

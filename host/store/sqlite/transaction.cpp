#include "host/store/sqlite/transaction.h"

#include <sqlite3.h>

#include <utility>

#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

const char* UndoText(bool inner) {
  return inner ? "ROLLBACK TO inner_transaction; RELEASE inner_transaction" : "ROLLBACK";
}

}  // namespace

Transaction::~Transaction() {
  if (database_.inTransaction()) {
    sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

void Transaction::Begin() {
  if (state_ == State::kOpen) {
    throw StoreError("A transaction is already open: commit it or roll it back first");
  }
  inner_ = database_.inTransaction();
  if (inner_) {
    database_.Run("SAVEPOINT inner_transaction");
  } else {
    // Taking the right to write at once: a second program is met here and not halfway through.
    database_.Run(database_.readOnly() ? "BEGIN" : "BEGIN IMMEDIATE");
  }
  state_ = State::kOpen;
}

void Transaction::Commit() {
  if (state_ != State::kOpen) {
    throw StoreError("There is no transaction to commit: begin one first");
  }
  try {
    CheckUsable();
    database_.Run(inner_ ? "RELEASE inner_transaction" : "COMMIT");
    state_ = State::kNone;
  } catch (const StoreError&) {
    state_ = State::kCommitFailed;
    if (database_.inTransaction()) {
      sqlite3_exec(database_.handle(), UndoText(inner_), nullptr, nullptr, nullptr);
    }
    throw;
  }
}

void Transaction::Rollback() {
  if (state_ == State::kNone) {
    throw StoreError("There is no transaction to roll back: begin one first");
  }
  state_ = State::kNone;
  if (database_.inTransaction()) {
    database_.Run(UndoText(inner_));
  }
}

void Transaction::CheckUsable() {
  if (state_ == State::kOpen && !database_.inTransaction()) {
    throw StoreError(
        "The store gave up the transaction after an earlier failure and undid its changes: roll it "
        "back and start again");
  }
}

HostTransaction::HostTransaction(Database& database, std::string begin, std::string commit,
                                 std::string rollback)
    : database_(database),
      begin_(std::move(begin)),
      commit_(std::move(commit)),
      rollback_(std::move(rollback)) {}

HostTransaction HostTransaction::Outer(Database& database) {
  return {database, "BEGIN IMMEDIATE", "COMMIT", "ROLLBACK"};
}

HostTransaction HostTransaction::Savepoint(Database& database) {
  return {database, "SAVEPOINT line", "RELEASE line", "ROLLBACK TO line; RELEASE line"};
}

void HostTransaction::Begin() {
  database_.Run(begin_);
  open_ = true;
}

void HostTransaction::Commit() {
  database_.Run(commit_);
  open_ = false;
}

void HostTransaction::Rollback() {
  open_ = false;
  if (database_.inTransaction()) {
    database_.Run(rollback_);
  }
}

}  // namespace qorhost::sqlite

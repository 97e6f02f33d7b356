#include "host/store/sqlite/transaction.h"

#include <sqlite3.h>

#include "host/store/sqlite/unit_of_work.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

const char* UndoText(bool inner) {
  return inner ? "ROLLBACK TO inner_transaction; RELEASE inner_transaction" : "ROLLBACK";
}

}  // namespace

Transaction::Transaction(Database& database, UnitOfWork& work) : database_(database), work_(work) {}

Transaction::~Transaction() {
  database_.UndoWhatIsOpen();
}

void Transaction::Begin() {
  if (state_ == State::kOpen) {
    throw StoreError("A transaction is already open: commit it or roll it back first");
  }
  work_.BeforeWrite();
  work_.WriteHeld();
  inner_ = database_.inTransaction();
  if (inner_) {
    work_.NoteHere(begun_);
    beginInner_.Run(database_);
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
    work_.RequireUsable();
    CheckUsable();
    work_.WriteHeld();
    if (inner_) {
      commitInner_.Run(database_);
    } else {
      database_.Run("COMMIT");
      work_.DropHeld();  // others may write from now on
    }
    state_ = State::kNone;
  } catch (const StoreError&) {
    state_ = State::kCommitFailed;
    work_.DropHeld();
    database_.UndoWhatIsOpen(UndoText(inner_));
    throw;
  }
}

void Transaction::Rollback() {
  if (state_ == State::kNone) {
    throw StoreError("There is no transaction to roll back: begin one first");
  }
  const bool wasOpen = state_ == State::kOpen;  // else it was undone when it could not be kept
  state_ = State::kNone;
  work_.DropHeld();
  if (wasOpen && database_.inTransaction()) {
    database_.Run(UndoText(inner_));
  }
  if (inner_) {
    work_.GoBackTo(begun_);
  }
}

void Transaction::CheckUsable() {
  if (state_ == State::kOpen && !database_.inTransaction()) {
    throw StoreError(
        "The store gave up the transaction after an earlier failure and undid its changes: roll it "
        "back and start again");
  }
}

void Savepoint::Begin() {
  work_.RequireUsable();
  work_.WriteHeld();
  begin_.Run(database_);
  work_.NoteHere(begun_);
  open_ = true;
}

void Savepoint::Commit() {
  work_.RequireUsable();
  work_.WriteHeld();
  commit_.Run(database_);
  open_ = false;
}

void Savepoint::Rollback() {
  open_ = false;
  work_.DropHeld();
  if (database_.inTransaction()) {
    database_.Run("ROLLBACK TO part; RELEASE part");
    work_.GoBackTo(begun_);
    work_.Forgive();
  }
}

void Look::Begin() {
  if (depth_ == 0) {
    isOwn_ = !database_.inTransaction();
    if (isOwn_) {
      database_.Run("BEGIN");
    }
  }
  ++depth_;
}

void Look::Rollback() {
  --depth_;
  if (depth_ == 0 && isOwn_) {
    database_.UndoWhatIsOpen();
  }
}

void WholeTransaction::Begin() {
  database_.Run("BEGIN IMMEDIATE");
  open_ = true;
  database_.RequireOwnLog();
}

void WholeTransaction::Commit() {
  database_.Run("COMMIT");
  open_ = false;
}

void WholeTransaction::Rollback() {
  open_ = false;
  if (database_.inTransaction()) {
    database_.Run("ROLLBACK");
  }
}

}  // namespace qorhost::sqlite

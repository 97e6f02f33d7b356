#include "host/store/postgres/transaction.h"

#include "host/store/postgres/session.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

const char* TextToUndo(bool inner) {
  return inner ? "ROLLBACK TO SAVEPOINT inner_transaction; RELEASE SAVEPOINT inner_transaction"
               : "ROLLBACK";
}

}  // namespace

AloneOnStore::AloneOnStore(Connection& connection, const Patience& patience)
    : connection_(connection) {
  connection_.RunAll("BEGIN");
  try {
    (void)connection_.RunWaiting(kLockStore, patience);
  } catch (...) {
    connection_.UndoWhatIsOpen();
    throw;
  }
}

void AloneOnStore::Keep() {
  connection_.RunAll("COMMIT");
}

Transaction::~Transaction() {
  if (state_ == State::kOpen) {
    session_.connection().UndoWhatIsOpen();
  }
}

void Transaction::Begin() {
  if (state_ == State::kOpen) {
    throw StoreError("A transaction is already open: commit it or roll it back first");
  }
  session_.work().BeforeWrite();
  session_.work().WriteHeld();
  Connection& connection = session_.connection();
  inner_ = connection.inTransaction();
  if (inner_) {
    session_.work().NoteHere(begun_);
    connection.RunAll("SAVEPOINT inner_transaction");
  } else {
    connection.RunAll("BEGIN");
    try {
      // Taking the right to write at once: a second program is met here and not halfway through.
      (void)connection.RunWaiting(kLockStore, session_.patience());
    } catch (...) {
      connection.UndoWhatIsOpen();
      throw;
    }
  }
  state_ = State::kOpen;
}

void Transaction::Commit() {
  if (state_ != State::kOpen) {
    throw StoreError("There is no transaction to commit: begin one first");
  }
  try {
    session_.work().RequireUsable();
    CheckUsable();
    session_.work().WriteHeld();
    session_.connection().RunAll(inner_ ? "RELEASE SAVEPOINT inner_transaction" : "COMMIT");
    if (!inner_) {
      session_.DropHeld();  // others may write from now on
    }
    state_ = State::kNone;
  } catch (const StoreError&) {
    state_ = State::kCommitFailed;
    session_.DropHeld();
    session_.connection().UndoWhatIsOpen(TextToUndo(inner_));
    throw;
  }
}

void Transaction::Rollback() {
  if (state_ == State::kNone) {
    throw StoreError("There is no transaction to roll back: begin one first");
  }
  const bool wasOpen = state_ == State::kOpen;
  state_ = State::kNone;
  session_.DropHeld();
  if (wasOpen && session_.connection().inTransaction()) {
    session_.connection().RunAll(TextToUndo(inner_));
  }
  if (inner_) {
    session_.work().GoBackTo(begun_);
  }
}

void Transaction::CheckUsable() {
  if (state_ == State::kOpen && !session_.connection().inTransaction()) {
    throw StoreError(
        "The store gave up the transaction after an earlier failure and undid its changes: roll it "
        "back and start again");
  }
}

void Savepoint::Begin() {
  session_.work().RequireUsable();
  session_.work().WriteHeld();
  session_.connection().RunAll("SAVEPOINT part");
  session_.work().NoteHere(begun_);
  open_ = true;
}

void Savepoint::Commit() {
  session_.work().RequireUsable();
  session_.work().WriteHeld();
  session_.connection().RunAll("RELEASE SAVEPOINT part");
  open_ = false;
}

void Savepoint::Rollback() {
  open_ = false;
  session_.DropHeld();
  if (session_.connection().inTransaction()) {
    session_.connection().RunAll("ROLLBACK TO SAVEPOINT part; RELEASE SAVEPOINT part");
    session_.work().GoBackTo(begun_);
    session_.work().Forgive();
  }
}

void Look::Begin() {
  if (depth_ == 0) {
    isOwn_ = !session_.connection().inTransaction();
    if (isOwn_) {
      session_.connection().RunAll("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    }
  }
  ++depth_;
}

void Look::Rollback() {
  --depth_;
  if (depth_ == 0 && isOwn_) {
    session_.connection().UndoWhatIsOpen();
  }
}

}  // namespace qorhost::postgres

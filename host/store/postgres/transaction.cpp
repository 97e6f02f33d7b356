#include "host/store/postgres/transaction.h"

#include "host/store/postgres/session.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

std::string LockStore(Connection& connection, const Patience& patience) {
  const Result number = connection.RunWaiting(
      "LOCK TABLE \"UnitVersions\" IN EXCLUSIVE MODE; SELECT pg_current_xact_id()", patience);
  return std::string(number.Text(0, 0));
}

AloneOnStore::AloneOnStore(Connection& connection, const Patience& patience)
    : connection_(connection) {
  connection_.Begin();
  try {
    number_ = LockStore(connection_, patience);
  } catch (...) {
    connection_.UndoWhatIsOpen();
    throw;
  }
}

void AloneOnStore::Keep() {
  connection_.Commit({number_, {}});
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
    connection.Begin();
    try {
      // Taking the right to write at once: a second program is met here and not halfway through.
      number_ = LockStore(connection, session_.patience());
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
    if (inner_) {
      session_.connection().RunAll("RELEASE SAVEPOINT inner_transaction");
    } else {
      session_.connection().Commit({number_, {}});
      session_.DropHeld();  // others may write from now on
    }
    state_ = State::kNone;
  } catch (const StoreError&) {
    state_ = State::kCommitFailed;
    UndoOwn();
    throw;
  }
}

void Transaction::Rollback() {
  if (state_ == State::kNone) {
    throw StoreError("There is no transaction to roll back: begin one first");
  }
  const bool wasOpen = state_ == State::kOpen;
  state_ = State::kNone;
  if (wasOpen) {
    UndoOwn();
  }
  if (inner_) {
    session_.work().GoBackTo(begun_);
  }
}

/// Where the connection was lost, the server has done so.
void Transaction::UndoOwn() noexcept {
  session_.DropHeld();
  if (inner_) {
    session_.connection().UndoWhatIsOpen(
        "ROLLBACK TO SAVEPOINT inner_transaction; RELEASE SAVEPOINT inner_transaction");
  } else {
    session_.connection().UndoWhatIsOpen();
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
      session_.connection().Begin("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
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

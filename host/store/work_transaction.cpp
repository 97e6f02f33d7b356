#include "host/store/work_transaction.h"

#include "host/store/store_error.h"
#include "host/store/work_course.h"

namespace qorhost {

WorkTransaction::~WorkTransaction() {
  if (state_ == State::kOpen) {
    engine_.UndoWhatIsOpen();
  }
}

void WorkTransaction::Begin() {
  if (state_ == State::kOpen) {
    throw StoreError("A transaction is already open: commit it or roll it back first");
  }
  work_.BeforeWrite();
  work_.WriteHeld();
  inner_ = engine_.isOpen();
  if (inner_) {
    work_.NoteHere(begun_);
    engine_.BeginInner();
  } else {
    // Taking the right to write at once: a second program is met here and not halfway through.
    engine_.BeginAlone();
  }
  state_ = State::kOpen;
}

void WorkTransaction::Commit() {
  if (state_ != State::kOpen) {
    throw StoreError("There is no transaction to commit: begin one first");
  }
  try {
    Keep();
    state_ = State::kNone;
  } catch (const StoreError&) {
    state_ = State::kCommitFailed;
    work_.DropHeld();
    try {
      UndoOwn();
    } catch (const StoreError&) {
      // What has failed before is told.
    }
    throw;
  }
}

void WorkTransaction::Keep() {
  work_.RequireUsable();
  CheckUsable();
  work_.WriteHeld();
  if (inner_) {
    engine_.CommitInner();
  } else {
    engine_.CommitAlone();
    work_.DropHeld();  // others may write from now on
  }
}

void WorkTransaction::Rollback() {
  if (state_ == State::kNone) {
    throw StoreError("There is no transaction to roll back: begin one first");
  }
  const bool wasOpen = state_ == State::kOpen;  // else it was undone when it could not be kept
  state_ = State::kNone;
  work_.DropHeld();
  if (wasOpen) {
    UndoOwn();
  }
  if (inner_) {
    work_.GoBackTo(begun_);
  }
}

/// Where the engine gave up everything, it has done so.
void WorkTransaction::UndoOwn() {
  if (!inner_) {
    engine_.UndoAll();
  } else if (engine_.isOpen()) {
    engine_.UndoInner();
  }
}

void WorkTransaction::CheckUsable() const {
  if (state_ == State::kOpen && !engine_.isOpen()) {
    throw StoreError(
        "The store gave up the transaction after an earlier failure and undid its changes: roll it "
        "back and start again");
  }
}

void Savepoint::Begin() {
  work_.RequireUsable();
  work_.WriteHeld();
  engine_.BeginPart();
  work_.NoteHere(begun_);
  open_ = true;
}

void Savepoint::Commit() {
  work_.RequireUsable();
  work_.WriteHeld();
  engine_.CommitPart();
  open_ = false;
}

void Savepoint::Rollback() {
  open_ = false;
  work_.DropHeld();
  if (engine_.isOpen()) {
    engine_.UndoPart();
    work_.GoBackTo(begun_);
    work_.Forgive();
  }
}

Look::~Look() {
  if (depth_ > 0 && isOwn_) {
    engine_.UndoWhatIsOpen();
  }
}

void Look::Begin() {
  if (depth_ == 0) {
    isOwn_ = !engine_.isOpen();
    if (isOwn_) {
      engine_.BeginLook();
    }
  }
  ++depth_;
}

void Look::Rollback() {
  --depth_;
  if (depth_ == 0 && isOwn_) {
    engine_.UndoWhatIsOpen();
  }
}

}  // namespace qorhost

#include "host/store/transaction.h"

namespace qorhost {

Undoable::Undoable(Transaction& transaction) : transaction_(transaction) {
  transaction_.Begin();
}

Undoable::~Undoable() {
  if (ended_) {
    return;
  }
  try {
    transaction_.Rollback();
  } catch (...) {
    // The store undoes what is open when it is closed.
    return;
  }
}

void Undoable::Keep() {
  transaction_.Commit();
  ended_ = true;
}

void Undoable::Undo() {
  ended_ = true;
  transaction_.Rollback();
}

void ConnectionTransaction::Begin() {
  connection_.BeginTrans();
  open_ = true;
}

void ConnectionTransaction::Commit() {
  connection_.CommitTrans();
  open_ = false;
}

void ConnectionTransaction::Rollback() {
  open_ = false;
  connection_.RollbackTrans();
}

}  // namespace qorhost

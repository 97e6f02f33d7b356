#include "host/store/sqlite/transaction.h"

namespace qorhost::sqlite {

void TransactionEngine::BeginAlone() {
  database_.Run(database_.readOnly() ? "BEGIN" : "BEGIN IMMEDIATE");
}

void TransactionEngine::UndoInner() {
  database_.Run("ROLLBACK TO inner_transaction; RELEASE inner_transaction");
}

void TransactionEngine::UndoAll() {
  if (isOpen()) {
    database_.Run("ROLLBACK");
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

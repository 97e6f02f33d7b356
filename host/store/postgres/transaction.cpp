#include "host/store/postgres/transaction.h"

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

void TransactionEngine::BeginAlone() {
  connection_.Begin();
  try {
    number_ = LockStore(connection_, patience_);
  } catch (...) {
    connection_.UndoWhatIsOpen();
    throw;
  }
}

void TransactionEngine::UndoInner() {
  connection_.UndoWhatIsOpen(
      "ROLLBACK TO SAVEPOINT inner_transaction; RELEASE SAVEPOINT inner_transaction");
}

void TransactionEngine::UndoPart() {
  connection_.RunAll("ROLLBACK TO SAVEPOINT part; RELEASE SAVEPOINT part");
}

void TransactionEngine::BeginLook() {
  connection_.Begin("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

}  // namespace qorhost::postgres

#include "host/store/postgres/transaction.h"

namespace qorhost::postgres {

void InOneTransaction(Connection& connection, const std::function<void()>& work) {
  connection.Begin();
  try {
    work();
    connection.RunAll("COMMIT");
  } catch (...) {
    connection.UndoWhatIsOpen();
    throw;
  }
  connection.UndoWhatIsOpen();  // nothing is: it is done with
}

std::string LockStore(Connection& connection, const Patience& patience) {
  const Result number = connection.RunWaiting(
      "LOCK TABLE \"UnitVersions\" IN EXCLUSIVE MODE; SELECT pg_current_xact_id()", patience);
  return std::string(number.Text(0, 0));
}

std::string BeginAloneOnStore(Connection& connection, const Patience& patience) {
  connection.Begin();
  try {
    return LockStore(connection, patience);
  } catch (...) {
    connection.UndoWhatIsOpen();
    throw;
  }
}

void AloneOnStore::Keep() {
  connection_.Commit({number_, {}});
}

void TransactionEngine::UndoInner() {
  connection_.UndoBackTo("inner_transaction");
}

void TransactionEngine::UndoPart() {
  connection_.RunAll("ROLLBACK TO SAVEPOINT part; RELEASE SAVEPOINT part");
}

void TransactionEngine::BeginLook() {
  connection_.Begin("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

}  // namespace qorhost::postgres

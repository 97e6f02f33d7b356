#include "host/store/postgres/transaction.h"

#include <fmt/format.h>

#include "host/store/postgres/schema.h"

namespace qorhost::postgres {

Connection::Witness WitnessIn(Connection& connection, std::string_view table) {
  const Result number = connection.Run("SELECT pg_current_xact_id()");
  Connection::Witness witness;
  witness.number = number.Text(0, 0);
  witness.select =
      fmt::format("SELECT 1 FROM {} WHERE xmin='{}'::xid8::xid", table, witness.number);
  return witness;
}

void InOneTransaction(Connection& connection, std::string_view table,
                      const std::function<void()>& work) {
  connection.Begin();
  try {
    work();
    connection.Commit(WitnessIn(connection, table));
  } catch (...) {
    connection.UndoWhatIsOpen();
    throw;
  }
}

std::string LockStore(Connection& connection, const Patience& patience) {
  const Result number =
      connection.RunWaiting(fmt::format(R"(LOCK TABLE "UnitVersions" IN EXCLUSIVE MODE; )"
                                        "SELECT pg_current_xact_id(), ({})::int4",
                                        kIsNewerByNow),
                            patience);
  RequireSameVersion(connection, number.Number(0, 1) != 0);
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

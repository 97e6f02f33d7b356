// The transactions of a connection.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/store/patience.h"
#include "host/store/postgres/connection.h"
#include "host/store/work_transaction.h"

namespace qorhost::postgres {

/// By what it is known later whether the open transaction was stored, which has written a row to
/// that table.
[[nodiscard]] Connection::Witness WitnessIn(Connection& connection, std::string_view table);

/// Does the work in a transaction of its own, which is undone when the work raises. `table`: as
/// above.
void InOneTransaction(Connection& connection, std::string_view table,
                      const std::function<void()>& work);

/// Keeps everybody else from writing until the open transaction ends, and gives its number, by
/// which it is committed.
[[nodiscard]] std::string LockStore(Connection& connection, const Patience& patience);

/// Begins a transaction that has that right from its beginning on; none is open when it raises.
[[nodiscard]] std::string BeginAloneOnStore(Connection& connection, const Patience& patience);

/// A transaction in which nobody else writes to the store, from its making on; undone at its end
/// unless it was kept.
class AloneOnStore {
 public:
  AloneOnStore(Connection& connection, const Patience& patience)
      : connection_(connection), number_(BeginAloneOnStore(connection, patience)) {}
  ~AloneOnStore() { connection_.UndoWhatIsOpen(); }
  AloneOnStore(const AloneOnStore&) = delete;
  AloneOnStore& operator=(const AloneOnStore&) = delete;

  void Keep();

 private:
  Connection& connection_;
  std::string number_;
};

/// Those of a session, in the server's words. Connection and patience live longer.
class TransactionEngine final : public qorhost::TransactionEngine {
 public:
  TransactionEngine(Connection& connection, const Patience& patience)
      : connection_(connection), patience_(patience) {}

  [[nodiscard]] bool isOpen() const noexcept override { return connection_.inTransaction(); }
  void BeginAlone() override { number_ = BeginAloneOnStore(connection_, patience_); }
  void CommitAlone() override { connection_.Commit({number_, {}}); }
  void BeginInner() override { connection_.RunAll("SAVEPOINT inner_transaction"); }
  void CommitInner() override { connection_.RunAll("RELEASE SAVEPOINT inner_transaction"); }
  void UndoInner() override;
  void BeginPart() override { connection_.RunAll("SAVEPOINT part"); }
  void CommitPart() override { connection_.RunAll("RELEASE SAVEPOINT part"); }
  void UndoPart() override;
  void BeginLook() override;
  void UndoAll() override { connection_.UndoWhatIsOpen(); }
  void UndoWhatIsOpen() noexcept override { connection_.UndoWhatIsOpen(); }

 private:
  Connection& connection_;
  const Patience& patience_;
  std::string number_;  // of the transaction that was begun alone
};

}  // namespace qorhost::postgres

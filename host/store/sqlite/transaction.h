// The transactions of a database.
#pragma once

#include "host/store/sqlite/database.h"
#include "host/store/work_transaction.h"

namespace qorhost::sqlite {

/// Those of a session, in SQLite's words. The database lives longer.
class TransactionEngine final : public qorhost::TransactionEngine {
 public:
  explicit TransactionEngine(Database& database) : database_(database) {}

  [[nodiscard]] bool isOpen() const noexcept override { return database_.inTransaction(); }
  void BeginAlone() override;
  void CommitAlone() override { database_.Run("COMMIT"); }
  void BeginInner() override { beginInner_.Run(database_); }
  void CommitInner() override { commitInner_.Run(database_); }
  void UndoInner() override;
  void BeginPart() override { beginPart_.Run(database_); }
  void CommitPart() override { commitPart_.Run(database_); }
  void UndoPart() override { database_.Run("ROLLBACK TO part; RELEASE part"); }
  void BeginLook() override { database_.Run("BEGIN"); }
  void UndoAll() override;
  void UndoWhatIsOpen() noexcept override { database_.UndoWhatIsOpen(); }

 private:
  Database& database_;
  OftenRun beginInner_{"SAVEPOINT inner_transaction"};
  OftenRun commitInner_{"RELEASE inner_transaction"};
  OftenRun beginPart_{"SAVEPOINT part"};
  OftenRun commitPart_{"RELEASE part"};
};

/// One around everything on a database that has no session yet: nobody else writes from its
/// beginning on.
class WholeTransaction final : public Transaction {
 public:
  explicit WholeTransaction(Database& database) : database_(database) {}

  void Begin() override;
  void Commit() override;
  /// Does nothing where SQLite gave everything up already.
  void Rollback() override;
  [[nodiscard]] bool open() const noexcept override { return open_; }

 private:
  Database& database_;
  bool open_ = false;
};

}  // namespace qorhost::sqlite

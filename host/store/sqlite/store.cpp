#include "host/store/sqlite/store.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <functional>
#include <utility>

#include "host/store/sqlite/engine_error.h"
#include "host/store/sqlite/session.h"
#include "host/store/sqlite/transaction.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

Store::Store(Database database) : database_(std::move(database)) {}

std::unique_ptr<SqlSession> Store::StartSession(Clock clock) {
  return std::make_unique<Session>(database_, std::move(clock));
}

void Store::SetPatience(Patience patience) {
  database_.SetPatience(std::move(patience));
}

void Store::GatherInFile() {
  // Closing would do the same, but keep it to itself when that fails.
  Statement checkpoint(database_, "PRAGMA wal_checkpoint(TRUNCATE)");
  if (!checkpoint.Step() || checkpoint.Number(0) != 0) {
    throw StoreError(
        fmt::format("The store '{}' is in use: {}", name(), AdviceFor(StoreFault::kBusy)),
        StoreFault::kBusy);
  }
}

void Store::CopyInto(const std::filesystem::path& emptyFile) {
  constexpr int kPagesAtOnce = 2048;  // 8 MiB
  Database copy(emptyFile, OpenMode::kReadWrite);
  // One state of the store: what others write meanwhile is not in it.
  TransactionEngine transactions(database_);
  Look look(transactions);
  const Undoable oneState(look);
  sqlite3_backup* backup = sqlite3_backup_init(copy.handle(), "main", database_.handle(), "main");
  const std::function<bool()>& working = database_.patience().working;
  bool goesOn = backup != nullptr;
  while (goesOn && sqlite3_backup_step(backup, kPagesAtOnce) == SQLITE_OK) {
    goesOn = !working || working();
  }
  if (backup == nullptr || sqlite3_backup_finish(backup) != SQLITE_OK) {
    throw LastError(copy.handle(), fmt::format("'{}' cannot be written", copy.name()));
  }
  if (!goesOn) {
    throw StoreError(fmt::format("'{}' is not whole: its copying was stopped", copy.name()));
  }
  // Without a log of its own it can be read where nothing may be written.
  copy.Run("PRAGMA journal_mode=DELETE");
}

std::vector<std::string> Store::Damages() {
  Statement check(database_, "PRAGMA integrity_check");
  std::vector<std::string> damages;
  while (check.Step()) {
    if (check.Text(0) != "ok") {
      damages.emplace_back(check.Text(0));
    }
  }
  return damages;
}

const std::string& Store::name() const noexcept {
  return database_.name();
}

bool Store::readOnly() const noexcept {
  return database_.readOnly();
}

int Store::busyStatements() const noexcept {
  return database_.busyStatements();
}

Database& DatabaseOf(qorhost::Store& store) {
  return dynamic_cast<Store&>(store).database();
}

}  // namespace qorhost::sqlite

#include "host/store/sqlite/store.h"

#include <fmt/format.h>

#include <utility>

#include "host/store/sqlite/session.h"
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

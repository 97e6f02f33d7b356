#include "host/store/postgres/store.h"

#include <fmt/format.h>

#include <utility>

#include "host/store/postgres/placement.h"
#include "host/store/postgres/session.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

Store::Store(Connection connection, Patience patience, bool readOnly)
    : connection_(std::move(connection)), patience_(std::move(patience)), readOnly_(readOnly) {
  connection_.LookUpBy(patience_.working);
}

std::unique_ptr<SqlSession> Store::StartSession(Clock clock) {
  return std::make_unique<Session>(connection_, patience_, std::move(clock));
}

void Store::SetPatience(Patience patience) {
  patience_ = std::move(patience);
  connection_.LookUpBy(patience_.working);
}

void Store::GatherInFile() {
  throw StoreError(fmt::format("The store '{}' is on a server and has no file of its own", name()));
}

void Store::CopyInto(const std::filesystem::path& emptyFile) {
  throw StoreError(fmt::format(
      "The store '{}' is on a server, from which '{}' cannot be written yet: back it up there",
      name(), emptyFile.string()));
}

std::vector<std::string> Store::Damages() {
  return DoubleIdentities(connection_);
}

const std::string& Store::name() const noexcept {
  return connection_.name();
}

}  // namespace qorhost::postgres

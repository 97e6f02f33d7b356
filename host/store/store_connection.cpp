#include "host/store/store_connection.h"

#include <algorithm>
#include <array>
#include <limits>
#include <typeinfo>
#include <utility>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "host/store/method_table.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::ErrorNumber;
using qorcred::RuntimeError;
using qorcred::Value;

StoreConnection::StoreConnection(std::unique_ptr<Store> store, Clock clock)
    : store_(std::move(store)), session_(store_->StartSession(std::move(clock))) {}

StoreConnection::~StoreConnection() {
  Close();
}

void StoreConnection::Close() noexcept {
  session_.reset();
  store_.reset();
}

SqlSession& StoreConnection::session() {
  RequireOpen();
  return *session_;
}

void StoreConnection::RequireOpen() const {
  if (session_ == nullptr) {
    throw RuntimeError(ErrorNumber::kApplicationDefined,
                       "The connection is closed: open the store again");
  }
}

Store& StoreConnection::store() {
  RequireOpen();
  return *store_;
}

int StoreConnection::OpenTransactions() const noexcept {
  return session_ != nullptr && session_->transaction().open() ? 1 : 0;
}

int StoreConnection::BusyStatements() const noexcept {
  return store_ != nullptr ? store_->busyStatements() : 0;
}

Value StoreConnection::Invoke(std::string_view member, qorcred::InvokeKind kind,
                              Arguments arguments) {
  static constexpr std::array kMethods{
      Method<StoreConnection>{"BeginTrans", 0, 0, &StoreConnection::BeginTrans},
      Method<StoreConnection>{"CommitTrans", 0, 0, &StoreConnection::CommitTrans},
      Method<StoreConnection>{"RollbackTrans", 0, 0, &StoreConnection::RollbackTrans},
      Method<StoreConnection>{"Execute", 1, 2, &StoreConnection::Execute},
  };
  return RunMethod<StoreConnection>(*this, "The connection", kMethods, member, kind, arguments);
}

Value StoreConnection::BeginTrans(Arguments /*arguments*/) {
  session().transaction().Begin();
  return {};
}

Value StoreConnection::CommitTrans(Arguments /*arguments*/) {
  session().transaction().Commit();
  return {};
}

Value StoreConnection::RollbackTrans(Arguments /*arguments*/) {
  session().transaction().Rollback();
  return {};
}

Value StoreConnection::Execute(Arguments arguments) {
  const auto* text = arguments[0].As<std::string>();
  const ChangeResult result = text != nullptr
                                  ? session().Change(*text, std::nullopt)
                                  : session().Change(qorcred::ToText(arguments[0]), std::nullopt);
  if (arguments.size() > 1) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    arguments[1] = static_cast<std::int32_t>(std::min(result.rows, kMost));
  }
  return {};
}

SqlSession& SessionOf(const Value& connection) {
  // Every statement comes through here: the class has no heirs, so its own name tells.
  qorcred::Object& object = *qorcred::RequireObject(connection);
  if (typeid(object) != typeid(StoreConnection)) {
    throw RuntimeError(ErrorNumber::kTypeMismatch,
                       "The connection is not one of this store: hand over the open connection");
  }
  return static_cast<StoreConnection&>(object).session();
}

}  // namespace qorhost

#include "frame/data_services.h"

#include <array>
#include <span>

#include "frame/convert.h"

namespace qorcred {

namespace {

// Calls a manager operation whose arguments hold the error's flag and text one behind the other at
// `errorPosition`, and takes both back whether the statement failed or not.
Value CallManager(Object& manager, std::string_view operation, Arguments arguments,
                  std::size_t errorPosition, DatabaseError& error) {
  Value result = manager.Invoke(operation, InvokeKind::kCall, arguments);
  error.flag = ToBoolean(arguments[errorPosition]);
  error.text = TextOrEmpty(arguments[errorPosition + 1]);
  return result;
}

// What a manager answers with a number: rows or an identity. No answer counts as 0.
std::int32_t CountOf(const Value& answer) {
  return RoundToLong(NumericValue(answer));
}

}  // namespace

std::int32_t Connection::Execute(std::string sql) const {
  std::array<Value, 2> arguments{Value(std::move(sql)), Value(std::int32_t{0})};
  object().Invoke("Execute", InvokeKind::kCall, arguments);
  return CountOf(arguments[1]);
}

TableView DatabaseManager::ExecuteSelect(const ObjectRef& connection, std::string sql,
                                         DatabaseError& error) const {
  std::array<Value, 4> arguments{Value(connection), Value(std::move(sql)), Value(error.flag),
                                 Value(error.text)};
  return TableView(RequireObject(CallManager(object(), "ExecuteSelect", arguments, 2, error)));
}

Value DatabaseManager::ExecuteScalar(const ObjectRef& connection, std::string sql,
                                     DatabaseError& error) const {
  std::array<Value, 4> arguments{Value(connection), Value(std::move(sql)), Value(error.flag),
                                 Value(error.text)};
  return CallManager(object(), "ExecuteScalar", arguments, 2, error);
}

std::int32_t DatabaseManager::ExecuteUpdate(const ObjectRef& connection, std::string sql,
                                            std::string_view table, DatabaseError& error) const {
  std::array<Value, 5> arguments{Value(connection), Value(std::move(sql)), Value(table),
                                 Value(error.flag), Value(error.text)};
  return CountOf(CallManager(object(), "ExecuteUpdate", arguments, 3, error));
}

std::int32_t DatabaseManager::ExecuteUpdate(const ObjectRef& connection, std::string sql,
                                            std::string_view table, DatabaseError& error,
                                            const Value& lastModified, const Value& rid) const {
  std::array<Value, 7> arguments{
      Value(connection), Value(std::move(sql)), Value(table), Value(error.flag),
      Value(error.text), lastModified,          rid};
  return CountOf(CallManager(object(), "ExecuteUpdate", arguments, 3, error));
}

std::int32_t DatabaseManager::ExecuteInsert(const ObjectRef& connection, std::string sql,
                                            std::string_view lastModified, std::string_view table,
                                            DatabaseError& error) const {
  std::array<Value, 6> arguments{Value(connection), Value(std::move(sql)), Value(lastModified),
                                 Value(table),      Value(error.flag),     Value(error.text)};
  return CountOf(CallManager(object(), "ExecuteInsert", arguments, 4, error));
}

void DatabaseManager::ExecuteDelete(const ObjectRef& connection, std::string_view table,
                                    std::int32_t rid, DatabaseError& error) const {
  std::array<Value, 5> arguments{Value(connection), Value(table), Value(rid), Value(error.flag),
                                 Value(error.text)};
  CallManager(object(), "ExecuteDelete", arguments, 3, error);
}

std::int32_t DatabaseManager::ExecuteQueryDelete(const ObjectRef& connection, std::string sql,
                                                 DatabaseError& error) const {
  std::array<Value, 4> arguments{Value(connection), Value(std::move(sql)), Value(error.flag),
                                 Value(error.text)};
  return CountOf(CallManager(object(), "ExecuteQueryDelete", arguments, 2, error));
}

}  // namespace qorcred

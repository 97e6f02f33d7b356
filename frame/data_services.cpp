#include "frame/data_services.h"

#include <array>
#include <memory>
#include <span>

#include "frame/convert.h"
#include "frame/result_table.h"

namespace qorcred {

namespace {

// How the manager's arguments are passed: the connection and the statement stand in variables,
// tables are literals, the screen's last-modified text and the selected row are properties. The
// error's flag and text come back.
constexpr Passing kQuery[] = {Passing::kVariable, Passing::kVariable, Passing::kReadBack,
                              Passing::kReadBack};
constexpr Passing kUpdate[] = {Passing::kVariable, Passing::kVariable, Passing::kValue,
                               Passing::kReadBack, Passing::kReadBack, Passing::kValue,
                               Passing::kValue};
constexpr Passing kInsert[] = {Passing::kVariable, Passing::kVariable, Passing::kValue,
                               Passing::kValue,    Passing::kReadBack, Passing::kReadBack};
constexpr Passing kDelete[] = {Passing::kVariable, Passing::kValue, Passing::kVariable,
                               Passing::kReadBack, Passing::kReadBack};

// Whether the manager set the flag. One of another type than Boolean must not end an operation
// whose statement has run: whatever is neither empty nor 0 counts as set.
bool IsSet(const Value& flag) {
  if (IsEmptyText(flag)) return false;
  return !IsNumeric(flag) || ToDouble(flag) != 0;
}

// Calls a manager operation whose arguments hold the error's flag and text one behind the other at
// `errorPosition`, and takes both back whether the statement failed or not.
Value CallManager(Object& manager, std::string_view operation, Arguments arguments,
                  std::size_t errorPosition, DatabaseError& error) {
  Value result = manager.Invoke(operation, InvokeKind::kCall, arguments);
  error.flag = IsSet(arguments[errorPosition]);
  const auto* text = arguments[errorPosition + 1].As<std::string>();
  error.text = text == nullptr ? std::string() : *text;
  return result;
}

}  // namespace

void TableView::SortByText(std::int32_t firstRow, std::int32_t lastRow, std::int32_t column) const {
  constexpr int kAscending = 0;
  constexpr int kTextIgnoringCase = 9;
  Marked([&] {
    Call(object(), "QuickSort", firstRow, lastRow, column, kAscending, kTextIgnoringCase);
  });
}

std::int32_t AnsweredNumber(const Value& answer) {
  return RoundToLong(NumericValue(answer));
}

void Connection::Execute(std::string sql) const {
  Call(object(), "Execute", Variable(std::move(sql)), Variable(0));
}

Value DatabaseManager::Select(const ObjectRef& connection, std::string sql,
                              DatabaseError& error) const {
  std::array<Value, 4> arguments{Value(connection), Value(std::move(sql)), Value(error.flag),
                                 Value(error.text)};
  return CallManager(object(), "ExecuteSelect", {arguments, kQuery}, 2, error);
}

TableView DatabaseManager::ExecuteSelect(const ObjectRef& connection, std::string sql,
                                         DatabaseError& error) const {
  return TableView(RequireObject(Select(connection, std::move(sql), error)));
}

TableView DatabaseManager::ExecuteSelectOrEmpty(const ObjectRef& connection, std::string sql,
                                                DatabaseError& error) const {
  const Value answer = Select(connection, std::move(sql), error);
  const ObjectRef* table = answer.As<ObjectRef>();
  const bool missing = table == nullptr ? IsEmptyText(answer) : *table == nullptr;
  return TableView(missing ? std::make_shared<ResultTable>() : RequireObject(answer));
}

Value DatabaseManager::ExecuteScalar(const ObjectRef& connection, std::string sql,
                                     DatabaseError& error) const {
  std::array<Value, 4> arguments{Value(connection), Value(std::move(sql)), Value(error.flag),
                                 Value(error.text)};
  return CallManager(object(), "ExecuteScalar", {arguments, kQuery}, 2, error);
}

Value DatabaseManager::ExecuteUpdate(const ObjectRef& connection, std::string sql,
                                     std::string_view table, DatabaseError& error) const {
  std::array<Value, 5> arguments{Value(connection), Value(std::move(sql)), Value(table),
                                 Value(error.flag), Value(error.text)};
  return CallManager(object(), "ExecuteUpdate", {arguments, kUpdate}, 3, error);
}

Value DatabaseManager::ExecuteUpdate(const ObjectRef& connection, std::string sql,
                                     std::string_view table, DatabaseError& error,
                                     const Value& lastModified, const Value& rid) const {
  std::array<Value, 7> arguments{
      Value(connection), Value(std::move(sql)), Value(table), Value(error.flag),
      Value(error.text), lastModified,          rid};
  return CallManager(object(), "ExecuteUpdate", {arguments, kUpdate}, 3, error);
}

std::int32_t DatabaseManager::ExecuteInsert(const ObjectRef& connection, std::string sql,
                                            std::string_view lastModified, std::string_view table,
                                            DatabaseError& error) const {
  std::array<Value, 6> arguments{Value(connection), Value(std::move(sql)), Value(lastModified),
                                 Value(table),      Value(error.flag),     Value(error.text)};
  return AnsweredNumber(CallManager(object(), "ExecuteInsert", {arguments, kInsert}, 4, error));
}

void DatabaseManager::ExecuteDelete(const ObjectRef& connection, std::string_view table,
                                    std::int32_t rid, DatabaseError& error) const {
  std::array<Value, 5> arguments{Value(connection), Value(table), Value(rid), Value(error.flag),
                                 Value(error.text)};
  CallManager(object(), "ExecuteDelete", {arguments, kDelete}, 3, error);
}

std::int32_t DatabaseManager::ExecuteQueryDelete(const ObjectRef& connection, std::string sql,
                                                 DatabaseError& error) const {
  std::array<Value, 4> arguments{Value(connection), Value(std::move(sql)), Value(error.flag),
                                 Value(error.text)};
  return AnsweredNumber(CallManager(object(), "ExecuteQueryDelete", {arguments, kQuery}, 2, error));
}

}  // namespace qorcred

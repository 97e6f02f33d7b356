#include "host/components/database_manager.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "frame/convert.h"
#include "frame/manager_operations.h"
#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "frame/schema.h"
#include "host/store/method_table.h"
#include "host/store/store_connection.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

using dialect::StatementKind;
using qorcred::Arguments;
using qorcred::Value;

// The text of the failure being handled.
std::string FailureText() {
  try {
    RaiseAsRuntimeError();
  } catch (const qorcred::RuntimeError& failure) {
    return failure.description();
  }
}

// Runs `body` with the operation's error flag and text cleared; a failure sets both and gives
// `empty`.
template <typename Body>
Value Report(Arguments arguments, const qorcred::ManagerOperation& operation, Value empty,
             Body&& body) {
  const std::size_t position = operation.errorFlagAt;
  arguments[position] = false;
  arguments[position + 1] = Value("");
  try {
    return body();
  } catch (...) {
    arguments[position] = true;
    arguments[position + 1] = FailureText();
    return empty;
  }
}

Value EmptyTable() {
  return {qorcred::ObjectRef(std::make_shared<qorcred::ResultTable>())};
}

const std::string& StatementIn(const Value& argument) {
  const auto* text = argument.As<std::string>();
  if (text == nullptr) {
    throw StoreError("The statement must be a text");
  }
  return *text;
}

// A number for callers that count in 32 bits.
Value Count(std::int64_t number) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  return {static_cast<std::int32_t>(std::min(number, kMost))};
}

bool IsGiven(const Value& argument) {
  return !argument.Is(qorcred::ValueType::kMissing) && !qorcred::IsEmptyText(argument);
}

}  // namespace

Value DatabaseManagerObject::Invoke(std::string_view member, qorcred::InvokeKind kind,
                                    Arguments arguments) {
  using Self = DatabaseManagerObject;
  static constexpr std::array kMethods{
      Method<Self>{qorcred::kExecuteSelect.name, 4, 4, &Self::ExecuteSelect},
      Method<Self>{qorcred::kExecuteScalar.name, 4, 4, &Self::ExecuteScalar},
      Method<Self>{qorcred::kExecuteUpdate.name, 5, 7, &Self::ExecuteUpdate},
      Method<Self>{qorcred::kExecuteInsert.name, 6, 6, &Self::ExecuteInsert},
      Method<Self>{qorcred::kExecuteDelete.name, 5, 5, &Self::ExecuteDelete},
      Method<Self>{qorcred::kExecuteQueryDelete.name, 4, 4, &Self::ExecuteQueryDelete},
      Method<Self>{"pbGetRowIDStringConstant", 0, 0, &Self::RowIdText},
      Method<Self>{"pbGetLastModifiedDateStringConstant", 0, 0, &Self::LastModifiedText},
  };
  return RunMethod<Self>(*this, "The database manager", kMethods, member, kind, arguments);
}

Value DatabaseManagerObject::ExecuteSelect(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return Report(arguments, qorcred::kExecuteSelect, EmptyTable(), [&]() -> Value {
    return qorcred::ObjectRef(session.Select(StatementIn(arguments[1])).table);
  });
}

Value DatabaseManagerObject::ExecuteScalar(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return Report(arguments, qorcred::kExecuteScalar, Value(),
                [&] { return session.Scalar(StatementIn(arguments[1])); });
}

Value DatabaseManagerObject::ExecuteUpdate(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return Report(arguments, qorcred::kExecuteUpdate, Count(0), [&] {
    const std::string& sql = StatementIn(arguments[1]);
    // Only both together say which version of which row is meant. The table named may differ from
    // the one that is changed: hosts name DIRECTORYCODE for an update of TENANTS.
    const bool versioned = arguments.size() == 7 && IsGiven(arguments[5]) && IsGiven(arguments[6]);
    if (!versioned) {
      return Count(session.Change(sql, StatementKind::kUpdate).rows);
    }
    const std::string table = qorcred::TextOrEmpty(arguments[2]);
    const RowVersion version{table, qorcred::ToLong(arguments[6]), arguments[5]};
    return Count(session.UpdateVersion(sql, version).rows);
  });
}

Value DatabaseManagerObject::ExecuteInsert(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return Report(arguments, qorcred::kExecuteInsert, Count(0), [&] {
    return Count(session.Change(StatementIn(arguments[1]), StatementKind::kInsert).newRow);
  });
}

Value DatabaseManagerObject::ExecuteDelete(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return Report(arguments, qorcred::kExecuteDelete, Count(0), [&] {
    const std::string table = qorcred::ToText(arguments[1]);
    return Count(session.DeleteRow(table, qorcred::ToLong(arguments[2])));
  });
}

Value DatabaseManagerObject::ExecuteQueryDelete(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  return Report(arguments, qorcred::kExecuteQueryDelete, Count(0), [&] {
    return Count(session.Change(StatementIn(arguments[1]), StatementKind::kDelete).rows);
  });
}

Value DatabaseManagerObject::RowIdText(Arguments /*arguments*/) {
  return {dialect::kRowIdText};
}

Value DatabaseManagerObject::LastModifiedText(Arguments /*arguments*/) {
  return {qorcred::kLastModifiedText};
}

}  // namespace qorhost

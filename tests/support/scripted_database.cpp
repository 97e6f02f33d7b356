#include "tests/support/scripted_database.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "frame/manager_operations.h"
#include "frame/runtime_error.h"

namespace qortest {

using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::ResultTable;
using qorcred::RuntimeError;
using qorcred::SameMember;
using qorcred::Value;
using qorcred::ValueType;

void DatabaseScript::On(std::string part, Answer answer) {
  const auto found = std::find_if(rules_.begin(), rules_.end(),
                                  [&part](const Rule& rule) { return rule.part == part; });
  if (found != rules_.end()) {
    found->answers.push_back(std::move(answer));
    return;
  }
  rules_.push_back({std::move(part), {std::move(answer)}});
}

void DatabaseScript::Replace(std::string part, Answer answer) {
  std::erase_if(rules_, [&part](const Rule& rule) { return rule.part == part; });
  On(std::move(part), std::move(answer));
}

void DatabaseScript::Number(std::string part, Value value) {
  On(std::move(part), {.value = std::move(value)});
}

void DatabaseScript::Error(std::string part, std::string error) {
  On(std::move(part), {.error = std::move(error)});
}

void DatabaseScript::FailAt(std::size_t n) {
  statements_ = 0;
  failAt_ = n;
  failed_.clear();
}

const Answer* DatabaseScript::Next(std::string_view statement) {
  if (++statements_ == failAt_) {
    failed_ = statement;
    return &failure_;
  }
  const auto found = std::find_if(rules_.rbegin(), rules_.rend(), [statement](const Rule& rule) {
    return statement.find(rule.part) != std::string_view::npos;
  });
  if (found == rules_.rend()) {
    return nullptr;
  }
  const Answer& answer = found->answers[found->next];
  found->next = std::min(found->next + 1, found->answers.size() - 1);
  return &answer;
}

int DatabaseScript::LiveTables() const {
  return static_cast<int>(std::count_if(tables_.begin(), tables_.end(),
                                        [](const auto& table) { return !table.expired(); }));
}

Value ScriptedConnection::Invoke(std::string_view member, InvokeKind kind,
                                 qorcred::Arguments arguments) {
  EXPECT_EQ(kind, InvokeKind::kCall) << member;
  gate_.Pass(member);
  if (SameMember(member, "BeginTrans")) {
    ++begun_;
  } else if (SameMember(member, "CommitTrans")) {
    ++committed_;
  } else if (SameMember(member, "RollbackTrans")) {
    ++rolledBack_;
  } else if (SameMember(member, "Execute") && arguments.size() == 2) {
    arguments[1] = std::int32_t{1};
  } else {
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }
  return {};
}

/// An operation of the manager and how it is answered.
struct ScriptedManager::Operation {
  qorcred::ManagerOperation operation;
  enum class Kind { kSelect, kScalar, kInsert, kChange } kind;
  std::size_t omissible = 0;  ///< arguments behind the error text

  [[nodiscard]] std::size_t flagAt() const { return operation.errorFlagAt; }
  [[nodiscard]] std::size_t fewest() const { return flagAt() + 2; }
  [[nodiscard]] std::size_t most() const { return fewest() + omissible; }
};

ScriptedManager::ScriptedManager(FaultGate& gate, DatabaseScript& script, ObjectRef connection)
    : gate_(gate), script_(script), connection_(std::move(connection)) {}

Value ScriptedManager::Result(const Operation& operation, const Answer* answer) {
  const bool failed = answer != nullptr && !answer->error.empty();
  switch (operation.kind) {
    case Operation::Kind::kSelect: {
      if (answer != nullptr && answer->nothing) {
        return answer->value;
      }
      if (!failed && answer != nullptr && answer->table != nullptr) {
        return answer->table;
      }
      if (failed || answer == nullptr || answer->rows.empty()) {
        const auto empty = std::make_shared<ResultTable>();
        script_.Remember(empty);
        return ObjectRef(empty);
      }
      const auto table =
          std::make_shared<ResultTable>(answer->rows.size(), answer->rows.front().size());
      for (std::size_t row = 0; row < answer->rows.size(); ++row) {
        for (std::size_t column = 0; column < answer->rows[row].size(); ++column) {
          table->At(static_cast<std::int32_t>(row), static_cast<std::int32_t>(column)) =
              answer->rows[row][column];
        }
      }
      script_.Remember(table);
      return ObjectRef(table);
    }
    case Operation::Kind::kScalar:
      return failed || answer == nullptr ? Value(qorcred::Null{}) : answer->value;
    case Operation::Kind::kInsert:
      if (failed) {
        return std::int32_t{0};
      }
      return answer == nullptr || answer->value.Is(ValueType::kEmpty)
                 ? Value(script_.NextIdentity())
                 : answer->value;
    case Operation::Kind::kChange:
      if (failed) {
        return std::int32_t{0};
      }
      return answer == nullptr || answer->value.Is(ValueType::kEmpty) ? Value(std::int32_t{1})
                                                                      : answer->value;
  }
  return {};
}

Value ScriptedManager::Invoke(std::string_view member, InvokeKind kind,
                              qorcred::Arguments arguments) {
  using Kind = Operation::Kind;
  static constexpr std::array kOperations{Operation{qorcred::kExecuteSelect, Kind::kSelect},
                                          Operation{qorcred::kExecuteScalar, Kind::kScalar},
                                          Operation{qorcred::kExecuteUpdate, Kind::kChange, 2},
                                          Operation{qorcred::kExecuteInsert, Kind::kInsert},
                                          Operation{qorcred::kExecuteDelete, Kind::kChange},
                                          Operation{qorcred::kExecuteQueryDelete, Kind::kChange}};

  EXPECT_EQ(kind, InvokeKind::kCall) << member;
  gate_.Pass(member);
  if (SameMember(member, "pbGetRowIDStringConstant")) {
    return "_ROWID_";
  }
  if (SameMember(member, "pbGetLastModifiedDateStringConstant")) {
    return "LASTMODIFIEDDATE";
  }
  const auto* operation = std::find_if(
      kOperations.begin(), kOperations.end(),
      [member](const Operation& one) { return SameMember(one.operation.name, member); });
  if (operation == kOperations.end()) {
    throw RuntimeError(ErrorNumber::kUnknownMember);
  }
  if (arguments.size() < operation->fewest() || arguments.size() > operation->most()) {
    ADD_FAILURE() << member << " was called with " << arguments.size() << " arguments";
    throw RuntimeError(ErrorNumber::kWrongArgumentCount);
  }
  const ObjectRef* connection = arguments[0].As<ObjectRef>();
  EXPECT_TRUE(connection != nullptr && *connection == connection_)
      << member << " did not get the host's connection";
  EXPECT_TRUE(arguments[1].Is(ValueType::kString)) << member;
  EXPECT_TRUE(arguments[operation->flagAt()].Is(ValueType::kBoolean)) << member;
  EXPECT_TRUE(arguments[operation->flagAt() + 1].Is(ValueType::kString)) << member;

  const std::string* statement = arguments[1].As<std::string>();
  const Answer* answer = statement == nullptr ? nullptr : script_.Next(*statement);
  if (answer == nullptr || !answer->leavesVerdict) {
    const std::string error = answer == nullptr ? std::string() : answer->error;
    arguments[operation->flagAt()] =
        answer == nullptr ? false : answer->flag.value_or(!error.empty());
    arguments[operation->flagAt() + 1] = error;
  }
  return Result(*operation, answer);
}

}  // namespace qortest

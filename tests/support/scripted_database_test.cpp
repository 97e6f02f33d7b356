// The scripted answers and the injected failures that the other tests rely on.
#include "tests/support/scripted_database.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>

#include "frame/runtime_error.h"
#include "tests/support/fault_gate.h"

namespace qortest {
namespace {

TEST(DatabaseScriptTest, AnswersAStatementByAPartOfIt) {
  DatabaseScript script;
  script.Number("FROM Units", 1);

  EXPECT_EQ(script.Next("SELECT a FROM Tenants"), nullptr);
  ASSERT_NE(script.Next("SELECT a FROM Units"), nullptr);
  EXPECT_EQ(script.Next("SELECT a FROM Units")->value, qorcred::Value(1));
}

TEST(DatabaseScriptTest, GivesAnswersInTurnAndKeepsTheLast) {
  DatabaseScript script;
  script.Number("a", 1);
  script.Number("a", 2);

  EXPECT_EQ(script.Next("a")->value, qorcred::Value(1));
  EXPECT_EQ(script.Next("a")->value, qorcred::Value(2));
  EXPECT_EQ(script.Next("a")->value, qorcred::Value(2));

  script.Replace("a", {.value = 3});
  EXPECT_EQ(script.Next("a")->value, qorcred::Value(3));
}

TEST(DatabaseScriptTest, LooksAtLaterPartsFirst) {
  DatabaseScript script;
  script.Number("ab", 1);
  script.Number("b", 2);

  EXPECT_EQ(script.Next("ab")->value, qorcred::Value(2));
}

TEST(DatabaseScriptTest, FailsTheStatementItIsToldTo) {
  DatabaseScript script;
  script.FailAt(2);

  EXPECT_EQ(script.Next("a"), nullptr);
  ASSERT_NE(script.Next("b"), nullptr);
  EXPECT_EQ(script.failed(), "b");
  EXPECT_EQ(script.Next("c"), nullptr);
}

/// The verdict of a select whose answer is `answer`, when the caller hands over True and "stale".
std::pair<qorcred::Value, qorcred::Value> VerdictOf(Answer answer) {
  FaultGate gate;
  DatabaseScript script;
  script.On("SELECT", std::move(answer));
  const auto connection = std::make_shared<ScriptedConnection>(gate);
  ScriptedManager manager(gate, script, connection);
  std::array<qorcred::Value, 4> arguments{qorcred::ObjectRef(connection), "SELECT a", true,
                                          "stale"};
  manager.Invoke("ExecuteSelect", qorcred::InvokeKind::kCall, arguments);
  return {arguments[2], arguments[3]};
}

TEST(ScriptedManagerTest, GivesTheVerdictOfTheScript) {
  using Verdict = std::pair<qorcred::Value, qorcred::Value>;
  EXPECT_EQ(VerdictOf({}), Verdict(false, ""));
  EXPECT_EQ(VerdictOf({.error = "locked"}), Verdict(true, "locked"));
  EXPECT_EQ(VerdictOf({.error = "locked", .flag = false}), Verdict(false, "locked"));
  EXPECT_EQ(VerdictOf({.flag = true}), Verdict(true, ""));
  EXPECT_EQ(VerdictOf({.leavesVerdict = true}), Verdict(true, "stale"));
}

TEST(FaultGateTest, FailsTheCallOfThatNumberOnce) {
  FaultGate gate;
  gate.FailAt(2);

  gate.Pass("one");
  EXPECT_THROW(gate.Pass("two"), qorcred::RuntimeError);
  gate.Pass("three");

  EXPECT_EQ(gate.calls(), 3U);
  EXPECT_EQ(gate.failed(), "two");
}

TEST(FaultGateTest, FailsTheFirstCallOfThatNameOnce) {
  FaultGate gate;
  gate.FailOn("Commit");

  gate.Pass("BeginTrans");
  EXPECT_THROW(gate.Pass("CommitTrans"), qorcred::RuntimeError);
  gate.Pass("CommitTrans");

  EXPECT_EQ(gate.failed(), "CommitTrans");
}

TEST(ScriptedConnectionTest, CountsOpenTransactions) {
  FaultGate gate;
  ScriptedConnection connection(gate);

  qorcred::Call(connection, "BeginTrans");
  EXPECT_EQ(connection.open(), 1);
  gate.FailOn("RollbackTrans");
  EXPECT_THROW(qorcred::Call(connection, "RollbackTrans"), qorcred::RuntimeError);
  EXPECT_EQ(connection.open(), 1);
  qorcred::Call(connection, "RollbackTrans");
  EXPECT_EQ(connection.open(), 0);
}

}  // namespace
}  // namespace qortest

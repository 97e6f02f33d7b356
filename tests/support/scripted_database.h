// Doubles of the connection and the database manager: they answer from a script.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/object.h"
#include "frame/result_table.h"
#include "tests/support/fault_gate.h"

namespace qortest {

using Row = std::vector<qorcred::Value>;

/// What the manager answers to one statement.
struct Answer {
  std::vector<Row> rows = {};     ///< of a select; none gives the empty table
  qorcred::Value value = {};      ///< of any other statement, and of a select without a table
  std::string error = {};         ///< when not empty, sets the error flag and this text
  bool nothing = false;           ///< a select that gives no table at all
  qorcred::ObjectRef table = {};  ///< a select that gives this table
  std::optional<bool> flag = {};  ///< the error flag, when it does not go by `error`
  bool leavesVerdict = false;     ///< error flag and text stay as they were handed over
};

/// The answers to statements, and what stayed open or alive after them.
class DatabaseScript {
 public:
  /// The next statement that contains `part` gets `answer`, the one after it the next answer given
  /// for `part`; the last answer stays. Parts given later are looked at first.
  void On(std::string part, Answer answer);

  /// The only answer for `part` from now on.
  void Replace(std::string part, Answer answer);

  void Select(std::string part, std::vector<Row> rows) {
    On(std::move(part), {.rows = std::move(rows)});
  }
  void Number(std::string part, qorcred::Value value);
  void Error(std::string part, std::string error);

  /// The n-th statement from now on fails, whatever its answer (1 is the next one).
  void FailAt(std::size_t n);
  /// The statement that failed so; empty when none did.
  [[nodiscard]] const std::string& failed() const { return failed_; }

  /// The answer for a statement; null when none was given.
  [[nodiscard]] const Answer* Next(std::string_view statement);

  [[nodiscard]] std::int32_t NextIdentity() { return ++lastIdentity_; }
  void Remember(const std::shared_ptr<qorcred::ResultTable>& table) { tables_.push_back(table); }
  [[nodiscard]] int LiveTables() const;

 private:
  struct Rule {
    std::string part;
    std::vector<Answer> answers;
    std::size_t next = 0;
  };
  std::vector<Rule> rules_;
  Answer failure_{.error = "the statement failed"};
  std::size_t statements_ = 0;
  std::size_t failAt_ = 0;
  std::string failed_;
  std::int32_t lastIdentity_ = 100;
  std::vector<std::weak_ptr<qorcred::ResultTable>> tables_;
};

/// The host's connection: counts its transactions.
class ScriptedConnection final : public qorcred::Object {
 public:
  explicit ScriptedConnection(FaultGate& gate) : gate_(gate) {}

  /// Transactions begun and neither committed nor rolled back.
  [[nodiscard]] int open() const { return begun_ - committed_ - rolledBack_; }
  [[nodiscard]] int begun() const { return begun_; }
  [[nodiscard]] int committed() const { return committed_; }
  [[nodiscard]] int rolledBack() const { return rolledBack_; }

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  FaultGate& gate_;
  int begun_ = 0;
  int committed_ = 0;
  int rolledBack_ = 0;
};

/// `qorDBI.clsDBManager`. Unscripted: a select is empty, a scalar Null, an insert counts identities
/// up from 101, everything else changes 1 row. Each call must bring the connection, the statement
/// and the error arguments in their places and types; otherwise the running test fails.
class ScriptedManager final : public qorcred::Object {
 public:
  ScriptedManager(FaultGate& gate, DatabaseScript& script, qorcred::ObjectRef connection);

  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  struct Operation;
  [[nodiscard]] qorcred::Value Result(const Operation& operation, const Answer* answer);

  FaultGate& gate_;
  DatabaseScript& script_;
  qorcred::ObjectRef connection_;
};

}  // namespace qortest

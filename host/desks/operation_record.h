// What came of an operation, collected while it runs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/desks/session.h"

namespace qorhost {

/// Collects, while it lives, what the controllers show and what fails: one for each operation. The
/// session must outlive it; of several the latest collects.
class OperationRecord {
 public:
  /// `onInsert` is told of every row that is inserted meanwhile. What it raises, the insert raises.
  explicit OperationRecord(DeskSession& session, InsertHandler onInsert = nullptr);
  ~OperationRecord();
  OperationRecord(const OperationRecord&) = delete;
  OperationRecord& operator=(const OperationRecord&) = delete;

  [[nodiscard]] const std::vector<std::string>& failures() const { return notes_.failures; }
  /// Raises FailureError with the first failure, if there is one: "cannot `doing`: ...`addition`".
  void RequireNoFailure(std::string_view doing, std::string_view addition = {}) const;
  /// Leaves the first failure out, when the operation went on behind it: it stored something, a
  /// message was shown, or more has failed.
  void ForgiveFirstFailure(bool stored);
  /// What the operation came to, which returned `returned`: done only when it succeeded without a
  /// failure or a refusal on the way.
  [[nodiscard]] Outcome End(bool returned);

 private:
  Attendance& attendance_;
  OperationNotes notes_;
  OperationNotes* previous_;
};

}  // namespace qorhost

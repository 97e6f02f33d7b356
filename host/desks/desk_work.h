// An operation at a desk as one unit of work: stored as a whole or not at all, and never over what
// somebody else has changed unseen.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/session.h"

namespace qorhost {

/// The state of a unit that a desk shows. The session must outlive it.
class ShownState {
 public:
  ShownState(DeskSession& session, std::int32_t unitKey) : session_(session), unitKey_(unitKey) {}

  /// To be called before the desk reads what it shows. `selects` read the rows that an operation on
  /// it is meant for, whole.
  void Take(std::vector<std::string> selects = {});
  /// What one more SELECT reads, shown later than the rest: the version stays that of the rest.
  void TakeAlso(std::string select);
  /// The unit is as the desk's own operation has left it.
  void TakeOver(const UnitVersion& version) { version_ = version; }

  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }
  [[nodiscard]] const UnitVersion& version() const { return version_; }
  /// Whether the rows are what they were, column by column.
  [[nodiscard]] bool IsStillSo() const;

 private:
  using Rows = std::vector<std::vector<qorcred::Value>>;
  void ReadInto(Rows& rows, const std::string& select) const;
  [[nodiscard]] Rows Read() const;

  DeskSession& session_;
  std::int32_t unitKey_;
  UnitVersion version_;
  std::vector<std::string> selects_;
  Rows rows_;
};

struct DeskOperation {
  std::string what;  ///< as the audit names it: "directory code 0101: edit"
  /// Runs the controller's operation, once or twice, and tells what came of it.
  std::function<Outcome()> run;
  /// Puts the screen back as it was before the first run, and a new controller on it.
  std::function<void()> startAgain;
};

/// Runs an operation and stores what it did when it was done; else nothing stays of it. Where the
/// unit has changed since it was shown and the rows have not, it runs again beside nobody else, the
/// same questions getting the same answers. No question is asked while others wait. Inside a unit
/// of work of many operations it is a part of that.
[[nodiscard]] Outcome RunAsWork(DeskSession& session, ShownState& shown,
                                const DeskOperation& operation);

/// Work of many operations on one unit: takes the right to write first, gives `run` the rest, and
/// stores everything when that says so. A store that fails on the way is a failed outcome; what
/// `run` raises leaves nothing behind.
[[nodiscard]] Outcome RunAsWhole(DeskSession& session, WorkOrder order,
                                 const std::function<Outcome()>& run);

}  // namespace qorhost

// An operation at a desk as one unit of work: stored as a whole or not at all, and never over what
// somebody else has changed unseen.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/session.h"

namespace qorhost {

/// The state of a unit that a desk shows. The session must outlive it.
class ShownState {
 public:
  ShownState(DeskSession& session, std::int32_t unitKey) : session_(session), unitKey_(unitKey) {}

  /// To be called before the desk reads what it shows of the whole unit: its lists.
  void TakeUnit();
  /// To be called before the desk reads the rows that an operation is meant for, which `selects`
  /// read whole. False when others have changed the unit since the lists were filled: what they
  /// call a row may be another one by now.
  [[nodiscard]] bool TakeRows(std::vector<std::string> selects);
  /// What one more SELECT reads, shown later than the rest: the version stays that of the rest.
  void TakeAlso(std::string select);
  /// The unit is as the desk's own operation has left it, with the rows that Reread() gave before
  /// its end; `besideOthers` when others had changed it before, which the lists do not show.
  using Rows = std::vector<std::vector<qorcred::Value>>;
  [[nodiscard]] Rows Reread() const;
  void TakeOver(const UnitVersion& version, Rows rows, bool besideOthers);

  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }
  [[nodiscard]] const UnitVersion& version() const { return version_; }
  /// A cell of the first row that TakeRows() read, by its column; Null without one.
  [[nodiscard]] qorcred::Value Cell(std::string_view column) const;
  /// Whether the rows are what they were, column by column.
  [[nodiscard]] bool IsStillSo() const;

 private:
  std::vector<std::string> ReadInto(Rows& rows, const std::string& select) const;

  DeskSession& session_;
  std::int32_t unitKey_;
  UnitVersion version_;
  UnitVersion lists_;
  std::vector<std::string> selects_;
  std::vector<std::string> columns_;  // of the first of them
  Rows rows_;
};

struct DeskOperation {
  std::string what;  ///< as the audit names it: "edit directory code 0101"
  /// Runs the controller's operation, once or twice, and tells what came of it.
  std::function<Outcome()> run;
  /// Puts the screen back as it was before the first run, and a new controller on it: before a
  /// second run, and when the operation has ended stale.
  std::function<void()> startAgain;
};

/// Runs an operation and stores what it did when it was done; else nothing stays of it. Where the
/// unit has changed since it was shown and the rows have not, it runs again beside nobody else, the
/// same questions getting the same answers. No question is asked while others wait. Inside a unit
/// of work of many operations it is a part of that.
[[nodiscard]] Outcome RunAsWork(DeskSession& session, ShownState& shown,
                                const DeskOperation& operation);

/// The same for an operation on a screen, which is put back before `startAgain`.
[[nodiscard]] Outcome RunOnScreen(DeskSession& session, ShownState& shown, ScreenModel& screen,
                                  const DeskOperation& operation);

}  // namespace qorhost

// An operation at a desk as one unit of work: stored as a whole or not at all, and never over what
// somebody else has changed unseen.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/session.h"
#include "host/screens/screen_model.h"

namespace qorhost {

/// What rows of the store are to a desk that shows them.
enum class ShownAs : std::uint8_t { kRow, kHolder, kTaker };

/// A SELECT of whole rows that a desk shows, and of which table they are.
struct ShownSelect {
  std::string select;
  ShownAs as = ShownAs::kRow;
  std::string_view table = {};
};

/// The state of a unit that a desk shows. The session must outlive it.
class ShownState {
 public:
  ShownState(DeskSession& session, std::int32_t unitKey) : session_(session), unitKey_(unitKey) {}

  /// To be called before the desk reads what it shows of the whole unit: its lists.
  void TakeUnit();
  /// To be called before the desk reads the rows that an operation is meant for, which `selects`
  /// read whole. False when others have changed the unit since the lists were filled: what they
  /// call a row may be another one by now.
  [[nodiscard]] bool TakeRows(std::vector<ShownSelect> selects);
  /// What one more SELECT reads, shown later than the rest: the version stays that of the rest.
  void TakeAlso(ShownSelect select);

  using ReadRows = QueryResult;        // what a SELECT gave
  using Rows = std::vector<ReadRows>;  // one for each SELECT
  [[nodiscard]] Rows Reread() const;
  /// The unit is as the desk's own operation has left it, with the rows that Reread() gave before
  /// its end; `besideOthers` when others had changed it before, which the lists do not show.
  void TakeOver(const UnitVersion& version, Rows rows, bool besideOthers);
  /// The rows are shown no more.
  void Forget();

  [[nodiscard]] std::int32_t unitKey() const { return unitKey_; }
  [[nodiscard]] const UnitVersion& version() const { return version_; }
  /// A cell of the first row that TakeRows() read, by its column; Null without one.
  [[nodiscard]] qorcred::Value Cell(std::string_view column) const;
  /// What differs from the rows that were shown, column by column; nothing when they are as they
  /// were.
  struct Difference {
    StaleCause cause = StaleCause::kUnknown;
    std::string_view table;
    std::vector<std::int32_t> rids;  ///< then and now
  };
  [[nodiscard]] std::optional<Difference> WhatDiffers() const;
  /// What others have done since it was shown: that which made the difference, if that is known.
  [[nodiscard]] std::vector<WorkEntry> ChangesBehind(const Difference& difference) const;

 private:
  [[nodiscard]] ReadRows Read(const ShownSelect& select) const;

  DeskSession& session_;
  std::int32_t unitKey_;
  UnitVersion version_;
  UnitVersion lists_;
  std::vector<ShownSelect> selects_;
  Rows rows_;
};

struct DeskOperation {
  std::string what;  ///< as the audit names it: "edit directory code 0101"
  /// Runs the controller's operation, once or twice, and tells what came of it.
  std::function<Outcome()> run;
  /// Puts the screen back as it was before the first run, and a new controller on it: before a
  /// second run, and when the operation has ended stale.
  std::function<void()> startAgain;
  /// Whether the desk goes on showing the rows when they are changed; else it has to take them
  /// anew, and they are not read again.
  bool keepsShowing = true;
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

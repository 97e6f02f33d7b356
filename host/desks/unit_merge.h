// Brings the store's directory codes of one unit to what the unit holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "dircodes/cls_dir_code.h"
#include "host/desks/desk_error.h"
#include "host/desks/merge_aftermath.h"
#include "host/desks/merge_choice.h"
#include "host/desks/merge_plan.h"
#include "host/desks/outcome.h"
#include "host/desks/progress.h"
#include "host/desks/session.h"
#include "host/screens/dir_code_screen.h"
#include "host/unit/unit_file.h"

namespace qorhost {

/// Directory codes by row and number: what somebody agrees to lose.
using LostCodes = std::set<std::pair<std::int32_t, double>>;

/// What an applied merge tells. Nothing is changed unless it is done.
struct MergeReport : Outcome {
  std::size_t inserted = 0;
  std::size_t updated = 0;
  std::size_t deleted = 0;
  std::size_t unchanged = 0;
  std::size_t kept = 0;  ///< stored codes that were not deleted, as the plan says
  /// Refused because codes would be deleted that nobody has agreed to lose: somebody is to be asked
  /// first.
  struct Losses {
    std::size_t stored = 0;  ///< how many codes the unit has
    LostCodes codes;         ///< those that would be deleted

    /// "2 of the unit's 6 directory codes will be deleted. Go on?"
    [[nodiscard]] std::string Question() const;
  };
  std::optional<Losses> losses;
  std::vector<LineFault> faults;  ///< lines that the screen refuses, as the plan says
  MergeAftermath aftermath;
};

/// What becomes of the lines of a unit file that cannot be read.
enum class BadLines : std::uint8_t {
  kRefused,  ///< with one of them nothing is merged
  kLeftOut,  ///< the others are merged, but no stored code is deleted
};

/// Which stored codes a merge may delete.
enum class Deletions : std::uint8_t {
  kAgreedTo,  ///< those alone that somebody was asked about
  kAll,       ///< whatever the unit does not hold
};

/// A reading that is not merged: it is of no unit file, or has bad lines that may not be left out.
class UnusableReading : public RefusedError {
 public:
  explicit UnusableReading(const UnitReading& reading);

  [[nodiscard]] bool isUnitFile() const noexcept { return isUnitFile_; }

 private:
  bool isUnitFile_;
};

/// Why nothing is merged with so many bad lines, and what to do.
[[nodiscard]] std::string RefusalOfLines(std::size_t count);

/// The host's side of a merge: asks the controller for the store's codes, compares them with the
/// unit's and has it write each difference. The session and the reading must outlive the merge.
class UnitMerge {
 public:
  /// Raises UnusableReading.
  UnitMerge(DeskSession& session, std::int32_t unitKey, const UnitReading& reading,
            BadLines badLines, Deletions deletions = Deletions::kAgreedTo);
  ~UnitMerge();
  UnitMerge(const UnitMerge&) = delete;
  UnitMerge& operator=(const UnitMerge&) = delete;

  /// Reads the store's side and compares; writes nothing. A line that would be written is checked
  /// as an entry is: one that the screen refuses is a fault of the plan, and a bad line. Raises
  /// FailureError when the store cannot be read, and RefusedError for codes that the store's unit
  /// has no room for.
  const MergePlan& Plan();
  /// The same for somebody who accepts some of the differences: whether there is room for all of
  /// them is not asked.
  const MergePlan& Look();
  [[nodiscard]] const MergePlan& plan() const { return plan_; }
  [[nodiscard]] const std::vector<StoredCode>& stored() const { return stored_; }

  /// Plans and does all of it in one transaction, or nothing: when a step fails, when the store
  /// does not hold afterwards what the unit holds, and when `progress` says so. It is called before
  /// the first step, when the plan is made, and behind each. Refuses to delete a code that
  /// `agreed` lacks unless the merge may delete all.
  MergeReport Apply(const Progress& progress, const LostCodes& agreed = {});
  /// The same for some steps of plan() alone, by their places: deletions among them are agreed to.
  /// Ends stale, with nothing changed, when a row is not as the plan has it any more; the plan is
  /// to be made again then.
  MergeReport ApplyAccepted(const std::vector<std::size_t>& steps, const Progress& progress);

 private:
  void Compare();
  void LeaveOutRefused();

  MergeAftermath DoAll(const Progress& progress, const LostCodes& agreed);
  [[nodiscard]] LostCodes CodesToLose() const;
  void RequireAgreement(const LostCodes& agreed) const;
  void Do(const MergeStep& step);
  void RequireSame();

  DeskSession& session_;
  std::int32_t unitKey_;
  const UnitReading& reading_;
  const UnitFile& unit_;
  BadLines badLines_;
  Deletions deletions_;
  MergeRules rules_;
  std::shared_ptr<ScreenModel> connectionScreen_;
  Controlled<qorcred::clsDirCode> controller_;
  std::vector<StoredCode> stored_;
  MergePlan plan_;
  UnitVersion planned_;                ///< of the unit, when the plan was made
  std::optional<MergeChoice> choice_;  ///< nothing: all steps
};

}  // namespace qorhost

// Brings the store's directory codes of one unit to what the unit holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "dircodes/cls_dir_code.h"
#include "host/desks/merge_plan.h"
#include "host/desks/outcome.h"
#include "host/desks/progress.h"
#include "host/desks/session.h"
#include "host/screens/dir_code_screen.h"
#include "host/unit/unit_file.h"

namespace qorhost {

/// What a merge did besides its steps.
struct MergeAftermath {
  std::size_t tenantsReleased = 0;  ///< tenants that are without a code now
  std::size_t stepsWithdrawn = 0;   ///< programming steps that the unit's codes made moot
};

/// What an applied merge tells. Nothing is changed unless it is done.
struct MergeReport : Outcome {
  std::size_t inserted = 0;
  std::size_t updated = 0;
  std::size_t deleted = 0;
  std::size_t unchanged = 0;
  std::size_t kept = 0;  ///< stored codes that were not deleted, as the plan says
  /// Refused because so many codes of the unit would be deleted: somebody is to be asked first.
  struct Wholesale {
    std::size_t deletions = 0;
    std::size_t stored = 0;
  };
  std::optional<Wholesale> wholesale;
  MergeAftermath aftermath;
};

/// What becomes of the lines of a unit file that cannot be read.
enum class BadLines : std::uint8_t {
  kRefused,  ///< with one of them nothing is merged
  kLeftOut,  ///< the others are merged, but no stored code is deleted
};

/// Why a reading is not merged, and what to do; "" when it is.
[[nodiscard]] std::string RefusalOf(const UnitReading& reading, BadLines badLines);

/// The host's side of a merge: asks the controller for the store's codes, compares them with the
/// unit's and has it write each difference. The session and the reading must outlive the merge.
class UnitMerge {
 public:
  /// Raises RefusedError with RefusalOf() the reading.
  UnitMerge(DeskSession& session, std::int32_t unitKey, const UnitReading& reading,
            BadLines badLines);
  ~UnitMerge();
  UnitMerge(const UnitMerge&) = delete;
  UnitMerge& operator=(const UnitMerge&) = delete;

  /// Reads the store's side and compares; writes nothing. Raises FailureError when it cannot be
  /// read, and RefusedError for codes that the store's unit has no room for.
  const MergePlan& Plan();
  [[nodiscard]] const MergePlan& plan() const { return plan_; }
  [[nodiscard]] const std::vector<StoredCode>& stored() const { return stored_; }

  /// Plans and does all of it in one transaction, or nothing: when a step fails, when the store
  /// does not hold afterwards what the unit holds, and when `progress` says so. It is called before
  /// the first step, when the plan is made, and behind each. Refuses to delete more than half of
  /// the unit's codes unless somebody has agreed to lose as many.
  MergeReport Apply(const Progress& progress, std::size_t agreedDeletions = 0);

 private:
  void Compare();
  void ReadStored();
  void AddPrevious(const qorcred::TableView& fetched, std::int32_t firstPrevious);
  void ReadDetails();
  void ReadTenants();
  [[nodiscard]] StoredCode* FindStored(std::int32_t rid);

  MergeAftermath DoAll(const Progress& progress, std::size_t agreedDeletions);
  void RequireRoom();
  void Do(const MergeStep& step);
  std::size_t ReleaseTenants();
  void MoveTenants(std::int32_t from, std::int32_t to);
  std::size_t WithdrawMootSteps();
  void RequireSame();

  DeskSession& session_;
  std::int32_t unitKey_;
  const UnitFile& unit_;
  MergeRules rules_;
  std::shared_ptr<ScreenModel> connectionScreen_;
  Controlled<qorcred::clsDirCode> controller_;
  std::vector<StoredCode> stored_;
  std::unordered_map<std::int32_t, std::size_t> placeOf_;  // in stored_, by RID
  MergePlan plan_;
};

}  // namespace qorhost

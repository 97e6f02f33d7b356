// Brings the store's directory codes of one unit to what the unit holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dircodes/cls_dir_code.h"
#include "host/desks/merge_plan.h"
#include "host/desks/session.h"
#include "host/screens/directory_code_screen.h"
#include "host/unit/unit_file.h"

namespace qorhost {

/// The host's side of a merge: asks the controller for the store's codes, compares them with the
/// unit's and has it write each difference. The session and `unit` must outlive the merge.
class UnitMerge {
 public:
  using StepHandler = std::function<void()>;

  /// What an applied merge did besides its steps.
  struct Aftermath {
    std::size_t tenantsReleased = 0;  ///< tenants that are without a code now
    std::size_t stepsWithdrawn = 0;   ///< programming steps that the unit's codes made moot
  };

  UnitMerge(StoreSession& session, std::int32_t unitKey, const UnitFile& unit, bool withDeletions);
  ~UnitMerge();
  UnitMerge(const UnitMerge&) = delete;
  UnitMerge& operator=(const UnitMerge&) = delete;

  /// Reads the store's side and compares; writes nothing. Raises FailureError when it cannot be
  /// read.
  void Plan();
  [[nodiscard]] const MergePlan& plan() const { return plan_; }
  [[nodiscard]] const std::vector<StoredCode>& stored() const { return stored_; }

  /// Plans and does all of it in one transaction; `onStep` is told of every step. Raises
  /// FailureError, and leaves the store as it was, when a step fails or the store does not hold
  /// afterwards what the unit holds. `onPlan` sees the plan before the first step.
  Aftermath Apply(const StepHandler& onPlan, const StepHandler& onStep);

 private:
  void Compare();
  void ReadStored();
  void AddPrevious(const qorcred::TableView& fetched, std::int32_t firstPrevious);
  void ReadDetails();
  void ReadTenants();
  [[nodiscard]] StoredCode* FindStored(std::int32_t rid);
  void RequireNoFailure(std::string_view doing);

  void Do(const MergeStep& step);
  std::size_t ReleaseTenants();
  void MoveTenants(std::int32_t from, std::int32_t to);
  std::size_t WithdrawMootSteps();
  void RequireSame();

  StoreSession& session_;
  std::int32_t unitKey_;
  const UnitFile& unit_;
  MergeRules rules_;
  std::shared_ptr<ScreenModel> connectionScreen_;
  qorcred::clsDirCode controller_;
  std::vector<StoredCode> stored_;
  std::unordered_map<std::int32_t, std::size_t> placeOf_;  // in stored_, by RID
  MergePlan plan_;
};

}  // namespace qorhost

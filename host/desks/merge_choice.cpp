#include "host/desks/merge_choice.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace qorhost {

namespace {

/// What a difference is about: a code of the unit, or a row that the unit does not have.
using Key = std::pair<bool, std::int64_t>;

Key KeyOf(const MergeStep& step, std::int32_t rid) {
  const bool isDeletion = step.action == MergeAction::kDelete;
  return {isDeletion, isDeletion ? rid : static_cast<std::int64_t>(step.unitCode)};
}

/// That of an insert has no row.
std::int32_t RidOf(const MergeStep& step, const std::vector<StoredCode>& stored) {
  return step.action == MergeAction::kInsert ? 0 : stored[step.stored].rid;
}

}  // namespace

MergeChoice::MergeChoice(const MergePlan& plan, const std::vector<StoredCode>& stored,
                         const std::vector<std::size_t>& accepted) {
  for (const std::size_t at : accepted) {
    const MergeStep& step = plan.steps.at(at);
    accepted_.push_back(
        {step, step.action == MergeAction::kInsert ? StoredCode{} : stored[step.stored]});
  }
  std::sort(accepted_.begin(), accepted_.end(), [](const Accepted& one, const Accepted& other) {
    return KeyOf(one.step, one.row.rid) < KeyOf(other.step, other.row.rid);
  });
}

const MergeChoice::Accepted* MergeChoice::Find(const MergeStep& step,
                                               const std::vector<StoredCode>& stored) const {
  const Key key = KeyOf(step, RidOf(step, stored));
  const auto found = std::lower_bound(
      accepted_.begin(), accepted_.end(), key,
      [](const Accepted& one, const Key& sought) { return KeyOf(one.step, one.row.rid) < sought; });
  const bool isThere = found != accepted_.end() && KeyOf(found->step, found->row.rid) == key;
  return isThere ? &*found : nullptr;
}

bool MergeChoice::Narrow(MergePlan& plan, const std::vector<StoredCode>& stored) const {
  std::vector<MergeStep> taken;
  for (MergeStep& step : plan.steps) {
    const Accepted* accepted = Find(step, stored);
    if (accepted == nullptr) {
      continue;
    }
    const bool isAsShown =
        accepted->step.action == step.action &&
        (step.action == MergeAction::kInsert || accepted->row == stored[step.stored]);
    if (!isAsShown) {
      return false;
    }
    taken.push_back(std::move(step));
  }
  plan.steps = std::move(taken);
  return plan.steps.size() == accepted_.size();
}

const MergeStep* MergeChoice::FirstLeft(const MergePlan& plan,
                                        const std::vector<StoredCode>& stored) const {
  const auto left = std::find_if(plan.steps.begin(), plan.steps.end(), [&](const MergeStep& step) {
    return Find(step, stored) != nullptr;
  });
  return left == plan.steps.end() ? nullptr : &*left;
}

}  // namespace qorhost

// The differences of a plan that somebody has accepted one by one.
#pragma once

#include <cstddef>
#include <vector>

#include "host/desks/merge_plan.h"

namespace qorhost {

/// Remembers accepted differences with the rows as they were shown: of a plan that is made later,
/// beside nobody else, it takes these and no others.
class MergeChoice {
 public:
  /// `accepted` are places of the plan's steps.
  MergeChoice(const MergePlan& plan, const std::vector<StoredCode>& stored,
              const std::vector<std::size_t>& accepted);

  /// Leaves what was not accepted out of a later plan for the same unit file. False when something
  /// that was accepted is in it no more, or its row is another than it was shown.
  [[nodiscard]] bool Narrow(MergePlan& plan, const std::vector<StoredCode>& stored) const;
  /// The first step that was accepted and that a plan still has; null for none.
  [[nodiscard]] const MergeStep* FirstLeft(const MergePlan& plan,
                                           const std::vector<StoredCode>& stored) const;

 private:
  struct Accepted {
    MergeStep step;
    StoredCode row;  ///< of an update and a delete
  };
  [[nodiscard]] const Accepted* Find(const MergeStep& step,
                                     const std::vector<StoredCode>& stored) const;

  std::vector<Accepted> accepted_;  // by KeyOf()
};

}  // namespace qorhost

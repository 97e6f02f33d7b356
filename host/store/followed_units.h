// What a unit of work keeps of units instead of asking for it again and again.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "host/store/unit_register.h"

namespace qorhost {

/// The counts and the facts of units that are followed: an engine that writes rows down counts them
/// here, too.
class FollowedUnits {
 public:
  /// Counts the unit's rows from now on, which are so many. One that is followed goes on.
  void Follow(std::int32_t unitKey, const UnitCounts& now) {
    if (CountsOf(unitKey) == nullptr) {
      units_.emplace_back(unitKey, now);
    }
  }
  void ForgetAll() noexcept {
    units_.clear();
    facts_.reset();
  }
  [[nodiscard]] bool empty() const noexcept { return units_.empty(); }

  /// Null for a unit that is not followed.
  [[nodiscard]] const UnitCounts* CountsOf(std::int32_t unitKey) const noexcept {
    const auto found = std::find_if(units_.begin(), units_.end(),
                                    [unitKey](const auto& unit) { return unit.first == unitKey; });
    return found == units_.end() ? nullptr : &found->second;
  }
  /// Adds to one of the unit's counts, if it is followed.
  void Add(std::int32_t unitKey, std::int64_t UnitCounts::*count, int number) noexcept {
    for (auto& [key, counts] : units_) {
      if (key == unitKey) {
        counts.*count += number;
      }
    }
  }

  /// What was read of a unit that is followed; null when it has to be read.
  [[nodiscard]] const UnitFacts* FactsOf(std::int32_t unitKey) const noexcept {
    return facts_ && facts_->first == unitKey ? &facts_->second : nullptr;
  }
  /// Keeps it until a unit or its settings change.
  void KeepFacts(std::int32_t unitKey, const UnitFacts& facts) {
    if (CountsOf(unitKey) != nullptr) {
      facts_.emplace(unitKey, facts);
    }
  }
  void ForgetFacts() noexcept { facts_.reset(); }

  /// A place to go back to, when what came behind it is undone.
  using Place = std::vector<std::pair<std::int32_t, UnitCounts>>;
  [[nodiscard]] const Place& Here() const noexcept { return units_; }
  /// Units that are followed since then are forgotten.
  void GoBackTo(const Place& place) {
    units_ = place;
    facts_.reset();
  }

 private:
  Place units_;  // few: an operation is meant for one
  std::optional<std::pair<std::int32_t, UnitFacts>> facts_;
};

}  // namespace qorhost

// The link codes of a unit, answered from memory.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace qorhost {

/// What the counter and the tenants of one unit say, while nobody else can change either.
class LinkCodes {
 public:
  struct Known {
    std::int32_t unitKey = 0;
    std::int64_t counter = 0;       ///< 0 where the store has none
    std::int64_t afterTenants = 1;  ///< the greatest code of a tenant and one more
    bool changed = false;           ///< the store has another counter

    [[nodiscard]] std::int64_t next() const { return std::max(counter, afterTenants); }
  };

  void Know(const Known& known) { known_ = known; }
  void Forget() noexcept { known_.reset(); }
  /// Null for another unit than the known one.
  [[nodiscard]] Known* Of(std::int32_t unitKey) {
    return known_ && known_->unitKey == unitKey ? &*known_ : nullptr;
  }
  /// A tenant of the unit has that code from now on.
  void NoteTenant(std::optional<std::int64_t> unitKey, std::optional<std::int64_t> code) {
    if (known_ && unitKey == known_->unitKey && code) {
      known_->afterTenants = std::max(known_->afterTenants, *code + 1);
    }
  }
  /// What is to be stored; null when nothing is.
  [[nodiscard]] Known* changed() { return known_ && known_->changed ? &*known_ : nullptr; }
  [[nodiscard]] bool hasChanged() const noexcept { return known_ && known_->changed; }

 private:
  std::optional<Known> known_;
};

}  // namespace qorhost

// Deleting units with all that is in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/seen_row.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What stands in a unit beside its surroundings.
struct UnitContents {
  std::size_t tenants = 0;
  std::size_t credentials = 0;
  std::size_t codes = 0;
  std::size_t steps = 0;  ///< that wait

  [[nodiscard]] bool any() const { return tenants + credentials + codes + steps > 0; }
  void Add(const UnitContents& other) {
    tenants += other.tenants;
    credentials += other.credentials;
    codes += other.codes;
    steps += other.steps;
  }
  friend bool operator==(const UnitContents&, const UnitContents&) = default;
  /// "75 tenants, 145 credentials"; what there is none of is left out.
  [[nodiscard]] std::string Text() const;
};
[[nodiscard]] UnitContents ContentsOf(DeskSession& session, std::int32_t unitKey);

/// A unit that is to be deleted, and what the person knows to be in it.
struct UnitToDelete {
  UnitName unit;
  UnitContents contents;
  std::optional<SeenRow> seen = std::nullopt;  ///< in UnitSettingsList()
};

/// The units, each once, with what is in them.
[[nodiscard]] std::vector<UnitToDelete> WithContents(DeskSession& session,
                                                     const std::vector<UnitName>& units);
/// What is in all of them together.
[[nodiscard]] UnitContents ContentsOf(const std::vector<UnitToDelete>& units);

/// Deletes units with all that is in them as one unit of work: all or none. Raises RefusedError
/// when there is something else in one of them by now, or it is gone; of one that was seen with
/// other settings the deletion is stale.
Outcome DeleteUnits(DeskSession& session, const std::vector<UnitToDelete>& units, Trial trial);

}  // namespace qorhost

// What a merge with a unit would do: the unit's codes against the store's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/table.h"
#include "host/unit/unit_file.h"

namespace qorhost {

/// What people call a place of a unit's code.
struct PlaceName {
  qorcred::unit_place::Place place;
  std::string_view name;
};

/// One row of the store, as far as a merge looks at it.
struct StoredCode {
  std::int32_t rid = 0;
  double number = 0;               ///< the code now
  std::optional<double> previous;  ///< the code under which the unit knew it
  UnitCode code;                   ///< in canonical form; not looked at with an obstacle
  std::string obstacle;            ///< why the unit's notation cannot hold the row; else empty
  std::int16_t state = 0;          ///< MODIFIED: 1 never sent, 2 changed since it was sent
  std::vector<std::string> tenants;

  friend bool operator==(const StoredCode&, const StoredCode&) = default;
};

enum class MergeAction : std::uint8_t { kInsert, kUpdate, kDelete };

/// One difference. Refers to the plan's two sides by their places.
struct MergeStep {
  MergeAction action = MergeAction::kInsert;
  std::size_t unitCode = 0;  ///< of an insert and an update
  std::size_t stored = 0;    ///< of an update and a delete
  std::string what;          ///< for people: what differs or is lost besides
};

struct MergePlan {
  std::vector<MergeStep> steps;  ///< deletions, updates, inserts
  std::size_t unchanged = 0;
  std::size_t kept = 0;  ///< stored codes that would be deleted if deletions were allowed
  std::vector<LineFault> faults{};  ///< lines that are no step, because the screen refuses them

  [[nodiscard]] std::size_t Count(MergeAction action) const;
};

struct MergeRules {
  bool withDisplay = true;    ///< whether the unit has display options to compare
  bool withDeletions = true;  ///< false when part of the unit's codes could not be read
};

/// Compares the two sides. A code of the unit is matched with the row that has it now, else with a
/// row that had it before. Takes time linear in both.
[[nodiscard]] MergePlan PlanMerge(const std::vector<UnitCode>& unit,
                                  const std::vector<StoredCode>& stored, const MergeRules& rules);

/// The directory code that a step is about, and its row; an insert has none yet.
struct MergeSubject {
  double number = 0;
  std::optional<std::int32_t> rid;
};
[[nodiscard]] MergeSubject SubjectOf(const MergeStep& step, const std::vector<UnitCode>& unit,
                                     const std::vector<StoredCode>& stored);

/// Both sides of a step, field by field: what the store has, what the unit has, and which fields
/// the merge would write. A side that has no code is Null.
[[nodiscard]] Table StepTable(const MergeStep& step, const std::vector<UnitCode>& unit,
                              const std::vector<StoredCode>& stored);

/// The steps of a plan as rows.
[[nodiscard]] Table PlanTable(const MergePlan& plan, const std::vector<UnitCode>& unit,
                              const std::vector<StoredCode>& stored);

}  // namespace qorhost

// What the rules for odd rows share: what was accepted so far, and how they settle a row.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "frame/text.h"
#include "frame/value.h"
#include "host/desks/moving_in/settled_cells.h"
#include "host/desks/moving_in/staged_table.h"

namespace qorhost {

/// The order in which a store finds texts equal: letter case does not count.
struct IgnoringCase {
  using is_transparent = void;
  bool operator()(std::string_view one, std::string_view other) const {
    return qorcred::CompareIgnoringCase(one, other) < 0;
  }
};

/// The rows that are brought in, as later tables refer to them.
struct AcceptedRows {
  struct Unit {
    std::optional<std::string> type;
    std::optional<std::int32_t> codeDigits;
    bool hasSettings = false;
    std::optional<std::int32_t> groupZero;  ///< RID
    std::size_t doors = 0;
    std::size_t codesInUse = 0;
  };
  std::map<std::int32_t, Unit> units;                                           // by key
  std::map<std::string, std::optional<std::int32_t>, IgnoringCase> capacities;  // by type
  std::set<std::pair<std::int32_t, std::int32_t>> schedules;                    // unit and number
  std::unordered_map<std::int32_t, std::int32_t> unitOfGroup;                   // by RID
  std::unordered_map<std::int32_t, std::int32_t> unitOfCredential;              // by RID
  std::unordered_map<std::int32_t, std::int32_t> unitOfCode;                    // by RID
  std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> tenants;  // RID by unit and id
};

/// Settles rows of one table and notes why. A row that is refused is passed over by Each().
class RuleWork {
 public:
  RuleWork(StagedTable& table, SettledCells& settled) : table_(table), settled_(settled) {}

  [[nodiscard]] StagedTable& table() { return table_; }
  [[nodiscard]] std::size_t At(std::string_view column) const { return table_.At(column); }

  template <typename Rule>
  void Each(const Rule& rule) {
    for (StagedRow& row : table_.rows()) {
      if (!row.isRefused) rule(row);
    }
  }

  void Refuse(StagedRow& row, std::size_t place, std::string_view kind, std::string reason);
  void Adjust(StagedRow& row, std::size_t place, qorcred::Value instead, std::string_view kind,
              std::string reason);
  void Keep(const StagedRow& row, std::size_t place, std::string_view kind, std::string reason);

 private:
  [[nodiscard]] SettledCell Settled(Settlement settlement, const StagedRow& row, std::size_t place,
                                    std::string_view kind, std::string reason) const;

  StagedTable& table_;
  SettledCells& settled_;
};

/// Refuses rows of no unit that is brought in.
void RequireUnit(RuleWork& work, const AcceptedRows& accepted);

}  // namespace qorhost

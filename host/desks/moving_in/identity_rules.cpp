// The identities of rows.
#include <algorithm>
#include <limits>

#include "host/desks/moving_in/row_rules.h"

namespace qorhost {

namespace {

constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max();

bool CanBeIdentity(const qorcred::Value& cell) {
  const std::optional<std::int32_t> rid = LongIn(cell);
  return rid && *rid > 0;
}

std::string_view KindOf(const qorcred::Value& cell) {
  return cell.Is(qorcred::ValueType::kNull) ? "null-id" : "id-range";
}

/// Identities that nobody has: behind the highest, or where that is the last, in the gaps.
class FreeIdentities {
 public:
  explicit FreeIdentities(const std::unordered_set<std::int32_t>& taken) : taken_(taken) {
    for (const std::int32_t rid : taken) next_ = std::max(next_, std::int64_t{rid} + 1);
  }
  std::int32_t Take() {
    if (next_ > kLast) {
      while (taken_.contains(gap_)) ++gap_;
      return gap_++;
    }
    return static_cast<std::int32_t>(next_++);
  }

 private:
  const std::unordered_set<std::int32_t>& taken_;
  std::int64_t next_ = 1;
  std::int32_t gap_ = 1;
};

}  // namespace

void SettleIdentities(RuleWork& work) {
  const std::size_t rid = work.At("RID");
  const bool isReferred = work.table().known().identity == Identity::kReferred;
  const bool isGiven = work.table().IsGiven(rid);
  std::unordered_set<std::int32_t> taken;
  std::vector<StagedRow*> without;
  work.Each([&](StagedRow& row) {
    if (!CanBeIdentity(row.cells[rid])) {
      if (isReferred && isGiven) {
        work.Refuse(row, rid, KindOf(row.cells[rid]), "an identity is a number from 1 on");
      } else {
        without.push_back(&row);
      }
    } else if (!taken.insert(*LongIn(row.cells[rid])).second) {
      if (isReferred) {
        work.Refuse(row, rid, "duplicate-id", "a row before it has the identity");
      } else {
        without.push_back(&row);
      }
    } else if (*LongIn(row.cells[rid]) == kLast) {
      work.Keep(row, rid, "id-range", "it is the last identity there is: no row can be added");
    }
  });
  FreeIdentities free(taken);
  for (StagedRow* row : without) {
    const std::int32_t given = free.Take();
    if (!isGiven) {
      row->cells[rid] = given;
    } else if (CanBeIdentity(row->cells[rid])) {
      work.Adjust(*row, rid, given, "duplicate-id",
                  "a row before it has the identity, to which nothing refers");
    } else {
      work.Adjust(*row, rid, given, KindOf(row->cells[rid]),
                  "an identity is a number from 1 on, and nothing refers to it");
    }
  }
  work.table().MarkGiven(rid);
}

}  // namespace qorhost

#include "host/desks/moving_in/settled_cell.h"

#include <algorithm>
#include <utility>

namespace qorhost {

std::string_view WordFor(Settlement settlement) {
  switch (settlement) {
    case Settlement::kRefused:
      return "refused";
    case Settlement::kAdjusted:
      return "adjusted";
    case Settlement::kKept:
      return "kept";
  }
  return "";
}

void SettledCells::Add(SettledCell cell) {
  if (++counts_.at(static_cast<std::size_t>(cell.settlement)) <= kMostNamed) {
    named_.push_back(std::move(cell));
  }
}

void SettledCells::Sort(const std::vector<std::string_view>& tables) {
  const auto placeOf = [&](const SettledCell& cell) {
    return std::find(tables.begin(), tables.end(), cell.table);
  };
  std::stable_sort(named_.begin(), named_.end(),
                   [&](const SettledCell& one, const SettledCell& other) {
                     const auto left = placeOf(one);
                     const auto right = placeOf(other);
                     return left != right ? left < right : one.row < other.row;
                   });
}

std::size_t SettledCells::CountOf(Settlement settlement) const {
  return counts_.at(static_cast<std::size_t>(settlement));
}

std::size_t SettledCells::UnnamedOf(Settlement settlement) const {
  const std::size_t count = CountOf(settlement);
  return count - std::min(count, kMostNamed);
}

}  // namespace qorhost

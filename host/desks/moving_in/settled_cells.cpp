#include "host/desks/moving_in/settled_cells.h"

#include <algorithm>
#include <utility>

#include "host/desks/moving_in/spilled_cells.h"

namespace qorhost {

void SettledCells::Add(SettledCell cell) {
  if (++counts_.at(static_cast<std::size_t>(cell.settlement)) <= kMostNamed) {
    named_.push_back(std::move(cell));
    return;
  }
  if (!spilled_) spilled_ = std::make_shared<SpilledCells>();
  spilled_->Add(cell);
}

void SettledCells::Sort(const std::vector<std::string_view>& tables) {
  order_.assign(tables.begin(), tables.end());
  std::stable_sort(
      named_.begin(), named_.end(),
      [this](const SettledCell& one, const SettledCell& other) { return IsBefore(one, other); });
  if (spilled_) spilled_->Sort(tables);
}

bool SettledCells::IsBefore(const SettledCell& one, const SettledCell& other) const {
  if (one.table == other.table) return one.row < other.row;
  const auto placeOf = [this](const SettledCell& cell) {
    return std::find(order_.begin(), order_.end(), cell.table);
  };
  return placeOf(one) < placeOf(other);
}

void SettledCells::Each(const std::function<void(const SettledCell&)>& take,
                        std::optional<Settlement> only) const {
  const auto isMeant = [&](Settlement settlement) { return !only || settlement == *only; };
  auto next = named_.begin();
  for (std::size_t at = 0; spilled_ && at < spilled_->size(); ++at) {
    if (!isMeant(spilled_->SettlementAt(at))) continue;
    const SettledCell cell = spilled_->At(at);
    for (; next != named_.end() && !IsBefore(cell, *next); ++next) {
      if (isMeant(next->settlement)) take(*next);
    }
    take(cell);
  }
  for (; next != named_.end(); ++next) {
    if (isMeant(next->settlement)) take(*next);
  }
}

std::size_t SettledCells::CountOf(Settlement settlement) const {
  return counts_.at(static_cast<std::size_t>(settlement));
}

std::size_t SettledCells::UnnamedOf(Settlement settlement) const {
  const std::size_t count = CountOf(settlement);
  return count - std::min(count, kMostNamed);
}

}  // namespace qorhost

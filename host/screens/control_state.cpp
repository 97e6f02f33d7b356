#include "host/screens/control_state.h"

#include <tuple>

namespace qorhost {

namespace {

using Changes = std::vector<ChangeKind>;

void AddIf(Changes& changes, bool changed, ChangeKind kind) {
  if (changed) {
    changes.push_back(kind);
  }
}

void AddOwn(Changes& changes, const TextState& from, const TextState& to) {
  AddIf(changes, from.maxLength != to.maxLength, ChangeKind::kLimits);
  AddIf(changes, from.text != to.text, ChangeKind::kValue);
}

void AddOwn(Changes& changes, const PickerState& from, const PickerState& to) {
  AddIf(changes, from.minDate != to.minDate || from.maxDate != to.maxDate, ChangeKind::kLimits);
  AddIf(changes, from.shown != to.shown || from.chosen != to.chosen, ChangeKind::kValue);
}

void AddOwn(Changes& changes, const ListState& from, const ListState& to) {
  AddIf(changes, from.items != to.items, ChangeKind::kItems);
  AddIf(changes, from.selected != to.selected, ChangeKind::kSelection);
}

template <typename State>
void AddOwn(Changes& changes, const State& from, const State& to) {
  AddIf(changes, from != to, ChangeKind::kValue);
}

}  // namespace

std::vector<ChangeKind> ChangesBetween(const ControlState& from, const ControlState& to) {
  Changes changes;
  const auto look = [](const CommonState& state) {
    return std::tie(state.caption, state.backColor, state.width);
  };
  AddIf(changes, look(from.common) != look(to.common), ChangeKind::kLook);
  AddIf(changes,
        from.common.enabled != to.common.enabled || from.common.visible != to.common.visible,
        ChangeKind::kState);
  std::visit(
      [&changes, &to](const auto& own) {
        AddOwn(changes, own, std::get<std::decay_t<decltype(own)>>(to.own));
      },
      from.own);
  return changes;
}

}  // namespace qorhost

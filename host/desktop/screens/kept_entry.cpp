#include "host/desktop/screens/kept_entry.h"

#include <optional>
#include <string>

#include "frame/runtime_error.h"

namespace qorhost {

namespace {

using Entry = std::function<void(ScreenModel& screen)>;

Entry EntryOf(const ListModel& list, std::string_view name) {
  if (list.selected() == ListModel::kNone) {
    return [name](ScreenModel& screen) { screen.List(name).Select(ListModel::kNone); };
  }
  return [name, data = list.ItemData(list.selected()), place = list.selected(),
          text = list.SelectedText()](ScreenModel& screen) {
    ListModel& filled = screen.List(name);
    const std::int32_t found = filled.FindData(data);
    // Lists without numbers are found by place, where the entry is the same still.
    const bool samePlace = place < filled.count() && filled.Text(place) == text;
    filled.Select(samePlace ? place : found);
  };
}

Entry EntryOf(ScreenModel& screen, std::string_view name) {
  ControlModel& control = screen.Any(name);
  if (const auto* list = dynamic_cast<const ListModel*>(&control)) {
    return EntryOf(*list, name);
  }
  if (const auto* box = dynamic_cast<const TextModel*>(&control)) {
    return [name, text = box->text()](ScreenModel& to) { to.Box(name).SetText(text); };
  }
  if (const auto* check = dynamic_cast<const CheckModel*>(&control)) {
    return [name, state = check->state()](ScreenModel& to) { to.Check(name).SetState(state); };
  }
  if (const auto* option = dynamic_cast<const OptionModel*>(&control)) {
    return [name, on = option->on()](ScreenModel& to) { to.Option(name).SetOn(on); };
  }
  if (const auto* spinner = dynamic_cast<const SpinnerModel*>(&control)) {
    return [name, value = spinner->value()](ScreenModel& to) { to.Spin(name).SetValue(value); };
  }
  if (const auto* picker = dynamic_cast<const PickerModel*>(&control)) {
    const auto date = picker->chosen() ? std::optional(picker->shown()) : std::nullopt;
    return [name, date](ScreenModel& to) { to.Date(name).Choose(date); };
  }
  throw qorcred::RuntimeError(qorcred::ErrorNumber::kTypeMismatch);
}

}  // namespace

KeptEntry::KeptEntry(ScreenModel& screen, std::span<const std::string_view> names) {
  for (const std::string_view name : names) {
    entries_.push_back(EntryOf(screen, name));
  }
}

void KeptEntry::PutInto(ScreenModel& screen) const {
  for (const Entry& entry : entries_) {
    try {
      entry(screen);
    } catch (const qorcred::RuntimeError&) {
      continue;  // a date that the unit does not allow any more
    }
  }
}

}  // namespace qorhost

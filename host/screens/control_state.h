// What the controls of a screen hold, as values that can be kept, compared and put back.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "frame/date.h"
#include "frame/value.h"
#include "host/screens/change.h"
#include "host/screens/list_items.h"

namespace qorhost {

/// What every control has.
struct CommonState {
  std::string caption;
  std::int32_t backColor = static_cast<std::int32_t>(0x80000005U);  ///< a window's background
  std::int32_t width = 1215;  ///< in twips, the unit of the screens' designer
  bool enabled = true;
  bool visible = true;
  friend bool operator==(const CommonState&, const CommonState&) = default;
};

/// Labels and buttons have nothing of their own.
struct NoState {
  friend bool operator==(const NoState&, const NoState&) = default;
};

struct TextState {
  std::string text;
  std::int32_t maxLength = 0;  ///< in UTF-16 units; 0: any length
  friend bool operator==(const TextState&, const TextState&) = default;
};

struct CheckState {
  std::int16_t state = 0;
  friend bool operator==(const CheckState&, const CheckState&) = default;
};

struct OptionState {
  bool on = false;
  friend bool operator==(const OptionState&, const OptionState&) = default;
};

struct SpinnerState {
  qorcred::Value value = std::int32_t{0};
  friend bool operator==(const SpinnerState&, const SpinnerState&) = default;
};

struct PickerState {
  qorcred::Date shown;
  bool chosen = false;
  qorcred::Date minDate;
  qorcred::Date maxDate;
  friend bool operator==(const PickerState&, const PickerState&) = default;
};

struct ListState {
  ListItems items;
  std::int32_t selected = -1;
  std::int32_t newIndex = -1;
  friend bool operator==(const ListState&, const ListState&) = default;
};

using OwnState =
    std::variant<NoState, TextState, CheckState, OptionState, SpinnerState, PickerState, ListState>;

/// All that a control holds besides its name. Copies share the items of lists.
struct ControlState {
  CommonState common;
  OwnState own;
  friend bool operator==(const ControlState&, const ControlState&) = default;
};

/// What an observer is told when a control goes from one state to another of the same kind.
[[nodiscard]] std::vector<ChangeKind> ChangesBetween(const ControlState& from,
                                                     const ControlState& to);

}  // namespace qorhost

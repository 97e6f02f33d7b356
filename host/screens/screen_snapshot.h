// All that a screen holds at one moment.
#pragma once

#include <string>
#include <vector>

#include "frame/value.h"
#include "host/screens/control_state.h"

namespace qorhost {

/// What ScreenModel::Snapshot() gives and Restore() takes: the controls with their lists and
/// selections, the variables and the focus. Two are equal when nobody could tell the screens apart.
/// Cheap to take: the items of lists are shared with the screen until one of them changes.
struct ScreenSnapshot {
  struct Control {
    std::string name;
    ControlState state;
    friend bool operator==(const Control&, const Control&) = default;
  };
  struct Variable {
    std::string name;
    qorcred::Value value;
    friend bool operator==(const Variable&, const Variable&) = default;
  };

  std::vector<Control> controls;    ///< in the order in which the screen took them in
  std::vector<Variable> variables;  ///< by name
  std::string focused;

  friend bool operator==(const ScreenSnapshot&, const ScreenSnapshot&) = default;
};

}  // namespace qorhost

// The sign on a screen that its controls are being written by the controller.
#pragma once

#include <string_view>

#include "frame/controls.h"
#include "frame/trap.h"

namespace qorcred {

/// Tells the screen's change handlers, for as long as it lives, that the controls are being written
/// by the controller. `host` and `screen` must outlive it.
class WritingControls {
 public:
  WritingControls(Host& host, const Screen& screen, std::string_view operation)
      : host_(host), screen_(screen), operation_(operation) {
    screen_.SetVariable("gblnModifiedFromClass", true);
  }
  ~WritingControls() {
    Trap(host_, operation_, [this] { screen_.SetVariable("gblnModifiedFromClass", false); });
  }
  WritingControls(const WritingControls&) = delete;
  WritingControls& operator=(const WritingControls&) = delete;

 private:
  Host& host_;
  const Screen& screen_;
  std::string_view operation_;
};

}  // namespace qorcred

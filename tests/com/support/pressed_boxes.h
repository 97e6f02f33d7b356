// Message boxes that nobody has to answer.
#pragma once

#include <windows.h>

namespace qortest {

/// While it lives, every message box of this thread is ended by its first button, OK or Yes, as
/// soon as it is shown. One at a time in a process.
class PressedBoxes {
 public:
  PressedBoxes();
  ~PressedBoxes();
  PressedBoxes(const PressedBoxes&) = delete;
  PressedBoxes& operator=(const PressedBoxes&) = delete;

  /// How many have been pressed.
  [[nodiscard]] static long Count();

 private:
  HHOOK hook_;
};

}  // namespace qortest

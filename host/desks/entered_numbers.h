// The credential numbers that stand on a screen.
#pragma once

#include <cstdint>
#include <optional>

#include "host/screens/screen_model.h"

namespace qorhost {

/// The numbers on the screen, read as the controller reads them.
struct EnteredNumbers {
  std::int64_t first = 0;
  std::int64_t last = 0;

  [[nodiscard]] std::int64_t Count() const { return last - first + 1; }
};

/// Nothing when the boxes hold no range of credential numbers.
[[nodiscard]] std::optional<EnteredNumbers> ReadEntered(const ScreenModel& screen);

}  // namespace qorhost

// How far long work has come, on a terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>

#include "host/desks/progress.h"
#include "host/terminal/console.h"

namespace qorhost {

/// Work of fewer parts takes no noticeable time.
inline constexpr std::int64_t kWorthABar = 1000;

/// A bar on a terminal's last line, redrawn at every hundredth: `[#####-----]  50 %  500 of 1000`,
/// with fewer marks where `columns` are few, and at last without any. Wiped when it ends.
class ProgressBar {
 public:
  ProgressBar(std::ostream& terminal, std::int64_t total, std::size_t columns);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Show(std::int64_t done);

 private:
  void Draw(std::int64_t percent);

  std::ostream& terminal_;
  std::int64_t total_;
  std::size_t columns_;
  std::int64_t done_ = 0;
  std::int64_t drawn_ = -1;
};

/// A handler that shows a bar for work of kWorthABar parts and more, wiped when the handler goes.
/// None when nobody watches, or when a trace is written to the same place.
[[nodiscard]] Progress BarOn(Console& console, bool traced);

}  // namespace qorhost

// How far a long operation has come, on a terminal.
#pragma once

#include <cstdint>
#include <ostream>

namespace qorhost {

/// A bar on a terminal's last line, redrawn at every hundredth: `[#####-----]  50 %  500 of 1000`.
/// Wiped when it ends.
class ProgressBar {
 public:
  ProgressBar(std::ostream& terminal, std::int64_t total);
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Advance();

 private:
  void Draw(std::int64_t percent);

  std::ostream& terminal_;
  std::int64_t total_;
  std::int64_t done_ = 0;
  std::int64_t drawn_ = -1;
};

}  // namespace qorhost

#include "host/cli/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace qorhost {

ProgressBar::ProgressBar(std::ostream& terminal, std::int64_t total)
    : terminal_(terminal), total_(std::max<std::int64_t>(total, 1)) {
  Draw(0);
}

ProgressBar::~ProgressBar() {
  terminal_ << "\r\x1B[K" << std::flush;
}

void ProgressBar::Advance() {
  constexpr std::int64_t kWhole = 100;
  ++done_;
  const std::int64_t percent = std::min(kWhole, done_ * kWhole / total_);
  if (percent != drawn_) {
    Draw(percent);
  }
}

void ProgressBar::Draw(std::int64_t percent) {
  constexpr std::int64_t kPercentPerMark = 4;
  constexpr std::size_t kMarks = 25;
  const auto marks = static_cast<std::size_t>(percent / kPercentPerMark);
  terminal_ << fmt::format("\r[{}{}] {:3} %  {} of {}", std::string(marks, '#'),
                           std::string(kMarks - marks, '-'), percent, done_, total_)
            << std::flush;
  drawn_ = percent;
}

}  // namespace qorhost

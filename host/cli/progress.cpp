#include "host/cli/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

namespace qorhost {

ProgressBar::ProgressBar(std::ostream& terminal, std::int64_t total)
    : terminal_(terminal), total_(std::max<std::int64_t>(total, 1)) {
  Draw(0);
}

ProgressBar::~ProgressBar() {
  terminal_ << "\r\x1B[K" << std::flush;
}

void ProgressBar::Show(std::int64_t done) {
  constexpr std::int64_t kWhole = 100;
  done_ = done;
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

Progress BarOn(Console& console, bool traced) {
  if (!console.environment.errorIsTerminal || traced) {
    return nullptr;
  }
  // Drawn with the first part: before it, a question or a refusal may want the line.
  return [&terminal = console.err, bar = std::shared_ptr<ProgressBar>()](
             std::int64_t done, std::int64_t total) mutable {
    if (total >= kWorthABar) {
      if (bar == nullptr) {
        bar = std::make_shared<ProgressBar>(terminal, total);
      }
      bar->Show(done);
    }
    return true;
  };
}

}  // namespace qorhost

#include "host/cli/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

namespace qorhost {

ProgressBar::ProgressBar(std::ostream& terminal, std::int64_t total, std::size_t columns)
    : terminal_(terminal), total_(std::max<std::int64_t>(total, 1)), columns_(columns) {
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
  constexpr std::size_t kMostMarks = 25;
  constexpr std::size_t kFewestMarks = 5;
  // What would reach the last column would begin a new line, which is never wiped.
  const std::size_t room = columns_ > 0 ? columns_ - 1 : 0;
  const std::size_t aroundMarks = fmt::formatted_size("[] 100 %  {0} of {0}", total_);
  std::string line = fmt::format("{:3} %", percent);
  if (room >= aroundMarks + kFewestMarks) {
    const std::size_t marks = std::min(kMostMarks, room - aroundMarks);
    const auto done = static_cast<std::size_t>(percent) * marks / 100;
    line = fmt::format("[{}{}] {}  {} of {}", std::string(done, '#'),
                       std::string(marks - done, '-'), line, done_, total_);
  }
  terminal_ << '\r' << line.substr(0, room) << std::flush;
  drawn_ = percent;
}

Progress BarOn(Console& console, bool traced) {
  if (!console.environment.errorIsTerminal || traced || console.quiet) {
    return nullptr;
  }
  // Drawn with the first part: before it, a question or a refusal may want the line.
  return [&terminal = console.Live(), columns = console.environment.columns,
          bar = std::shared_ptr<ProgressBar>()](std::int64_t done, std::int64_t total) mutable {
    if (total >= kWorthABar) {
      if (bar == nullptr) {
        bar = std::make_shared<ProgressBar>(terminal, total, columns);
      }
      bar->Show(done);
    }
    return true;
  };
}

}  // namespace qorhost

// Lines of which a person reads a few.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "host/terminal/console.h"

namespace qorhost {

/// Writes lines to standard error, and of more than twenty only how many there are.
class FewLines {
 public:
  /// `what` the lines are, in the plural: "bad lines".
  FewLines(Console& console, std::string_view what) : console_(console), what_(what) {}

  /// `line` must be harmless on a terminal.
  void Tell(const std::string& line) {
    constexpr std::size_t kMost = 20;
    if (++count_ <= kMost) {
      console_.err << "qorhost: " << line << '\n';
    } else {
      ++untold_;
    }
  }
  /// To be called behind the last line; `more` were not even given to Tell().
  void TellRest(std::size_t more = 0) const {
    if (const std::size_t untold = untold_ + more; untold > 0) {
      console_.err << fmt::format("qorhost: ... and {} more {}\n", untold, what_);
    }
  }

 private:
  Console& console_;
  std::string_view what_;
  std::size_t count_ = 0;
  std::size_t untold_ = 0;
};

}  // namespace qorhost

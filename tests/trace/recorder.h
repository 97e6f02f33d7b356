// Collects the lines of a transcript.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "trace/transcript.h"

namespace qortest {

class Recorder {
 public:
  [[nodiscard]] qorcred::trace::TranscriptSink Sink() {
    return [this](std::string_view line) { lines_.emplace_back(line); };
  }
  /// The lines since the last call.
  [[nodiscard]] std::vector<std::string> Take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
};

using Lines = std::vector<std::string>;

}  // namespace qortest

// Collects the lines of a transcript.
#pragma once

#include <string_view>
#include <utility>

#include "tests/support/transcript_record.h"
#include "tests/support/transcript_text.h"

namespace qortest {

class Recorder {
 public:
  [[nodiscard]] TranscriptSink Sink() {
    return [this](std::string_view line) { lines_.emplace_back(line); };
  }
  /// The lines since the last call.
  [[nodiscard]] Lines Take() { return std::exchange(lines_, {}); }

 private:
  Lines lines_;
};

}  // namespace qortest

// What a controller visibly did, one line a call, and its comparison with what it should have done.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace qortest {

using Lines = std::vector<std::string>;

/// How much of a transcript a comparison looks at.
enum class Detail {
  kEverything,
  kEffects,     ///< without components, and without reads of controls, variables and clock
  kComponents,  ///< components made and released, alone
};

/// Collects the lines in the order of the calls.
class TranscriptRecord {
 public:
  void Add(std::string_view line) { lines_.emplace_back(line); }
  void Clear() { lines_.clear(); }

  [[nodiscard]] Lines Read(Detail detail) const;
  /// The lines that start with `beginning`, whatever they are.
  [[nodiscard]] Lines StartingWith(std::string_view beginning) const;

 private:
  Lines lines_;
};

/// Whether the line reports a value that was read: `cboDoor.ListIndex -> 3`, `Name -> "frmTBL"`.
[[nodiscard]] bool IsRead(std::string_view line);

/// The lines of a text: blank lines and blanks at the start of each line do not count.
[[nodiscard]] Lines SplitLines(std::string_view text);

/// Success when both are the same; otherwise the first line that differs, with its surroundings.
[[nodiscard]] ::testing::AssertionResult SameLines(const Lines& actual, std::string_view expected);

}  // namespace qortest

// The statements that the operations compose, as data: the documents show them, and the tests hold
// them against what the operations were seen to run.
#pragma once

#include <string_view>
#include <vector>

namespace qorcred::contract {

/// The statements of one operation. {Words} stand for what differs from call to call, {'words'} for
/// a text in apostrophes or the Null that stands for an empty one.
struct Statements {
  std::string_view className;
  std::string_view operation;
  std::vector<std::string_view> texts;
};

/// All operations that compose statements, without what those compose that they run.
[[nodiscard]] const std::vector<Statements>& AllStatements();

}  // namespace qorcred::contract

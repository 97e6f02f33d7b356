// Which directory codes a report's conditions select, worked out on the rows themselves.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/host/end_to_end/report_meaning.h"
#include "tests/host/end_to_end/report_population.h"

namespace qortest {

/// A condition with what its value stands for.
struct CodeCondition {
  std::int32_t field = 0;
  std::int32_t operation = 0;
  /// As a text literal: without the blanks around it, doubled quotes undone.
  std::string text;
  /// The number that the text begins with, 0 for none; nothing for an empty text.
  std::optional<double> number;
  /// That number in digits.
  std::string digits;
  bool checked = false;
  qorcred::Date from;
  qorcred::Date to;
};

/// The rows of a unit that all the conditions select, in no certain order; nothing when the store
/// must refuse one of the conditions.
[[nodiscard]] std::optional<std::vector<const CodeRow*>> SelectedCodes(
    const Population& population, std::int32_t unit, const std::vector<CodeCondition>& conditions);

}  // namespace qortest

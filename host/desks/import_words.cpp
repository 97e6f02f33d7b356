#include "host/desks/import_words.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/text.h"
#include "host/desks/input_fault.h"

namespace qorhost {

namespace {

bool IsOneOf(std::string_view cell, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [cell](std::string_view word) {
    return qorcred::CompareIgnoringCase(cell, word) == 0;
  });
}

}  // namespace

std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                               const EitherWords& words) {
  if (cell.empty()) {
    return std::nullopt;
  }
  if (IsOneOf(cell, {words.yes, "True", "Yes", "1"})) {
    return true;
  }
  if (IsOneOf(cell, {words.no, "False", "No", "0"})) {
    return false;
  }
  throw InputFault(heading, cell,
                   fmt::format("{{field}} '{{value}}' is neither {} nor {}", words.yes, words.no));
}

}  // namespace qorhost

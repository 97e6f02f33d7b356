#include "host/desks/import_words.h"

#include <fmt/format.h>

#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

bool Is(std::string_view cell, std::string_view word) {
  return qorcred::CompareIgnoringCase(cell, word) == 0;
}

}  // namespace

std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                               const EitherWords& words) {
  if (cell.empty()) {
    return std::nullopt;
  }
  if (const std::optional<bool> yes = YesOrNo(cell)) {
    return yes;
  }
  if (Is(cell, words.yes) || cell == "1") {
    return true;
  }
  if (Is(cell, words.no) || cell == "0") {
    return false;
  }
  throw InputFault(heading, cell,
                   fmt::format("{{field}} '{{value}}' is neither {} nor {}", words.yes, words.no));
}

}  // namespace qorhost

#include "host/desks/words.h"

#include <fmt/format.h>

#include "frame/text.h"

namespace qorhost {

std::string Counted(std::size_t count, std::string_view one, std::string_view many) {
  return fmt::format("{} {}", count, count == 1 ? one : many);
}

std::optional<bool> YesOrNo(std::string_view given) {
  const auto is = [given](std::string_view word) {
    return qorcred::CompareIgnoringCase(given, word) == 0;
  };
  if (is("yes") || is("true")) {
    return true;
  }
  return is("no") || is("false") ? std::optional(false) : std::nullopt;
}

std::string WithRid(std::string_view name, std::int32_t rid) {
  return fmt::format("{} (RID {})", name, rid);
}

}  // namespace qorhost

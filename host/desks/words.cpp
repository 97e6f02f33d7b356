#include "host/desks/words.h"

#include <fmt/format.h>

namespace qorhost {

std::string Counted(std::size_t count, std::string_view one, std::string_view many) {
  return fmt::format("{} {}", count, count == 1 ? one : many);
}

std::string WithRid(std::string_view name, std::int32_t rid) {
  return fmt::format("{} (RID {})", name, rid);
}

}  // namespace qorhost

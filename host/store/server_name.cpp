#include "host/store/server_name.h"

#include <algorithm>
#include <array>

namespace qorhost {

bool IsServerName(std::string_view name) {
  static constexpr std::array<std::string_view, 3> kBeginnings{
      "postgresql:", "postgres:", "service="};
  return std::any_of(kBeginnings.begin(), kBeginnings.end(), [name](std::string_view beginning) {
    return name.size() > beginning.size() && name.substr(0, beginning.size()) == beginning;
  });
}

}  // namespace qorhost

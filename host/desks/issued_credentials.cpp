#include "host/desks/issued_credentials.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "frame/convert.h"

namespace qorhost {

std::string IssuedCredentials::EntryOf(std::int64_t number) const {
  return fmt::format("{}-{}", type, number);
}

std::vector<double> IssuedCredentials::NewTenants() const {
  std::vector<double> ids;
  std::string_view rest = newTenantIds;
  while (!rest.empty()) {
    const std::size_t comma = std::min(rest.find(','), rest.size());
    ids.push_back(qorcred::Val(rest.substr(0, comma)));
    rest.remove_prefix(std::min(comma + 1, rest.size()));
  }
  return ids;
}

}  // namespace qorhost

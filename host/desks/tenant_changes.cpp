#include "host/desks/tenant_changes.h"

#include <fmt/format.h>

#include <algorithm>

namespace qorhost {

std::string Differences(const TenantRow& before, const TenantRow& after, const TenantLinks& links,
                        std::vector<TenantChange>& changes) {
  std::string settings;
  for (const TenantColumn& column : TenantColumns()) {
    const std::string literal = column.literal(after);
    if (literal == column.literal(before)) {
      continue;
    }
    settings += fmt::format("{}{}={}", settings.empty() ? "" : ", ", column.column, literal);
    changes.push_back({before.rid, before.Name(),
                       TableColumn{std::string(column.title), std::string(column.key)},
                       column.shown(before, links), column.shown(after, links)});
  }
  return settings;
}

bool HoldsCard(const TenantRow& tenant, std::int32_t card) {
  return std::find(tenant.cards.begin(), tenant.cards.end(), card) != tenant.cards.end();
}

std::vector<std::int32_t> CardsMissing(const TenantRow& from, const TenantRow& in) {
  std::vector<std::int32_t> missing;
  for (const std::int32_t card : from.cards) {
    if (card != 0 && !HoldsCard(in, card)) {
      missing.push_back(card);
    }
  }
  return missing;
}

}  // namespace qorhost

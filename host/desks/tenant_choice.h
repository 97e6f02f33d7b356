// Finding the tenants that a person means.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/desks/tenant_rows.h"

namespace qorhost {

/// The tenants that the texts name, each once, in the order in which they are named: by their id,
/// by rows as in "rid:17,18", or by words of the name in whatever order, without accents and letter
/// case; words may be cut short. A name that is whole wins over one that has more words, and that
/// over words that are cut short. Raises InputFault when there is none or, with those whom it may
/// mean and their codes, when there are several.
[[nodiscard]] std::vector<TenantRow> TenantsNamed(const std::vector<std::string>& texts,
                                                  const std::vector<TenantRow>& tenants,
                                                  const TenantLinks& links, std::int32_t unitKey);

}  // namespace qorhost

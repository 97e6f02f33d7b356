// What of a unit somebody should look at: leases and codes that end, cards that nobody holds.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/desks/attention_days.h"
#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

/// Why a row is in the list, in the order in which it has them.
namespace attention {
/// A tenant whose last day is past, and to whom a card or a door is left.
inline constexpr std::string_view kExpired = "expired";
inline constexpr std::string_view kExpiring = "expiring";  ///< a tenant whose last day comes soon
inline constexpr std::string_view kExpiredCode = "expired code";    ///< a directory code
inline constexpr std::string_view kExpiringCode = "expiring code";  ///< a directory code
/// A tenant who holds none; residents are given none.
inline constexpr std::string_view kNoCard = "no card";
inline constexpr std::string_view kNoCode = "no code";      ///< a tenant without a directory code
inline constexpr std::string_view kFreeCard = "free card";  ///< a credential that nobody holds
}  // namespace attention

/// A row for each reason, in the order of the reasons, of each by its end and then by its name. Who
/// is past the last day is missing nothing. `rid` is that of the tenant, the code or the
/// credential. Only periods that are kept count. Takes time linear in the rows of the unit but for
/// that order.
[[nodiscard]] List AttentionList(DeskSession& session, std::int32_t unitKey,
                                 const AttentionDays& days);
/// The same of tenants that were read already.
[[nodiscard]] List AttentionList(DeskSession& session, std::int32_t unitKey,
                                 const AttentionDays& days, const std::vector<TenantRow>& tenants,
                                 const TenantLinks& links);

/// The RIDs of its rows, as they stand.
[[nodiscard]] std::vector<std::int32_t> RidsIn(const List& list);

}  // namespace qorhost

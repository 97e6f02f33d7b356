// How the server tells which rows a statement has changed.
#pragma once

#include <string>
#include <string_view>

#include "host/store/postgres/placement.h"

namespace qorhost::postgres {

/// The five letters by which a notice of a changed row is known.
inline constexpr std::string_view kChangedRow = "QHROW";

/// The statements that have every change of the catalog's tables told to whoever makes it: a notice
/// for each row, in the order in which the server came to them, {"table", "before", "after"}. The
/// rows are JSON. Of new rows without gaps that are of one unit one notice may tell: the first row,
/// and in "last" the identity of the last one.
[[nodiscard]] std::string ChangeTriggersText(Spread spread);

}  // namespace qorhost::postgres

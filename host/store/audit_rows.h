// The rows of an audit entry as they are stored: lines of JSON, in pieces.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/store/row_change.h"

namespace qorhost {

/// One piece at least, none of which is much longer than a MiB: a table's row holds no more than
/// an engine's longest value.
[[nodiscard]] std::vector<std::string> RowsInPieces(const std::vector<RowChange>& changes);

/// Raises StoreError for what cannot be read.
[[nodiscard]] std::vector<RowChange> RowsInPiece(std::string_view lines);

[[nodiscard]] bool CanBeRead(const std::vector<std::string>& pieces);

}  // namespace qorhost

#include "host/store/audit_rows.h"

#include <algorithm>
#include <cstddef>

#include "host/store/store_error.h"

namespace qorhost {

namespace {

constexpr std::size_t kLongestPiece = std::size_t{1024} * 1024;

}  // namespace

std::vector<std::string> RowsInPieces(const std::vector<RowChange>& changes) {
  std::vector<std::string> pieces(1);
  for (const RowChange& change : changes) {
    const std::string line = TextOfChange(change) + '\n';
    if (!pieces.back().empty() && pieces.back().size() + line.size() > kLongestPiece) {
      pieces.emplace_back();
    }
    pieces.back() += line;
  }
  return pieces;
}

std::vector<RowChange> RowsInPiece(std::string_view lines) {
  std::vector<RowChange> changes;
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    changes.push_back(ChangeFromText(lines.substr(0, end)));
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return changes;
}

bool CanBeRead(const std::vector<std::string>& pieces) {
  try {
    for (const std::string& piece : pieces) {
      (void)RowsInPiece(piece);
    }
    return true;
  } catch (const StoreError&) {
    return false;
  }
}

}  // namespace qorhost

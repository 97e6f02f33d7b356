// Goes through the whole audit in the order in which it was written.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/store/audit_log.h"
#include "host/store/sqlite/database.h"

namespace qorhost::sqlite {

/// What a row of "SELECT RID, At, Who, Origin, UnitKey, What FROM AuditEntries" tells.
[[nodiscard]] WorkEntry EntryIn(const Statement& read);

/// An entry as it stands in the file, and what its hash must be.
struct ReadEntry {
  WorkEntry entry;
  std::optional<std::int64_t> previous;
  std::vector<std::string> rows;  ///< in pieces
  std::string hash;               ///< as it is stored
  std::string expected;           ///< made of the entry and of the hashes that stand before it
  /// An entry that it follows or that stands before it is not there.
  std::optional<std::int64_t> missing;
};

/// Hands every entry to `use`, oldest first. With `useExpected` an entry's hash is made of those
/// that the entries before it must have instead of those that are stored.
void ReadAudit(const Database& database, bool useExpected,
               const std::function<void(const ReadEntry&)>& use);

}  // namespace qorhost::sqlite

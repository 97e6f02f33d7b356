// Versions of units and the audit.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// The rows of an entry are lines of JSON, in pieces: one row of a table holds no more than a value
// of the engine may. The first piece stands in the entry, where most end: every table and index
// more is a page more that an operation writes. Entries are never deleted, so an identity never
// comes twice. UnitVersions keeps units that were deleted, for the same reason.
inline constexpr std::string_view kMigration4 = R"sql(
CREATE TABLE AuditEntries (
  RID INTEGER PRIMARY KEY,
  At TEXT NOT NULL,
  Who TEXT NOT NULL,
  Origin TEXT NOT NULL,
  UnitKey LONG,
  Previous LONG,
  What TEXT NOT NULL,
  Rows TEXT NOT NULL
);

CREATE TABLE AuditRows (
  Entry INTEGER NOT NULL,
  Piece INTEGER NOT NULL,
  Rows TEXT NOT NULL,
  PRIMARY KEY (Entry, Piece)
);

CREATE TABLE UnitVersions (
  UnitKey INTEGER PRIMARY KEY,
  Entry LONG NOT NULL,
  Mark LONG NOT NULL
);
)sql";

}  // namespace qorhost::sqlite

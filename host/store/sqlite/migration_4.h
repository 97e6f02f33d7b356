// Versions of units and the audit.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// The rows of an entry are lines of JSON, in pieces: one row of a table holds no more than a value
// of the engine may. UnitVersions keeps units that were deleted: a version never comes twice.
inline constexpr std::string_view kMigration4 = R"sql(
CREATE TABLE AuditEntries (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  At TEXT NOT NULL,
  Who TEXT NOT NULL,
  Origin TEXT NOT NULL,
  UnitKey LONG,
  Previous LONG,
  What TEXT NOT NULL
);
CREATE INDEX AuditEntries_Unit ON AuditEntries (UnitKey);

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

// The version of the unit that was changed last, on the page of the seal.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// Most operations change one unit, and each one's seal is written anyway: the version that it makes
// stands in the same row, a page less for each operation. It moves to UnitVersions when an
// operation for another unit, or for all, takes its place; what is there of the seal's own unit is
// out of date until then. CurrentVersions tells each unit's version wherever it stands.
inline constexpr std::string_view kMigration7 = R"sql(
ALTER TABLE StoreSeal ADD COLUMN UnitKey LONG;
ALTER TABLE StoreSeal ADD COLUMN Entry LONG;
ALTER TABLE StoreSeal ADD COLUMN UnitMark LONG;

CREATE TRIGGER KeepVersion BEFORE UPDATE OF UnitKey ON StoreSeal
WHEN OLD.UnitKey IS NOT NEW.UnitKey AND OLD.UnitKey IS NOT NULL
BEGIN
  INSERT OR REPLACE INTO UnitVersions (UnitKey, Entry, Mark)
    VALUES (OLD.UnitKey, OLD.Entry, OLD.UnitMark);
END;

CREATE VIEW CurrentVersions (UnitKey, Entry, Mark) AS
  SELECT UnitKey, Entry, UnitMark FROM StoreSeal WHERE UnitKey IS NOT NULL
  UNION ALL
  SELECT UnitKey, Entry, Mark FROM UnitVersions
    WHERE UnitKey IS NOT (SELECT UnitKey FROM StoreSeal);
)sql";

}  // namespace qorhost::sqlite

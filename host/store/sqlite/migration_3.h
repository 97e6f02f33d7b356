// Finding a step by its directory code.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// A new directory code asks whether its deletion is still to be sent: without the index it would
// read all steps that wait for the unit. Few steps name a code, the others cost nothing here.
inline constexpr std::string_view kMigration3 = R"sql(
CREATE INDEX IF NOT EXISTS ProgramSteps_Code ON ProgramSteps (UnitKey, Code) WHERE Code IS NOT NULL;
DELETE FROM sqlite_stat1 WHERE idx='ProgramSteps_Code';
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES ('ProgramSteps', 'ProgramSteps_Code', '1000 250 2');
ANALYZE sqlite_schema;
)sql";

}  // namespace qorhost::sqlite

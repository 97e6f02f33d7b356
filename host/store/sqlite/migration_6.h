// The hashes of the audit.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// Entries that stand already get theirs from the program, behind this: see schema.cpp. The text of
// the hash is empty only while that is under way.
inline constexpr std::string_view kMigration6 = R"sql(
ALTER TABLE AuditEntries ADD COLUMN Hash TEXT NOT NULL DEFAULT '';
)sql";

}  // namespace qorhost::sqlite

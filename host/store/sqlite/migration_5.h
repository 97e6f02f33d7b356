// What tells whether a store's log was written for the file beside it.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// One row on one page, which each stored unit of work changes: see log_watch.h, which looks for
// these bytes in the files. The mark before the first one is nothing but zeroes.
inline constexpr std::string_view kMigration5 = R"sql(
CREATE TABLE StoreSeal (
  Token BLOB NOT NULL,
  Mark BLOB NOT NULL,
  Previous BLOB NOT NULL
);

INSERT INTO StoreSeal (Token, Mark, Previous)
  VALUES (x'716F72686F73742073746F7265207321', randomblob(16), zeroblob(16));
)sql";

}  // namespace qorhost::sqlite

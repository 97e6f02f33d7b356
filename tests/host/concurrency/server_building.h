// The small building on a server, and what is in it.
#pragma once

#include <string>
#include <vector>

#include "host/store/postgres/connection.h"

namespace qorhost::test {

/// Empties the store of that connection, identities and versions included, and makes the building
/// in it.
void RenewBuilding(postgres::Connection& connection, int capacity);

/// Every row of every table as a text, without the dates of changes, random marks and identities,
/// which a server does not give out twice: a link tells what it leads to.
[[nodiscard]] std::vector<std::string> ContentOf(postgres::Connection& connection);

/// As that of a file.
[[nodiscard]] std::vector<std::string> WrongIn(postgres::Connection& connection);

}  // namespace qorhost::test

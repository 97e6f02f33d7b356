// Names for stores on a server that tests make beside those in files.
#pragma once

#include <string>

namespace qorhost::test {

/// Why no store can be made on a server here; empty where one can.
[[nodiscard]] std::string WhyNoServer();
/// The name of a database of its own, without a store, on a server of the program's own.
[[nodiscard]] std::string NewServerName();
/// The name of one that is like another, which nobody has open.
[[nodiscard]] std::string NewServerNameLike(const std::string& name);

}  // namespace qorhost::test

// docs/host-operations.md: the descriptions of all operations, printed.
#pragma once

#include <string>

namespace qortest {

[[nodiscard]] std::string OperationsPage();

}  // namespace qortest

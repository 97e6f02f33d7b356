// One case on the database of an engine.
#pragma once

#include "tests/host/dialect/case_database.h"
#include "tests/host/dialect/case_file.h"

namespace qorhost::dialect::test {

/// Runs a case and fails the test where it does not come out as written. `printed` is what the
/// engine is to be told, where the case says so.
void RunCase(CaseDatabase& database, const Case& expected,
             const std::optional<std::string>& printed);

}  // namespace qorhost::dialect::test

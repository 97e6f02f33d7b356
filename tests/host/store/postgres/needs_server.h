// For test programs of which no test can do without a server.
#pragma once

#include <gtest/gtest.h>

namespace qorhost::postgres::test {

/// From here on every test of the program is skipped, and says why, where no server is installed.
/// To be called before main(), from the initial value of a constant; the program owns what it
/// gives.
const testing::Environment* NeedServer();

}  // namespace qorhost::postgres::test

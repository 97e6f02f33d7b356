#include "needs_server.h"

#include <string>

#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

class NeedsServer final : public testing::Environment {
 public:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
  }
};

}  // namespace

const testing::Environment* NeedServer() {
  return testing::AddGlobalTestEnvironment(new NeedsServer);
}

}  // namespace qorhost::postgres::test

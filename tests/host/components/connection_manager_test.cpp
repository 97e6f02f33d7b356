#include "host/components/connection_manager.h"

#include <gtest/gtest.h>

#include "frame/runtime_error.h"

namespace qorhost {
namespace {

TEST(ConnectionManagerTest, CountsPings) {
  ConnectionManagerObject manager;
  qorcred::Call(manager, "pbPing");
  qorcred::Call(manager, "PBPING");
  EXPECT_EQ(manager.pings(), 2);
}

TEST(ConnectionManagerTest, RefusesArgumentsAndOtherMembers) {
  ConnectionManagerObject manager;
  EXPECT_THROW(qorcred::Call(manager, "pbPing", 1), qorcred::RuntimeError);
  EXPECT_THROW(qorcred::Call(manager, "pbPong"), qorcred::RuntimeError);
  EXPECT_EQ(manager.pings(), 0);
}

}  // namespace
}  // namespace qorhost

// A trace that cannot be written changes nothing.
#include <gtest/gtest.h>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

class Variable final : public testing::Environment {
 public:
  void SetUp() override {
    ASSERT_NE(SetEnvironmentVariableW(L"QORCRED_TRACE", L"Z:\\no such folder\\calls.txt"), FALSE);
  }
};
const auto* const kVariable = testing::AddGlobalTestEnvironment(new Variable);

using UnwrittenTrace = ComTest;

TEST_F(UnwrittenTrace, ChangesNothing) {
  const FakeManager manager;
  const Client report(kCredentialReport);
  report.Put(L"gstrRIDsForDeletion", Variant(L"101,102"));
  const Outcome outcome =
      report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(3), Variant(manager.object));
  ASSERT_EQ(outcome.code, S_OK);
  EXPECT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  EXPECT_EQ(manager.state->statements.size(), 1U);
}

}  // namespace
}  // namespace qortest

// Work whose trace is longer than a disk may have room for. The script full_disk runs it with and
// without that room; without a trace it passes as well.
#include <gtest/gtest.h>

#include "tests/com/client/client_fixture.h"

namespace qortest {
namespace {

using LongTrace = ComTest;

TEST_F(LongTrace, EndsWithoutChangingWhatIsTraced) {
  constexpr int kCalls = 200;
  const FakeManager manager;
  const Client report(kCredentialReport);
  for (int call = 0; call < kCalls; ++call) {
    report.Put(L"gstrRIDsForDeletion", Variant(L"101,102"));
    const Outcome outcome = report.Call(L"pbValidate", Variant(FakeObject::Make()), Variant(3),
                                        Variant(manager.object));
    ASSERT_EQ(outcome.code, S_OK);
    ASSERT_EQ(V_BOOL(&outcome.result), VARIANT_TRUE);
  }
  EXPECT_EQ(manager.state->statements.size(), static_cast<std::size_t>(kCalls));
}

}  // namespace
}  // namespace qortest

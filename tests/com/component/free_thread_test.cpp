// Controllers that free threads create: the system makes them in an apartment of its own.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "com/classes.h"
#include "com/text.h"
#include "tests/com/component/apartments.h"
#include "tests/com/support/component.h"
#include "tests/com/support/fake_object.h"
#include "tests/com/support/variant.h"

namespace qortest {
namespace {

using qorcred::com::ComClass;
using qorcred::com::ToUtf8;
using qorcred::com::ToWide;

// That the component can be unloaded afterwards is not looked at: Wine's apartment for such objects
// keeps the class's factory. So this is a program of its own, too.

class FreeThreadTest : public ::testing::TestWithParam<const wchar_t*> {};

TEST_P(FreeThreadTest, ReachAControllerThroughAProxyAndFreeItWithItsScreen) {
  CLSID id{};
  ASSERT_EQ(CLSIDFromProgID((std::wstring(L"qorCred.") + GetParam()).c_str(), &id), S_OK);
  const ComClass* comClass = qorcred::com::FindClass(id);
  ASSERT_NE(comClass, nullptr);
  const std::wstring screenProperty = ToWide(comClass->members().front().name);

  HRESULT created = E_UNEXPECTED;
  HRESULT loaded = E_UNEXPECTED;
  bool isProxy = false;
  Answer answer;
  Answer put;
  long screensWhileAlive = -1;
  long screensAfterwards = -1;
  ASSERT_EQ(RunInApartment(COINIT_MULTITHREADED,
                           [&] {
                             ComPtr<IDispatch> object;
                             created =
                                 CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER,
                                                  comClass->dispinterface, object.ReceiveVoid());
                             if (!object) return;
                             isProxy = IsProxy(object.get());
                             loaded = CanUnload();
                             answer = TextThrough(object.get());
                             put = Call(object.get(), screenProperty, DISPATCH_PROPERTYPUTREF,
                                        FakeObject::Make());
                             screensWhileAlive = FakeObject::Alive();
                             object = {};
                             screensAfterwards = FakeObject::Alive();
                           }),
            S_OK);
  ASSERT_EQ(created, S_OK);
  EXPECT_TRUE(isProxy);
  EXPECT_EQ(loaded, S_FALSE);
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_EQ(TextIn(answer.result), L"500");
  EXPECT_EQ(put.code, S_OK);
  EXPECT_EQ(screensWhileAlive, 1);
  EXPECT_EQ(screensAfterwards, 0);
}

INSTANTIATE_TEST_SUITE_P(Classes, FreeThreadTest,
                         ::testing::Values(L"clsCredential", L"clsDirCode", L"clsDirCodeReport",
                                           L"clsCredentialReport"),
                         [](const auto& name) { return ToUtf8(name.param); });

}  // namespace
}  // namespace qortest

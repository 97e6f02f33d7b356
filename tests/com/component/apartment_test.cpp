// Controllers that are reached from other apartments than their own.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com/classes.h"
#include "com/text.h"
#include "tests/com/component/apartments.h"
#include "tests/com/component/component_file.h"
#include "tests/com/support/component.h"
#include "tests/com/support/fake_object.h"
#include "tests/com/support/variant.h"

namespace qortest {
namespace {

using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ToUtf8;

/// The component is registered for the machine, and nothing of it is alive before and after.
class ApartmentTest : public ::testing::Test {
 protected:
  void SetUp() override {
    component_ = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(component_, nullptr);
    using Register = HRESULT(STDAPICALLTYPE*)();
    ASSERT_EQ(EntryPoint<Register>(component_, "DllRegisterServer")(), S_OK);
    ASSERT_EQ(CanUnload(), S_OK);
  }
  void TearDown() override {
    EXPECT_EQ(CanUnload(), S_OK);
    EXPECT_EQ(FakeObject::Alive(), 0);
    FreeLibrary(component_);
  }

 private:
  HMODULE component_ = nullptr;
};

struct Crossing {
  const char* name;
  DWORD apartment;  ///< of the client
  bool isEarly;     ///< by the class's own dispinterface instead of IDispatch
  bool byTable;
};

void PrintTo(const Crossing& crossing, std::ostream* out) {
  *out << crossing.name;
}

class CrossingTest : public ApartmentTest, public ::testing::WithParamInterface<Crossing> {};

TEST_P(CrossingTest, EveryClassAnswersThroughAProxy) {
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    {
      const ComPtr<IDispatch> object = CreateObject(comClass.programmaticId);
      ASSERT_TRUE(object);
      Passage passage(GetParam().byTable, object.get(),
                      GetParam().isEarly ? comClass.dispinterface : IID_IDispatch);
      ASSERT_EQ(passage.sent(), S_OK);

      HRESULT received = E_UNEXPECTED;
      bool isProxy = false;
      Answer answer;
      ASSERT_EQ(RunInApartment(GetParam().apartment,
                               [&] {
                                 ComPtr<IDispatch> proxy;
                                 received = passage.Receive(proxy);
                                 if (!proxy) return;
                                 isProxy = IsProxy(proxy.get());
                                 answer = TextThrough(proxy.get());
                               }),
                S_OK);
      ASSERT_EQ(received, S_OK);
      EXPECT_TRUE(isProxy);
      EXPECT_EQ(answer.code, S_OK);
      EXPECT_EQ(TextIn(answer.result), L"500");
      EXPECT_EQ(CanUnload(), S_FALSE);
    }
    EXPECT_EQ(CanUnload(), S_OK);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Ways, CrossingTest,
    ::testing::Values(
        Crossing{"LateBound", COINIT_APARTMENTTHREADED, false, false},
        Crossing{"LateBoundFromFreeThreads", COINIT_MULTITHREADED, false, false},
        Crossing{"LateBoundByTable", COINIT_APARTMENTTHREADED, false, true},
        Crossing{"LateBoundByTableFromFreeThreads", COINIT_MULTITHREADED, false, true},
        Crossing{"EarlyBound", COINIT_APARTMENTTHREADED, true, false},
        Crossing{"EarlyBoundFromFreeThreads", COINIT_MULTITHREADED, true, false},
        Crossing{"EarlyBoundByTable", COINIT_APARTMENTTHREADED, true, true},
        Crossing{"EarlyBoundByTableFromFreeThreads", COINIT_MULTITHREADED, true, true}),
    [](const auto& way) { return std::string(way.param.name); });

TEST_F(ApartmentTest, AProxyGivesTheClasssOwnInterface) {
  for (const ComClass& comClass : Classes()) {
    SCOPED_TRACE(ToUtf8(comClass.name));
    const ComPtr<IDispatch> object = CreateObject(comClass.programmaticId);
    ASSERT_TRUE(object);
    Passage passage(false, object.get(), IID_IDispatch);
    ASSERT_EQ(passage.sent(), S_OK);
    HRESULT asked = E_UNEXPECTED;
    Answer answer;
    ASSERT_EQ(RunInApartment(COINIT_APARTMENTTHREADED,
                             [&] {
                               ComPtr<IDispatch> proxy;
                               if (FAILED(passage.Receive(proxy))) return;
                               ComPtr<IDispatch> own;
                               asked =
                                   proxy->QueryInterface(comClass.dispinterface, own.ReceiveVoid());
                               if (own) answer = TextThrough(own.get());
                             }),
              S_OK);
    ASSERT_EQ(asked, S_OK);
    EXPECT_EQ(answer.code, S_OK);
    EXPECT_EQ(TextIn(answer.result), L"500");
  }
}

TEST_F(ApartmentTest, AFailureComesThroughTheProxy) {
  const ComClass& comClass = Classes().front();
  const ComPtr<IDispatch> object = CreateObject(comClass.programmaticId);
  ASSERT_TRUE(object);
  Passage passage(false, object.get(), comClass.dispinterface);
  ASSERT_EQ(passage.sent(), S_OK);
  Answer answer;
  ASSERT_EQ(RunInApartment(COINIT_MULTITHREADED,
                           [&] {
                             ComPtr<IDispatch> proxy;
                             if (FAILED(passage.Receive(proxy))) return;
                             answer = Call(proxy.get(), L"pbBase64Dec", DISPATCH_METHOD, L"*AAA");
                           }),
            S_OK);
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.raised, static_cast<HRESULT>(0x800A0006));
}

TEST_F(ApartmentTest, TheScreenIsUsedInTheControllersOwnThread) {
  std::vector<DWORD> threads;
  const ComPtr<FakeObject> control = FakeObject::Make();
  for (const wchar_t* name : {L"Visible", L"Text"}) {
    control->On(name, [&threads](const FakeCall& call) {
      threads.push_back(GetCurrentThreadId());
      return call.Return({});
    });
  }
  const ComPtr<FakeObject> screen = FakeObject::Make();
  for (const wchar_t* name : {L"txtIDCode", L"txtSequenceCode", L"lblIDCode", L"lblSequencecode",
                              L"optButtonDefault", L"optButton4", L"lblActivate", L"cboActivate"}) {
    screen->Property(name, control);
  }
  const ComClass& comClass = Classes().front();
  const ComPtr<IDispatch> object = CreateObject(comClass.programmaticId);
  ASSERT_TRUE(object);
  ASSERT_EQ(Call(object.get(), L"gmobjCredentialScreen", DISPATCH_PROPERTYPUTREF, screen).code,
            S_OK);
  Passage passage(false, object.get(), comClass.dispinterface);
  ASSERT_EQ(passage.sent(), S_OK);
  Answer answer;
  ASSERT_EQ(RunInApartment(COINIT_APARTMENTTHREADED,
                           [&] {
                             ComPtr<IDispatch> proxy;
                             if (FAILED(passage.Receive(proxy))) return;
                             answer =
                                 Call(proxy.get(), L"pbTransmitterCtls", DISPATCH_METHOD, true);
                           }),
            S_OK);
  EXPECT_EQ(answer.code, S_OK);
  EXPECT_EQ(threads, std::vector<DWORD>(8, GetCurrentThreadId()));
}

}  // namespace
}  // namespace qortest

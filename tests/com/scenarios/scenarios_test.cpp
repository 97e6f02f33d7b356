// The scenarios on Windows: natively, through the component, and with components of the host whose
// calls the system dispatches from a type description, every host sees the same calls.
#include "tests/scenarios/scenarios.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "com/dispatch_object.h"
#include "com/ownership.h"
#include "com/text.h"
#include "frame/siblings.h"
#include "tests/com/scenarios/kept_transcripts.h"
#include "tests/com/scenarios/object_dispatch.h"
#include "tests/com/scenarios/typed_components.h"
#include "tests/com/support/offered_component.h"
#include "tests/com/support/variant.h"

namespace qortest {

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
  return out << scenario.name;
}

namespace {

using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::com::ComPtr;

/// What the components are that controllers create by name: automation objects that take every
/// argument as it comes, or such that declare their arguments' types.
using ComponentForm = ComPtr<IDispatch> (*)(std::string_view programmaticId,
                                            const ObjectRef& component);

ComPtr<IDispatch> Untyped(std::string_view, const ObjectRef& component) {
  return AsAutomationObject(component);
}

ObjectRef ThroughAutomation(const ObjectRef& object) {
  return qorcred::com::Wrap(AsAutomationObject(object).get());
}

// The components that controllers create by name, made by the recording host.
std::vector<std::unique_ptr<OfferedComponent>> OfferSiblings(qorcred::Host& host,
                                                             ComponentForm form) {
  std::vector<std::unique_ptr<OfferedComponent>> offered;
  for (const std::string_view name :
       {qorcred::component::kDatabaseManager, qorcred::component::kStepSender,
        qorcred::component::kTenant, qorcred::component::kApplication,
        qorcred::component::kConnectionManager}) {
    offered.push_back(std::make_unique<OfferedComponent>(
        qorcred::com::ToWide(name),
        [&host, name, form] { return form(name, host.CreateComponent(name)); }));
  }
  return offered;
}

std::string RunThroughComponent(const Scenario& scenario, ComponentForm form) {
  RecordingHost host(scenario.screen);
  scenario.arrange(host);
  std::string result;
  {
    const auto siblings = OfferSiblings(host.host(), form);
    CLSID id{};
    const std::wstring name = L"qorCred." + qorcred::com::ToWide(scenario.className);
    EXPECT_EQ(CLSIDFromProgID(name.c_str(), &id), S_OK);
    ComPtr<IDispatch> made;
    EXPECT_EQ(
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, made.ReceiveVoid()),
        S_OK);
    if (!made) return "no component";
    ObjectRef controller = qorcred::com::Wrap(made.get());
    made = {};
    const Stage stage{
        host,
        *controller,
        ThroughAutomation(host.screen()),
        ThroughAutomation(host.connectionScreen()),
        ThroughAutomation(host.connection()),
        scenario.screen == ScreenKind::kReportFilter ? ThroughAutomation(host.grid()) : nullptr};
    Put(*controller, scenario.screenProperty, stage.screen);
    result = scenario.act(stage);
    controller.reset();
  }
  EXPECT_EQ(LiveAutomationObjects(), 0) << "somebody still holds an object of the host";
  return Transcript(host, result);
}

class ScenarioTest : public ::testing::TestWithParam<Scenario> {
 protected:
  void SetUp() override { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  void TearDown() override { CoUninitialize(); }

  [[nodiscard]] static std::string Kept() { return KeptTranscript(kKeptTranscripts, GetParam()); }
};

TEST_P(ScenarioTest, GivesTheKeptTranscriptNatively) {
  EXPECT_EQ(RunNatively(GetParam()), Kept());
}

TEST_P(ScenarioTest, GivesTheKeptTranscriptThroughTheComponent) {
  EXPECT_EQ(RunThroughComponent(GetParam(), Untyped), Kept());
}

TEST_P(ScenarioTest, GivesTheKeptTranscriptWithComponentsThatDeclareTheirArguments) {
  EXPECT_EQ(RunThroughComponent(GetParam(), AsTypedComponent), Kept());
}

// What the scenarios above would end with, were a number handed over by reference whose variable is
// not the one declared.
TEST(TypedComponentTest, TakesADoubleForALongByValueAndNotByReference) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  {
    RecordingHost host(ScreenKind::kDirectoryCode);
    const ComPtr<IDispatch> sender =
        AsTypedComponent(qorcred::component::kStepSender,
                         host.host().CreateComponent(qorcred::component::kStepSender));
    std::wstring member = L"pbDeleteDirCodePrgStepExists";
    LPOLESTR name = member.data();
    DISPID id = DISPID_UNKNOWN;
    ASSERT_EQ(sender->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &id), S_OK);
    const auto ask = [&](const Variant& connection, const VARIANT& code) {
      std::array<VARIANT, 3> reversed{code, Variant(1), connection};
      DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
      Variant result;
      return sender->Invoke(id, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, &result,
                            nullptr, nullptr);
    };
    double code = 12.0;
    LONG whole = 12;
    const Variant connection(AsAutomationObject(host.connection()));
    EXPECT_EQ(ask(connection, Variant(code)), S_OK);
    EXPECT_EQ(ask(connection, Variant::Reference(VT_I4, &whole)), S_OK);
    // Without an object: what a refused call was given before the refusal is not always let go.
    const Variant nothing(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(ask(nothing, Variant::Reference(VT_R8, &code)), DISP_E_TYPEMISMATCH);
  }
  CoUninitialize();
}

INSTANTIATE_TEST_SUITE_P(Component, ScenarioTest,
                         ::testing::ValuesIn(Scenarios().begin(), Scenarios().end()),
                         [](const ::testing::TestParamInfo<Scenario>& scenario) {
                           return std::string(scenario.param.name);
                         });

}  // namespace
}  // namespace qortest

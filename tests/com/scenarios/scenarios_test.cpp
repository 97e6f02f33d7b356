// The scenarios on Windows: natively, through the component, and with components of the host whose
// calls the system dispatches from a type description, every host sees the same calls.
#include "tests/scenarios/scenarios.h"

#include <gtest/gtest.h>
#include <windows.h>

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

INSTANTIATE_TEST_SUITE_P(Component, ScenarioTest,
                         ::testing::ValuesIn(Scenarios().begin(), Scenarios().end()),
                         [](const ::testing::TestParamInfo<Scenario>& scenario) {
                           return std::string(scenario.param.name);
                         });

}  // namespace
}  // namespace qortest

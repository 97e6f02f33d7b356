#include "tests/com/soak/turn.h"

#include <algorithm>
#include <array>
#include <utility>

#include "com/dispatch_object.h"
#include "com/text.h"
#include "frame/runtime_error.h"
#include "frame/siblings.h"
#include "tests/com/scenarios/kept_transcripts.h"
#include "tests/com/scenarios/object_dispatch.h"
#include "tests/com/soak/bare_controller.h"
#include "tests/com/support/component.h"

namespace qortest {

using qorcred::InvokeKind;
using qorcred::MemberKind;
using qorcred::ObjectRef;
using qorcred::RuntimeError;
using qorcred::Value;

namespace {

constexpr std::array kSiblings{"qorDBI.clsDBManager", "qorSPS.clsSendProgSteps",
                               "qorTent.clsTenant", "qorAppln.clsApplication",
                               "qorCommn.clsConnectionManager"};

ObjectRef ThroughAutomation(const ObjectRef& object) {
  return qorcred::com::Wrap(AsAutomationObject(object).get());
}

int SomeNumber(Random& random) {
  constexpr std::array kNumbers{6, 7, 9, 13, 91, 429, 438, 440, 1004, 3021};
  return kNumbers.at(random.Below(kNumbers.size()));
}

HRESULT SomeCode(Random& random) {
  constexpr std::array<HRESULT, 8> kCodes{E_FAIL,
                                          E_OUTOFMEMORY,
                                          E_ACCESSDENIED,
                                          DISP_E_MEMBERNOTFOUND,
                                          DISP_E_TYPEMISMATCH,
                                          DISP_E_BADPARAMCOUNT,
                                          RPC_E_DISCONNECTED,
                                          DISP_E_EXCEPTION};
  return kCodes.at(random.Below(kCodes.size()));
}

Value SomeValue(qorcred::ValueType type, Random& random) {
  switch (type) {
    case qorcred::ValueType::kBoolean:
      return random.Below(2) == 1;
    case qorcred::ValueType::kLong:
      return static_cast<std::int32_t>(random.Below(10));
    case qorcred::ValueType::kString:
      return std::string(random.Below(200), 'x');
    default:
      return ObjectRef();
  }
}

// The properties of the scenario's class.
std::vector<const qorcred::Member*> PropertiesOf(const Scenario& scenario, RecordingHost& host) {
  std::vector<const qorcred::Member*> properties;
  for (const qorcred::Member& member : scenario.create(host.host())->Members()) {
    if (member.kind == MemberKind::kProperty) properties.push_back(&member);
  }
  return properties;
}

// Entries that the screens take and refuse.
void ChangeEntry(ScreenKind kind, RecordingHost& host, Random& random) {
  constexpr std::array kEntries{"", "0", "5", "21", "70000", "-3", "twelve"};
  const char* entry = kEntries.at(random.Below(kEntries.size()));
  if (kind == ScreenKind::kDirectoryCode) {
    host.SetText("txtdirectorycode", entry);
  } else if (kind != ScreenKind::kReportFilter) {
    host.SetText(random.Below(2) == 0 ? "txtPINStart" : "txtPINEND", entry);
  }
}

// At which of its calls the host disturbs an operation that makes so many.
std::size_t PlaceOf(Disturbance disturbance, std::size_t calls, Random& random) {
  // What the operator enters is read first.
  const bool isEarly = disturbance == Disturbance::kChangedEntry;
  return 1 + random.Below(isEarly ? std::min<std::size_t>(calls, 4) : calls);
}

}  // namespace

const char* NameOf(Disturbance disturbance) {
  switch (disturbance) {
    case Disturbance::kNone:
      return "undisturbed";
    case Disturbance::kFailingCall:
      return "a call of the host raises";
    case Disturbance::kFailingCode:
      return "a call of the host ends with a code";
    case Disturbance::kFailingCreation:
      return "a component cannot be created";
    case Disturbance::kReadController:
      return "the host reads the controller";
    case Disturbance::kPutController:
      return "the host puts into the controller";
    case Disturbance::kSameOperation:
      return "the host runs the same operation";
    case Disturbance::kOtherScreen:
      return "the host runs another controller";
    case Disturbance::kReleasedScreen:
      return "the host releases the screen";
    case Disturbance::kReleasedController:
      return "the host releases the controller";
    case Disturbance::kChangedEntry:
      return "the host changes the entry";
  }
  return "";
}

/// What is at hand when a disturbance comes.
struct Turns::Happening {
  const Scenario& scenario;
  Disturbance disturbance;
  RecordingHost& host;
  BareController& controller;
  Stage& stage;
};

Turns::Turns() : callsOf_(Scenarios().size()), counts_(kDisturbances) {
  for (const char* name : kSiblings) {
    offered_.push_back(std::make_unique<OfferedComponent>(qorcred::com::ToWide(name), [this, name] {
      return AsAutomationObject(CreateComponent(name));
    }));
  }
  // How many calls there are to be disturbed is known from here on, whatever turn comes first.
  Random none(0, 0);
  for (std::size_t at = 0; at < Scenarios().size(); ++at) RunScenario(at, Disturbance::kNone, none);
}

// What cannot be created is not there: nothing may be raised through the system's own calls.
ObjectRef Turns::CreateComponent(const char* programmaticId) const {
  try {
    return host_->host().CreateComponent(programmaticId);
  } catch (...) {
    return nullptr;
  }
}

void Turns::Happen(const Happening& happening, Random& random) {
  ++disturbed_;
  BareController& controller = happening.controller;
  switch (happening.disturbance) {
    case Disturbance::kNone:
    case Disturbance::kFailingCreation:
      return;
    case Disturbance::kFailingCall:
      throw RuntimeError(static_cast<qorcred::ErrorNumber>(SomeNumber(random)), "not today");
    case Disturbance::kFailingCode:
      throw BareCode{SomeCode(random)};
    case Disturbance::kReadController:
      for (const auto* property : PropertiesOf(happening.scenario, happening.host)) {
        (void)controller.Invoke(property->name, InvokeKind::kGet, {});
      }
      return;
    case Disturbance::kPutController:
      for (const auto* property : PropertiesOf(happening.scenario, happening.host)) {
        Value value = SomeValue(property->type, random);
        controller.Invoke(property->name, InvokeKind::kPut, {&value, 1});
      }
      return;
    case Disturbance::kSameOperation:
      (void)happening.scenario.act(happening.stage);
      return;
    case Disturbance::kOtherScreen:
      RunScenario(random.Below(Scenarios().size()), Disturbance::kNone, random);
      return;
    case Disturbance::kReleasedScreen:
      happening.stage.screen.reset();
      qorcred::Put(controller, happening.scenario.screenProperty, ObjectRef());
      return;
    case Disturbance::kReleasedController:
      controller.Release();
      return;
    case Disturbance::kChangedEntry:
      ChangeEntry(happening.scenario.screen, happening.host, random);
      return;
  }
}

std::string Turns::Act(const Scenario& scenario, RecordingHost& host, Disturbance disturbance,
                       std::size_t& callsOf, Random& random) {
  if (disturbance == Disturbance::kFailingCreation) {
    host.gate().DoAt(1 + random.Below(4), [this, &random] {
      ++disturbed_;
      throw RuntimeError(static_cast<qorcred::ErrorNumber>(SomeNumber(random)), "not today");
    });
  }
  BareController controller((L"qorCred." + qorcred::com::ToWide(scenario.className)).c_str());
  Stage stage{
      host,
      controller,
      ThroughAutomation(host.screen()),
      ThroughAutomation(host.connectionScreen()),
      ThroughAutomation(host.connection()),
      scenario.screen == ScreenKind::kReportFilter ? ThroughAutomation(host.grid()) : nullptr};
  qorcred::Put(controller, scenario.screenProperty, stage.screen);
  const std::size_t before = host.gate().calls();
  const Happening happening{scenario, disturbance, host, controller, stage};
  if (disturbance != Disturbance::kNone && disturbance != Disturbance::kFailingCreation) {
    host.gate().DoAt(PlaceOf(disturbance, callsOf, random),
                     [this, &happening, &random] { Happen(happening, random); });
  }
  std::string result = scenario.act(stage);
  if (disturbance == Disturbance::kNone) callsOf = host.gate().calls() - before;
  return result;
}

void Turns::RunScenario(std::size_t number, Disturbance disturbance, Random& random) {
  const Scenario& scenario = Scenarios()[number];
  std::size_t& callsOf = callsOf_[number];
  RecordingHost host(scenario.screen);
  scenario.arrange(host);
  RecordingHost* const outer = std::exchange(host_, &host);
  std::string result;
  try {
    result = Act(scenario, host, disturbance, callsOf, random);
  } catch (const RuntimeError& failure) {
    result = "raised " + std::to_string(static_cast<int>(failure.number()));
  }
  host_ = outer;
  calls_ += host.gate().calls();
  ++counts_[static_cast<std::size_t>(disturbance)];
  if (disturbance != Disturbance::kNone) return;
  const std::string transcript = Transcript(host, result);
  if (transcript == KeptTranscript(kKeptTranscripts, scenario) || !wrong_.empty()) return;
  wrong_ = std::string("the transcript of ") + scenario.name + " is another one:\n" + transcript;
}

std::string Turns::Run(Random& random) {
  if (!wrong_.empty()) return wrong_;

  const std::size_t scenario = random.Below(Scenarios().size());
  const auto disturbance = static_cast<Disturbance>(random.Below(kDisturbances));
  RunScenario(scenario, disturbance, random);
  if (wrong_.empty() && LiveAutomationObjects() != 0) {
    wrong_ = "somebody still holds an object of the host";
  }
  if (wrong_.empty() && CanUnload() != S_OK) wrong_ = "the component is still in use";
  if (wrong_.empty()) return {};
  // Nothing runs after the first fault.
  return std::string(Scenarios()[scenario].name) + ", " + NameOf(disturbance) + ": " + wrong_;
}

}  // namespace qortest

// The same scenarios natively and through the component: a host sees the same calls either way.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "com/classes.h"
#include "com/dispatch_object.h"
#include "com/ownership.h"
#include "com/text.h"
#include "frame/base64.h"
#include "frame/convert.h"
#include "frame/object.h"
#include "frame/siblings.h"
#include "tests/com/scenarios/object_dispatch.h"
#include "tests/com/support/offered_component.h"
#include "tests/support/recording_host.h"

namespace qortest {
namespace {

using qorcred::InvokeKind;
using qorcred::Object;
using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::StringArray;
using qorcred::Value;
using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ComPtr;

constexpr std::int32_t kUnit = 3;

/// What a scenario is given: the controller by member name, and the host's objects in the form in
/// which this way in takes them.
struct Stage {
  RecordingHost& host;
  Object& controller;
  ObjectRef screen;
  ObjectRef connectionScreen;
  ObjectRef connection;
  ObjectRef grid;

  /// Runs an operation and returns its result as text, for the transcript.
  std::string Run(std::string_view operation, std::vector<Value> arguments) const {
    const Value result = controller.Invoke(operation, InvokeKind::kCall, arguments);
    return qorcred::TextOrEmpty(result);
  }
};

using Action = std::function<std::string(const Stage&)>;

struct Scenario {
  const char* name;
  const wchar_t* comClass;
  ScreenKind screen;
  const char* screenProperty;
  const char* reaches;  ///< a line of its transcript, near the end
  std::function<void(RecordingHost&)> arrange;
  Action act;
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
  return out << scenario.name;
}

const ComClass& ClassNamed(const wchar_t* name) {
  for (const ComClass& comClass : Classes()) {
    if (std::wstring(comClass.name) == name) return comClass;
  }
  throw std::invalid_argument("no such class");
}

std::string Transcript(RecordingHost& host, const std::string& result) {
  std::string text;
  for (const std::string& line : host.transcript().Read(Detail::kEverything)) {
    text += line + "\n";
  }
  return text + "result: " + result + "\n";
}

std::string RunNatively(const Scenario& scenario) {
  RecordingHost host(scenario.screen);
  scenario.arrange(host);
  std::shared_ptr<qorcred::Controller> controller =
      ClassNamed(scenario.comClass).create(host.host());
  Put(*controller, scenario.screenProperty, host.screen());
  const Stage stage{host,
                    *controller,
                    host.screen(),
                    host.connectionScreen(),
                    host.connection(),
                    scenario.screen == ScreenKind::kReportFilter ? host.grid() : nullptr};
  const std::string result = scenario.act(stage);
  controller.reset();
  return Transcript(host, result);
}

ObjectRef ThroughAutomation(const ObjectRef& object) {
  return qorcred::com::Wrap(AsAutomationObject(object).get());
}

// The components that controllers create by name, made by the recording host.
std::vector<std::unique_ptr<OfferedComponent>> OfferSiblings(qorcred::Host& host) {
  std::vector<std::unique_ptr<OfferedComponent>> offered;
  for (const std::string_view name :
       {qorcred::component::kDatabaseManager, qorcred::component::kStepSender,
        qorcred::component::kTenant, qorcred::component::kApplication,
        qorcred::component::kConnectionManager}) {
    offered.push_back(std::make_unique<OfferedComponent>(qorcred::com::ToWide(name), [&host, name] {
      return AsAutomationObject(host.CreateComponent(name));
    }));
  }
  return offered;
}

std::string RunThroughComponent(const Scenario& scenario) {
  RecordingHost host(scenario.screen);
  scenario.arrange(host);
  std::string result;
  {
    const auto siblings = OfferSiblings(host.host());
    CLSID id{};
    const std::wstring name = std::wstring(L"qorCred.") + scenario.comClass;
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
};

TEST_P(ScenarioTest, GivesTheSameCallsBothWays) {
  const std::string native = RunNatively(GetParam());
  // The component would report a trapped failure elsewhere; none of these scenarios has one.
  ASSERT_EQ(native.find("Trapped"), std::string::npos) << native;
  ASSERT_NE(native.find(GetParam().reaches), std::string::npos) << native;
  EXPECT_EQ(RunThroughComponent(GetParam()), native);
}

// Arrangements and actions

std::string Encoded(std::string_view text) {
  return qorcred::EncodeBase64(text);
}

Row Credential(std::int32_t rid, std::int32_t type, std::int32_t number) {
  return {kUnit, rid, type, number, 7, 3, 1, 4, "11/20/2026 9:30:00 AM", 2};
}

void ListCredentials(RecordingHost& host) {
  host.AddItem("cboCredentialType", "Corvin 30-Bit Card", 0);
  host.AddItem("cboCredentialType", "Transmitter", 2);
  host.database().Select("CREDENTIALBANK",
                         {Credential(101, 0, 17), Credential(102, 1, 18), Credential(103, 2, 19)});
}

void StoreTransmitter(RecordingHost& host) {
  for (std::int32_t door = 1; door <= 3; ++door) host.AddItem("cboActivate", "Door", door);
  host.AddItem("cboAssignedTo", "<Unassigned>", -100);
  host.database().Select("CREDENTIALBANK", {Credential(103, 2, 19)});
}

void ListDirectoryCodes(RecordingHost& host) {
  Row first(20, Value(qorcred::Null{}));
  first[1] = 17;
  first[2] = "12";
  Row second = first;
  second[1] = 18;
  second[2] = "34";
  host.database().Select("FROM DIRECTORYCODE", {first, second});
}

void FillRange(RecordingHost& host) {
  host.controls().SetVariable("gstrTag", "Range");
  host.AddItem("cboCredentialType", "Corvin 30-Bit Card", 0);
  host.Select("cboCredentialType", 0);
  host.SetText("txtPINStart", "20");
  host.SetText("txtPINEND", "22");
  host.SetText("txtFacilityCode", "7");
  host.database().Select("TOTAL", {{Value(Encoded("500"))}});
}

void EnterDirectoryCode(RecordingHost& host) {
  for (const std::string_view list : {"cboSchedules", "cboSchedulesCF"}) {
    host.AddItem(list, "Full Access", 1);
    host.AddItem(list, "Night", 9);
  }
  host.SetText("txtdirectorycode", "250");
  host.SetText("txtPhoneNo", "5551234");
  host.database().Select("TOTAL", {{Value(Encoded("500"))}});
}

void FilterDirectoryCodes(RecordingHost& host) {
  host.database().Select("ORDER BY DisplaySeq", {{"DirectoryCode.DirectoryCode"}});
}

// A code with everything filled in, as a unit writes it.
StringArray UnitCode() {
  return {"a",    "b",     "c", "d", "12",     "5551234", "77", "5559876",
          "88",   "Front", "1", "1", "240315", "0930",    "1",  "251231",
          "2359", "9",     "1", "5", "1",      "1",       "7",  "1"};
}

INSTANTIATE_TEST_SUITE_P(
    Component, ScenarioTest,
    ::testing::Values(
        Scenario{"FillsTheCredentialScreensSchedules", L"clsCredential", ScreenKind::kCredential,
                 "gmobjCredentialScreen", "cboSchedules4.AddItem \"Day\"",
                 [](RecordingHost& host) {
                   host.database().Select("Schedules", {{5, "Day"},
                                                        {9,
                                                         "N\xC3\xA4"
                                                         "chte"}});
                 },
                 [](const Stage& stage) {
                   return stage.Run("pbRetrieveSchedules", {stage.connection, kUnit});
                 }},
        Scenario{"ListsCredentials", L"clsCredential", ScreenKind::kCredential,
                 "gmobjCredentialScreen", "cboCredentials.AddItem", ListCredentials,
                 [](const Stage& stage) {
                   return stage.Run("pbRetrieveCredentials", {stage.connection, kUnit});
                 }},
        Scenario{"LoadsACredential", L"clsCredential", ScreenKind::kCredential,
                 "gmobjCredentialScreen", "glngrid = 103", StoreTransmitter,
                 [](const Stage& stage) {
                   return stage.Run("pbRetrieveCredentials", {stage.connection, kUnit, 103});
                 }},
        Scenario{"SavesARangeOfCredentials", L"clsCredential", ScreenKind::kCredential,
                 "gmobjCredentialScreen", "CommitTrans\n", FillRange,
                 [](const Stage& stage) {
                   return stage.Run("pbSave", {stage.connection, kUnit});
                 }},
        Scenario{"SavesADirectoryCode", L"clsDirCode", ScreenKind::kDirectoryCode,
                 "mobjDirCodeScreen", "pbGenDirCodePrgStep 3 101", EnterDirectoryCode,
                 [](const Stage& stage) {
                   return stage.Run("pbSave", {stage.connection, kUnit});
                 }},
        Scenario{"ListsDirectoryCodes", L"clsDirCode", ScreenKind::kDirectoryCode,
                 "mobjDirCodeScreen", "cbodirectorycode.AddItem", ListDirectoryCodes,
                 [](const Stage& stage) {
                   return stage.Run("pbRetrieveDirCodes", {stage.connection, kUnit});
                 }},
        Scenario{"MergesACode", L"clsDirCode", ScreenKind::kDirectoryCode, "mobjDirCodeScreen",
                 "ExecuteInsert", [](RecordingHost&) {},
                 [](const Stage& stage) {
                   Put(stage.controller, "mfrmConnectionScreen", stage.connectionScreen);
                   std::string results =
                       stage.Run("pbMergeSave", {stage.connection, kUnit, "Insert", UnitCode()});
                   results += stage.Run("pbMergeSave",
                                        {stage.connection, kUnit, "Update", UnitCode(), 17});
                   return results + stage.Run("pbMergeSave",
                                              {stage.connection, kUnit, "Delete", UnitCode(), 17});
                 }},
        Scenario{"ComposesTheDirectoryCodeReport", L"clsDirCodeReport", ScreenKind::kReportFilter,
                 "gfrmTxFilter", "result: SELECT DirectoryCode.DirectoryCode,",
                 FilterDirectoryCodes,
                 [](const Stage& stage) {
                   return stage.Run("pbGenSql", {stage.connection, kUnit});
                 }},
        Scenario{"ShowsTheDirectoryCodeReport", L"clsDirCodeReport", ScreenKind::kReportFilter,
                 "gfrmTxFilter", "objGrid.Refresh",
                 [](RecordingHost& host) {
                   host.database().Select("Schedules", {{5, "Day"}});
                   host.database().Select("THE REPORT", {{"12", "5550101"}, {"34", "5550102"}});
                 },
                 [](const Stage& stage) {
                   return stage.Run("pvDirCodeReportResult", {kUnit, stage.connection, stage.grid,
                                                              "THE REPORT", ObjectRef()});
                 }},
        Scenario{"DeletesReportedCredentials", L"clsCredentialReport", ScreenKind::kReportFilter,
                 "gfrmTxFilter", "ExecuteQueryDelete", [](RecordingHost&) {},
                 [](const Stage& stage) {
                   Put(stage.controller, "gstrRIDsForDeletion", "5,6");
                   return stage.Run("pbDelete", {stage.connection, kUnit, 0});
                 }}),
    [](const ::testing::TestParamInfo<Scenario>& scenario) {
      return std::string(scenario.param.name);
    });

}  // namespace
}  // namespace qortest

#include "tests/scenarios/scenarios.h"

#include <utility>

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "frame/capacity.h"
#include "frame/convert.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"

namespace qortest {

using qorcred::InvokeKind;
using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::StringArray;
using qorcred::Value;

namespace {

constexpr std::int32_t kUnit = 3;

template <typename Class>
std::shared_ptr<qorcred::Controller> Create(qorcred::Host& host) {
  return std::make_shared<Class>(host);
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
  host.database().Select("TOTAL", {{Value(qorcred::CapacityText(500))}});
}

void EnterDirectoryCode(RecordingHost& host) {
  for (const std::string_view list : {"cboSchedules", "cboSchedulesCF"}) {
    host.AddItem(list, "Full Access", 1);
    host.AddItem(list, "Night", 9);
  }
  host.SetText("txtdirectorycode", "250");
  host.SetText("txtPhoneNo", "5551234");
  host.database().Select("TOTAL", {{Value(qorcred::CapacityText(500))}});
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

void FillTenants(RecordingHost& host) {
  FillRange(host);
  host.AddItem("cboSchedules2", "Day", 5);
  host.Select("cboSchedules2", 0);
  host.database().Select("TenantGroup", {{77}});
}

void AssignCredential(RecordingHost& host) {
  host.AddItem("cboCredentials", "<Add New>", -100);
  host.AddItem("cboCredentials", "Transmitter-19", 103);
  host.Select("cboCredentials", 1);
  host.AddItem("cboAssignedTo", "<Unassigned>", -100);
  host.AddItem("cboAssignedTo", "Hollis Elena G", 56);
  host.Select("cboAssignedTo", 1);
  host.database().Number("SELECT TenantID", 55);
  host.database().Number("SET CREDENTIALID1 = 103", 0);
  host.database().Select("TOTAL", {{Value(qorcred::CapacityText(500))}});
}

void OpenDirectoryCode(RecordingHost& host) {
  EnterDirectoryCode(host);
  host.AddItem("cbodirectorycode", "<Add New>", -100);
  host.AddItem("cbodirectorycode", "12", 17);
  host.Select("cbodirectorycode", 1);
  host.controls().SetVariable("gstrTag", "EDIT");
  host.controls().SetVariable("glngrid", 17);
  host.controls().SetVariable("gstrLastModifiedDate", "11/20/2026 9:30:00 AM");
}

}  // namespace

std::string Stage::Run(std::string_view operation, std::vector<Value> arguments) const {
  const Value result = controller.Invoke(operation, InvokeKind::kCall, arguments);
  return qorcred::TextOrEmpty(result);
}

std::span<const Scenario> Scenarios() {
  static const Scenario scenarios[] = {
      {"FillsTheCredentialScreensSchedules", "clsCredential", Create<qorcred::clsCredential>,
       ScreenKind::kCredential, "gmobjCredentialScreen", "cboSchedules4.AddItem \"Day\"",
       [](RecordingHost& host) {
         host.database().Select("Schedules", {{5, "Day"},
                                              {9,
                                               "N\xC3\xA4"
                                               "chte"}});
       },
       [](const Stage& stage) {
         return stage.Run("pbRetrieveSchedules", {stage.connection, kUnit});
       }},
      {"ListsCredentials", "clsCredential", Create<qorcred::clsCredential>, ScreenKind::kCredential,
       "gmobjCredentialScreen", "cboCredentials.AddItem", ListCredentials,
       [](const Stage& stage) {
         return stage.Run("pbRetrieveCredentials", {stage.connection, kUnit});
       }},
      {"LoadsACredential", "clsCredential", Create<qorcred::clsCredential>, ScreenKind::kCredential,
       "gmobjCredentialScreen", "glngrid = 103", StoreTransmitter,
       [](const Stage& stage) {
         return stage.Run("pbRetrieveCredentials", {stage.connection, kUnit, 103});
       }},
      {"SavesARangeOfCredentials", "clsCredential", Create<qorcred::clsCredential>,
       ScreenKind::kCredential, "gmobjCredentialScreen", "CommitTrans\n", FillRange,
       [](const Stage& stage) {
         return stage.Run("pbSave", {stage.connection, kUnit});
       }},
      {"SavesADirectoryCode", "clsDirCode", Create<qorcred::clsDirCode>, ScreenKind::kDirectoryCode,
       "mobjDirCodeScreen", "pbGenDirCodePrgStep 3 101", EnterDirectoryCode,
       [](const Stage& stage) {
         return stage.Run("pbSave", {stage.connection, kUnit});
       }},
      {"SavesCredentialsWithTenants", "clsCredential", Create<qorcred::clsCredential>,
       ScreenKind::kTenantCreating, "gmobjCredentialScreen", "pvCreateProgramSteps 3 106",
       FillTenants,
       [](const Stage& stage) {
         return stage.Run("pbSave", {stage.connection, kUnit, true});
       }},
      {"AssignsACredential", "clsCredential", Create<qorcred::clsCredential>,
       ScreenKind::kCredential, "gmobjCredentialScreen", "pvCreateProgramSteps 3 56",
       AssignCredential,
       [](const Stage& stage) {
         return stage.Run("pbSave", {stage.connection, kUnit, false, true});
       }},
      {"EditsADirectoryCode", "clsDirCode", Create<qorcred::clsDirCode>, ScreenKind::kDirectoryCode,
       "mobjDirCodeScreen", "pbGenDirCodePrgStep 3 17", OpenDirectoryCode,
       [](const Stage& stage) {
         return stage.Run("pbSave", {stage.connection, kUnit, true});
       }},
      {"RenumbersADirectoryCode", "clsDirCode", Create<qorcred::clsDirCode>,
       ScreenKind::kDirectoryCode, "mobjDirCodeScreen", "pbGenChgDirCodePrgStep 3 17",
       OpenDirectoryCode,
       [](const Stage& stage) {
         return stage.Run("pbUpdateDirCode", {stage.connection, kUnit, "99"});
       }},
      {"DeletesADirectoryCode", "clsDirCode", Create<qorcred::clsDirCode>,
       ScreenKind::kDirectoryCode, "mobjDirCodeScreen", "ExecuteDelete", OpenDirectoryCode,
       [](const Stage& stage) {
         return stage.Run("pbDelete", {stage.connection, kUnit, 17, true, false});
       }},
      {"ListsDirectoryCodes", "clsDirCode", Create<qorcred::clsDirCode>, ScreenKind::kDirectoryCode,
       "mobjDirCodeScreen", "cbodirectorycode.AddItem", ListDirectoryCodes,
       [](const Stage& stage) {
         return stage.Run("pbRetrieveDirCodes", {stage.connection, kUnit});
       }},
      {"MergesACode", "clsDirCode", Create<qorcred::clsDirCode>, ScreenKind::kDirectoryCode,
       "mobjDirCodeScreen", "ExecuteInsert", [](RecordingHost&) {},
       [](const Stage& stage) {
         Put(stage.controller, "mfrmConnectionScreen", stage.connectionScreen);
         std::string results =
             stage.Run("pbMergeSave", {stage.connection, kUnit, "Insert", UnitCode()});
         results += stage.Run("pbMergeSave", {stage.connection, kUnit, "Update", UnitCode(), 17});
         return results +
                stage.Run("pbMergeSave", {stage.connection, kUnit, "Delete", UnitCode(), 17});
       }},
      {"ComposesTheDirectoryCodeReport", "clsDirCodeReport", Create<qorcred::clsDirCodeReport>,
       ScreenKind::kReportFilter, "gfrmTxFilter", "result: SELECT DirectoryCode.DirectoryCode,",
       FilterDirectoryCodes,
       [](const Stage& stage) {
         return stage.Run("pbGenSql", {stage.connection, kUnit});
       }},
      {"ShowsTheDirectoryCodeReport", "clsDirCodeReport", Create<qorcred::clsDirCodeReport>,
       ScreenKind::kReportFilter, "gfrmTxFilter", "objGrid.Refresh",
       [](RecordingHost& host) {
         host.database().Select("Schedules", {{5, "Day"}});
         host.database().Select("THE REPORT", {{"12", "5550101"}, {"34", "5550102"}});
       },
       [](const Stage& stage) {
         return stage.Run("pvDirCodeReportResult",
                          {kUnit, stage.connection, stage.grid, "THE REPORT", ObjectRef()});
       }},
      {"DeletesReportedCredentials", "clsCredentialReport", Create<qorcred::clsCredentialReport>,
       ScreenKind::kReportFilter, "gfrmTxFilter", "ExecuteQueryDelete", [](RecordingHost&) {},
       [](const Stage& stage) {
         Put(stage.controller, "gstrRIDsForDeletion", "5,6");
         return stage.Run("pbDelete", {stage.connection, kUnit, 0});
       }},
  };
  return scenarios;
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
  std::shared_ptr<qorcred::Controller> controller = scenario.create(host.host());
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

std::string KeptText(const Scenario& scenario, const std::string& transcript) {
  return std::string("== ") + scenario.name + "\n" + transcript;
}

std::string KeptTranscript(std::string_view kept, const Scenario& scenario) {
  const std::string heading = KeptText(scenario, "");
  const std::size_t start = kept.find(heading);
  if (start == std::string_view::npos) return "(none)";
  const std::string_view rest = kept.substr(start + heading.size());
  return std::string(rest.substr(0, rest.find("== ")));
}

}  // namespace qortest

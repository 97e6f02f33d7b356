#include "tests/credentials/credential_fixture.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "frame/base64.h"
#include "frame/date.h"

namespace qortest {

CredentialScreen::CredentialScreen(ScreenKind kind, std::string_view missingAtCreation)
    : host_(std::make_unique<RecordingHost>(kind)) {
  host_->script().missing = missingAtCreation;
  controller_ = std::make_unique<UnderTest<qorcred::clsCredential>>(host_->host());
  host_->script().missing.clear();
  controller_->set_gmobjCredentialScreen(host_->screen());
  host_->StartOver();
}

bool CredentialScreen::SaveNew(std::int32_t* rid) {
  return controller_->pbSave(host_->connection(), kUnit, false, false, rid);
}

bool CredentialScreen::SaveNewWithTenants(std::int32_t* rid) {
  return controller_->pbSave(host_->connection(), kUnit, true, false, rid);
}

bool CredentialScreen::SaveEdited() {
  return controller_->pbSave(host_->connection(), kUnit, false, true);
}

bool CredentialScreen::Delete(std::int32_t rid) {
  return controller_->pbDelete(host_->connection(), kUnit, rid);
}

bool CredentialScreen::Renumber(std::int32_t number) {
  return controller_->pbUpdatePinNo(host_->connection(), number, kUnit);
}

void CredentialScreen::EnterRange(std::int32_t type, std::string_view start, std::string_view end) {
  host_->AddItem("cboCredentialType", "Corvin 30-Bit Card", kCard30);
  host_->AddItem("cboCredentialType", "Standard 26-Bit Card", kCard26);
  host_->AddItem("cboCredentialType", "Transmitter", kTransmitter);
  host_->Select("cboCredentialType", type);
  host_->controls().SetVariable("gstrTag", "Range");
  host_->SetText("txtPINStart", start);
  host_->SetText("txtPINEND", end);
  host_->SetText("txtFacilityCode", "12");
  if (type == kTransmitter) {
    host_->SetText("txtIDCode", "5");
    host_->SetText("txtSequenceCode", "1");
  }
  AllowCodes("500");
}

void CredentialScreen::EnterSingle(std::int32_t type, std::string_view start) {
  EnterRange(type, start, "");
  host_->controls().SetVariable("gstrTag", "Single");
}

void CredentialScreen::EnterTenantDefaults() {
  static constexpr std::array<std::string_view, 4> kLists{"cboSchedules1", "cboSchedules2",
                                                          "cboSchedules3", "cboSchedules4"};
  for (std::size_t at = 0; at < kLists.size(); ++at) {
    host_->AddItem(kLists[at], "No Access", 0);
    host_->AddItem(kLists[at], "Full Access", 1);
    host_->AddItem(kLists[at], "Day", 5);
    host_->AddItem(kLists[at], "Night", 9);
  }
  host_->Select(kLists[0], 1);
  host_->Select(kLists[1], 0);
  host_->Select(kLists[2], 2);
  host_->Select(kLists[3], 3);
  host_->controls().Check("chkActive").SetState(1);
  host_->controls().Date("dtpStart").Choose(qorcred::FromCivil({2026, 11, 21, 0, 0, 0}));
  host_->controls().Date("dtpEnd").Choose(qorcred::FromCivil({2027, 11, 21, 23, 59, 59}));
  host_->database().Select("from TenantGroup", {{77}});
}

void CredentialScreen::ShowStored(std::int32_t selected, std::int32_t tenant) {
  host_->AddItem("cboCredentials", "<Add New>", -100);
  host_->AddItem("cboCredentials", "Transmitter-700", 17);
  host_->AddItem("cboCredentials", "Standard 26-Bit Card-800", 18);
  host_->AddItem("cboCredentials", "Corvin 30-Bit Card-900", 19);
  host_->Select("cboCredentials", selected);
  host_->AddItem("cboActivate", "All doors", 0);
  host_->AddItem("cboActivate", "Front", 0);
  host_->AddItem("cboActivate", "Back", 0);
  host_->Select("cboActivate", 2);
  host_->AddItem("cboAssignedTo", "<Unassigned>", -100);
  host_->AddItem("cboAssignedTo", "Doe Jane ", 55);
  host_->AddItem("cboAssignedTo", "Roe Richard Q", 56);
  host_->Select("cboAssignedTo", tenant);
  AllowCodes("500");
}

void CredentialScreen::AllowCodes(std::string_view most) {
  host_->database().Replace("FROM UNITTYPES", {.rows = {{qorcred::EncodeBase64(most)}}});
}

void CredentialScreen::CountCodes(std::string_view credentials, std::string_view entryCodes,
                                  std::string_view directoryCodes) {
  host_->script().credentials = credentials;
  host_->script().entryCodes = entryCodes;
  host_->script().directoryCodes = directoryCodes;
}

::testing::AssertionResult CredentialTest::TranscriptIs(std::string_view expected) {
  return SameLines(Host().transcript().Read(Detail::kEverything), expected);
}

::testing::AssertionResult CredentialTest::EffectsAre(std::string_view expected) {
  return SameLines(Host().transcript().Read(Detail::kEffects), expected);
}

}  // namespace qortest

#include "host/screens/credential_screen.h"

#include <cstdint>
#include <string>

namespace qorhost {

namespace {

std::shared_ptr<HeadlessScreen> MakeScreen(std::string_view name, qorcred::Date today) {
  auto screen = std::make_shared<HeadlessScreen>(std::string(name));
  screen->AddAll<ListBox>({"cboSchedules1", "cboSchedules2", "cboSchedules3", "cboSchedules4",
                           "cboAssignedTo", "cboCredentialType", "cboCredentials", "cboActivate"});
  screen->AddAll<TextBox>(
      {"txtFacilityCode", "txtPINStart", "txtPINEND", "txtIDCode", "txtSequenceCode"});
  screen->AddAll<Label>({"lblFacilityCode", "lblIDCode", "lblSequencecode", "lblActivate",
                         "lblDoor1", "lblDoor2", "lblDoor3", "lblDoor4"});
  screen->AddAll<CheckBox>({"chkActive"});
  for (const std::string_view picker : {"dtpStart", "dtpEnd"}) {
    screen->Add(std::string(picker), std::make_shared<Picker>(today));
  }
  const auto buttonFour = screen->Add("optButton4", std::make_shared<OptionButton>());
  const auto buttonDefault = screen->Add("optButtonDefault", std::make_shared<OptionButton>());
  OptionButton::Join({buttonFour, buttonDefault});
  buttonDefault->SetOn(true);

  screen->AddVariable("gstrTag", "");
  screen->AddVariable("gstrNewTenantIDs", "");
  screen->AddVariable("gstrLastModifiedDate", "");
  screen->AddVariable("gblnModifiedFromClass", false);
  screen->AddVariable("glngrid", std::int32_t{0});
  screen->AddVariable("gblnDisplayFacilityCode", true);
  return screen;
}

}  // namespace

std::shared_ptr<HeadlessScreen> MakeCredentialScreen(qorcred::Date today) {
  return MakeScreen("frmCredential", today);
}

std::shared_ptr<HeadlessScreen> MakeTenantCreatingScreen(qorcred::Date today) {
  return MakeScreen(kTenantCreatingScreen, today);
}

}  // namespace qorhost

#include "host/screens/credential_screen.h"

#include <cstdint>
#include <string>

#include "frame/screen_names.h"

namespace qorhost {

namespace {

std::shared_ptr<ScreenModel> MakeScreen(std::string_view name, qorcred::Date today) {
  auto screen = std::make_shared<ScreenModel>(std::string(name));
  for (const std::string_view list : qorcred::kScheduleLists) {
    screen->Add(std::string(list), std::make_shared<ListModel>());
  }
  screen->AddAll<ListModel>(
      {"cboAssignedTo", "cboCredentialType", "cboCredentials", "cboActivate"});
  screen->AddAll<TextModel>(
      {"txtFacilityCode", "txtPINStart", "txtPINEND", "txtIDCode", "txtSequenceCode"});
  screen->AddAll<LabelModel>({"lblFacilityCode", "lblIDCode", "lblSequencecode", "lblActivate",
                              "lblDoor1", "lblDoor2", "lblDoor3", "lblDoor4"});
  screen->AddAll<CheckModel>({"chkActive"});
  for (const std::string_view picker : {"dtpStart", "dtpEnd"}) {
    screen->Add(std::string(picker), std::make_shared<PickerModel>(today));
  }
  const auto buttonFour = screen->Add("optButton4", std::make_shared<OptionModel>());
  const auto buttonDefault = screen->Add("optButtonDefault", std::make_shared<OptionModel>());
  OptionModel::Join({buttonFour, buttonDefault});
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

std::shared_ptr<ScreenModel> MakeCredentialScreen(qorcred::Date today) {
  return MakeScreen("frmCredential", today);
}

std::shared_ptr<ScreenModel> MakeTenantCreatingScreen(qorcred::Date today) {
  return MakeScreen(qorcred::kTenantCreatingScreen, today);
}

}  // namespace qorhost

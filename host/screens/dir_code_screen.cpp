#include "host/screens/dir_code_screen.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "frame/screen_names.h"

namespace qorhost {

std::shared_ptr<ScreenModel> MakeDirectoryCodeScreen(qorcred::Date today) {
  auto screen = std::make_shared<ScreenModel>("frmDirCode");
  screen->AddAll<ListModel>(
      {"cbodirectorycode", qorcred::kDndScheduleList, qorcred::kCfScheduleList, "lstTenants"});
  screen->AddAll<TextModel>(
      {"txtdirectorycode", "txtPhoneNo", "txtExtn", "txtPhoneNocf", "txtExtnCF", "txtDisplayName"});
  screen->AddAll<SpinnerModel>({"pvnTimeDelay", "pvnTimeDelayCF"});
  screen->AddAll<CheckModel>(
      {"chkDND", "chkCallForwarding", "chkActive", "chkShowDisplayName", "chkShowDirCode"});
  screen->AddAll<ButtonModel>({"cmdedit", "cmdSelect"});
  for (const std::string_view picker : {"dtpStart", "dtpEnd"}) {
    screen->Add(std::string(picker), std::make_shared<PickerModel>(today));
  }
  screen->AddVariable("gstrTag", "");
  screen->AddVariable("gstrLastModifiedDate", "");
  screen->AddVariable("gblnModifiedFromClass", false);
  screen->AddVariable("glngrid", std::int32_t{0});
  return screen;
}

std::shared_ptr<ScreenModel> MakeConnectionScreen(std::string firmware) {
  auto screen = std::make_shared<ScreenModel>("frmConnection");
  screen->AddVariable("mFirmwareFromHandshake", std::move(firmware));
  return screen;
}

}  // namespace qorhost

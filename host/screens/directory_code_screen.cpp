#include "host/screens/directory_code_screen.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace qorhost {

std::shared_ptr<HeadlessScreen> MakeDirectoryCodeScreen(qorcred::Date today) {
  auto screen = std::make_shared<HeadlessScreen>("frmDirCode");
  screen->AddAll<ListBox>({"cbodirectorycode", "cboSchedules", "cboSchedulesCF", "lstTenants"});
  screen->AddAll<TextBox>(
      {"txtdirectorycode", "txtPhoneNo", "txtExtn", "txtPhoneNocf", "txtExtnCF", "txtDisplayName"});
  screen->AddAll<Spinner>({"pvnTimeDelay", "pvnTimeDelayCF"});
  screen->AddAll<CheckBox>(
      {"chkDND", "chkCallForwarding", "chkActive", "chkShowDisplayName", "chkShowDirCode"});
  screen->AddAll<Button>({"cmdedit", "cmdSelect"});
  for (const std::string_view picker : {"dtpStart", "dtpEnd"}) {
    screen->Add(std::string(picker), std::make_shared<Picker>(today));
  }
  screen->AddVariable("gstrTag", "");
  screen->AddVariable("gstrLastModifiedDate", "");
  screen->AddVariable("gblnModifiedFromClass", false);
  screen->AddVariable("glngrid", std::int32_t{0});
  return screen;
}

std::shared_ptr<HeadlessScreen> MakeConnectionScreen(std::string firmware) {
  auto screen = std::make_shared<HeadlessScreen>("frmConnection");
  screen->AddVariable("mFirmwareFromHandshake", std::move(firmware));
  return screen;
}

}  // namespace qorhost

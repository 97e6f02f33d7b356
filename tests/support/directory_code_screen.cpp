#include "tests/support/directory_code_screen.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace qortest {

namespace {

using qorhost::HeadlessScreen;

template <typename Kind>
void AddAll(HeadlessScreen& screen, std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names) {
    screen.Add(std::string(name), std::make_shared<Kind>());
  }
}

}  // namespace

std::shared_ptr<HeadlessScreen> MakeDirectoryCodeScreen(qorcred::Date today) {
  auto screen = std::make_shared<HeadlessScreen>("frmDirCode");
  AddAll<qorhost::ListBox>(*screen,
                           {"cbodirectorycode", "cboSchedules", "cboSchedulesCF", "lstTenants"});
  AddAll<qorhost::TextBox>(*screen, {"txtdirectorycode", "txtPhoneNo", "txtExtn", "txtPhoneNocf",
                                     "txtExtnCF", "txtDisplayName"});
  AddAll<qorhost::Spinner>(*screen, {"pvnTimeDelay", "pvnTimeDelayCF"});
  AddAll<qorhost::CheckBox>(*screen, {"chkDND", "chkCallForwarding", "chkActive",
                                      "chkShowDisplayName", "chkShowDirCode"});
  AddAll<qorhost::Button>(*screen, {"cmdedit", "cmdSelect"});
  for (const std::string_view picker : {"dtpStart", "dtpEnd"}) {
    screen->Add(std::string(picker), std::make_shared<qorhost::Picker>(today));
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

}  // namespace qortest

#include "bench/save_screen.h"

#include <string>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/screens/credential_screen.h"

namespace qorbench {

namespace {

using qorhost::ListModel;
using qorhost::ScreenModel;

void AddAndSelect(ListModel& list, std::string text, std::int32_t data) {
  list.Select(list.AddItemWithData(std::move(text), data));
}

void FillIn(ScreenModel& screen) {
  AddAndSelect(screen.List("cboCredentialType"), "Corvin 30-Bit Card", kCardType);
  screen.Box("txtFacilityCode").SetText(std::to_string(kFacilityCode));
  screen.SetVariable("gstrTag", "Range");
}

}  // namespace

std::shared_ptr<ScreenModel> RangeScreen() {
  auto screen = qorhost::MakeCredentialScreen();
  FillIn(*screen);
  return screen;
}

std::shared_ptr<ScreenModel> TenantRangeScreen() {
  auto screen = qorhost::MakeTenantCreatingScreen();
  FillIn(*screen);
  constexpr std::int32_t kFullAccess = 1;
  constexpr std::int32_t kNoAccess = 0;
  AddAndSelect(screen->List("cboSchedules1"), "Full Access", kFullAccess);
  AddAndSelect(screen->List("cboSchedules2"), "Full Access", kFullAccess);
  AddAndSelect(screen->List("cboSchedules3"), "No Access", kNoAccess);
  AddAndSelect(screen->List("cboSchedules4"), "No Access", kNoAccess);
  screen->Check("chkActive").SetState(1);
  screen->Date("dtpStart").Choose(qorcred::FromCivil({2026, 1, 1, 8, 0, 0}));
  screen->Date("dtpEnd").Choose(qorcred::FromCivil({2026, 12, 31, 23, 59, 59}));
  return screen;
}

void EnterRange(ScreenModel& screen, std::int32_t start, std::int32_t end) {
  screen.Box("txtPINStart").SetText(std::to_string(start));
  screen.Box("txtPINEND").SetText(std::to_string(end));
}

}  // namespace qorbench

#include "bench/save_screen.h"

#include <cstddef>
#include <string>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/schedules.h"
#include "frame/screen_names.h"
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
  for (std::size_t door = 0; door < qorcred::kScheduleLists.size(); ++door) {
    const qorcred::FixedSchedule& schedule = door < 2 ? qorcred::kFullAccess : qorcred::kNoAccess;
    AddAndSelect(screen->List(qorcred::kScheduleLists[door]), std::string(schedule.name),
                 schedule.id);
  }
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

#include "host/cli/dir_code_entry.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "dircodes/unit_notation.h"
#include "frame/convert.h"
#include "frame/text.h"
#include "host/cli/arguments.h"
#include "host/cli/display_text.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

using qorcred::detail::Place;

constexpr std::int32_t kSystemSchedules = 0;  // "No Access" and "Full Access" have ids of their own

void TypeInto(TextModel& box, std::string_view option, const std::optional<std::string>& text) {
  if (text) {
    box.SetText(TypedText(option, *text));
  }
}

void Tick(CheckModel& box, const std::optional<bool>& on) {
  if (on) {
    box.SetState(*on ? 1 : 0);
  }
}

void ChooseSchedule(ListModel& list, const std::optional<std::string>& given) {
  if (given) {
    list.Select(FindEntry(list, *given, "schedule", kSystemSchedules));
  }
}

/// The delay counts only with an extension to dial; without one the save would not look at it.
void ChooseDelay(ScreenModel& screen, std::string_view spinner, std::string_view extension,
                 std::string_view option, const std::optional<std::string>& given) {
  if (!given) {
    return;
  }
  if (qorcred::Trim(screen.Box(extension).text()).empty()) {
    throw UsageError(fmt::format(
        "leave {} out: there is no extension, and without one the delay is always 2", option));
  }
  const std::int32_t delay = ReadLong(option, *given);
  if (delay < 0) {
    throw UsageError(fmt::format("{} '{}' is below 0", option, *given));
  }
  screen.Spin(spinner).SetValue(delay);
}

void ChooseDateOrNone(PickerModel& picker, std::string_view option,
                      const std::optional<std::string>& given, bool isEnd) {
  if (!given) {
    return;
  }
  if (qorcred::CompareIgnoringCase(qorcred::Trim(*given), "none") == 0) {
    picker.Choose(std::nullopt);
    return;
  }
  ChooseDate(picker, option, *given, isEnd);
}

void EnterDoNotDisturb(ScreenModel& screen, const CodeEntry& entry) {
  if (entry.noDnd) {
    screen.Check("chkDND").SetState(0);
  } else if (entry.dnd) {
    screen.Check("chkDND").SetState(1);
  }
  ChooseSchedule(screen.List("cboSchedules"), entry.dnd);
}

void EnterForwarding(ScreenModel& screen, const CodeEntry& entry) {
  if (entry.noForwarding) {
    screen.Check("chkCallForwarding").SetState(0);
    return;
  }
  if (entry.forwardPhone || entry.forwardExtension || entry.forwardSchedule || entry.forwardDelay) {
    screen.Check("chkCallForwarding").SetState(1);
  }
  TypeInto(screen.Box("txtPhoneNocf"), "--forward-phone", entry.forwardPhone);
  TypeInto(screen.Box("txtExtnCF"), "--forward-extension", entry.forwardExtension);
  ChooseSchedule(screen.List("cboSchedulesCF"), entry.forwardSchedule);
  ChooseDelay(screen, "pvnTimeDelayCF", "txtExtnCF", "--forward-delay", entry.forwardDelay);
}

void EnterPeriod(ScreenModel& screen, const CodeEntry& entry) {
  Tick(screen.Check("chkActive"), entry.active);
  const bool limits = entry.from || entry.to;
  if (limits && screen.Check("chkActive").state() == 0) {
    throw UsageError(
        "leave --from and --to out: an inactive code has no period; --active makes it active");
  }
  ChooseDateOrNone(screen.Date("dtpStart"), "--from", entry.from, false);
  ChooseDateOrNone(screen.Date("dtpEnd"), "--to", entry.to, true);
}

/// The save pastes texts into its statement as they are, so some would break it or come out as
/// others.
void RequireStorable(ScreenModel& screen) {
  struct BoxPlace {
    std::string_view box;
    Place place;
  };
  constexpr std::array kBoxes{
      BoxPlace{"txtPhoneNo", Place::kPhone}, BoxPlace{"txtExtn", Place::kExtension},
      BoxPlace{"txtPhoneNocf", Place::kCfPhone}, BoxPlace{"txtExtnCF", Place::kCfExtension},
      BoxPlace{"txtDisplayName", Place::kDisplayName}};
  UnitCode texts;
  texts.fields.fill("0");
  for (const Place empty :
       {Place::kStartDate, Place::kStartTime, Place::kEndDate, Place::kEndTime}) {
    texts[empty].clear();
  }
  for (const BoxPlace& box : kBoxes) {
    texts[box.place] = screen.Box(box.box).text();
  }
  const std::string fault = FaultIn(texts);
  if (!fault.empty()) {
    throw UsageError(fault);
  }
}

}  // namespace

void TickForNewCode(DirCodeDesk& desk) {
  for (const std::string_view box : {"chkActive", "chkShowDisplayName", "chkShowDirCode"}) {
    desk.screen().Check(box).SetState(1);
  }
}

void EnterCode(DirCodeDesk& desk, const CodeEntry& entry) {
  ScreenModel& screen = desk.screen();
  TypeInto(screen.Box("txtPhoneNo"), "--phone", entry.phone);
  TypeInto(screen.Box("txtExtn"), "--extension", entry.extension);
  ChooseDelay(screen, "pvnTimeDelay", "txtExtn", "--delay", entry.delay);
  EnterDoNotDisturb(screen, entry);
  EnterForwarding(screen, entry);
  EnterPeriod(screen, entry);
  TypeInto(screen.Box("txtDisplayName"), "--display-name", entry.displayName);
  Tick(screen.Check("chkShowDisplayName"), entry.showName);
  Tick(screen.Check("chkShowDirCode"), entry.showCode);
  RequireStorable(screen);
}

bool IsEmpty(const CodeEntry& entry) {
  const bool texts = entry.phone || entry.extension || entry.delay || entry.displayName;
  const bool schedules = entry.dnd || entry.noDnd || entry.noForwarding || entry.forwardSchedule;
  const bool forwarding = entry.forwardPhone || entry.forwardExtension || entry.forwardDelay;
  const bool period = entry.from || entry.to || entry.active;
  return !texts && !schedules && !forwarding && !period && !entry.showName && !entry.showCode;
}

}  // namespace qorhost

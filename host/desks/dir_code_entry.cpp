#include "host/desks/dir_code_entry.h"

#include <fmt/format.h>

#include <array>

#include "frame/convert.h"
#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/dir_code_desk.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/typed_input.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

namespace code_field = dir_code_field;

void TypeInto(TextModel& box, std::string_view name, const std::optional<std::string>& text) {
  if (text) {
    box.SetText(TypedText(name, *text));
  }
}

void Tick(CheckModel& box, const std::optional<bool>& on) {
  if (on) {
    box.SetState(*on ? 1 : 0);
  }
}

void ChooseSchedule(ListModel& list, std::string_view name,
                    const std::optional<std::string>& given) {
  if (given) {
    list.Select(FindEntry(list, name, *given, "schedule", placeholders::kInSchedules));
  }
}

/// The delay counts only with an extension to dial; without one the save would not look at it.
void ChooseDelay(ScreenModel& screen, std::string_view spinner, std::string_view extension,
                 std::string_view name, const std::optional<std::string>& given) {
  if (!given) {
    return;
  }
  if (qorcred::Trim(screen.Box(extension).text()).empty()) {
    throw InputFault(
        name, *given,
        fmt::format(
            "leave {{field}} out: there is no extension, and without one the delay is always {}",
            qorcred::kDelayWithoutExtension));
  }
  if (const auto number = WholeNumber(*given); number && *number < 0) {
    throw InputFault(name, *given, "{field} '{value}' is below 0");
  }
  screen.Spin(spinner).SetValue(ReadLong(name, *given, kFromZero));
}

void ChooseDateOrNone(PickerModel& picker, std::string_view name,
                      const std::optional<std::string>& given, bool isEnd) {
  if (!given) {
    return;
  }
  if (SaysNone(*given)) {
    picker.Choose(std::nullopt);
    return;
  }
  ChooseDate(picker, name, *given, isEnd);
}

void EnterDoNotDisturb(ScreenModel& screen, const DirCodeEntry& entry) {
  if (entry.noDnd) {
    screen.Check("chkDND").SetState(0);
  } else if (entry.dnd) {
    screen.Check("chkDND").SetState(1);
  }
  ChooseSchedule(screen.List(qorcred::kDndScheduleList), code_field::kDnd, entry.dnd);
}

void EnterForwarding(ScreenModel& screen, const DirCodeEntry& entry) {
  if (entry.noForwarding) {
    screen.Check("chkCallForwarding").SetState(0);
    return;
  }
  if (entry.forwardPhone || entry.forwardExtension || entry.forwardSchedule || entry.forwardDelay) {
    screen.Check("chkCallForwarding").SetState(1);
  }
  TypeInto(screen.Box("txtPhoneNocf"), code_field::kForwardPhone, entry.forwardPhone);
  TypeInto(screen.Box("txtExtnCF"), code_field::kForwardExtension, entry.forwardExtension);
  ChooseSchedule(screen.List(qorcred::kCfScheduleList), code_field::kForwardSchedule,
                 entry.forwardSchedule);
  ChooseDelay(screen, "pvnTimeDelayCF", "txtExtnCF", code_field::kForwardDelay, entry.forwardDelay);
}

void EnterPeriod(ScreenModel& screen, const DirCodeEntry& entry) {
  Tick(screen.Check("chkActive"), entry.active);
  const bool limits = entry.from || entry.to;
  if (limits && screen.Check("chkActive").state() == 0) {
    throw InputFault(
        entry.from ? code_field::kStart : code_field::kEnd, entry.from ? *entry.from : *entry.to,
        "leave {first day} and {last day} out: an inactive code has no period; {active} "
        "makes it active");
  }
  ChooseDateOrNone(screen.Date("dtpStart"), code_field::kStart, entry.from, false);
  ChooseDateOrNone(screen.Date("dtpEnd"), code_field::kEnd, entry.to, true);
}

/// The boxes whose texts the save pastes into its statement as they are.
struct PastedBox {
  std::string_view box;
  std::string_view name;
};
constexpr std::array kPastedBoxes{PastedBox{"txtPhoneNo", code_field::kPhone},
                                  PastedBox{"txtExtn", code_field::kExtension},
                                  PastedBox{"txtPhoneNocf", code_field::kForwardPhone},
                                  PastedBox{"txtExtnCF", code_field::kForwardExtension},
                                  PastedBox{"txtDisplayName", code_field::kDisplayName}};

/// A name may have another apostrophe; in a number to be dialled any is a slip.
std::string WayOut(std::string_view name, const std::string& text) {
  const std::string typographic = WithTypographicApostrophes(text);
  const bool helps = name == code_field::kDisplayName && FaultInText(name, typographic).empty();
  return helps ? ": write " + InReason(typographic) : std::string();
}

/// Some texts would break the statement or come out of it as others.
void RequireStorable(ScreenModel& screen) {
  for (const PastedBox& pasted : kPastedBoxes) {
    const std::string& text = screen.Box(pasted.box).text();
    const std::string fault = FaultInText("{field}", text);
    if (!fault.empty()) {
      throw InputFault(pasted.name, text, fault + WayOut(pasted.name, text));
    }
  }
}

/// Settings that a row holds although they are switched off: a save clears them.
struct IdleSettings {
  bool dnd = false;
  bool forwarding = false;
  bool period = false;
};

bool IsOff(DirCodeDesk& desk, std::string_view box) {
  return desk.screen().Check(box).state() != 1;
}

IdleSettings ReadIdle(DirCodeDesk& desk) {
  ScreenModel& screen = desk.screen();
  const auto chosen = [&](std::string_view list) {
    return screen.List(list).selected() != ListModel::kNone;
  };
  const auto typed = [&](std::string_view box) { return !screen.Box(box).text().empty(); };
  IdleSettings idle;
  idle.dnd = IsOff(desk, "chkDND") && chosen(qorcred::kDndScheduleList);
  idle.forwarding =
      IsOff(desk, "chkCallForwarding") &&
      (chosen(qorcred::kCfScheduleList) || typed("txtPhoneNocf") || typed("txtExtnCF"));
  idle.period = IsOff(desk, "chkActive") &&
                (screen.Date("dtpStart").chosen() || screen.Date("dtpEnd").chosen());
  return idle;
}

/// Those of the settings that are still switched off.
std::vector<std::string> NamesOfCleared(DirCodeDesk& desk, const IdleSettings& idle) {
  std::vector<std::string> names;
  if (idle.dnd && IsOff(desk, "chkDND")) {
    names.emplace_back("the do-not-disturb schedule");
  }
  if (idle.forwarding && IsOff(desk, "chkCallForwarding")) {
    names.emplace_back("the call forwarding");
  }
  if (idle.period && IsOff(desk, "chkActive")) {
    names.emplace_back("the active period");
  }
  return names;
}

/// A code that the list can only show rounded would be stored rounded by a save.
void RequireWholeCode(DirCodeDesk& desk) {
  const std::string shown = desk.codes().SelectedText();
  const double stored = qorcred::NumericValue(desk.StoredCode());
  if (stored != qorcred::Val(shown)) {
    throw InputFault(
        code_field::kChoice, shown,
        fmt::format("the directory code {} is shown as {{value}} and would be stored so: renumber "
                    "it first",
                    qorcred::NumberText(stored)));
  }
}

void Enter(ScreenModel& screen, const DirCodeEntry& entry) {
  TypeInto(screen.Box("txtPhoneNo"), code_field::kPhone, entry.phone);
  TypeInto(screen.Box("txtExtn"), code_field::kExtension, entry.extension);
  ChooseDelay(screen, "pvnTimeDelay", "txtExtn", code_field::kDelay, entry.delay);
  EnterDoNotDisturb(screen, entry);
  EnterForwarding(screen, entry);
  EnterPeriod(screen, entry);
  TypeInto(screen.Box("txtDisplayName"), code_field::kDisplayName, entry.displayName);
  Tick(screen.Check("chkShowDisplayName"), entry.showName);
  Tick(screen.Check("chkShowDirCode"), entry.showCode);
  RequireStorable(screen);
}

}  // namespace

void RequireCodeNumber(const std::string& code) {
  if (qorcred::Trim(code).empty() || IsWholeNumber(code)) {
    return;
  }
  const TakenNumber number = NumberTaken(code);
  if (!number.value) {
    throw InputFault(code_field::kCode, code, "{field} '{value}' is too large a number");
  }
  if (!number.isAll) {
    throw InputFault(code_field::kCode, code,
                     fmt::format("{{field}} '{{value}}' is no number: it would be stored as {}",
                                 qorcred::NumberText(*number.value)));
  }
}

void TickForNewCode(ScreenModel& screen) {
  for (const std::string_view box : {"chkActive", "chkShowDisplayName", "chkShowDirCode"}) {
    screen.Check(box).SetState(1);
  }
}

void EnterNewCode(DirCodeDesk& desk, const std::string& code, const DirCodeEntry& entry) {
  RequireCodeNumber(code);
  TickForNewCode(desk.screen());
  desk.TypeCode(code);
  Enter(desk.screen(), entry);
}

namespace {

/// What nobody types may have been pasted.
void RequireTypable(ScreenModel& screen) {
  for (const PastedBox& pasted : kPastedBoxes) {
    (void)TypedText(pasted.name, screen.Box(pasted.box).text());
  }
  RequireStorable(screen);
}

}  // namespace

void CheckTypedCode(DirCodeDesk& desk) {
  const std::string code = desk.screen().Box("txtdirectorycode").text();
  RequireCodeNumber(code);
  desk.TypeCode(code);
  RequireTypable(desk.screen());
}

void CheckTypedChange(DirCodeDesk& desk) {
  RequireWholeCode(desk);
  RequireTypable(desk.screen());
}

CodePeriod PeriodShown(DirCodeDesk& desk) {
  ScreenModel& screen = desk.screen();
  const auto chosen = [&screen](std::string_view name) {
    const PickerModel& picker = screen.Date(name);
    return picker.chosen() ? std::optional(picker.shown()) : std::nullopt;
  };
  return IsOff(desk, "chkActive") ? CodePeriod{} : CodePeriod{chosen("dtpStart"), chosen("dtpEnd")};
}

std::vector<std::string> EnterDirCodeChange(DirCodeDesk& desk, const DirCodeEntry& entry) {
  RequireWholeCode(desk);
  const IdleSettings idle = ReadIdle(desk);
  Enter(desk.screen(), entry);
  return NamesOfCleared(desk, idle);
}

bool DirCodeEntry::IsEmpty() const {
  const bool texts = phone || extension || delay || displayName;
  const bool schedules = dnd || noDnd || noForwarding || forwardSchedule;
  const bool forwarding = forwardPhone || forwardExtension || forwardDelay;
  const bool period = from || to || active;
  return !texts && !schedules && !forwarding && !period && !showName && !showCode;
}

}  // namespace qorhost

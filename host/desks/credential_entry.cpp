#include "host/desks/credential_entry.h"

#include <string>
#include <string_view>
#include <utility>

#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/credential_desk.h"
#include "host/desks/credential_types.h"
#include "host/desks/door_schedules.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

namespace card_field = credential_field;

void ChooseType(ScreenModel& screen, std::string_view word) {
  for (const CredentialTypeWords& known : EnteredTypes()) {
    if (known.word == word) {
      ListModel& types = screen.List("cboCredentialType");
      types.Select(types.FindData(known.type));
      return;
    }
  }
  throw InputFault(card_field::kType, word,
                   "{field} '{value}' is none of " + EnteredWords(", ", " and "));
}

/// The word of the type that is selected; "" without one.
std::string WordOfType(const ListModel& types) {
  for (const CredentialTypeWords& known : EnteredTypes()) {
    if (types.selected() != ListModel::kNone && types.ItemData(types.selected()) == known.type) {
      return std::string(known.word);
    }
  }
  return "";
}

/// Types into a box that the screen shows; `hidden` says what hides or disables it.
void TypeInto(TextModel& box, std::string_view name, const std::optional<std::string>& text,
              std::string_view hidden) {
  if (!text) {
    return;
  }
  if (!box.visible() || !box.enabled()) {
    throw InputFault(name, *text, hidden);
  }
  if (qorcred::Trim(*text).empty()) {
    // The controller would take it for 0.
    throw InputFault(name, *text, "{field} '{value}' is empty: give a number, or leave it out");
  }
  box.SetText(TypedNumber(name, *text));
}

/// The controller would take an empty one for a single credential.
std::string LastOfRange(const std::string& last) {
  if (qorcred::Trim(last).empty()) {
    throw InputFault(card_field::kLast, last,
                     "{field} '{value}' is empty: leave it out for a single credential");
  }
  return TypedNumber(card_field::kLast, last);
}

void ChooseButton(ScreenModel& screen, const std::optional<std::string>& button) {
  if (!button) {
    return;
  }
  if (!screen.Option("optButton4").visible()) {
    throw InputFault(card_field::kButton, *button,
                     "leave {field} out: only transmitters have buttons");
  }
  constexpr std::int32_t kUpper = 4;
  const std::int32_t number = WholeNumber(*button).value_or(0);
  const bool isUpper = number == kUpper;
  if (!isUpper && number != 1) {
    throw InputFault(card_field::kButton, *button, "{field} '{value}' is neither 1 nor 4");
  }
  screen.Option(isUpper ? "optButton4" : "optButtonDefault").SetOn(true);
}

void ChooseSchedules(ScreenModel& screen, const std::string& given) {
  ForEachDoor(card_field::kSchedules, given,
              [&screen](std::size_t door, std::string_view schedule) {
                ListModel& list = screen.List(qorcred::kScheduleLists[door]);
                list.Select(FindEntry(list, card_field::kSchedules, schedule, "schedule",
                                      placeholders::kInSchedules));
              });
}

void EnterTenants(ScreenModel& screen, const NewCredentials& entry) {
  if (entry.schedules) {
    ChooseSchedules(screen, *entry.schedules);
  }
  if (entry.from) {
    ChooseDate(screen.Date("dtpStart"), card_field::kStart, *entry.from, false);
  }
  if (entry.to) {
    ChooseDate(screen.Date("dtpEnd"), card_field::kEnd, *entry.to, true);
  }
  const bool limited = screen.Date("dtpStart").chosen() || screen.Date("dtpEnd").chosen();
  screen.Check("chkActive").SetState(limited ? 1 : 0);
}

void RefuseTenantInputs(const NewCredentials& entry) {
  if (entry.schedules || entry.from || entry.to) {
    const auto& [name, given] = entry.schedules ? std::pair(card_field::kSchedules, entry.schedules)
                                : entry.from    ? std::pair(card_field::kStart, entry.from)
                                                : std::pair(card_field::kEnd, entry.to);
    throw InputFault(name, *given,
                     "{schedules}, {first day} and {last day} go with {new tenants}: without new "
                     "tenants there is nobody to give them to");
  }
}

}  // namespace

void EnterCredentials(CredentialDesk& desk, const NewCredentials& entry) {
  ScreenModel& screen = desk.screen();
  constexpr std::string_view kForTransmitters = "leave {field} out: only transmitters have it";
  ChooseType(screen, entry.type);
  screen.SetVariable("gstrTag", entry.last ? "" : "SINGLE");
  const std::string first = TypedNumber(card_field::kFirst, entry.first);
  screen.Box("txtPINStart").SetText(first);
  // With tenants the controller looks for what is there already in ranges alone: a single
  // credential goes in as a range of one.
  const std::string last = entry.withTenants ? first : "";
  screen.Box("txtPINEND").SetText(entry.last ? LastOfRange(*entry.last) : last);
  TypeInto(screen.Box("txtFacilityCode"), card_field::kFacility, entry.facility,
           "leave {field} out: this unit ignores facility codes");
  TypeInto(screen.Box("txtIDCode"), card_field::kIdCode, entry.idCode, kForTransmitters);
  TypeInto(screen.Box("txtSequenceCode"), card_field::kSequence, entry.sequence, kForTransmitters);
  ChooseButton(screen, entry.button);
  if (entry.withTenants) {
    EnterTenants(screen, entry);
  } else {
    RefuseTenantInputs(entry);
  }
}

NewCredentials TypedCredentials(CredentialDesk& desk, bool isRange) {
  ScreenModel& screen = desk.screen();
  const auto typed = [&screen](std::string_view name) -> std::optional<std::string> {
    const TextModel& box = screen.Box(name);
    if (!box.visible() || !box.enabled() || qorcred::Trim(box.text()).empty()) {
      return std::nullopt;
    }
    return box.text();
  };
  NewCredentials entry;
  entry.type = WordOfType(screen.List("cboCredentialType"));
  entry.first = screen.Box("txtPINStart").text();
  if (isRange) {
    entry.last = screen.Box("txtPINEND").text();
  }
  entry.facility = typed("txtFacilityCode");
  entry.idCode = typed("txtIDCode");
  entry.sequence = typed("txtSequenceCode");
  if (screen.Option("optButton4").visible()) {
    entry.button = screen.Option("optButton4").on() ? "4" : "1";
  }
  return entry;
}

void EnterChange(CredentialDesk& desk, const CredentialChange& change) {
  ListModel& doors = desk.screen().List("cboActivate");
  if (change.door) {
    if (!doors.visible()) {
      throw InputFault(card_field::kDoor, *change.door,
                       "leave {field} out: only cards have a door");
    }
    doors.Select(FindDoor(doors, card_field::kDoor, *change.door));
  }
  ListModel& tenants = desk.screen().List("cboAssignedTo");
  if (change.tenant) {
    tenants.Select(FindEntry(tenants, card_field::kTenant, *change.tenant, "tenant",
                             placeholders::kInTenants));
  } else if (change.release) {
    tenants.Select(0);
  }
}

}  // namespace qorhost

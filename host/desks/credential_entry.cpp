#include "host/desks/credential_entry.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/desks/list_entries.h"

namespace qorhost {

namespace {

constexpr std::array<std::string_view, 4> kScheduleLists{"cboSchedules1", "cboSchedules2",
                                                         "cboSchedules3", "cboSchedules4"};
constexpr std::int32_t kSystemSchedules = 0;  // "No Access" and "Full Access" have ids of their own

struct TypeWord {
  std::string_view word;
  std::int16_t type;
};
constexpr std::array kTypeWords{TypeWord{"card30", qorcred::kCorvinCard},
                                TypeWord{"card26", qorcred::kStandardCard},
                                TypeWord{"transmitter", qorcred::kTransmitter}};

void ChooseType(ScreenModel& screen, std::string_view word) {
  for (const TypeWord& known : kTypeWords) {
    if (known.word == word) {
      screen.List("cboCredentialType")
          .Select(screen.List("cboCredentialType").FindData(known.type));
      return;
    }
  }
  throw UsageError(fmt::format("--type '{}' is none of card30, card26 and transmitter", word));
}

/// Types into a box that the screen shows; `why` says what hides or disables it.
void TypeInto(TextModel& box, std::string_view option, const std::optional<std::string>& text,
              std::string_view why) {
  if (!text) {
    return;
  }
  if (!box.visible() || !box.enabled()) {
    throw UsageError(fmt::format("leave {} out: {}", option, why));
  }
  box.SetText(TypedText(option, *text));
}

void ChooseButton(ScreenModel& screen, const std::optional<std::string>& button) {
  if (!button) {
    return;
  }
  if (!screen.Option("optButton4").visible()) {
    throw UsageError("leave --button out: only transmitters have buttons");
  }
  if (*button != "1" && *button != "4") {
    throw UsageError(fmt::format("--button '{}' is neither 1 nor 4", *button));
  }
  screen.Option(*button == "4" ? "optButton4" : "optButtonDefault").SetOn(true);
}

void ChooseSchedules(ScreenModel& screen, std::string_view given) {
  std::size_t door = 0;
  for (bool more = true; more; ++door) {
    if (door == kScheduleLists.size()) {
      throw UsageError("--schedules takes at most four schedules, one for each door");
    }
    const std::size_t comma = given.find(',');
    const std::string_view schedule = qorcred::Trim(given.substr(0, comma));
    if (!schedule.empty()) {
      ListModel& list = screen.List(kScheduleLists[door]);
      list.Select(FindEntry(list, schedule, "schedule", kSystemSchedules));
    }
    more = comma != std::string_view::npos;
    given.remove_prefix(more ? comma + 1 : given.size());
  }
}

void EnterTenants(ScreenModel& screen, const AddOptions& options) {
  if (options.schedules) {
    ChooseSchedules(screen, *options.schedules);
  }
  if (options.from) {
    ChooseDate(screen.Date("dtpStart"), "--from", *options.from, false);
  }
  if (options.to) {
    ChooseDate(screen.Date("dtpEnd"), "--to", *options.to, true);
  }
  const bool limited = screen.Date("dtpStart").chosen() || screen.Date("dtpEnd").chosen();
  screen.Check("chkActive").SetState(limited ? 1 : 0);
}

void RefuseTenantOptions(const AddOptions& options) {
  if (options.schedules || options.from || options.to) {
    throw UsageError(
        "--schedules, --from and --to go with --with-tenants: without new tenants "
        "there is nobody to give them to");
  }
}

}  // namespace

void EnterCredential(CredentialDesk& desk, const AddOptions& options) {
  ScreenModel& screen = desk.screen();
  constexpr std::string_view kForTransmitters = "only transmitters have it";
  ChooseType(screen, options.type);
  screen.SetVariable("gstrTag", options.end ? "" : "SINGLE");
  screen.Box("txtPINStart").SetText(TypedText("--start", options.start));
  screen.Box("txtPINEND").SetText(options.end ? TypedText("--end", *options.end) : "");
  TypeInto(screen.Box("txtFacilityCode"), "--facility", options.facility,
           "this unit ignores facility codes");
  TypeInto(screen.Box("txtIDCode"), "--id-code", options.idCode, kForTransmitters);
  TypeInto(screen.Box("txtSequenceCode"), "--sequence", options.sequence, kForTransmitters);
  ChooseButton(screen, options.button);
  if (options.withTenants) {
    EnterTenants(screen, options);
  } else {
    RefuseTenantOptions(options);
  }
}

std::optional<EnteredNumbers> ReadEntered(const ScreenModel& screen) {
  try {
    const double first = std::nearbyint(qorcred::ToDouble(screen.Box("txtPINStart").text()));
    const double last = std::nearbyint(qorcred::ToDouble(screen.Box("txtPINEND").text()));
    if (first >= 1 && last >= first && last <= qorcred::kHighestCredentialNumber) {
      return EnteredNumbers{static_cast<std::int64_t>(first), static_cast<std::int64_t>(last)};
    }
  } catch (const qorcred::RuntimeError&) {
    // A text that is no number, or one too long for any.
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace qorhost

#include "host/cli/building_commands.h"

#include <fmt/format.h>

#include <functional>
#include <utility>
#include <vector>

#include "host/cli/change_report.h"
#include "host/cli/store_commands.h"
#include "host/desks/door_desk.h"
#include "host/desks/schedule_desk.h"
#include "host/desks/unit_deletion.h"
#include "host/desks/whole_number.h"
#include "host/desks/words.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

/// How a change ended, in a line or as one object.
struct Told {
  std::string text;     ///< without its end
  ChangeReport report;  ///< but whether something was stored
  bool unchanged = false;
};

enum class Doing { kAdding, kChanging, kDeleting };

/// One thing of the building that was added, changed or deleted.
ChangeReport ReportOn(Doing doing, std::int32_t unit, TouchedThing thing, bool trial) {
  ChangeReport report;
  report.unit = unit;
  report.trial = trial;
  std::vector<TouchedThing>& things = doing == Doing::kAdding     ? report.added
                                      : doing == Doing::kChanging ? report.changed
                                                                  : report.deleted;
  things.push_back(std::move(thing));
  return report;
}

ExitStatus Tell(Told told, const GlobalOptions& global, Console& console) {
  ChangeReport& report = told.report;
  report.stored = !told.unchanged && !report.trial;
  console.stored = report.stored;
  if (global.json) {
    if (told.unchanged) {
      report.changed.clear();
    }
    PrintChange(console.out, report);
    return ExitStatus::kDone;
  }
  (report.trial ? console.out : console.Remarks())
      << fmt::format("{}{}.\n", told.text,
                     told.unchanged ? ", as before; nothing was changed"
                     : report.trial ? "; this was a trial, nothing was changed"
                                    : "");
  return ExitStatus::kDone;
}

/// Changes a unit; where other units have its type, the person is asked.
ChangedUnit WithConsent(CommandSession& session,
                        const std::function<ChangedUnit(OtherUnits)>& change) {
  try {
    return change(OtherUnits::kAsked);
  } catch (const SharedType& shared) {
    session.RequireConsent(std::string(shared.what()) + " Change it for all of them?");
  }
  return change(OtherUnits::kChanged);
}

std::vector<UnitToDelete> UnitsToDelete(CommandSession& session,
                                        const std::vector<std::string>& given) {
  std::vector<UnitName> units;
  for (const std::string& one : given) {
    units.push_back(session.UnitNamed(one));
  }
  return WithContents(session.desks(), units);
}

/// Asks once, about all of them that are not empty.
void RequireConsentTo(const std::vector<UnitToDelete>& units, CommandSession& session) {
  std::vector<std::string> filled;
  for (const UnitToDelete& one : units) {
    if (one.contents.any()) {
      filled.push_back(fmt::format("{} has {}", NameOf(one.unit), one.contents.Text()));
    }
  }
  if (!filled.empty()) {
    session.RequireConsent(fmt::format("{}, which are deleted with {}. Go on?",
                                       fmt::join(filled, "; "),
                                       filled.size() == 1 ? "it" : "them"));
  }
}

Told OfUnit(std::string text, Doing doing, const ChangedUnit& changed, const UnitOptions& options) {
  return {std::move(text),
          ReportOn(doing, changed.unit.key, {"unit", changed.unit.key, changed.unit.name},
                   options.trial),
          changed.unchanged};
}

Told OfSchedule(std::string text, Doing doing, const UnitName& unit, const ChangedSchedule& changed,
                const ScheduleOptions& options) {
  Told told{std::move(text),
            ReportOn(doing, unit.key,
                     {"schedule", changed.id, changed.name.empty() ? changed.former : changed.name},
                     options.trial),
            changed.unchanged};
  if (doing == Doing::kChanging) {
    told.report.facts.Add("before", changed.former);
  }
  return told;
}

}  // namespace

ExitStatus RunUnitList(const GlobalOptions& global, const UnitOptions& options,
                       const ListOptions& asked, Console& console) {
  if (!options.settings) {
    return RunUnits(global, asked, console);
  }
  return PrintOfUnits(global, asked, UnitScope::kEvery, console, UnitSettingsList);
}

ExitStatus RunUnitAdd(const GlobalOptions& global, const UnitOptions& options, Console& console) {
  CommandSession session(global, Access::kChange, console);
  const ChangedUnit added = WithConsent(session, [&](OtherUnits others) {
    return AddUnit(session.desks(), options.key, options.entry, others, TrialOf(options.trial));
  });
  return Tell(OfUnit("Added " + NameOf(added.unit), Doing::kAdding, added, options), global,
              console);
}

ExitStatus RunUnitEdit(const GlobalOptions& global, const UnitOptions& options, Console& console) {
  if (!options.entry.any()) {
    throw UsageError("say what to change: --name or a setting (see 'qorhost units edit --help')");
  }
  CommandSession session(global, Access::kChange, console);
  std::vector<std::int32_t> keys;
  for (const std::string& given : options.toEdit) {
    const std::int32_t key = session.UnitNamed(given).key;
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
      keys.push_back(key);
    }
  }
  if (keys.size() > 1 && options.entry.name) {
    throw UsageError("--name is of one unit: name one unit, or leave it out");
  }
  std::vector<ChangedUnit> edited;
  (void)WithConsent(session, [&](OtherUnits others) {
    edited = EditUnits(session.desks(), keys, options.entry, others, TrialOf(options.trial));
    return edited.front();
  });
  ChangeReport report;
  report.unit = edited.size() == 1 ? qorcred::Value(keys.front()) : qorcred::Value(qorcred::Null{});
  report.trial = options.trial;
  std::vector<std::string> names;
  for (const ChangedUnit& one : edited) {
    names.push_back(NameOf(one.unit));
    if (!one.unchanged) {
      report.changed.push_back({"unit", one.unit.key, one.unit.name});
    }
  }
  const bool unchanged = report.changed.empty();
  return Tell({fmt::format("Set up {}", fmt::join(names, "; ")), std::move(report), unchanged},
              global, console);
}

ExitStatus RunUnitDelete(const GlobalOptions& global, const UnitOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kChange, console);
  const std::vector<UnitToDelete> units = UnitsToDelete(session, options.toDelete);
  session.RequireDeletion();
  if (!options.trial) {
    RequireConsentTo(units, session);
  }
  DeleteUnits(session.desks(), units, TrialOf(options.trial));
  ChangeReport report;
  report.unit =
      units.size() == 1 ? qorcred::Value(units.front().unit.key) : qorcred::Value(qorcred::Null{});
  report.trial = options.trial;
  std::vector<std::string> deleted;
  for (const UnitToDelete& one : units) {
    report.deleted.push_back({"unit", one.unit.key, one.unit.name});
    deleted.push_back(NameOf(one.unit) +
                      (one.contents.any() ? " with " + one.contents.Text() : ""));
  }
  const UnitContents all = ContentsOf(units);
  report.facts.Add("tenants", CountCell(all.tenants))
      .Add("credentials", CountCell(all.credentials))
      .Add("directory_codes", CountCell(all.codes))
      .Add("pending_steps", CountCell(all.steps));
  return Tell({fmt::format("Deleted {}", fmt::join(deleted, "; ")), std::move(report)}, global,
              console);
}

ExitStatus RunDoorEdit(const GlobalOptions& global, const DoorOptions& options, Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  if (options.doors.size() != options.names.size()) {
    throw UsageError(fmt::format("{} for {}: give each door one with --name, in the same order",
                                 Counted(options.names.size(), "name", "names"),
                                 Counted(options.doors.size(), "door", "doors")));
  }
  std::vector<NewDoorName> renamed;
  for (std::size_t at = 0; at < options.doors.size(); ++at) {
    renamed.push_back({options.doors[at], options.names[at]});
  }
  const std::vector<ChangedDoor> changed =
      RenameDoors(session.desks(), unit.key, renamed, TrialOf(options.trial));
  ChangeReport report;
  report.unit = unit.key;
  report.trial = options.trial;
  std::vector<std::string> told;
  for (const ChangedDoor& one : changed) {
    told.push_back(fmt::format("Door {} {} is called {} now, and was {}", one.door, InUnit(unit),
                               Displayable(one.name), Displayable(one.former)));
    if (!one.unchanged) {
      report.changed.push_back({"door", one.door, one.name});
    }
  }
  const bool unchanged = report.changed.empty();
  report.facts.Add("before", changed.size() == 1 ? qorcred::Value(changed.front().former)
                                                 : qorcred::Value(qorcred::Null{}));
  return Tell({fmt::format("{}", fmt::join(told, "; ")), std::move(report), unchanged}, global,
              console);
}

ExitStatus RunScheduleList(const GlobalOptions& global, const ListOptions& asked,
                           Console& console) {
  return PrintOfUnits(global, asked, UnitScope::kNamed, console, ScheduleList);
}

ExitStatus RunScheduleAdd(const GlobalOptions& global, const ScheduleOptions& options,
                          Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const ChangedSchedule added =
      AddSchedule(session.desks(), unit.key, options.name, options.id, TrialOf(options.trial));
  return Tell(OfSchedule(fmt::format("Added the schedule {}, {}, {}", added.id,
                                     Displayable(added.name), InUnit(unit)),
                         Doing::kAdding, unit, added, options),
              global, console);
}

ExitStatus RunScheduleEdit(const GlobalOptions& global, const ScheduleOptions& options,
                           Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const ChangedSchedule renamed = RenameSchedule(session.desks(), unit.key, options.schedule,
                                                 options.name, TrialOf(options.trial));
  return Tell(
      OfSchedule(fmt::format("The schedule {} {} is called {} now, and was {}", renamed.id,
                             InUnit(unit), Displayable(renamed.name), Displayable(renamed.former)),
                 Doing::kChanging, unit, renamed, options),
      global, console);
}

ExitStatus RunScheduleDelete(const GlobalOptions& global, const ScheduleOptions& options,
                             Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  session.RequireDeletion();
  const std::vector<ChangedSchedule> deleted =
      DeleteSchedules(session.desks(), unit.key, options.toDelete, TrialOf(options.trial));
  ChangeReport report;
  report.unit = unit.key;
  report.trial = options.trial;
  std::vector<std::string> names;
  for (const ChangedSchedule& one : deleted) {
    report.deleted.push_back({"schedule", one.id, one.former});
    names.push_back(fmt::format("{}, {}", one.id, Displayable(one.former)));
  }
  return Tell({fmt::format("Deleted the {} {}, {}", names.size() == 1 ? "schedule" : "schedules",
                           fmt::join(names, "; "), InUnit(unit)),
               std::move(report)},
              global, console);
}

}  // namespace qorhost

#include "host/cli/building_commands.h"

#include <fmt/format.h>

#include <functional>
#include <utility>
#include <vector>

#include "host/cli/store_commands.h"
#include "host/desks/door_desk.h"
#include "host/desks/schedule_desk.h"
#include "host/desks/whole_number.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

using qorcred::Value;
using Members = std::vector<std::pair<std::string, Value>>;

Trial TrialOf(bool trial) {
  return trial ? Trial::kYes : Trial::kNo;
}

/// How a change ended, in a line or as one object.
struct Told {
  std::string text;  ///< without its end
  Members members;   ///< but whether something was changed
  bool unchanged = false;
  bool trial = false;
};

ExitStatus Tell(const Told& told, const GlobalOptions& global, Console& console) {
  const bool changed = !told.unchanged && !told.trial;
  console.stored = changed;
  if (global.json) {
    Members members = told.members;
    members.emplace_back("changed", changed);
    PrintJsonObject(console.out, members);
    return ExitStatus::kDone;
  }
  console.out << fmt::format("{}{}.\n", told.text,
                             told.unchanged ? ", as before; nothing was changed"
                             : told.trial   ? "; this was a trial, nothing was changed"
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

/// The unit that `given` names, or the one of --unit.
UnitName UnitNamed(CommandSession& session, const std::string& given) {
  const auto key = WholeNumber(given);
  for (const UnitName& unit : session.desks().Units()) {
    if (key && unit.key == *key) {
      return unit;
    }
  }
  throw UsageError(fmt::format("there is no unit '{}': 'qorhost units' lists them", given));
}

Told OfUnit(std::string text, const ChangedUnit& changed, const UnitOptions& options) {
  return {std::move(text),
          {{"unit", changed.unit.key}, {"name", changed.unit.name}},
          changed.unchanged,
          options.trial};
}

Told OfSchedule(std::string text, const UnitName& unit, const ChangedSchedule& changed,
                const ScheduleOptions& options) {
  return {std::move(text),
          {{"unit", unit.key},
           {"schedule", changed.id},
           {"name", changed.name.empty() ? changed.former : changed.name}},
          changed.unchanged,
          options.trial};
}

}  // namespace

ExitStatus RunUnitList(const GlobalOptions& global, const UnitOptions& options,
                       const ListOptions& asked, Console& console) {
  if (!options.settings) {
    return RunUnits(global, asked, console);
  }
  return PrintOfUnits(global, asked, console, UnitSettingsList);
}

ExitStatus RunUnitAdd(const GlobalOptions& global, const UnitOptions& options, Console& console) {
  CommandSession session(global, Access::kChange, console);
  const ChangedUnit added = WithConsent(session, [&](OtherUnits others) {
    return AddUnit(session.desks(), options.key, options.entry, others, TrialOf(options.trial));
  });
  return Tell(OfUnit("Added " + NameOf(added.unit), added, options), global, console);
}

ExitStatus RunUnitEdit(const GlobalOptions& global, const UnitOptions& options, Console& console) {
  if (!options.entry.any()) {
    throw UsageError("say what to change: --name or a setting (see 'qorhost units edit --help')");
  }
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = UnitNamed(session, options.unit);
  const ChangedUnit edited = WithConsent(session, [&](OtherUnits others) {
    return EditUnit(session.desks(), unit.key, options.entry, others, TrialOf(options.trial));
  });
  return Tell(OfUnit("Set up " + NameOf(edited.unit), edited, options), global, console);
}

ExitStatus RunUnitDelete(const GlobalOptions& global, const UnitOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = UnitNamed(session, options.unit);
  session.RequireDeletion();
  const UnitContents contents = ContentsOf(session.desks(), unit.key);
  if (contents.any() && !options.trial) {
    session.RequireConsent(
        fmt::format("{} has {}, which are deleted with it. Go on?", NameOf(unit), contents.Text()));
  }
  DeleteUnit(session.desks(), unit.key, contents, TrialOf(options.trial));
  const std::string with = contents.any() ? " with " + contents.Text() : "";
  return Tell({"Deleted " + NameOf(unit) + with,
               {{"unit", unit.key},
                {"name", unit.name},
                {"tenants", CountCell(contents.tenants)},
                {"credentials", CountCell(contents.credentials)},
                {"directory_codes", CountCell(contents.codes)},
                {"pending_steps", CountCell(contents.steps)}},
               false,
               options.trial},
              global, console);
}

ExitStatus RunDoorEdit(const GlobalOptions& global, const DoorOptions& options, Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const ChangedDoor changed =
      RenameDoor(session.desks(), unit.key, options.door, options.name, TrialOf(options.trial));
  return Tell({fmt::format("Door {}, {}, {} is {} now", changed.door, Displayable(changed.former),
                           InUnit(unit), Displayable(changed.name)),
               {{"unit", unit.key}, {"door", changed.door}, {"name", changed.name}},
               changed.unchanged,
               options.trial},
              global, console);
}

ExitStatus RunScheduleList(const GlobalOptions& global, const ListOptions& asked,
                           Console& console) {
  return PrintOfUnits(global, asked, console, ScheduleList);
}

ExitStatus RunScheduleAdd(const GlobalOptions& global, const ScheduleOptions& options,
                          Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const ChangedSchedule added =
      AddSchedule(session.desks(), unit.key, options.name, options.id, TrialOf(options.trial));
  return Tell(OfSchedule(fmt::format("Added the schedule {}, {}, {}", added.id,
                                     Displayable(added.name), InUnit(unit)),
                         unit, added, options),
              global, console);
}

ExitStatus RunScheduleEdit(const GlobalOptions& global, const ScheduleOptions& options,
                           Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  const ChangedSchedule renamed = RenameSchedule(session.desks(), unit.key, options.schedule,
                                                 options.name, TrialOf(options.trial));
  return Tell(
      OfSchedule(fmt::format("The schedule {}, {}, {} is {} now", renamed.id,
                             Displayable(renamed.former), InUnit(unit), Displayable(renamed.name)),
                 unit, renamed, options),
      global, console);
}

ExitStatus RunScheduleDelete(const GlobalOptions& global, const ScheduleOptions& options,
                             Console& console) {
  CommandSession session(global, Access::kChange, console);
  const UnitName unit = session.UnitToChange();
  session.RequireDeletion();
  const ChangedSchedule deleted =
      DeleteSchedule(session.desks(), unit.key, options.schedule, TrialOf(options.trial));
  return Tell(OfSchedule(fmt::format("Deleted the schedule {}, {}, {}", deleted.id,
                                     Displayable(deleted.former), InUnit(unit)),
                         unit, deleted, options),
              global, console);
}

}  // namespace qorhost

#include "host/cli/building_command_line.h"

#include <fmt/format.h>

#include <array>

#include "host/cli/list_command_line.h"
#include "host/cli/store_commands.h"
#include "host/desks/credential_types.h"
#include "host/desks/door_desk.h"
#include "host/desks/schedule_desk.h"

namespace qorhost {

namespace {

constexpr std::array kUnitWords{
    FieldWord{unit_input::kKey, "--key", {}},
    FieldWord{unit_input::kName, "the name", {}},
    FieldWord{unit_input::kType, "--type", {}},
    FieldWord{unit_input::kCapacity, "--capacity", {}},
    FieldWord{unit_input::kCodeDigits, "--code-digits", {}},
    FieldWord{unit_input::kEntryDigits, "--entry-digits", {}},
    FieldWord{unit_input::kDefaultEnd, "--default-end", {}},
    FieldWord{unit_input::kIgnoresFacility, "--ignore-facility", {}},
    FieldWord{unit_input::kCardFacility, "--card-facility", {}},
    FieldWord{unit_input::kTransmitterFacility, "--transmitter-facility", {}}};
constexpr std::array kDoorWords{FieldWord{door_input::kDoor, "DOOR", "'qorhost doors' lists them"},
                                FieldWord{door_input::kName, "--name", {}}};
constexpr std::array kScheduleWords{
    FieldWord{schedule_input::kSchedule, "SCHEDULE", "'qorhost schedules' lists them"},
    FieldWord{schedule_input::kName, "the name", {}}, FieldWord{schedule_input::kId, "--id", {}}};

void DescribeSettings(CLI::App* command, UnitEntry& entry) {
  const auto text = [command](const char* name, std::optional<std::string>& target,
                              const char* type, const std::string& description) {
    command->add_option(name, target, description)->type_name(type);
  };
  text("--type", entry.type, "TYPE", "A type of units, or with --capacity a new one");
  text("--capacity", entry.capacity, "N",
       fmt::format("The most combined codes of the type, 1 to {}", unit_bound::kCapacity));
  text("--code-digits", entry.codeDigits, "N",
       fmt::format("The most digits of directory codes, 1 to {}", unit_bound::kDigits));
  text("--entry-digits", entry.entryDigits, "N",
       fmt::format("The most digits of entry codes, 1 to {}", unit_bound::kDigits));
  text("--default-end", entry.defaultEnd, "none|DATE|DAYSd",
       "When new tenants and directory codes end: on a date, or after so many days");
  text("--ignore-facility", entry.ignoresFacility, "yes|no", "Whether it ignores facility codes");
  text("--card-facility", entry.cardFacility, "F",
       fmt::format("The usual facility code of cards, 0 to {}", credential_bound::kFacility));
  text(
      "--transmitter-facility", entry.transmitterFacility, "F",
      fmt::format("The usual facility code of transmitters, 0 to {}", credential_bound::kFacility));
}

void DescribeUnits(CommandPlace place, const GlobalOptions& global, UnitOptions& options,
                   ListOptions& asked) {
  CLI::App* app = AddCommand(
      place, "units", "List the units, their codes in use and their capacity; change them",
      "  qorhost units\n  qorhost units --json\n  qorhost units edit 2 --capacity 4000",
      [&](Console& console) { return RunUnits(global, {}, console); });
  app->require_subcommand(0, 1);
  const CommandPlace units{*app, place.chosen};

  auto* list = AddCommand(
      units, "list", "List the units, or their settings",
      "  qorhost units list --sort -credentials\n  qorhost units list --settings",
      [&](Console& console) { return RunUnitList(global, options, asked, console); }, kListWords);
  DescribeListOptions(*list, asked);
  list->add_flag("--settings", options.settings, "List their settings");

  auto* add = AddCommand(
      units, "add", "Add a unit with four doors and the two schedules that every unit has",
      "  qorhost units add \"Garden House\" --type \"Entry Panel 500\"\n"
      "  qorhost units add Annex --key 12 --type \"Annex Panel\" --capacity 250",
      [&](Console& console) { return RunUnitAdd(global, options, console); }, kUnitWords);
  add->add_option("NAME", options.entry.name, "Its name")->required();
  add->add_option("--key", options.key, "Its key (the one behind the highest)")->type_name("N");
  DescribeSettings(add, options.entry);
  DescribeTrial(*add, options.trial);

  auto* edit = AddCommand(
      units, "edit", "Change a unit's name and settings, or the settings of several",
      "  qorhost units edit 2 --name \"Linden Park East\"\n"
      "  qorhost units edit 2 3 --code-digits 5 --default-end 90d",
      [&](Console& console) { return RunUnitEdit(global, options, console); }, kUnitWords);
  edit->add_option("UNIT", options.toEdit, "Its key")->required();
  edit->add_option("--name", options.entry.name, "Its name")->type_name("NAME");
  DescribeSettings(edit, options.entry);
  DescribeTrial(*edit, options.trial);

  auto* remove = AddCommand(
      units, "delete", "Delete units, all or none; asks when there is anything in them",
      "  qorhost units delete 3 --dry-run\n  qorhost units delete 3 4 --yes",
      [&](Console& console) { return RunUnitDelete(global, options, console); }, kUnitWords);
  remove->add_option("UNIT", options.toDelete, "Its key")->required();
  DescribeTrial(*remove, options.trial);
}

void DescribeDoors(CommandPlace place, const GlobalOptions& global, DoorOptions& options,
                   ListOptions& asked) {
  CLI::App* app =
      AddCommand(place, "doors", "List the doors and their captions on the credential screen",
                 "  qorhost doors\n  qorhost doors --unit 2\n"
                 "  qorhost doors edit 4 --name Yard --unit 2",
                 [&](Console& console) { return RunDoors(global, {}, console); });
  app->require_subcommand(0, 1);
  const CommandPlace doors{*app, place.chosen};

  auto* list = AddCommand(
      doors, "list", "List the doors and their captions on the credential screen",
      "  qorhost doors list --unit 2\n  qorhost doors list --where \"name begins with g\"",
      [&](Console& console) { return RunDoors(global, asked, console); }, kListWords);
  DescribeListOptions(*list, asked);

  auto* edit = AddCommand(
      doors, "edit", "Give doors other names, all of them or none",
      "  qorhost doors edit 4 --name Yard --unit 2\n"
      "  qorhost doors edit 3 4 --name Garden --name Yard --unit 2",
      [&](Console& console) { return RunDoorEdit(global, options, console); }, kDoorWords);
  edit->add_option("DOOR", options.doors, "Its number, from 1, or its name")->required();
  edit->add_option("--name", options.names, "Its new name; of several doors one for each")
      ->type_name("NAME")
      ->required()
      ->allow_extra_args(false);
  DescribeTrial(*edit, options.trial);
}

void DescribeSchedules(CommandPlace place, const GlobalOptions& global, ScheduleOptions& options,
                       ListOptions& asked) {
  CLI::App* app =
      AddCommand(place, "schedules", "List the schedules and how often each is used; change them",
                 "  qorhost schedules\n  qorhost schedules add \"Cleaning Staff\" --unit 2",
                 [&](Console& console) { return RunScheduleList(global, {}, console); });
  app->require_subcommand(0, 1);
  const CommandPlace schedules{*app, place.chosen};

  auto* list = AddCommand(
      schedules, "list", "List the schedules and how often each is used",
      "  qorhost schedules list --unit 2\n  qorhost schedules list --where \"tenants = 0\"",
      [&](Console& console) { return RunScheduleList(global, asked, console); }, kListWords);
  DescribeListOptions(*list, asked);

  auto* add = AddCommand(
      schedules, "add", "Add a schedule", "  qorhost schedules add \"Cleaning Staff\" --unit 2",
      [&](Console& console) { return RunScheduleAdd(global, options, console); }, kScheduleWords);
  add->add_option("NAME", options.name, "Its name")->required();
  add->add_option("--id", options.id, "Its id at the unit (the one behind the highest)")
      ->type_name("N");
  DescribeTrial(*add, options.trial);

  auto* edit = AddCommand(
      schedules, "edit", "Give a schedule another name",
      "  qorhost schedules edit \"Late Shift\" --name Evenings --unit 2",
      [&](Console& console) { return RunScheduleEdit(global, options, console); }, kScheduleWords);
  edit->add_option("SCHEDULE", options.schedule, "Its id or its name")->required();
  edit->add_option("--name", options.name, "Its new name")->type_name("NAME")->required();
  DescribeTrial(*edit, options.trial);

  auto* remove = AddCommand(
      schedules, "delete", "Delete schedules that nothing uses, all or none",
      "  qorhost schedules delete Evenings \"Cleaning Staff\" --unit 2",
      [&](Console& console) { return RunScheduleDelete(global, options, console); },
      kScheduleWords);
  remove->add_option("SCHEDULE", options.toDelete, "Its id or its name")->required();
  DescribeTrial(*remove, options.trial);
}

}  // namespace

void DescribeBuilding(CommandPlace place, const GlobalOptions& global, BuildingChoice& choice) {
  DescribeUnits(place, global, choice.unit, choice.list);
  DescribeDoors(place, global, choice.door, choice.list);
  DescribeSchedules(place, global, choice.schedule, choice.list);
}

}  // namespace qorhost

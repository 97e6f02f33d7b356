#include "host/cli/tenant_command_line.h"

#include <fmt/format.h>

#include <array>

#include "host/cli/list_command_line.h"
#include "host/desks/credential_fields.h"
#include "host/desks/report_words.h"
#include "host/desks/tenant_conditions.h"
#include "host/desks/tenant_fields.h"

namespace qorhost {

namespace {

constexpr const char* kWho = "The name or words of it, the id, or rows as in rid:17,18";

constexpr std::array kTenantWords{
    FieldWord{tenant_field::kTenant, "", "'qorhost tenants list' shows them"},
    FieldWord{report_input::kCondition, "--where", {}},
    FieldWord{tenant_field::kLastName, "--last", {}},
    FieldWord{tenant_field::kFirstName, "--first", {}},
    FieldWord{tenant_field::kInitial, "--initial", {}},
    FieldWord{tenant_field::kNameAtUnit, "--name-at-unit", {}},
    FieldWord{tenant_field::kGroup, "--group", {}},
    FieldWord{tenant_field::kActive, "--active", {}},
    FieldWord{tenant_field::kStart, "--from", {}},
    FieldWord{tenant_field::kEnd, "--to", {}},
    FieldWord{tenant_field::kSchedules, "--schedules", {}},
    FieldWord{tenant_field::kDoorSchedules[0], "--schedule1", {}},
    FieldWord{tenant_field::kDoorSchedules[1], "--schedule2", {}},
    FieldWord{tenant_field::kDoorSchedules[2], "--schedule3", {}},
    FieldWord{tenant_field::kDoorSchedules[3], "--schedule4", {}},
    FieldWord{tenant_field::kCard, "--card", {}},
    FieldWord{credential_field::kCredential, "--card", "'qorhost credentials list' shows them"},
    FieldWord{tenant_field::kCode, "--code", "'qorhost dircodes list' shows them"},
    FieldWord{tenant_field::kResident, "--resident", {}},
};

constexpr std::array kEndWords{
    FieldWord{tenant_field::kTenant, "", "'qorhost tenants list' shows them"},
    FieldWord{report_input::kCondition, "--where", {}},
    FieldWord{tenant_field::kEnd, "--on", {}},
};

void DescribeWho(CLI::App& command, TenantChoiceOptions& who) {
  command.add_option("TENANT", who.names, kWho);
  DescribeConditions(command, who.conditions, "Those who meet a condition; several must all hold");
}

void DescribeEntry(CLI::App& command, TenantEditOptions& options) {
  const auto text = [&command](const char* name, auto& target, const char* type,
                               const std::string& description) {
    return command.add_option(name, target, description)->type_name(type);
  };
  TenantEntry& entry = options.entry;
  text("--last", entry.lastName, "NAME",
       fmt::format("The last name, up to {} characters", tenant_bound::kName));
  text("--first", entry.firstName, "NAME", "The first name");
  text("--initial", entry.initial, "TEXT",
       fmt::format("The middle initial, up to {} characters", tenant_bound::kInitial));
  text("--name-at-unit", entry.nameAtUnit, "NAME",
       "What the unit shows; else it follows first and last name");
  text("--group", entry.group, "N|zero", "The group, by its RID");
  text("--active", entry.active, "yes|no",
       "Whether the period holds; else it does when there is one");
  text("--from", entry.from, "DATE|none", "The first day");
  text("--to", entry.to, "DATE|none", "The last day, to its end unless a time is given");
  text("--schedules", options.schedules, "A,B,C,D",
       "The schedules at the four doors, by id or name");
  static constexpr std::array kOfDoor{"--schedule1", "--schedule2", "--schedule3", "--schedule4"};
  for (std::size_t door = 0; door < kTenantDoors; ++door) {
    text(kOfDoor.at(door), entry.schedules.at(door), "A",
         fmt::format("The schedule at door {} alone", door + 1));
  }
  text("--card", entry.cards, "CARD|none",
       "A credential that is held, by its number, its entry as in Transmitter-301 or rid:17; given "
       "twice for two; those that are not named are held no more")
      ->allow_extra_args(false);
  text("--code", entry.code, "CODE|none", "The directory code, by its number or rid:17");
  text("--resident", entry.resident, "yes|no",
       "A resident is in the lists for assignments no more, and keeps what is held");
}

void DescribeChanges(CommandPlace tenants, const GlobalOptions& global, TenantChoice& choice) {
  auto* add = AddCommand(
      tenants, "add", "Add a tenant, with Full Access and the unit's default period if not said",
      "  qorhost tenants add --unit 2 --last Tanaka --first Xenia --code 101 --card 20031\n"
      "  qorhost tenants add --unit 2 --last \"O'Brien\" --schedules \"Full Access,Late "
      "Shift,1,0\" "
      "\\\n      --to 2027-12-31",
      [&](Console& console) { return RunTenantAdd(global, choice.added, console); }, kTenantWords);
  DescribeEntry(*add, choice.added);
  add->get_option("--last")->required();
  DescribeTrial(*add, choice.added.trial);

  auto* edit = AddCommand(
      tenants, "edit", "Change a tenant, or many at once; all of them or none",
      std::string("  qorhost tenants edit \"Tanaka X\" --unit 2 --last Berg --card 20031\n"
                  "  qorhost tenants edit --where \"schedule3 = Night Shift\" --schedule3 \"Late "
                  "Shift\" \\\n      --unit 2 --dry-run\n"
                  "Fields of conditions: ")
          .append(TenantConditions::FieldNames())
          .c_str(),
      [&](Console& console) { return RunTenantEdit(global, choice.edited, console); },
      kTenantWords);
  DescribeWho(*edit, choice.edited.who);
  DescribeEntry(*edit, choice.edited);
  DescribeTrial(*edit, choice.edited.trial);

  auto* end = AddCommand(
      tenants, "end", "End leases: the period ends on a date",
      "  qorhost tenants end \"Tanaka X\" --on 2026-12-31 --free-cards --unit 2",
      [&](Console& console) { return RunTenantEnd(global, choice.ended, console); }, kEndWords);
  DescribeWho(*end, choice.ended.who);
  end->add_option("--on", choice.ended.on, "The last day, to its end unless a time is given")
      ->type_name("DATE")
      ->required();
  end->add_flag("--free-cards", choice.ended.freeCards,
                "Take the cards now, whenever the lease ends");
  DescribeTrial(*end, choice.ended.trial);

  auto* remove = AddCommand(
      tenants, "delete", "Delete tenants; asks first",
      "  qorhost tenants delete \"Tanaka X\" --unit 2 --yes",
      [&](Console& console) { return RunTenantDelete(global, choice.deleted, console); },
      kTenantWords);
  DescribeWho(*remove, choice.deleted.who);
  DescribeTrial(*remove, choice.deleted.trial);
}

}  // namespace

void DescribeTenants(CommandPlace place, const GlobalOptions& global, TenantChoice& choice) {
  const CommandPlace tenants = AddGroup(place, "tenants", "List, add, change and delete tenants",
                                        "  qorhost tenants list\n  qorhost tenants edit --help");
  auto* list = AddCommand(
      tenants, "list", "List a unit's tenants, by name",
      std::string("  qorhost tenants list --where \"card =\" --unit 2 --json\n"
                  "  qorhost tenants list --where \"end < 2027-01-01\" --sort end,name --all-units "
                  "\\\n      --columns name,end,card\nFields: ")
          .append(TenantConditions::FieldNames())
          .c_str(),
      [&](Console& console) { return RunTenantList(global, choice.list, console); }, kListWords);
  DescribeListOptions(*list, choice.list);

  auto* show = AddCommand(
      tenants, "show", "Show everything that is stored of tenants",
      "  qorhost tenants show \"Tanaka X\" --unit 2\n  qorhost tenants show rid:61 rid:62 --json",
      [&](Console& console) { return RunTenantShow(global, choice.shown, console); }, kTenantWords);
  show->add_option("TENANT", choice.shown, kWho)->required();
  DescribeChanges(tenants, global, choice);
  DescribeTenantExchange(tenants, global, choice.imported, choice.exported);
}

}  // namespace qorhost

#include "host/cli/dir_code_command_line.h"

#include <fmt/format.h>

#include <array>

#include "host/cli/list_command_line.h"
#include "host/desks/dir_code_import.h"
#include "host/desks/typed_input.h"
#include "host/unit/unit_code.h"

namespace qorhost {

namespace {

constexpr const char* kCodeHelp = "The code as it is dialled, or its row as in rid:17";

constexpr std::string_view kList = "'qorhost dircodes list' shows them";
constexpr std::array kChoiceWords{FieldWord{dir_code_field::kChoice, "", kList}};
constexpr std::array kEntryWords{
    FieldWord{dir_code_field::kChoice, "", kList},
    FieldWord{dir_code_field::kCode, "the code", {}},
    FieldWord{dir_code_field::kPhone, "--phone", {}},
    FieldWord{dir_code_field::kExtension, "--extension", {}},
    FieldWord{dir_code_field::kDelay, "--delay", {}},
    FieldWord{dir_code_field::kDnd, "--dnd", {}},
    FieldWord{dir_code_field::kForwardPhone, "--forward-phone", {}},
    FieldWord{dir_code_field::kForwardExtension, "--forward-extension", {}},
    FieldWord{dir_code_field::kForwardSchedule, "--forward-schedule", {}},
    FieldWord{dir_code_field::kForwardDelay, "--forward-delay", {}},
    FieldWord{dir_code_field::kStart, "--from", {}},
    FieldWord{dir_code_field::kEnd, "--to", {}},
    FieldWord{dir_code_field::kActive, "--active", {}},
    FieldWord{dir_code_field::kDisplayName, "--display-name", {}},
};
constexpr std::array kCodeRenumberWords{FieldWord{dir_code_field::kChoice, "", kList},
                                        FieldWord{dir_code_field::kCode, "the new code", {}}};

CLI::Option* Text(CLI::App& command, const char* name, std::optional<std::string>& target,
                  const char* type, const char* description) {
  return command.add_option(name, target, description)->type_name(type);
}

/// Two flags of which at most one is given.
void Either(CLI::App& command, std::optional<bool>& target, const char* yes,
            const char* yesDescription, const char* no, const char* noDescription) {
  auto* yesFlag = command.add_flag_callback(
      yes, [&target] { target = true; }, yesDescription);
  auto* noFlag = command.add_flag_callback(
      no, [&target] { target = false; }, noDescription);
  yesFlag->excludes(noFlag);
}

void DescribeEntry(CLI::App& command, DirCodeEntry& entry) {
  Text(command, "--phone", entry.phone, "P", "The phone number that the unit dials");
  Text(command, "--extension", entry.extension, "E", "The extension dialled behind it");
  Text(command, "--delay", entry.delay, "N", "The delay before the extension, only with one (2)");
  Text(command, "--dnd", entry.dnd, "SCHEDULE",
       "Do not disturb during this schedule, by id or name");
  Text(command, "--forward-phone", entry.forwardPhone, "P", "Forward calls to this phone number");
  Text(command, "--forward-extension", entry.forwardExtension, "E", "The extension there");
  Text(command, "--forward-schedule", entry.forwardSchedule, "SCHEDULE",
       "Forward during this schedule, by id or name");
  Text(command, "--forward-delay", entry.forwardDelay, "N",
       "The delay before the extension there, only with one (2)");
  Text(command, "--from", entry.from, "DATE", "Active from this day on; none: from the beginning");
  Text(command, "--to", entry.to, "DATE", "Active up to this day; none: without end");
  Text(command, "--display-name", entry.displayName, "NAME", "The name that the unit shows");
  Either(command, entry.active, "--active", "The code can be dialled", "--inactive",
         "The code cannot be dialled");
  Either(command, entry.showName, "--show-name", "The unit shows the name", "--hide-name",
         "The unit does not show the name");
  Either(command, entry.showCode, "--show-code", "The unit shows the code", "--hide-code",
         "The unit does not show the code");
}

void DescribeAdd(CommandPlace dircodes, const GlobalOptions& global, DirCodeAddOptions& add) {
  auto* command = AddCommand(
      dircodes, "add", "Add a directory code",
      "  qorhost dircodes add 250 --unit 2 --phone 555-0199 --display-name \"Karin Abel\"\n"
      "  qorhost dircodes add 251 --unit 2 --phone 555-0190 --dnd \"Night Shift\" \\\n"
      "      --forward-phone 555-0290 --forward-schedule Weekends --to 2027-12-31",
      [&](Console& console) { return RunDirCodeAdd(global, add, console); }, kEntryWords);
  command->add_option("CODE", add.code, "The code that a visitor dials")->required();
  DescribeEntry(*command, add.entry);
  DescribeTrial(*command, add.trial);
}

void DescribeEdit(CommandPlace dircodes, const GlobalOptions& global, DirCodeEditOptions& edit) {
  auto* command = AddCommand(
      dircodes, "edit",
      "Change the settings of directory codes, of all or of none; what is not named stays",
      "  qorhost dircodes edit 101 --unit 2 --phone 555-0142\n"
      "  qorhost dircodes edit 101 --unit 2 --no-dnd --forward-phone 555-0290 \\\n"
      "      --forward-schedule 1 --hide-name\n"
      "  qorhost dircodes edit 101 102 103 --unit 2 --inactive --dry-run",
      [&](Console& console) { return RunDirCodeEdit(global, edit, console); }, kEntryWords);
  command->add_option("CODE", edit.choices, kCodeHelp)->required();
  DescribeEntry(*command, edit.entry);
  auto* noDnd = command->add_flag("--no-dnd", edit.entry.noDnd, "No do-not-disturb any more");
  noDnd->excludes("--dnd");
  auto* noForwarding =
      command->add_flag("--no-forwarding", edit.entry.noForwarding, "No call forwarding any more");
  for (const char* option :
       {"--forward-phone", "--forward-extension", "--forward-schedule", "--forward-delay"}) {
    noForwarding->excludes(option);
  }
  DescribeTrial(*command, edit.trial);
}

void DescribeExchange(CommandPlace dircodes, const GlobalOptions& global, DirCodeSyncOptions& sync,
                      DirCodeExportOptions& exported) {
  auto* merge =
      AddCommand(dircodes, "sync",
                 "Make a unit's stored codes what the unit holds, all of it or nothing; asks\n"
                 "before it deletes any of them",
                 "  qorhost dircodes sync --unit 2 --from unit2.txt --dry-run\n"
                 "  qorhost dircodes sync --unit 2 --from unit2.txt",
                 [&](Console& console) { return RunDirCodeSync(global, sync, console); });
  merge->add_option("--from", sync.from, "The unit file; - for standard input")
      ->required()
      ->type_name("FILE");
  merge->add_flag("-n,--dry-run", sync.dryRun, "Print what would be done, write nothing");
  merge->add_flag("--skip-bad-lines", sync.skipBadLines,
                  "Leave bad lines out; no stored code is deleted then");

  auto* write =
      AddCommand(dircodes, "export", "Write a unit's stored codes as a unit file",
                 fmt::format("  qorhost dircodes export --unit 2 --to unit2.txt\n"
                             "  qorhost dircodes export --unit 2 --to - --firmware {}",
                             kFirmwareWithoutDisplay)
                     .c_str(),
                 [&](Console& console) { return RunDirCodeExport(global, exported, console); });
  write->add_option("--to", exported.to, "The file to write; - for standard output")
      ->required()
      ->type_name("FILE");
  write
      ->add_option("--firmware", exported.firmware,
                   fmt::format("The firmware that the file names; {} has no display options",
                               kFirmwareWithoutDisplay))
      ->type_name("NAME")
      ->check([](const std::string& name) {
        const bool shown = !name.empty() && IsTypable(name);
        return shown ? std::string() : std::string("must be a name without control characters");
      });
  write->add_flag("--skip", exported.skip, "Leave codes out that a unit cannot hold");
  write->add_flag("--force", exported.force, "Replace a file that is there already");
  DescribeTrial(*write, exported.trial);
}

}  // namespace

void DescribeDirCodes(CommandPlace place, const GlobalOptions& global, DirCodeChoice& choice) {
  const CommandPlace dircodes = AddGroup(
      place, "dircodes", "List, enter, change and delete directory codes; merge them with a unit",
      "  qorhost dircodes list\n  qorhost dircodes add --help");

  auto* list = AddCommand(
      dircodes, "list", "List a unit's directory codes and who has them",
      "  qorhost dircodes list --unit 2\n"
      "  qorhost dircodes list --where \"tenants contains abel\" --columns code,phone,tenants",
      [&](Console& console) { return RunDirCodeList(global, choice.list, console); }, kListWords);
  DescribeListOptions(*list, choice.list);
  auto* show = AddCommand(
      dircodes, "show", "Show directory codes with their schedules and tenants",
      "  qorhost dircodes show 101 102\n  qorhost dircodes show rid:17 --json",
      [&](Console& console) { return RunDirCodeShow(global, choice.shown, console); },
      kChoiceWords);
  show->add_option("CODE", choice.shown, kCodeHelp)->required();
  DescribeAdd(dircodes, global, choice.add);
  DescribeEdit(dircodes, global, choice.edit);

  auto* renumber = AddCommand(
      dircodes, "renumber", "Give a directory code another number",
      "  qorhost dircodes renumber 101 180 --unit 2",
      [&](Console& console) { return RunDirCodeRenumber(global, choice.renumber, console); },
      kCodeRenumberWords);
  renumber->add_option("CODE", choice.renumber.choice, kCodeHelp)->required();
  renumber->add_option("NUMBER", choice.renumber.number, "The new code")->required();
  DescribeTrial(*renumber, choice.renumber.trial);

  auto* remove = AddCommand(
      dircodes, "delete",
      "Delete directory codes, all or none, after a question, and take them from their tenants",
      "  qorhost dircodes delete 101 --unit 2 --yes\n"
      "  qorhost dircodes delete 101 102 rid:17 --unit 2 --dry-run",
      [&](Console& console) { return RunDirCodeDelete(global, choice.toDelete, console); },
      kChoiceWords);
  remove->add_option("CODE", choice.toDelete.choices, kCodeHelp)->required();
  DescribeTrial(*remove, choice.toDelete.trial);
  DescribeExchange(dircodes, global, choice.sync, choice.exported);
  auto* import =
      DescribeImport(dircodes, "Add the directory codes of a CSV file",
                     "  qorhost dircodes import codes.csv --unit 2 --dry-run\n"
                     "  qorhost report dircodes --unit 1 --format csv | qorhost dircodes import - "
                     "--unit 2",
                     global, choice.imported,
                     {DirCodeImportColumns(), ImportDirCodes, "directory code", "directory codes"});
  DescribeQuotes(*import, choice.imported);
}

}  // namespace qorhost

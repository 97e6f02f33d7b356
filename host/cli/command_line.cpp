#include "host/cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <new>

#include "frame/runtime_error.h"
#include "host/cli/commands.h"
#include "host/cli/credential_commands.h"
#include "host/cli/dir_code_command_line.h"
#include "host/cli/display_text.h"
#include "host/cli/import_command_line.h"
#include "host/cli/report_command_line.h"
#include "host/cli/store_commands.h"
#include "host/cli/tour/tour.h"
#include "host/desks/credential_import.h"
#include "host/dialect/translator.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

constexpr std::string_view kExitStatuses =
    "Exit status: 0 done, 1 refused, 2 usage, 3 store or system failure.";

/// Everything that options write to, and the command that was chosen.
struct Choice {
  GlobalOptions global;
  InitOptions init;
  SqlOptions sql;
  AddOptions add;
  EditOptions edit;
  RenumberOptions renumber;
  std::string toDelete;
  ImportOptions imported;
  DirCodeChoice dircodes;
  ReportOptions report;
  CommandRun run;
};

void DescribeGlobal(CLI::App& app, Choice& choice) {
  GlobalOptions& global = choice.global;
  app.add_option_function<std::string>(
         "--db", [&global](const std::string& file) { global.file = file; },
         "The database file (building.db in the current folder)")
      ->type_name("FILE")
      ->check([](const std::string& file) {
        return file.empty() ? std::string("needs the name of a file") : std::string();
      });
  app.add_option("--unit", global.unit, "The unit's key (the first unit)")->type_name("N");
  auto* yes = app.add_flag_callback(
      "--yes", [&global] { global.answer = true; }, "Answer Yes to questions");
  auto* no = app.add_flag_callback(
      "--no", [&global] { global.answer = false; }, "Answer No to questions");
  yes->excludes(no);
  app.add_flag("--json", global.json, "Print rows as JSON");
  app.add_flag("--trace", global.trace,
               "Write every call between controller and host to standard error");
}

void DescribeStore(CLI::App& app, Choice& choice) {
  auto* init = AddCommand(
      {app, choice.run}, "init", "Create the database file",
      "  qorhost init --demo\n  qorhost init --demo --force --db trial.db",
      [&choice](Console& console) { return RunInit(choice.global, choice.init, console); });
  init->add_flag("--demo", choice.init.demo,
                 "Fill it with an invented building: three units, 200 tenants, their credentials");
  init->add_flag("--force", choice.init.force, "Replace an existing store");

  AddCommand({app, choice.run}, "units", "List the units, their codes in use and their capacity",
             "  qorhost units\n  qorhost units --json",
             [&choice](Console& console) { return RunUnits(choice.global, console); });
  AddCommand({app, choice.run}, "doors",
             "List the doors and their captions on the credential screen",
             "  qorhost doors\n  qorhost doors --unit 2",
             [&choice](Console& console) { return RunDoors(choice.global, console); });
  AddCommand({app, choice.run}, "steps", "List the programming steps that wait for the units",
             "  qorhost steps\n  qorhost steps --unit 1 --json",
             [&choice](Console& console) { return RunSteps(choice.global, console); });

  auto* sql = AddCommand(
      {app, choice.run}, "sql", "Run one statement of the desktop SQL dialect",
      "  qorhost sql \"SELECT Top 5 * FROM Tenants WHERE LastName LIKE 'B%'\"\n"
      "  qorhost sql --write \"UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=1 AND DOORID=4\"",
      [&choice](Console& console) { return RunSql(choice.global, choice.sql, console); });
  sql->add_option("STATEMENT", choice.sql.statement, "The statement")->required();
  sql->add_flag("--write", choice.sql.write, "Let the statement change the database");

  AddCommand({app, choice.run}, "tour",
             "Show the screens and reports at work on a copy of the demo building",
             "  qorhost tour\n  qorhost tour --trace 2> calls.txt",
             [&choice](Console& console) { return RunTour(choice.global, console); });
}

void DescribeAdd(CLI::App& credentials, Choice& choice) {
  AddOptions& add = choice.add;
  auto* command = AddCommand(
      {credentials, choice.run}, "add", "Issue a credential or a range of them",
      "  qorhost credentials add --unit 2 --type card26 --start 500 --facility 7\n"
      "  qorhost credentials add --unit 2 --type transmitter --start 1 --end 20 --facility 7 \\\n"
      "      --id-code 3 --sequence 1 --button 4\n"
      "  qorhost credentials add --unit 2 --type card30 --start 1 --end 10 --facility 7 \\\n"
      "      --with-tenants --schedules \"Full Access,Late Shift,1,0\" --to 2027-12-31",
      [&choice](Console& console) { return RunAdd(choice.global, choice.add, console); });
  const auto text = [command](const char* name, auto& target, const char* type,
                              const char* description) {
    return command->add_option(name, target, description)->type_name(type);
  };
  text("--type", add.type, "card30|card26|transmitter", "The kind of credential")->required();
  text("--start", add.start, "N", "The credential's number, or the first of a range")->required();
  text("--end", add.end, "N", "The last number of a range");
  text("--facility", add.facility, "F", "Facility code");
  text("--id-code", add.idCode, "N", "ID code of a transmitter");
  text("--sequence", add.sequence, "N", "Sequence code of a transmitter");
  text("--button", add.button, "1|4", "Button of a transmitter");
  command->add_flag("--with-tenants", add.withTenants, "Create a tenant for every credential");
  text("--schedules", add.schedules, "A,B,C,D",
       "The new tenants' schedules at the four doors, by id or name (Full Access)");
  text("--from", add.from, "DATE", "First day of the new tenants");
  text("--to", add.to, "DATE", "Last day of the new tenants");
}

void DescribeChanges(CLI::App& credentials, Choice& choice) {
  constexpr const char* kCredential = "RID, or entry of the list as in Transmitter-301";
  const auto runEdit = [&choice](Console& console) {
    return RunEdit(choice.global, choice.edit, console);
  };
  auto* edit = AddCommand({credentials, choice.run}, "edit", "Change a credential's door or tenant",
                          "  qorhost credentials edit 17 --door Garage\n"
                          "  qorhost credentials edit 17 --door none --tenant 42",
                          runEdit);
  edit->add_option("CREDENTIAL", choice.edit.credential, kCredential)->required();
  edit->add_option("--door", choice.edit.door, "The door that a card opens: number, name or none")
      ->type_name("DOOR");
  auto* tenant =
      edit->add_option("--tenant", choice.edit.tenant, "Assign to this tenant: id or name")
          ->type_name("TENANT");
  edit->add_flag("--release", choice.edit.release, "Take it from its tenant")->excludes(tenant);

  auto* assign = AddCommand({credentials, choice.run}, "assign", "Assign a credential to a tenant",
                            "  qorhost credentials assign 17 42\n"
                            "  qorhost credentials assign Transmitter-301 \"Abel Karin T\"\n"
                            "  qorhost credentials assign 17 --release",
                            runEdit);
  assign->add_option("CREDENTIAL", choice.edit.credential, kCredential)->required();
  auto* holder = assign->add_option("TENANT", choice.edit.tenant, "The tenant's id or name");
  assign->add_flag("--release", choice.edit.release, "Take it from its tenant")->excludes(holder);

  auto* renumber = AddCommand(
      {credentials, choice.run}, "renumber", "Give a credential another number",
      "  qorhost credentials renumber 17 1234",
      [&choice](Console& console) { return RunRenumber(choice.global, choice.renumber, console); });
  renumber->add_option("CREDENTIAL", choice.renumber.credential, kCredential)->required();
  renumber->add_option("NUMBER", choice.renumber.number, "The new number")->required();

  auto* remove = AddCommand(
      {credentials, choice.run}, "delete", "Delete a credential; asks when a tenant holds it",
      "  qorhost credentials delete 17 --yes",
      [&choice](Console& console) { return RunDelete(choice.global, choice.toDelete, console); });
  remove->add_option("CREDENTIAL", choice.toDelete, kCredential)->required();
}

void Describe(CLI::App& app, Choice& choice) {
  app.set_version_flag("--version", "qorhost " QORHOST_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Examples:\n  qorhost tour\n  qorhost init --demo && qorhost credentials list\n"
      "  qorhost credentials add --unit 2 --type card26 --start 500 --end 520 --facility 7\n" +
      std::string(kExitStatuses));
  DescribeGlobal(app, choice);
  DescribeStore(app, choice);
  CLI::App* credentials =
      app.add_subcommand("credentials", "List, issue, change and delete credentials");
  credentials->require_subcommand(1);
  credentials->fallthrough();
  credentials->footer("Examples:\n  qorhost credentials list\n  qorhost credentials add --help");
  AddCommand({*credentials, choice.run}, "list", "List a unit's credentials",
             "  qorhost credentials list --unit 2\n  qorhost credentials list --json",
             [&choice](Console& console) { return RunList(choice.global, console); });
  DescribeAdd(*credentials, choice);
  DescribeChanges(*credentials, choice);
  DescribeImport({*credentials, choice.run}, "Issue the credentials of a CSV file",
                 "  qorhost credentials import cards.csv --unit 2 --dry-run\n"
                 "  qorhost credentials import --columns",
                 choice.global, choice.imported, RunCredentialImport);
  DescribeDirCodes({app, choice.run}, choice.global, choice.dircodes);
  DescribeReports({app, choice.run}, choice.global, choice.report);
}

ExitStatus Fail(std::ostream& err, std::string_view what, ExitStatus status) {
  err << "qorhost: " << Displayable(what) << '\n';
  return status;
}

/// The one place where failures of a command become an exit status and a line.
ExitStatus RunChosen(const Choice& choice, Console& console) {
  try {
    return choice.run(console);
  } catch (const UsageError& error) {
    return Fail(console.err, error.what(), ExitStatus::kUsage);
  } catch (const RefusedError& error) {
    return Fail(console.err, error.what(), ExitStatus::kRefused);
  } catch (const dialect::SqlError& error) {
    return Fail(console.err, error.what(), ExitStatus::kRefused);
  } catch (const std::bad_alloc&) {
    return Fail(console.err, "out of memory", ExitStatus::kFailure);
  } catch (const std::exception& error) {
    return Fail(console.err, error.what(), ExitStatus::kFailure);
  }
}

/// The words that name the command as far as it was understood: "qorhost credentials delete".
std::string CommandName(const CLI::App& app) {
  std::string name = app.get_name();
  for (const CLI::App* command : app.get_subcommands()) {
    name += " " + CommandName(*command);
  }
  return name;
}

/// What was wrong with the words and where to look.
std::string ParseMessage(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  const bool commandMissing =
      dynamic_cast<const CLI::RequiredError*>(&error) != nullptr &&
      std::string_view(error.what()).find("subcommand") != std::string_view::npos;
  std::string what = error.what();
  if (!unknown.empty()) {
    what = fmt::format("unknown word '{}'", unknown.front());
  } else if (commandMissing) {
    what = "A command is needed";
  }
  return fmt::format("{} (see '{} --help')", what, CommandName(app));
}

ExitStatus ParseAndRun(const std::vector<std::string>& args, Console& console) {
  Choice choice;
  CLI::App app(
      "Credentials and directory codes of an access-control building: the reference host of "
      "qorCred",
      "qorhost");
  Describe(app, choice);
  try {
    app.parse(std::vector<std::string>(args.rbegin(), args.rend()));
  } catch (const CLI::Success& help) {
    app.exit(help, console.out, console.err);
    return ExitStatus::kDone;
  } catch (const CLI::ParseError& error) {
    return Fail(console.err, ParseMessage(app, error), ExitStatus::kUsage);
  }
  return RunChosen(choice, console);
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
                   std::ostream& err, const Environment& environment) {
  Console console{in, out, err, environment};
  try {
    return static_cast<int>(ParseAndRun(args, console));
  } catch (const std::exception& error) {
    return static_cast<int>(Fail(err, error.what(), ExitStatus::kFailure));
  } catch (...) {
    return static_cast<int>(Fail(err, "unknown failure", ExitStatus::kFailure));
  }
}

}  // namespace qorhost

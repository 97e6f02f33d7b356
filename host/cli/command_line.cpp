#include "host/cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <sstream>
#include <utility>

#include "host/cli/access_commands.h"
#include "host/cli/attention_commands.h"
#include "host/cli/backup_commands.h"
#include "host/cli/building_command_line.h"
#include "host/cli/command_run.h"
#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/cli/completion.h"
#include "host/cli/credential_command_line.h"
#include "host/cli/dir_code_command_line.h"
#include "host/cli/error_report.h"
#include "host/cli/export_commands.h"
#include "host/cli/find_commands.h"
#include "host/cli/history_command_line.h"
#include "host/cli/list_command_line.h"
#include "host/cli/manual_page.h"
#include "host/cli/option_words.h"
#include "host/cli/overview_commands.h"
#include "host/cli/report_command_line.h"
#include "host/cli/step_command_line.h"
#include "host/cli/store_commands.h"
#include "host/cli/tenant_command_line.h"
#include "host/desks/finder.h"
#include "host/desks/whole_number.h"
#include "host/terminal/display_text.h"
#include "host/tour/tour.h"

namespace qorhost {

namespace {

constexpr std::string_view kExitStatuses =
    "Exit status: 0 done, 1 refused, 2 usage, 3 store or system failure.";

/// Everything that options write to, and the command that was chosen.
struct Choice {
  GlobalOptions global;
  InitOptions init;
  SqlOptions sql;
  BuildingChoice building;
  StepOptions steps;
  CredentialChoice credentials;
  DirCodeChoice dircodes;
  ReportOptions report;
  HistoryOptions history;
  TenantChoice tenants;
  FindOptions find;
  AccessOptions access;
  AttentionOptions attention;
  OverviewOptions overview;
  BackupOptions backup;
  ExportOptions exported;
  std::string shell;
  CommandRun run;
};

void DescribeGlobal(CLI::App& app, Choice& choice) {
  GlobalOptions& global = choice.global;
  app.add_option_function<std::string>(
         "--db", [&global](const std::string& file) { global.file = file; },
         "The database file; else that of QORHOST_DB, else building.db in the current folder")
      ->type_name("FILE")
      ->check([](const std::string& file) {
        return file.empty() ? std::string("needs the name of a file") : std::string();
      });
  app.add_option_function<std::string>(
         "--unit", [&global](const std::string& key) { global.unit = WholeNumber(key); },
         "The unit's key; else that of QORHOST_UNIT, else, to look at, the first")
      ->type_name("N")
      ->check([](const std::string& key) {
        return WholeNumber(key) ? std::string()
                                : fmt::format("'{}' is no key of a unit: give a whole number", key);
      });
  auto* yes = app.add_flag_callback(
      "--yes", [&global] { global.answer = true; }, "Answer Yes to questions");
  auto* no = app.add_flag_callback(
      "--no", [&global] { global.answer = false; }, "Answer No to questions, and delete nothing");
  yes->excludes(no);
  static constexpr NumberRange kWaits{0, std::int64_t{24} * 60 * 60};
  AddNumber(app, "--wait", "SECONDS", kWaits,
            fmt::format("How long to wait for others who are writing to the store ({}), up to {}",
                        kUsualPatience.count(), kWaits.highest),
            [&global](std::int64_t seconds) { global.wait = static_cast<int>(seconds); });
  app.add_flag("--json", global.json, "Print rows as JSON");
  app.add_flag("-q,--quiet", global.quiet,
               "Print nothing but what was asked for: of a change that was done nothing");
  app.add_flag("--trace", global.trace,
               "Write every call between controller and host to standard error");
  auto* traceFile =
      app.add_option_function<std::string>(
             "--trace-file", [&global](const std::string& file) { global.traceFile = file; },
             "Write them to a file, from which they can be read back")
          ->type_name("FILE");
  app.add_flag("--force", global.replaceTraceFile, "Replace the file of --trace-file")
      ->needs(traceFile);
}

void DescribeFind(CommandPlace place, const GlobalOptions& global, FindOptions& options) {
  static constexpr std::array kText{FieldWord{find_input::kText, "TEXT", {}}};
  static constexpr auto kWords = WithListWords(kText);
  auto* find = AddCommand(
      place, "find", "Find tenants, cards, directory codes and phone numbers in all units",
      "  qorhost find Tanaka X\n  qorhost find 20031\n  qorhost find 555-0102 --json",
      [&](Console& console) { return RunFind(global, options, console); }, kWords);
  find->add_option("TEXT", options.words,
                   "Words of a name, which may be cut short, the number of a card or of a "
                   "directory code, a phone number or its last digits")
      ->required();
  DescribeListOptions(*find, options.asked);
}

void DescribeStore(CLI::App& app, Choice& choice) {
  auto* init = AddCommand(
      {app, choice.run}, "init", "Create the database file",
      "  qorhost init --demo\n  qorhost init --demo --force --db trial.db\n"
      "  qorhost init --from building.mdb --report odd.txt --dry-run",
      [&choice](Console& console) { return RunInit(choice.global, choice.init, console); });
  init->add_flag("--demo", choice.init.demo,
                 "Fill it with an invented building: three units, 200 tenants, their credentials");
  init->add_flag("--force", choice.init.force, "Replace an existing store");
  DescribeMoving(*init, choice.init.moving);
  DescribeTrial(*init, choice.init.trial);

  DescribeBuilding({app, choice.run}, choice.global, choice.building);
  DescribeSteps({app, choice.run}, choice.global, choice.steps);

  auto* sql = AddCommand(
      {app, choice.run}, "sql",
      "Run a statement of the desktop SQL dialect, or several, all of them or none",
      "  qorhost sql \"SELECT Top 5 * FROM Tenants WHERE LastName LIKE 'B%'\"\n"
      "  qorhost sql --write \"UPDATE DOORS SET DOORNAME='Yard' WHERE UNITKEY=1 AND DOORID=4\"\n"
      "  qorhost sql --file changes.sql --dry-run\n"
      "  qorhost sql --write - < changes.sql",
      [&choice](Console& console) { return RunSql(choice.global, choice.sql, console); });
  sql->add_option("STATEMENT", choice.sql.statement,
                  "One statement; - for those that standard input holds, between semicolons");
  sql->add_option("--file", choice.sql.file, "The file with the statements, between semicolons")
      ->type_name("FILE");
  sql->add_flag("--write", choice.sql.write, "Let the statements change the database");
  DescribeTrial(*sql, choice.sql.trial);

  AddCommand({app, choice.run}, "tour",
             "Show the screens and reports at work on a copy of the demo building",
             "  qorhost tour\n  qorhost tour --trace 2> calls.txt", [&choice](Console& console) {
               return RunTour(SurroundingsOf(choice.global, console, {}), console);
             });
}

/// What is made from the words of all commands.
void DescribeShells(CLI::App& app, Choice& choice) {
  auto* completion = AddCommand(
      {app, choice.run}, "completion", "Print a script by which a shell completes these words",
      "  qorhost completion bash > ~/.local/share/bash-completion/completions/qorhost\n"
      "  qorhost completion fish > ~/.config/fish/completions/qorhost.fish",
      [&app, &choice](Console& console) {
        WriteCompletion(console.out, choice.shell, WordsOf(app));
        return ExitStatus::kDone;
      });
  completion->add_option("SHELL", choice.shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember(Shells()).description(""));
  AddCommand({app, choice.run}, "manual", "Print the manual page",
             "  qorhost manual > qorhost.1 && man ./qorhost.1", [&app](Console& console) {
               WriteManualPage(console.out, QORHOST_VERSION, WordsOf(app));
               return ExitStatus::kDone;
             });
}

/// Help in plain words, of every command.
void SpeakPlainly(CLI::App& app) {
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.get_formatter()->label("REQUIRED", "(needed)");
  app.get_formatter()->label("Excludes", "not with");
  for (CLI::Option* option :
       app.get_options([](const CLI::Option* any) { return any->get_positional(); })) {
    option->type_name("");
  }
  for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
    command->group("Commands");
    SpeakPlainly(*command);
  }
}

void Describe(CLI::App& app, Choice& choice) {
  app.set_version_flag("-V,--version", "qorhost " QORHOST_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Examples:\n  qorhost tour\n  qorhost init --demo && qorhost credentials list\n"
      "  qorhost credentials add --unit 2 --type card26 --start 500 --end 520 --facility 7\n" +
      std::string(kExitStatuses));
  DescribeGlobal(app, choice);
  DescribeStore(app, choice);
  DescribeCredentials({app, choice.run}, choice.global, choice.credentials);
  DescribeDirCodes({app, choice.run}, choice.global, choice.dircodes);
  DescribeTenants({app, choice.run}, choice.global, choice.tenants);
  DescribeFind({app, choice.run}, choice.global, choice.find);
  DescribeAccess({app, choice.run}, choice.global, choice.access);
  DescribeAttention({app, choice.run}, choice.global, choice.attention);
  DescribeOverview({app, choice.run}, choice.global, choice.overview);
  DescribeReports({app, choice.run}, choice.global, choice.report);
  DescribeHistory({app, choice.run}, choice.global, choice.history);
  DescribeBackup({app, choice.run}, choice.global, choice.backup);
  DescribeExport({app, choice.run}, choice.global, choice.exported);
  DescribeShells(app, choice);
  SpeakPlainly(app);
}

/// The words that name the command as far as it was understood: "qorhost credentials delete".
std::string CommandName(const CLI::App& app) {
  std::string name = app.get_name();
  for (const CLI::App* command : app.get_subcommands()) {
    name += " " + CommandName(*command);
  }
  return name;
}

/// The commands that the last word that was understood can be followed by.
std::string CommandsBelow(const CLI::App& app) {
  const CLI::App* last = &app;
  while (!last->get_subcommands().empty()) {
    last = last->get_subcommands().back();
  }
  std::vector<std::string> names;
  for (const CLI::App* command : last->get_subcommands({})) {
    names.push_back(command->get_name());
  }
  return fmt::format("{}", fmt::join(names, ", "));
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
    what = fmt::format("A command is needed: {}", CommandsBelow(app));
  }
  return fmt::format("{} (see '{} --help')", what, CommandName(app));
}

/// Reads the words and runs the command that they name.
Ended ParseAndRun(const std::vector<std::string>& args, Console& console) {
  Choice choice;
  if (console.environment.store) {
    choice.global.file = *console.environment.store;
  }
  CLI::App app(
      "Credentials and directory codes of an access-control building: the reference host of "
      "qorCred",
      "qorhost");
  Describe(app, choice);
  try {
    std::vector<std::string> words = WordsForParser(app, args);
    std::reverse(words.begin(), words.end());
    app.parse(std::move(words));
  } catch (const UsageError& error) {
    return {ExitStatus::kUsage, error.what(), error.field(), error.value()};
  } catch (const CLI::Success& help) {
    app.exit(help, console.out, console.err);
    return {};
  } catch (const CLI::ParseError& error) {
    return {ExitStatus::kUsage, ParseMessage(app, error)};
  }
  return RunChosen(choice.run, choice.global, console);
}

/// The same without an exception.
Ended RunWhole(const std::vector<std::string>& args, Console& console) {
  try {
    return ParseAndRun(args, console);
  } catch (const std::exception& error) {
    return {ExitStatus::kFailure, error.what()};
  } catch (...) {
    return {ExitStatus::kFailure, "unknown failure"};
  }
}

/// Whether programs read the output, also where the words are not understood.
bool AsksForJson(const std::vector<std::string>& args) {
  for (std::size_t at = 0; at < args.size() && args[at] != "--"; ++at) {
    const bool isFormat = args[at] == "json" && at > 0 && args[at - 1] == "--format";
    if (args[at] == "--json" || args[at] == "--format=json" || isFormat) {
      return true;
    }
  }
  return false;
}

/// The status of a run whose output may not have been written. A reader who has gone has read
/// enough.
ExitStatus Written(ExitStatus status, Console& console) {
  console.out.flush();
  if (console.out.good()) {
    return status;
  }
  const bool gone = console.environment.readerIsGone && console.environment.readerIsGone();
  if (console.stored) {
    console.err << "qorhost: the output could not be written; the change is stored\n";
  } else if (!gone) {
    console.err << "qorhost: the output could not be written\n";
  }
  return gone ? status : ExitStatus::kFailure;
}

/// Collects what is said on standard error, and tells it as one object.
ExitStatus RunForPrograms(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
                          std::ostream& err, const Environment& environment) {
  std::ostringstream notes;
  Console console{in, out, notes, environment};
  console.live = &err;
  Ended ended = RunWhole(args, console);
  ended.status = Written(ended.status, console);
  PrintEndedAsJson(err, ended, console, notes.str());
  return ended.status;
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& args, std::istream& in, std::ostream& out,
                   std::ostream& err, const Environment& environment) {
  if (AsksForJson(args)) {
    return static_cast<int>(RunForPrograms(args, in, out, err, environment));
  }
  Console console{in, out, err, environment};
  const Ended ended = RunWhole(args, console);
  if (!ended.message.empty()) {
    err << "qorhost: " << Displayable(ended.message) << '\n';
  }
  return static_cast<int>(Written(ended.status, console));
}

}  // namespace qorhost

#include "host/cli/command_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/cli/completion.h"
#include "host/cli/list_command_line.h"
#include "host/cli/manual_page.h"
#include "host/desks/finder.h"
#include "host/desks/whole_number.h"
#include "host/tour/tour.h"

namespace qorhost {

namespace {

constexpr const char* kCompletion = "completion";
constexpr const char* kManual = "manual";

constexpr std::string_view kExitStatuses =
    "Exit status: 0 done, 1 refused, 2 usage, 3 store or system failure, 4 not known "
    "whether it was stored.";

void DescribeGlobal(CLI::App& app, Choice& choice) {
  GlobalOptions& global = choice.global;
  app.add_option_function<std::string>(
         "--db", [&global](const std::string& file) { global.file = file; },
         "The database file, or a server (postgresql://HOST/DATABASE); else that of QORHOST_DB, "
         "else building.db in the current folder")
      ->type_name("FILE")
      ->check([](const std::string& file) {
        return file.empty() ? std::string("needs the name of a file") : std::string();
      });
  app.add_option_function<std::string>(
         "--unit", [&global](const std::string& key) { global.unit = WholeNumber(key); },
         "The unit's key; else that of QORHOST_UNIT, which 'units', 'find', 'overview', 'history', "
         "'check' and 'export' leave alone; else, to look at, the first, and all for doors, "
         "schedules and steps")
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

void DescribeInit(CLI::App& app, Choice& choice) {
  auto* init = AddCommand(
      {app, choice.run}, "init", "Create the store, in a file or on a server",
      "  qorhost init --demo\n  qorhost init --demo --force --db trial.db\n"
      "  qorhost init --from building.mdb --report odd.txt --dry-run",
      [&choice](Console& console) { return RunInit(choice.global, choice.init, console); });
  init->add_flag("--demo", choice.init.demo,
                 "Fill it with an invented building: three units, 200 tenants, their credentials");
  init->add_flag("--force", choice.init.force, "Replace an existing store");
  init->add_flag("--distributed", choice.init.distributed,
                 "Spread its tables over the servers of a distributed one, by the unit");
  init->add_option("--operators", choice.init.roles.operators,
                   "On a server: the role that is to work on the store and cannot alter its "
                   "history, nor its schema")
      ->type_name("ROLE");
  init->add_option("--administrators", choice.init.roles.administrators,
                   "On a server: the role that is to own the store")
      ->type_name("ROLE");
  init->add_flag("--rights-only", choice.init.rightsAlone,
                 "Make nothing: grant these roles the rights on the store that is there");
  DescribeMoving(*init, choice.init.moving);
  DescribeTrial(*init, choice.init.trial);
}

void DescribeSql(CLI::App& app, Choice& choice) {
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
}

void DescribeTour(CLI::App& app, Choice& choice) {
  AddCommand({app, choice.run}, "tour",
             "Show the screens and reports at work on a copy of the demo building",
             "  qorhost tour\n  qorhost tour --trace 2> calls.txt", [&choice](Console& console) {
               return RunTour(SurroundingsOf(choice.global, console, {}), console);
             });
}

/// What is made from the words of all commands.
void DescribeShells(CLI::App& app, Choice& choice) {
  auto* completion = AddCommand(
      {app, choice.run}, kCompletion, "Print a script by which a shell completes these words",
      "  qorhost completion bash > ~/.local/share/bash-completion/completions/qorhost\n"
      "  qorhost completion fish > ~/.config/fish/completions/qorhost.fish",
      [&app, &choice](Console& console) {
        WriteCompletion(console.out, choice.shell, WordsOf(app));
        return ExitStatus::kDone;
      });
  completion->add_option("SHELL", choice.shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember(Shells()).description(""));
  AddCommand({app, choice.run}, kManual, "Print the manual page",
             "  qorhost manual > qorhost.1 && man ./qorhost.1", [&app](Console& console) {
               WriteManualPage(console.out, QORHOST_VERSION, WordsOf(app));
               return ExitStatus::kDone;
             });
}

/// Says "--yes (not with --no)".
class PlainFormatter : public CLI::Formatter {
 public:
  PlainFormatter() {
    label("SUBCOMMAND", "COMMAND");
    label("REQUIRED", "(needed)");
    label("Excludes", std::string(kNotWith));
  }

  std::string make_option_opts(const CLI::Option* option) const override {
    std::string text = CLI::Formatter::make_option_opts(option);
    if (const std::size_t at = text.find(kNotWith); at != std::string::npos) {
      text.erase(at + kNotWith.size(), 1);
      text.insert(at, 1, '(');
      text += ')';
    }
    return text;
  }

 private:
  static constexpr std::string_view kNotWith = "not with";
};

/// Help in plain words, of every command.
void SpeakPlainly(CLI::App& app) {
  app.formatter(std::make_shared<PlainFormatter>());
  for (CLI::Option* option :
       app.get_options([](const CLI::Option* any) { return any->get_positional(); })) {
    option->type_name("");
  }
  for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
    command->group("Commands");
    SpeakPlainly(*command);
  }
}

/// Commands that are described together, by their first words.
struct CommandGroup {
  std::array<std::string_view, 3> words;
  void (*describe)(CLI::App& app, Choice& choice);
};

/// In the order of the help.
constexpr std::array kCommandGroups{
    CommandGroup{{"init"}, DescribeInit},
    CommandGroup{{"units", "doors", "schedules"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeBuilding({app, choice.run}, choice.global, choice.building);
                 }},
    CommandGroup{{"steps"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeSteps({app, choice.run}, choice.global, choice.steps);
                 }},
    CommandGroup{{"sql"}, DescribeSql},
    CommandGroup{{"tour"}, DescribeTour},
    CommandGroup{{"credentials"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeCredentials({app, choice.run}, choice.global, choice.credentials);
                 }},
    CommandGroup{{"dircodes"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeDirCodes({app, choice.run}, choice.global, choice.dircodes);
                 }},
    CommandGroup{{"tenants"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeTenants({app, choice.run}, choice.global, choice.tenants);
                 }},
    CommandGroup{{"find"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeFind({app, choice.run}, choice.global, choice.find);
                 }},
    CommandGroup{{"access"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeAccess({app, choice.run}, choice.global, choice.access);
                 }},
    CommandGroup{{"attention"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeAttention({app, choice.run}, choice.global, choice.attention);
                 }},
    CommandGroup{{"overview"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeOverview({app, choice.run}, choice.global, choice.overview);
                 }},
    CommandGroup{{"report"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeReports({app, choice.run}, choice.global, choice.report);
                 }},
    CommandGroup{{"history"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeHistory({app, choice.run}, choice.global, choice.history);
                 }},
    CommandGroup{{"backup", "restore", "check"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeBackup({app, choice.run}, choice.global, choice.backup);
                 }},
    CommandGroup{{"copy"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeCopy({app, choice.run}, choice.global, choice.copy);
                 }},
    CommandGroup{{"export"},
                 [](CLI::App& app, Choice& choice) {
                   DescribeExport({app, choice.run}, choice.global, choice.exported);
                 }},
    CommandGroup{{kCompletion, kManual}, DescribeShells},
};

/// Whether any word is one of the group's.
bool IsNamed(const CommandGroup& group, const std::vector<std::string>& args) {
  return std::any_of(args.begin(), args.end(), [&group](const std::string& word) {
    return !word.empty() &&
           std::find(group.words.begin(), group.words.end(), word) != group.words.end();
  });
}

void DescribeProgram(CLI::App& app, Choice& choice) {
  app.set_version_flag("-V,--version", "qorhost " QORHOST_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Examples:\n  qorhost tour\n  qorhost init --demo && qorhost credentials list\n"
      "  qorhost credentials add --unit 2 --type card26 --start 500 --end 520 --facility 7\n" +
      std::string(kExitStatuses));
  DescribeGlobal(app, choice);
}

}  // namespace

void DescribeCommands(CLI::App& app, Choice& choice) {
  DescribeProgram(app, choice);
  for (const CommandGroup& group : kCommandGroups) {
    group.describe(app, choice);
  }
  SpeakPlainly(app);
}

bool DescribeNamedCommands(CLI::App& app, Choice& choice, const std::vector<std::string>& args) {
  if (IsNamed(kCommandGroups.back(), args)) {
    return false;
  }
  DescribeProgram(app, choice);
  for (const CommandGroup& group : kCommandGroups) {
    if (IsNamed(group, args)) {
      group.describe(app, choice);
    }
  }
  SpeakPlainly(app);
  return true;
}

}  // namespace qorhost

#include "host/cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <memory>
#include <sstream>
#include <utility>

#include "host/cli/command_run.h"
#include "host/cli/command_tree.h"
#include "host/cli/error_report.h"
#include "host/cli/option_words.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

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

/// A command line in the parser's hands.
struct Reading {
  Choice choice;
  CLI::App app{
      "Credentials and directory codes of an access-control building: the reference host of "
      "qorCred",
      "qorhost"};

  explicit Reading(const Environment& environment) {
    if (environment.store) {
      choice.global.file = *environment.store;
    }
  }

  void Parse(const std::vector<std::string>& args) {
    std::vector<std::string> words = WordsForParser(app, args);
    std::reverse(words.begin(), words.end());
    app.parse(std::move(words));
  }

  [[nodiscard]] Ended Run(Console& console) {
    return RunChosen(choice.run, choice.global, console);
  }
};

/// The command that the words name, read with that command alone: to describe them all takes longer
/// than most of them run. Null where the words are not understood so, or ask for help.
std::unique_ptr<Reading> ReadNamedAlone(const std::vector<std::string>& args,
                                        const Environment& environment) {
  auto reading = std::make_unique<Reading>(environment);
  if (!DescribeNamedCommands(reading->app, reading->choice, args)) {
    return nullptr;
  }
  try {
    reading->Parse(args);
    return reading;
  } catch (const UsageError&) {
    return nullptr;
  } catch (const CLI::ParseError&) {
    return nullptr;
  }
}

/// Reads the words and runs the command that they name.
Ended ParseAndRun(const std::vector<std::string>& args, Console& console) {
  if (const auto named = ReadNamedAlone(args, console.environment)) {
    return named->Run(console);
  }
  Reading whole(console.environment);
  DescribeCommands(whole.app, whole.choice);
  try {
    whole.Parse(args);
  } catch (const UsageError& error) {
    return {ExitStatus::kUsage, error.what(), error.field(), error.value()};
  } catch (const CLI::Success& help) {
    whole.app.exit(help, console.out, console.err);
    return {};
  } catch (const CLI::ParseError& error) {
    return {ExitStatus::kUsage, ParseMessage(whole.app, error)};
  }
  return whole.Run(console);
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

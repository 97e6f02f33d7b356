// How the commands are described to the parser.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "host/cli/console.h"

namespace qorhost {

using CommandRun = std::function<ExitStatus(Console&)>;

/// What the words before one command's own say: the parent command, and where the command leaves
/// what is to be run.
struct CommandPlace {
  CLI::App& parent;
  CommandRun& chosen;
};

/// Adds a command with its examples; parsing it puts `run` into `place.chosen`.
CLI::App* AddCommand(CommandPlace place, const char* name, const char* description,
                     const char* examples, CommandRun run);

}  // namespace qorhost

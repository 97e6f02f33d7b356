// How the commands are described to the parser.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <span>
#include <string>

#include "host/desks/input_fault.h"
#include "host/terminal/console.h"

namespace qorhost {

using CommandRun = std::function<ExitStatus(Console&)>;

/// What the words before one command's own say: the parent command, and where the command leaves
/// what is to be run.
struct CommandPlace {
  CLI::App& parent;
  CommandRun& chosen;
};

/// Adds a command with its examples; parsing it puts `run` into `place.chosen`, unless a command of
/// its own follows. `words` are what
/// its options and arguments are called: a fault in an input becomes a UsageError in these words.
/// They must outlive the run.
CLI::App* AddCommand(CommandPlace place, const char* name, const char* description,
                     const char* examples, CommandRun run, std::span<const FieldWord> words = {});

/// Adds -n, --dry-run to a command that writes.
CLI::Option* DescribeTrial(CLI::App& command, bool& trial);

}  // namespace qorhost

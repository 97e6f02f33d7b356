// How the commands are described to the parser.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "host/desks/input_fault.h"
#include "host/desks/whole_number.h"
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

/// Adds a command that only stands in front of commands of its own, with examples of them.
CommandPlace AddGroup(CommandPlace place, const char* name, const char* description,
                      const char* examples);

/// Adds an option that takes a whole number of the range and hands it to `take`.
CLI::Option* AddNumber(CLI::App& command, const char* name, const char* type, NumberRange range,
                       const std::string& description, std::function<void(std::int64_t)> take);

/// Adds -n, --dry-run to a command that writes.
CLI::Option* DescribeTrial(CLI::App& command, bool& trial);

}  // namespace qorhost

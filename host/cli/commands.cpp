#include "host/cli/commands.h"

#include <utility>

namespace qorhost {

CLI::App* AddCommand(CommandPlace place, const char* name, const char* description,
                     const char* examples, CommandRun run) {
  CLI::App* command = place.parent.add_subcommand(name, description);
  command->footer(std::string("Examples:\n") + examples +
                  "\nOptions of every command: see 'qorhost --help'.");
  command->fallthrough();
  command->callback([&chosen = place.chosen, run = std::move(run)] { chosen = run; });
  return command;
}

}  // namespace qorhost

#include "host/cli/commands.h"

#include <utility>

namespace qorhost {

CLI::App* AddCommand(CommandPlace place, const char* name, const char* description,
                     const char* examples, CommandRun run, std::span<const FieldWord> words) {
  CLI::App* command = place.parent.add_subcommand(name, description);
  command->footer(std::string("Examples:\n") + examples +
                  "\nOptions of every command: see 'qorhost --help'.");
  command->fallthrough();
  command->callback([&chosen = place.chosen, command, run = std::move(run), words] {
    if (!command->get_subcommands().empty()) {
      return;  // one of its own commands was chosen
    }
    chosen = [run, words](Console& console) {
      try {
        return run(console);
      } catch (const InputFault& fault) {
        throw UsageError(InWords(fault, words), std::string(WordOf(fault, words)), fault.value());
      }
    };
  });
  return command;
}

CLI::Option* DescribeTrial(CLI::App& command, bool& trial) {
  return command.add_flag("-n,--dry-run", trial, "Tell what it would do, and change nothing");
}

}  // namespace qorhost

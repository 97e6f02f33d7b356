#include "host/cli/commands.h"

#include <fmt/format.h>

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

CommandPlace AddGroup(CommandPlace place, const char* name, const char* description,
                      const char* examples) {
  CLI::App* group = place.parent.add_subcommand(name, description);
  group->require_subcommand(1);
  group->fallthrough();
  group->footer(std::string("Examples:\n") + examples);
  return {*group, place.chosen};
}

CLI::Option* AddNumber(CLI::App& command, const char* name, const char* type, NumberRange range,
                       const std::string& description, std::function<void(std::int64_t)> take) {
  return command
      .add_option_function<std::string>(
          name,
          [range, take = std::move(take)](const std::string& given) {
            take(WholeNumberIn(given, range).value_or(range.lowest));
          },
          description)
      ->type_name(type)
      ->check([range](const std::string& given) {
        return WholeNumberIn(given, range)
                   ? std::string()
                   : fmt::format("'{}' must be a whole number from {} to {}, in digits alone",
                                 given, range.lowest, range.highest);
      });
}

CLI::Option* DescribeTrial(CLI::App& command, bool& trial) {
  return command.add_flag("-n,--dry-run", trial, "Tell what it would do, and change nothing");
}

}  // namespace qorhost

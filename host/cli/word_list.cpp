#include "host/cli/word_list.h"

namespace qorhost {

namespace {

OptionWords WordsOf(const CLI::Option& option) {
  OptionWords words;
  if (option.get_positional()) {
    words.names.push_back(option.get_name());
  }
  for (const std::string& name : option.get_lnames()) {
    words.names.push_back("--" + name);
  }
  for (const std::string& name : option.get_snames()) {
    words.names.push_back("-" + name);
  }
  if (option.get_items_expected_max() > 0) {
    words.value = option.get_type_name().empty() ? "VALUE" : option.get_type_name();
  }
  words.description = option.get_description();
  return words;
}

void AddWords(const CLI::App& app, const std::string& path, std::vector<CommandWords>& all) {
  CommandWords words;
  words.path = path;
  words.description = app.get_description();
  words.footer = app.get_footer();
  for (const CLI::Option* option : app.get_options()) {
    (option->get_positional() ? words.arguments : words.options).push_back(WordsOf(*option));
  }
  const std::vector<const CLI::App*> commands = app.get_subcommands({});
  for (const CLI::App* command : commands) {
    words.commands.push_back(command->get_name());
  }
  all.push_back(std::move(words));
  for (const CLI::App* command : commands) {
    AddWords(*command, path.empty() ? command->get_name() : path + " " + command->get_name(), all);
  }
}

}  // namespace

std::vector<CommandWords> WordsOf(const CLI::App& app) {
  std::vector<CommandWords> all;
  AddWords(app, {}, all);
  return all;
}

}  // namespace qorhost

#include "host/cli/option_words.h"

#include <fmt/format.h>

#include <cstddef>
#include <string_view>

#include "host/terminal/console.h"

namespace qorhost {

namespace {

constexpr std::string_view kNoMoreOptions = "--";

bool LooksLikeAnOption(std::string_view word) {
  return word.starts_with("--") && word != kNoMoreOptions;
}

/// The command whose words come next, and those that it belongs to: their options are its own.
class CommandPath {
 public:
  explicit CommandPath(const CLI::App& app) : commands_{&app} {}

  /// Goes into the command that the word names, if it does.
  void Follow(const std::string& word) {
    for (const CLI::App* command : commands_.back()->get_subcommands({})) {
      if (command->check_name(word)) {
        commands_.push_back(command);
        return;
      }
    }
  }
  /// Whether the word is an option that takes the next word for its value.
  [[nodiscard]] bool TakesNext(const std::string& word) const {
    for (const CLI::App* command : commands_) {
      const CLI::Option* option = command->get_option_no_throw(word);
      if (option != nullptr) {
        return option->get_items_expected_max() > 0;
      }
    }
    return false;
  }

 private:
  std::vector<const CLI::App*> commands_;
};

void RequireValues(const CLI::App& app, const std::vector<std::string>& args) {
  CommandPath path(app);
  for (std::size_t at = 0; at < args.size() && args[at] != kNoMoreOptions; ++at) {
    if (!LooksLikeAnOption(args[at])) {
      path.Follow(args[at]);
    } else if (path.TakesNext(args[at])) {
      ++at;
      if (at < args.size() && LooksLikeAnOption(args[at])) {
        throw UsageError(fmt::format(
            "{0} needs a value, and '{1}' looks like an option: if it is the value, write {0}={1}",
            args[at - 1], args[at]));
      }
    }
  }
}

}  // namespace

std::vector<std::string> WordsForParser(const CLI::App& app, const std::vector<std::string>& args) {
  RequireValues(app, args);
  std::vector<std::string> words;
  bool options = true;
  for (const std::string& arg : args) {
    options = options && arg != kNoMoreOptions;
    const bool empty = options && arg.starts_with("--") && arg.find('=') + 1 == arg.size();
    words.push_back(empty ? arg.substr(0, arg.size() - 1) : arg);
    if (empty) {
      words.emplace_back();
    }
  }
  return words;
}

}  // namespace qorhost

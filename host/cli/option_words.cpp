#include "host/cli/option_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "frame/text.h"
#include "host/desks/near_words.h"
#include "host/terminal/console.h"

namespace qorhost {

namespace {

constexpr std::string_view kNoMoreOptions = "--";

bool LooksLikeAnOption(std::string_view word) {
  return word.starts_with("--") && word != kNoMoreOptions;
}

/// One letter, or several that take no values: "-n", "-nq".
bool IsShortOption(std::string_view word) {
  return word.size() > 1 && word[0] == '-' && word[1] != '-' && !qorcred::IsDigit(word[1]);
}

/// Adds "history undo" for the word "undo": the commands below `app` that a word names, each with
/// the words in front of it.
void AddCommandsNamed(const CLI::App& app, const std::string& word, const std::string& before,
                      std::vector<std::string>& found) {
  for (const CLI::App* command : app.get_subcommands({})) {
    const std::string name = before + command->get_name();
    if (command->check_name(word)) {
      found.push_back(name);
    }
    AddCommandsNamed(*command, word, name + " ", found);
  }
}

/// The command whose words come next, and those that it belongs to: their options are its own.
class CommandPath {
 public:
  explicit CommandPath(const CLI::App& app) : commands_{&app} {}

  /// Goes into the command that the word names. Raises UsageError where one has to be named and the
  /// word names none.
  void Follow(const std::string& word) {
    const std::vector<const CLI::App*> commands = commands_.back()->get_subcommands({});
    std::vector<std::string> names;
    for (const CLI::App* command : commands) {
      if (command->check_name(word)) {
        commands_.push_back(command);
        return;
      }
      names.push_back(command->get_name());
    }
    if (!commands.empty()) {
      RefuseCommand(word, names);
    }
  }
  /// Raises UsageError for an option that none of the commands has.
  void RequireOption(const std::string& word) const {
    const std::string name = word.substr(0, word.find('='));
    std::vector<std::string> names;
    for (const CLI::App* command : commands_) {
      if (command->get_option_no_throw(name) != nullptr) {
        return;
      }
      for (const CLI::Option* option : command->get_options()) {
        for (const std::string& known : option->get_lnames()) {
          names.push_back("--" + known);
        }
      }
    }
    Refuse("option", name, names);
  }
  /// The same of one letter after the other.
  void RequireShortOption(const std::string& word) const {
    for (const char letter : word.substr(1)) {
      const std::string name{'-', letter};
      const bool isKnown =
          std::any_of(commands_.begin(), commands_.end(), [&name](const CLI::App* command) {
            return command->get_option_no_throw(name) != nullptr;
          });
      if (!isKnown) {
        Refuse("option", word, {});
      }
    }
  }
  /// Whether the word is an option that needs the next word for its value.
  [[nodiscard]] bool NeedsNext(const std::string& word) const {
    for (const CLI::App* command : commands_) {
      const CLI::Option* option = command->get_option_no_throw(word);
      if (option != nullptr) {
        return option->get_items_expected_min() > 0;
      }
    }
    return false;
  }

 private:
  /// A command of another word is one that was meant: "undo" is "history undo".
  [[noreturn]] void RefuseCommand(const std::string& word,
                                  const std::vector<std::string>& known) const {
    std::vector<std::string> elsewhere;
    AddCommandsNamed(*commands_.front(), word, "", elsewhere);
    const bool isOneOfFew = !elsewhere.empty() && elsewhere.size() <= 3;
    Refuse("word", word, known,
           isOneOfFew ? fmt::format("{}", fmt::join(elsewhere, "' or '")) : std::string());
  }
  [[noreturn]] void Refuse(std::string_view what, const std::string& word,
                           const std::vector<std::string>& known,
                           const std::string& certain = {}) const {
    std::string command;
    for (const CLI::App* one : commands_) {
      command += (command.empty() ? "" : " ") + one->get_name();
    }
    const std::string meant = certain.empty() ? MostLike(word, known) : certain;
    throw UsageError(fmt::format("unknown {} '{}'{} (see '{} --help')", what, word,
                                 meant.empty() ? "" : ": did you mean '" + meant + "'?", command));
  }

  std::vector<const CLI::App*> commands_;
};

/// The words as they came, an option and a value that the parser would take for another option as
/// one. The parser would take a help option for the whole answer, whatever else stands there, so
/// that words that are not known are refused before.
std::vector<std::string> KnownWords(const CLI::App& app, const std::vector<std::string>& args) {
  CommandPath path(app);
  std::vector<std::string> words;
  std::size_t at = 0;
  for (; at < args.size() && args[at] != kNoMoreOptions; ++at) {
    words.push_back(args[at]);
    if (IsShortOption(args[at])) {
      path.RequireShortOption(args[at]);
      continue;
    }
    if (!LooksLikeAnOption(args[at])) {
      if (!args[at].starts_with('-')) {
        path.Follow(args[at]);
      }
      continue;
    }
    path.RequireOption(args[at]);
    if (!path.NeedsNext(args[at]) || at + 1 == args.size()) {
      continue;
    }
    const std::string& value = args[++at];
    if (LooksLikeAnOption(value)) {
      throw UsageError(fmt::format(
          "{0} needs a value, and '{1}' looks like an option: if it is the value, write {0}={1}",
          args[at - 1], value));
    }
    if (IsShortOption(value)) {
      words.back() += "=" + value;
    } else {
      words.push_back(value);
    }
  }
  words.insert(words.end(), args.begin() + static_cast<std::ptrdiff_t>(at), args.end());
  return words;
}

/// Where the first word stands that is no option in front of the command, nor the value of one.
std::size_t FirstWord(const CLI::App& app, const std::vector<std::string>& args) {
  const CommandPath path(app);
  std::size_t at = 0;
  while (at < args.size() && args[at].starts_with('-') && args[at] != kNoMoreOptions) {
    at += path.NeedsNext(args[at]) ? 2 : 1;
  }
  return at;
}

}  // namespace

std::vector<std::string> WordsForParser(const CLI::App& app, const std::vector<std::string>& args) {
  if (const std::size_t first = FirstWord(app, args);
      first < args.size() && args[first] == "help") {
    std::vector<std::string> asked = args;
    asked.erase(asked.begin() + static_cast<std::ptrdiff_t>(first));
    asked.emplace_back("--help");
    return WordsForParser(app, asked);
  }
  std::vector<std::string> words;
  bool options = true;
  for (const std::string& arg : KnownWords(app, args)) {
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

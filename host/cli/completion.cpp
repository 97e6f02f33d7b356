#include "host/cli/completion.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "host/cli/write_to.h"

namespace qorhost {

namespace {

/// Stands in front of the words of any command, and is none itself.
constexpr std::string_view kHelpWord = "help";

std::string Joined(const std::vector<std::string>& words) {
  return fmt::format("{}", fmt::join(words, " "));
}

/// What may come next: the command's own commands and options, and those of the program.
std::vector<std::string> NextWords(const CommandWords& command, const CommandWords& program) {
  std::vector<std::string> words = command.commands;
  if (command.path.empty()) {
    words.emplace_back(kHelpWord);
  }
  for (const CommandWords* one : {&command, &program}) {
    for (const OptionWords& option : one->options) {
      for (const std::string& name : option.names) {
        if (std::find(words.begin(), words.end(), name) == words.end()) {
          words.push_back(name);
        }
      }
    }
  }
  return words;
}

std::vector<std::string> OptionsWithValues(const std::vector<CommandWords>& commands) {
  std::vector<std::string> names;
  for (const CommandWords& command : commands) {
    for (const OptionWords& option : command.options) {
      if (!option.value.empty()) {
        names.insert(names.end(), option.names.begin(), option.names.end());
      }
    }
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

/// What an option takes as a word that is known: "yes" and "no" of "yes|no", "none" of "none|DATE".
std::vector<std::string> FixedValues(const OptionWords& option) {
  std::vector<std::string> values;
  std::string_view rest = option.value;
  while (!rest.empty()) {
    const std::size_t bar = std::min(rest.find('|'), rest.size());
    const std::string_view word = rest.substr(0, bar);
    const bool isKnown = !word.empty() && std::all_of(word.begin(), word.end(), [](char letter) {
      return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '-';
    });
    if (isKnown) {
      values.emplace_back(word);
    }
    rest.remove_prefix(std::min(bar + 1, rest.size()));
  }
  return values;
}

/// Options and arguments whose values stand in the store, and the list that has them.
struct StoredValues {
  std::string_view list;
  std::vector<std::string_view> names;
};
const std::vector<StoredValues>& ListedValues() {
  static const std::vector<StoredValues> kListed{
      {"units list --columns unit", {"--unit", "UNIT"}},
      {"doors list --columns name", {"DOOR"}},
      {"schedules list --columns name",
       {"--schedule1", "--schedule2", "--schedule3", "--schedule4", "--dnd", "--forward-schedule",
        "SCHEDULE"}},
      {"tenants list --columns name", {"TENANT"}},
      {"credentials list --columns number", {"CREDENTIAL", "OLD"}},
      {"dircodes list --columns code", {"CODE"}},
      {"steps list --columns step", {"STEP"}},
      {"history list --limit 50 --columns entry", {"ENTRY"}}};
  return kListed;
}

/// The list that has the values of an option or argument; "" when none does.
std::string_view ListOf(const OptionWords& option) {
  for (const StoredValues& one : ListedValues()) {
    for (const std::string& name : option.names) {
      if (std::find(one.names.begin(), one.names.end(), name) != one.names.end()) {
        return one.list;
      }
    }
  }
  return {};
}

/// The list that has the values of a command's first argument; "" when none does. What is added is
/// in no list yet.
std::string_view ListOfArgument(const CommandWords& command) {
  const bool isNew = command.path.ends_with(" add");
  return isNew || command.arguments.empty() ? std::string_view()
                                            : ListOf(command.arguments.front());
}

bool TakesAShell(const CommandWords& command) {
  return !command.arguments.empty() && command.arguments.front().names.front() == "SHELL";
}

/// What Bash is offered where an argument is due: values that are known, else files.
void WriteBashArguments(std::ostream& out, const std::vector<CommandWords>& commands) {
  out << "  case $current in\n    -*) ;;\n    *) case $place in\n";
  for (const CommandWords& command : commands) {
    const std::string_view list = ListOfArgument(command);
    if (!list.empty()) {
      WriteTo(out, "      '{}') _qorhost_offer \"$(_qorhost_stored {})\"; return ;;\n",
              command.path, list);
    } else if (TakesAShell(command)) {
      WriteTo(out, "      '{}') _qorhost_offer '{}'; return ;;\n", command.path,
              fmt::join(Shells(), "\n"));
    } else if (!command.arguments.empty()) {
      WriteTo(out, "      '{}') COMPREPLY=(); return ;;\n", command.path);
    }
  }
  out << "    esac ;;\n  esac\n";
}

/// What a shell is offered behind an option: "'credentials add --type') offer ...".
void WriteBashValues(std::ostream& out, const CommandWords& command) {
  for (const OptionWords& option : command.options) {
    const std::vector<std::string> fixed = FixedValues(option);
    const std::string_view list = ListOf(option);
    if (fixed.empty() && list.empty()) {
      continue;
    }
    std::string words;
    for (const std::string& name : option.names) {
      words += fmt::format(
          "{}{}", words.empty() ? "" : "|",
          command.path.empty() ? "*' " + name + "'" : fmt::format("'{} {}'", command.path, name));
    }
    if (list.empty()) {
      WriteTo(out, "    {}) _qorhost_offer '{}'; return ;;\n", words, fmt::join(fixed, "\n"));
    } else {
      WriteTo(out, "    {}) _qorhost_offer \"$(_qorhost_stored {})\"; return ;;\n", words, list);
    }
  }
}

void WriteBash(std::ostream& out, const std::vector<CommandWords>& commands) {
  const std::string withValues = fmt::format("{}", fmt::join(OptionsWithValues(commands), "|"));
  // Names may have blanks in them: each stands on a line of its own. To zsh, `path` is where
  // programs are.
  out << "_qorhost_offer() {\n"
         "  local value plain=${current//\\\\/} IFS=$'\\n'\n"
         "  COMPREPLY=()\n"
         "  for value in $1; do\n"
         "    case $value in\n"
         "      \"$plain\"*) COMPREPLY+=(\"$(printf %q \"$value\")\") ;;\n"
         "    esac\n"
         "  done\n"
         "}\n"
         "_qorhost_stored() {\n"
         "  qorhost \"${globals[@]}\" \"$@\" --format csv 2> /dev/null | tail -n +2 | tr -d '\\r' "
         "|\n"
         "    sed 's/^\"\\(.*\\)\"$/\\1/; s/\"\"/\"/g'\n"
         "}\n"
         "_qorhost() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n"
         "  local place= at word next=\n"
         "  local -a globals\n"
         "  globals=(--quiet)\n"
         "  for ((at = 1; at < COMP_CWORD; at++)); do\n"
         "    word=${COMP_WORDS[at]}\n"
         "    case $word in\n"
         "      --db|--unit)\n"
         "        if ((at + 1 < COMP_CWORD)); then\n"
         "          globals+=(\"$word\" \"${COMP_WORDS[at+1]}\")\n"
         "        fi ;;\n"
         "    esac\n"
         "    case $word in\n";
  WriteTo(out, "      {}) ((at++)); continue ;;\n", withValues);
  out << "    esac\n    case \"${place:+$place }$word\" in\n";
  for (const CommandWords& command : commands) {
    if (!command.path.empty()) {
      WriteTo(out, "      '{}') place='{}' ;;\n", command.path, command.path);
    }
  }
  out << "    esac\n  done\n"
         "  case \"$place $previous\" in\n";
  // The program's own, which go with all commands, behind the others.
  std::for_each(commands.rbegin(), commands.rend(),
                [&out](const CommandWords& command) { WriteBashValues(out, command); });
  out << "  esac\n  case $previous in\n";
  WriteTo(out, "    {}) COMPREPLY=(); return ;;\n", withValues);
  out << "  esac\n";
  WriteBashArguments(out, commands);
  out << "  case $place in\n";
  for (const CommandWords& command : commands) {
    WriteTo(out, "    '{}') next='{}' ;;\n", command.path,
            fmt::join(NextWords(command, commands.front()), "\n"));
  }
  out << "  esac\n"
         "  _qorhost_offer \"$next\"\n"
         "}\n"
         "complete -o default -F _qorhost qorhost\n";
}

std::string InQuotes(std::string_view text) {
  std::string quoted = "'";
  for (const char letter : text) {
    if (letter == '\'' || letter == '\\') {
      quoted += '\\';
    }
    quoted += letter;
  }
  return quoted + "'";
}

void WriteFish(std::ostream& out, const std::vector<CommandWords>& commands) {
  out << "function __qorhost_stored\n"
         "  set -l words (commandline -opc)\n"
         "  set -l globals --quiet\n"
         "  for at in (seq 2 (count $words))\n"
         "    if contains -- $words[$at] --db --unit; and test $at -lt (count $words)\n"
         "      set globals $globals $words[$at] $words[(math $at + 1)]\n"
         "    end\n"
         "  end\n"
         "  qorhost $globals $argv --format csv 2> /dev/null | tail -n +2 |\n"
         "    string trim | string trim -c '\"'\n"
         "end\n"
         "function __qorhost_path\n"
         "  set -l path\n"
         "  for word in (commandline -opc)[2..-1]\n"
         "    switch (string join -- ' ' $path $word)\n";
  for (const CommandWords& command : commands) {
    if (!command.path.empty()) {
      WriteTo(out, "      case '{}'\n        set path $path $word\n", command.path);
    }
  }
  out << "    end\n  end\n  echo \"$path\"\nend\n";
  const auto print = [&out](const std::string& condition, const OptionWords& option) {
    out << "complete -c qorhost" << condition;
    for (const std::string& name : option.names) {
      out << (name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1));
    }
    const std::vector<std::string> fixed = FixedValues(option);
    const std::string_view list = ListOf(option);
    const std::string values = !list.empty() ? fmt::format(" -x -a '(__qorhost_stored {})'", list)
                               : !fixed.empty()       ? fmt::format(" -x -a '{}'", Joined(fixed))
                               : option.value.empty() ? ""
                                                      : " -r";
    WriteTo(out, "{} -d {}\n", values, InQuotes(option.description));
  };
  WriteTo(out, "complete -c qorhost -f -n 'test (__qorhost_path) = \"\"' -a {} -d '{}'\n",
          kHelpWord, "Tell the options of a command");
  for (const CommandWords& command : commands) {
    const std::string condition = fmt::format(" -n 'test (__qorhost_path) = \"{}\"'", command.path);
    for (const std::string& name : command.commands) {
      const std::string path = command.path.empty() ? name : command.path + " " + name;
      const auto found =
          std::find_if(commands.begin(), commands.end(),
                       [&path](const CommandWords& one) { return one.path == path; });
      WriteTo(out, "complete -c qorhost -f{} -a {} -d {}\n", condition, name,
              InQuotes(found->description));
    }
    if (const std::string_view list = ListOfArgument(command); !list.empty()) {
      WriteTo(out, "complete -c qorhost -f{} -a '(__qorhost_stored {})'\n", condition, list);
    } else if (TakesAShell(command)) {
      WriteTo(out, "complete -c qorhost -f{} -a '{}'\n", condition, Joined(Shells()));
    }
    for (const OptionWords& option : command.options) {
      print(command.path.empty() ? std::string() : condition, option);
    }
  }
}

}  // namespace

const std::vector<std::string>& Shells() {
  static const std::vector<std::string> kShells{"bash", "zsh", "fish"};
  return kShells;
}

void WriteCompletion(std::ostream& out, std::string_view shell,
                     const std::vector<CommandWords>& commands) {
  if (shell == "fish") {
    WriteFish(out, commands);
    return;
  }
  if (shell == "zsh") {
    // Zsh runs completions that were written for Bash. In a folder of its own functions the script
    // is run by the first completion, which it then has to give.
    out << "#compdef qorhost\n"
           "(( $+functions[compdef] )) || { autoload -U +X compinit && compinit; }\n"
           "autoload -U +X bashcompinit && bashcompinit\n";
  }
  WriteBash(out, commands);
  if (shell == "zsh") {
    out << "[[ -z ${compstate[context]-} ]] || _bash_complete -o default -F _qorhost\n";
  }
}

}  // namespace qorhost

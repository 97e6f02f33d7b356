#include "host/cli/completion.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <string>

namespace qorhost {

namespace {

std::string Joined(const std::vector<std::string>& words) {
  return fmt::format("{}", fmt::join(words, " "));
}

/// What may come next: the command's own commands and options, and those of the program.
std::vector<std::string> NextWords(const CommandWords& command, const CommandWords& program) {
  std::vector<std::string> words = command.commands;
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

void WriteBash(std::ostream& out, const std::vector<CommandWords>& commands) {
  const std::string withValues = fmt::format("{}", fmt::join(OptionsWithValues(commands), "|"));
  out << "_qorhost() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}\n"
         "  local path= at word words=\n"
         "  for ((at = 1; at < COMP_CWORD; at++)); do\n"
         "    word=${COMP_WORDS[at]}\n"
         "    case $word in\n";
  fmt::print(out, "      {}) ((at++)); continue ;;\n", withValues);
  out << "    esac\n    case \"${path:+$path }$word\" in\n";
  for (const CommandWords& command : commands) {
    if (!command.path.empty()) {
      fmt::print(out, "      '{}') path='{}' ;;\n", command.path, command.path);
    }
  }
  out << "    esac\n  done\n  case $previous in\n";
  fmt::print(out, "    {}) COMPREPLY=(); return ;;\n", withValues);
  out << "  esac\n  case $path in\n";
  for (const CommandWords& command : commands) {
    fmt::print(out, "    '{}') words='{}' ;;\n", command.path,
               Joined(NextWords(command, commands.front())));
  }
  out << "  esac\n"
         "  COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
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
  out << "function __qorhost_path\n"
         "  set -l path\n"
         "  for word in (commandline -opc)[2..-1]\n"
         "    switch (string join ' ' $path $word)\n";
  for (const CommandWords& command : commands) {
    if (!command.path.empty()) {
      fmt::print(out, "      case '{}'\n        set path $path $word\n", command.path);
    }
  }
  out << "    end\n  end\n  echo \"$path\"\nend\n";
  const auto print = [&out](const std::string& condition, const OptionWords& option) {
    out << "complete -c qorhost" << condition;
    for (const std::string& name : option.names) {
      out << (name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1));
    }
    fmt::print(out, "{} -d {}\n", option.value.empty() ? "" : " -r", InQuotes(option.description));
  };
  for (const CommandWords& command : commands) {
    const std::string condition = fmt::format(" -n 'test (__qorhost_path) = \"{}\"'", command.path);
    for (const std::string& name : command.commands) {
      const std::string path = command.path.empty() ? name : command.path + " " + name;
      const auto found =
          std::find_if(commands.begin(), commands.end(),
                       [&path](const CommandWords& one) { return one.path == path; });
      fmt::print(out, "complete -c qorhost -f{} -a {} -d {}\n", condition, name,
                 InQuotes(found->description));
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
    // Zsh runs completions that were written for Bash.
    out << "autoload -U +X compinit && compinit\nautoload -U +X bashcompinit && bashcompinit\n";
  }
  WriteBash(out, commands);
}

}  // namespace qorhost

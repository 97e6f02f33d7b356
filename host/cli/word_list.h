// The commands and their options as data, for what is made from them.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace qorhost {

struct OptionWords {
  std::vector<std::string> names;  ///< "--unit", "-n"
  std::string value;               ///< "N"; empty for one that takes none
  std::string description;
};

struct CommandWords {
  std::string path;  ///< "credentials add"; empty for the program itself
  std::string description;
  std::vector<OptionWords> arguments;  ///< each has one name
  std::vector<OptionWords> options;
  std::vector<std::string> commands;  ///< its own, by their last word
  std::string footer;
};

/// The program first, then every command behind the one that it belongs to.
[[nodiscard]] std::vector<CommandWords> WordsOf(const CLI::App& app);

}  // namespace qorhost

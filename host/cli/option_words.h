// The words of a command line before the parser reads them.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace qorhost {

/// The words as the parser has to get them: every "--option=" as two, the option and an empty
/// value, because the parser would take the next word for the value; "help WORDS" as "WORDS
/// --help". Raises UsageError for an option that needs a value and is followed by another option,
/// which the parser would take, too, and for a command or an option that is not known, with the one
/// that may be meant.
[[nodiscard]] std::vector<std::string> WordsForParser(const CLI::App& app,
                                                      const std::vector<std::string>& args);

}  // namespace qorhost

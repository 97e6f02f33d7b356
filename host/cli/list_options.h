// What may be asked of every list, and how its answer is printed.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "host/cli/command_session.h"
#include "host/desks/input_fault.h"
#include "host/desks/list.h"
#include "host/terminal/console.h"

namespace CLI {
class App;
}

namespace qorhost {

struct ListOptions {
  ListQuery query;
  bool allUnits = false;
};

/// The words of the questions, for messages.
inline constexpr std::array kListWords{FieldWord{report_input::kCondition, "--where", {}},
                                       FieldWord{list_input::kSort, "--sort", {}},
                                       FieldWord{list_input::kColumns, "--columns", {}}};

/// A command's own words and those of the questions.
template <std::size_t Count>
constexpr std::array<FieldWord, Count + kListWords.size()> WithListWords(
    const std::array<FieldWord, Count>& own) {
  std::array<FieldWord, Count + kListWords.size()> words{};
  for (std::size_t at = 0; at < words.size(); ++at) {
    words[at] = at < Count ? own[at] : kListWords[at - Count];
  }
  return words;
}

/// Adds --where, --sort, --columns, --limit and --all-units; `options` must outlive the parsing.
void DescribeListOptions(CLI::App& command, ListOptions& options);
/// The same but --where, which the command has a meaning of its own for.
void DescribeOrder(CLI::App& command, ListOptions& options);

/// Raises UsageError where all units are asked for and one is named.
void RequireOneScope(const GlobalOptions& global, const ListOptions& options);

/// Prints what is asked of a list: a table as wide as the terminal, or JSON.
void PrintList(const GlobalOptions& global, List list, const ListQuery& query, Console& console);

/// Prints the list of the unit of --unit, or of all.
ExitStatus PrintOfUnits(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, const std::vector<UnitName>&));
/// The same of a list that does without the units' names.
ExitStatus PrintOfQueue(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, std::optional<std::int32_t>));

/// Prints the list of the chosen unit under its name, or those of all units as one.
void PrintUnitList(const GlobalOptions& global, const ListOptions& options, CommandSession& session,
                   Console& console, const std::function<List(const UnitName&)>& read);

}  // namespace qorhost

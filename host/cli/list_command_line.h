// The words in which every list is asked.
#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "host/cli/list_options.h"
#include "host/desks/input_fault.h"

namespace qorhost {

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

/// Adds --where, --sort, --columns, --limit, --all-units, --format, --to and --force; `options`
/// must outlive the parsing.
void DescribeListOptions(CLI::App& command, ListOptions& options);
/// --where alone.
CLI::Option* DescribeConditions(CLI::App& command, std::vector<std::string>& conditions,
                                const std::string& description);
/// --sort, --columns, --limit and --all-units alone.
void DescribeOrder(CLI::App& command, ListOptions& options);
/// --format with these formats, --to and --force alone.
void DescribeFormats(CLI::App& command, OutputOptions& output, const std::string& description,
                     const std::vector<std::string>& formats);

}  // namespace qorhost

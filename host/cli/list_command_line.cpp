#include "host/cli/list_command_line.h"

#include <fmt/format.h>

#include <string>

#include "host/desks/whole_number.h"

namespace qorhost {

void DescribeListOptions(CLI::App& command, ListOptions& options) {
  DescribeConditions(command, options.query.conditions,
                     "Those that meet a condition; several must all hold");
  DescribeOrder(command, options);
  DescribeFormats(command, options.output,
                  "table for people (the default), csv, json, or html for printing",
                  {"table", "csv", "json", "html"});
}

CLI::Option* DescribeConditions(CLI::App& command, std::vector<std::string>& conditions,
                                const std::string& description) {
  return command.add_option("--where", conditions, description)
      ->type_name("\"FIELD OPERATOR VALUE [AND VALUE2]\"")
      ->allow_extra_args(false);
}

void DescribeFormats(CLI::App& command, OutputOptions& output, const std::string& description,
                     const std::vector<std::string>& formats) {
  command.add_option("--format", output.format, description)
      ->type_name(fmt::format("{}", fmt::join(formats, "|")))
      ->check(CLI::IsMember(formats));
  auto* to = command
                 .add_option("--to", output.to,
                             "The file to write, whose ending (.html, .csv, .json, .txt) says the "
                             "format where --format does not (standard output)")
                 ->type_name("FILE");
  command.add_flag("--force", output.force, "Replace a file that is there already")->needs(to);
}

void DescribeOrder(CLI::App& command, ListOptions& options) {
  command
      .add_option("--sort", options.query.sort,
                  "In the order of these fields, one with a - in front downwards")
      ->type_name("FIELD[,-FIELD]");
  command.add_option("--columns", options.query.columns, "These columns alone, in this order")
      ->type_name("FIELD,FIELD");
  static constexpr NumberRange kLimits{1, 1'000'000};
  command
      .add_option_function<std::string>(
          "--limit",
          [&options](const std::string& count) {
            options.query.limit =
                static_cast<std::size_t>(WholeNumberIn(count, kLimits).value_or(1));
          },
          "Only so many rows")
      ->type_name("N")
      ->check([](const std::string& count) {
        return WholeNumberIn(count, kLimits)
                   ? std::string()
                   : "'" + count + "' must be a whole number from 1, in digits alone";
      });
  command.add_flag("--all-units", options.allUnits, "Of all units, whatever QORHOST_UNIT says");
}

}  // namespace qorhost

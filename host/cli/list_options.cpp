#include "host/cli/list_options.h"

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

#include "host/desks/whole_number.h"
#include "host/files/json_writer.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

void DescribeListOptions(CLI::App& command, ListOptions& options) {
  command
      .add_option("--where", options.query.conditions,
                  "Those that meet a condition; several must all hold")
      ->type_name("\"FIELD OPERATOR VALUE [AND VALUE2]\"")
      ->allow_extra_args(false);
  DescribeOrder(command, options);
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

void RequireOneScope(const GlobalOptions& global, const ListOptions& options) {
  if (options.allUnits && global.unit) {
    throw UsageError("--all-units and --unit exclude each other: say one of them");
  }
}

void PrintList(const GlobalOptions& global, List list, const ListQuery& query, Console& console) {
  List answer = Answer(std::move(list), query);
  if (global.json) {
    PrintJson(console.out, ForPrograms(std::move(answer)));
  } else {
    PrintTable(console.out, ForPeople(std::move(answer)), WidthOf(console));
  }
}

ExitStatus PrintOfUnits(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, const std::vector<UnitName>&)) {
  RequireOneScope(global, options);
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = session.ChosenUnits();
  session.TellWhatIsMissing(units);
  PrintList(global, read(session.desks(), units), options.query, console);
  return ExitStatus::kDone;
}

ExitStatus PrintOfQueue(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, std::optional<std::int32_t>)) {
  RequireOneScope(global, options);
  CommandSession session(global, Access::kRead, console);
  if (global.unit) {
    (void)session.ChosenUnit();
  }
  PrintList(global, read(session.desks(), global.unit), options.query, console);
  return ExitStatus::kDone;
}

void PrintUnitList(const GlobalOptions& global, const ListOptions& options, CommandSession& session,
                   Console& console, const std::function<List(const UnitName&)>& read) {
  RequireOneScope(global, options);
  if (options.allUnits) {
    const std::vector<UnitName> units = session.ChosenUnits();
    session.TellWhatIsMissing(units);
    List all;
    for (const UnitName& unit : units) {
      Append(all, WithUnit(read(unit), unit));
    }
    PrintList(global, std::move(all), options.query, console);
    return;
  }
  const UnitName unit = session.ChosenUnit();
  List answer = Answer(read(unit), options.query);
  if (!global.json) {
    PrintTitle(console, unit);
  }
  PrintList(global, std::move(answer), {}, console);
}

}  // namespace qorhost

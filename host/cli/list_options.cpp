#include "host/cli/list_options.h"

#include <utility>
#include <vector>

#include "host/files/json_writer.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

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

#include "host/cli/list_options.h"

#include <utility>
#include <vector>

#include "host/desks/list_page.h"
#include "host/files/csv_writer.h"
#include "host/files/json_writer.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

namespace {

/// To a terminal nothing goes that could steer it.
void PrintForPrograms(const GlobalOptions& global, const OutputOptions& output, std::size_t rows,
                      Console& console, const std::function<void(std::ostream&)>& print) {
  if (output.toFile()) {
    PrintTo(global, output, rows, console, print);
  } else {
    PrintRaw(console, print);
  }
}

UnitScope ScopeOf(const ListOptions& options, UnitScope usual) {
  return options.allUnits ? UnitScope::kEvery : usual;
}

}  // namespace

void RequireOneScope(const GlobalOptions& global, const ListOptions& options) {
  if (options.allUnits && global.unit) {
    throw UsageError("--all-units and --unit exclude each other: say one of them");
  }
}

void PrintList(const GlobalOptions& global, const ListOptions& options, PrintedList printed,
               CommandSession& session, Console& console) {
  const OutputOptions& output = options.output;
  const std::string format = FormatOf(global, output);
  const bool everyColumn = (printed.everyColumn && (format == "csv" || format == "json")) ||
                           (printed.list.csvHasExtras && format == "csv");
  List answer = Answer(everyColumn ? WithExtras(std::move(printed.list)) : std::move(printed.list),
                       options.query);
  const std::size_t rows = answer.rows.size();
  if (format == "json") {
    const Table table = ForPrograms(std::move(answer));
    PrintTo(global, output, rows, console, [&table](std::ostream& out) { PrintJson(out, table); });
  } else if (format == "csv") {
    const Table table = ForPeople(std::move(answer));
    PrintForPrograms(global, output, rows, console,
                     [&table](std::ostream& out) { PrintCsv(out, table); });
  } else if (format == "html") {
    ListQuery asked = options.query;
    asked.conditions.insert(asked.conditions.begin(), printed.narrowedBy.begin(),
                            printed.narrowedBy.end());
    const HtmlPage page = printed.page
                              ? printed.page(std::move(answer), asked)
                              : PageOf(session.desks(), std::move(answer), asked, printed.unit);
    PrintForPrograms(global, output, rows, console,
                     [&page](std::ostream& out) { PrintHtml(out, page); });
  } else {
    const Table table = ForPeople(std::move(answer));
    PrintTo(global, output, rows, console, [&](std::ostream& out) {
      if (!printed.title.empty()) {
        (output.toFile() ? out : console.Remarks()) << printed.title << '\n';
      }
      PrintTable(out, table, output.toFile() ? 0 : WidthOf(console));
    });
  }
}

std::optional<UnitName> OneUnit(const GlobalOptions& global, const std::vector<UnitName>& units) {
  return global.unit && !units.empty() ? std::optional(units.front()) : std::nullopt;
}

ExitStatus PrintOfUnits(const GlobalOptions& global, const ListOptions& options, UnitScope scope,
                        Console& console,
                        List (*read)(DeskSession&, const std::vector<UnitName>&)) {
  RequireOneScope(global, options);
  CommandSession session(global, Access::kRead, console);
  const UnitScope asked = ScopeOf(options, scope);
  const std::vector<UnitName> units = session.ChosenUnits(asked);
  session.TellWhatIsMissing(units);
  List rows = session.OfOneState([&] { return read(session.desks(), units); });
  PrintList(global, options, {std::move(rows), session.UnitOf(asked)}, session, console);
  return ExitStatus::kDone;
}

ExitStatus PrintOfQueue(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, std::optional<std::int32_t>)) {
  RequireOneScope(global, options);
  CommandSession session(global, Access::kRead, console);
  const std::optional<UnitName> unit = session.UnitOf(ScopeOf(options, UnitScope::kNamed));
  std::optional<std::int32_t> key;
  if (unit) {
    session.TellWhatIsMissing({*unit});
    key = unit->key;
  }
  List rows = session.OfOneState([&] { return read(session.desks(), key); });
  PrintList(global, options, {std::move(rows), unit}, session, console);
  return ExitStatus::kDone;
}

void PrintUnitList(const GlobalOptions& global, const ListOptions& options, CommandSession& session,
                   Console& console, const std::function<List(const UnitName&)>& read) {
  RequireOneScope(global, options);
  if (options.allUnits) {
    const std::vector<UnitName> units = session.ChosenUnits();
    session.TellWhatIsMissing(units);
    List all = session.OfOneState([&] {
      List every;
      for (const UnitName& unit : units) {
        Append(every, WithUnit(read(unit), unit));
      }
      return every;
    });
    PrintList(global, options, {std::move(all)}, session, console);
    return;
  }
  const UnitName unit = session.ChosenUnit();
  List rows = session.OfOneState([&] { return read(unit); });
  PrintList(global, options, {std::move(rows), unit, TitleOf(unit)}, session, console);
}

}  // namespace qorhost

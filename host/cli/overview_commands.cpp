#include "host/cli/overview_commands.h"

#include <utility>

#include "host/cli/attention_commands.h"
#include "host/cli/list_command_line.h"
#include "host/desks/overview_page.h"

namespace qorhost {

namespace {

ExitStatus RunOverview(const GlobalOptions& global, const OverviewOptions& options,
                       Console& console) {
  RequireOneScope(global, options.asked);
  CommandSession session(global, Access::kRead, console);
  const std::vector<UnitName> units = session.ChosenUnits();
  session.TellWhatIsMissing(units);
  DeskSession& desks = session.desks();
  const StoreOverview overview =
      session.OfOneState([&] { return OverviewOf(desks, units, options.within); });
  PrintedList printed{overview.list, OneUnit(global, units)};
  printed.page = [&](List answer, const ListQuery& asked) {
    return PageOfOverview(desks, overview, OneUnit(global, units), std::move(answer), asked);
  };
  PrintList(global, options.asked, std::move(printed), session, console);
  return ExitStatus::kDone;
}

}  // namespace

void DescribeOverview(CommandPlace place, const GlobalOptions& global, OverviewOptions& options) {
  auto* overview = AddCommand(
      place, "overview",
      "Show the units at a glance: codes in use, steps that wait, leases that end; as a page with "
      "charts",
      "  qorhost overview\n  qorhost overview --to overview.html",
      [&](Console& console) { return RunOverview(global, options, console); }, kListWords);
  DescribeListOptions(*overview, options.asked);
  DescribeWithin(*overview, options.within);
}

}  // namespace qorhost

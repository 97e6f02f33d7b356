#include "host/cli/access_commands.h"

#include <array>

#include "host/cli/list_command_line.h"
#include "host/desks/access_list.h"

namespace qorhost {

namespace {

constexpr std::array kOn{FieldWord{access_input::kOn, "--on", {}}};
constexpr auto kAccessWords = WithListWords(kOn);

ExitStatus RunAccessList(const GlobalOptions& global, const AccessOptions& options,
                         Console& console) {
  CommandSession session(global, Access::kRead, console);
  const AccessTime time = ReadAccessTime(session.desks(), options.on);
  PrintUnitList(global, options.asked, session, console,
                [&](const UnitName& unit) { return AccessList(session.desks(), unit.key, time); });
  return ExitStatus::kDone;
}

}  // namespace

void DescribeAccess(CommandPlace place, const GlobalOptions& global, AccessOptions& options) {
  const CommandPlace access =
      AddGroup(place, "access", "See who may go in where and when, door by door",
               "  qorhost access list\n  qorhost access list --help");
  auto* list = AddCommand(
      access, "list",
      "List every tenant at every door with period, cards, code and schedule, and whether access "
      "holds",
      "  qorhost access list --unit 2 --where \"door contains garage\" --where \"access = yes\" "
      "\\\n"
      "      --where \"schedule = Night Shift\"\n"
      "  qorhost access list --unit 2 --on 2026-12-31 --sort door,tenant --to access.html",
      [&](Console& console) { return RunAccessList(global, options, console); }, kAccessWords);
  list->add_option("--on", options.on,
                   "The day, or with a time the moment, for which access is told (today)")
      ->type_name("DATE");
  DescribeListOptions(*list, options.asked);
}

}  // namespace qorhost

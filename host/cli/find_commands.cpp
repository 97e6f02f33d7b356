#include "host/cli/find_commands.h"

#include <fmt/format.h>

#include "host/desks/finder.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

ExitStatus RunFind(const GlobalOptions& global, const FindOptions& options, Console& console) {
  constexpr std::size_t kMost = 50;
  const std::string text = fmt::format("{}", fmt::join(options.words, " "));
  CommandSession session(global, Access::kRead, console);
  const Found found = FindText(session.desks(), session.ChosenUnits(), text, kMost);
  if (global.json || found.total > 0) {
    PrintRows(console.out, found.rows, global.json);
  }
  if (found.total > kMost) {
    console.err << fmt::format(
        "qorhost: these are the best {} of {}: say more of what you look "
        "for.\n",
        kMost, found.total);
  } else if (found.total == 0) {
    console.err << fmt::format(
        "qorhost: nothing found for '{}'{}\n", Displayable(text),
        found.suggestions.empty()
            ? std::string(".")
            : fmt::format("; did you mean {}?",
                          Displayable(fmt::format("{}", fmt::join(found.suggestions, ", ")))));
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost

#include "host/cli/find_commands.h"

#include <fmt/format.h>

#include "host/desks/finder.h"
#include "host/terminal/display_text.h"

namespace qorhost {

ExitStatus RunFind(const GlobalOptions& global, const FindOptions& options, Console& console) {
  constexpr std::size_t kUsual = 50;
  RequireOneScope(global, options.asked);
  ListOptions asked = options.asked;
  ListQuery& query = asked.query;
  const std::size_t most = query.limit.value_or(kUsual);
  query.limit = most;
  const std::string text = fmt::format("{}", fmt::join(options.words, " "));
  CommandSession session(global, Access::kRead, console);
  // Which are shown is known when all of them have been looked at.
  const std::vector<UnitName> units = session.ChosenUnits();
  const Found found = session.OfOneState([&] {
    return FindText(session.desks(), units, text, query.LooksAtAll() ? std::string::npos : most);
  });
  if (found.total > 0 || FormatOf(global, asked.output) != "table") {
    PrintList(global, asked, {found.rows, OneUnit(global, units)}, session, console);
  }
  if (!query.LooksAtAll() && found.total > most) {
    console.err << fmt::format(
        "qorhost: these are the best {} of {}: say more of what you look "
        "for.\n",
        most, found.total);
  } else if (found.total == 0) {
    console.err << fmt::format(
        "qorhost: nothing found for '{}'{}\n", Displayable(text),
        found.suggestions.empty() ? std::string(".")
                                  : fmt::format("; did you mean {}?", AllNames(found.suggestions)));
  }
  return ExitStatus::kDone;
}

}  // namespace qorhost

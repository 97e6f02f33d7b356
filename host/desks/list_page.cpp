#include "host/desks/list_page.h"

#include <fmt/format.h>

#include <utility>

#include "host/desks/shown_value.h"
#include "host/desks/words.h"

namespace qorhost {

HtmlPage EmptyPage(DeskSession& session, std::string title, const std::optional<UnitName>& unit) {
  const std::string day = ShownDay(session.Today());
  std::string of = "all";
  if (unit) {
    of = unit->name.empty() ? std::to_string(unit->key)
                            : fmt::format("{}, {}", unit->key, unit->name);
  }
  HtmlPage page;
  page.foot = unit ? fmt::format("{}, unit {}, {}", title, of, day)
                   : fmt::format("{}, all units, {}", title, day);
  page.title = std::move(title);
  page.facts = {{unit ? "Unit" : "Units", std::move(of)}, {"Date", day}};
  return page;
}

PageSection SectionOf(List answer, const ListQuery& asked) {
  PageSection section;
  section.caption = Counted(answer.rows.size(), "row", "rows");
  if (!asked.conditions.empty()) {
    section.caption += fmt::format(" where {}", fmt::join(asked.conditions, " and "));
  }
  if (!asked.sort.empty()) {
    section.caption += ", by " + asked.sort;
  }
  if (asked.limit) {
    section.caption += fmt::format(", at most {}", *asked.limit);
  }
  section.table = ForPeople(std::move(answer));
  return section;
}

HtmlPage PageOf(DeskSession& session, List answer, const ListQuery& asked,
                const std::optional<UnitName>& unit) {
  HtmlPage page = EmptyPage(session, answer.title, unit);
  page.sections.push_back(SectionOf(std::move(answer), asked));
  return page;
}

}  // namespace qorhost

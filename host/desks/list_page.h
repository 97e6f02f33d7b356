// A list as a page to be printed.
#pragma once

#include <optional>
#include <string>

#include "host/desks/list.h"
#include "host/desks/session.h"
#include "host/files/html_page.h"

namespace qorhost {

/// A page without sections: its title, the unit that it is of, or all, and the session's day.
[[nodiscard]] HtmlPage EmptyPage(DeskSession& session, std::string title,
                                 const std::optional<UnitName>& unit);

/// An answer as people read it, with how many rows it has and what was asked for.
[[nodiscard]] PageSection SectionOf(List answer, const ListQuery& asked);

/// The page of one list under its title.
[[nodiscard]] HtmlPage PageOf(DeskSession& session, List answer, const ListQuery& asked,
                              const std::optional<UnitName>& unit);

}  // namespace qorhost

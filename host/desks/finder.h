// Finding people, cards, directory codes and phone numbers over all units.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/session.h"

namespace qorhost {

/// What a text is called in an InputFault.
namespace find_input {
inline constexpr std::string_view kText = "text";
}  // namespace find_input

struct Found {
  List rows;                             ///< the best first, as many as were asked for
  std::size_t total = 0;                 ///< that match
  std::vector<std::string> suggestions;  ///< words that are nearly so, when nothing matches
};

/// Looks in the units for tenants by words of their names, without accents and letter case, which
/// may be cut short; for cards by their numbers or entries; for directory codes by their numbers
/// or display names; for codes by their phone numbers, of which only digits count. Reads each table
/// once. Raises InputFault for a text without a letter or a digit.
[[nodiscard]] Found FindText(DeskSession& session, const std::vector<UnitName>& units,
                             std::string_view text, std::size_t most);

}  // namespace qorhost

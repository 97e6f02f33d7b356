// What the arguments of the members are called that controllers call.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace qorcred::trace {

/// The name of an argument of a component's, connection's, control's or table's member; empty for a
/// member or a place that has none.
[[nodiscard]] std::string_view ArgumentName(std::string_view member, std::size_t at);

/// The name of one of `count` indexes of a default member: the item of an array of controls, the
/// row and the column of a table's cell; empty for any other number of them.
[[nodiscard]] std::string_view IndexName(std::size_t at, std::size_t count);

/// The members that have names for their arguments.
[[nodiscard]] std::vector<std::string_view> MembersWithArgumentNames();

}  // namespace qorcred::trace

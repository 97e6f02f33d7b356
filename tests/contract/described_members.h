// The member tables by the names of their classes.
#pragma once

#include <span>
#include <string_view>

#include "frame/member_table.h"

namespace qortest {

/// The members of a class; none for a name that is no class.
[[nodiscard]] std::span<const qorcred::Member> MembersOf(std::string_view className);

}  // namespace qortest

// Texts from outside that steer nothing where they are shown.
#pragma once

#include <string>
#include <string_view>

namespace qorhost {

/// The text on one line, with control and direction characters as \n, \t, \x1B or \u202E and bytes
/// that are not UTF-8 as U+FFFD.
[[nodiscard]] std::string VisibleText(std::string_view text);

}  // namespace qorhost

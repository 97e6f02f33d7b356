// The titles of the desks' lists in the language of the program.
#pragma once

#include <QString>
#include <string>

namespace qorhost {

/// A title of a list that a desk hands out; as it is where it is none that is known, as those of
/// the controllers' reports.
[[nodiscard]] QString ShownTitle(const std::string& title);

}  // namespace qorhost

// What libpq says of a connection that does not come about, in one sentence.
#pragma once

#include <string>
#include <string_view>

namespace qorhost::postgres {

/// It has a line for each address that it has tried, and may have lines with guesses behind each:
/// places at which the same has happened are named one behind the other, and a guess once.
[[nodiscard]] std::string InOneSentence(std::string_view text);

}  // namespace qorhost::postgres

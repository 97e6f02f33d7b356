// What a person may have meant by a word that is not known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qorhost {

/// The word among `known` that is most like `given`: at most a third of its letters are wrong,
/// missing, too many or exchanged with their neighbours. Empty when none is. Letter case does not
/// count.
[[nodiscard]] std::string MostLike(std::string_view given, const std::vector<std::string>& known);

}  // namespace qorhost

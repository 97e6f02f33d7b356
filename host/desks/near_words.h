// What a person may have meant by a word that is not known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qorhost {

/// Whether two words differ by at most one letter that is wrong, missing, too many, or exchanged
/// with its neighbour: what MostLike() forgives in short words, in the time that it takes to read
/// them. Letter case counts.
[[nodiscard]] bool IsNearly(std::string_view one, std::string_view other);

/// The word among `known` that is most like `given`: at most a third of its letters are wrong,
/// missing, too many or exchanged with their neighbours; of several the one that begins with it.
/// Empty when none is. Letter case does not count.
[[nodiscard]] std::string MostLike(std::string_view given, const std::vector<std::string>& known);

}  // namespace qorhost

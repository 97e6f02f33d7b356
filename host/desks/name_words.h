// Names as people look for them: by their words, without accents and letter case.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qorhost {

/// The text in lower case and without accents, however these are encoded: "Öztürk" is "ozturk",
/// "Søren" is "soren". Bytes that are not UTF-8 stay.
[[nodiscard]] std::string Plain(std::string_view text);

/// The words of a plain text: letters and digits; apostrophes are no part of a word and do not
/// divide it ("O'Brien" is "obrien"), everything else divides.
using Words = std::vector<std::string>;
[[nodiscard]] Words WordsOf(std::string_view text);

/// How well the words that are looked for go with a name; a better one is a greater one.
enum class NameMatch : std::uint8_t {
  kNone,
  kParts,  ///< each begins a word of the name, no two of them the same
  kWords,  ///< each is a word of the name
  kWhole,  ///< they are all the words of the name, in whatever order
};

/// `wanted` without a word matches nothing. Takes as long as both have words.
[[nodiscard]] NameMatch MatchOf(const Words& wanted, const Words& name);

}  // namespace qorhost

// The patterns of LIKE: texts with wildcards and sets of characters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qorhost::dialect {

/// One set in brackets. A range holds what lies between its ends in the order of texts
/// (CompareFolded() in folding.h).
struct CharacterSet {
  struct Range {
    char32_t first = 0;
    char32_t last = 0;
  };
  std::vector<Range> ranges;  ///< a single character is a range of its own
  bool negated = false;
};

/// A pattern read once and matched many times.
struct LikePattern {
  std::u32string parts;  ///< folded characters; wildcards and sets as numbers above all of them
  std::vector<CharacterSet> sets;
};

/// Reads a pattern: % stands for any run of characters, _ for any one, [abc] and [a-c] for one of
/// a set, [!abc] for one outside of it. In brackets %, _ and [ stand for themselves, and so does
/// a hyphen at either end. Raises kInvalidProcedureCall for a set that is left open, empty or in
/// no order, and for a pattern of more than 1024 characters.
[[nodiscard]] LikePattern ReadPattern(std::string_view text);

/// Whether a folded text matches. Takes no stack and time that grows with the product of text and
/// pattern at worst, with their sum where the pattern has no _ and no sets.
[[nodiscard]] bool MatchesPattern(std::u32string_view text, const LikePattern& pattern);

}  // namespace qorhost::dialect

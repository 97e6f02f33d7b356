#include "host/dialect/like_pattern.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "host/dialect/folding.h"

namespace qorhost::dialect {

namespace {

struct Pattern {
  const char* name;
  std::string_view text;
  std::string_view pattern;
  bool matches;
};

class MatchesPatternTest : public testing::TestWithParam<Pattern> {};

TEST_P(MatchesPatternTest, FollowsTheWildcards) {
  EXPECT_EQ(MatchesPattern(Folded(GetParam().text), ReadPattern(GetParam().pattern)),
            GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MatchesPatternTest,
    testing::Values(
        Pattern{"EmptyByEmpty", "", "", true}, Pattern{"EmptyByRun", "", "%", true},
        Pattern{"EmptyByOne", "", "_", false}, Pattern{"TextByEmpty", "a", "", false},
        Pattern{"Same", "abc", "ABC", true}, Pattern{"Longer", "abcd", "abc", false},
        Pattern{"Shorter", "ab", "abc", false}, Pattern{"Begins", "abcd", "ab%", true},
        Pattern{"BeginsNot", "xabcd", "ab%", false}, Pattern{"Ends", "abcd", "%cd", true},
        Pattern{"EndsNot", "abcdx", "%cd", false}, Pattern{"Contains", "abcd", "%bc%", true},
        Pattern{"ContainsNot", "abd", "%bc%", false},
        Pattern{"PartsInOrder", "a1b2c3", "%a%b%c%", true},
        Pattern{"PartsOutOfOrder", "c1b2a3", "%a%b%c%", false},
        Pattern{"PartsDoNotOverlap", "aba", "ab%ba", false},
        Pattern{"EndIsTheLastOne", "ababab", "%ab", true},
        Pattern{"OneEach", "DirectoryCode.x", "DirectoryCode._%", true},
        Pattern{"OneMissing", "DirectoryCode.", "DirectoryCode._%", false},
        Pattern{"OneInside", "abc", "a_c", true},
        Pattern{"OneInsideRuns", "xxabcxx", "%a_c%", true},
        Pattern{"OneInsideRunsNot", "xxacxx", "%a_c%", false},
        Pattern{"OneIsACharacterNotAByte", "ä", "_", true},
        Pattern{"OneIsAWholePair", "\xF0\x9F\x98\x80", "_", true},
        Pattern{"Umlaut", "ÄRGER", "%rger", true}, Pattern{"UmlautFolded", "ÄRGER", "ä%", true},
        Pattern{"ManyRuns", "abc", "%%%a%%%c%%%", true},
        Pattern{"SelfSimilar", "aaaaab", "%aab", true},
        Pattern{"SelfSimilarInside", "abababac", "%ababac%", true},
        Pattern{"BrokenBytes", "a\xFF", "a_", true}, Pattern{"SetsFirst", "a", "[abc]", true},
        Pattern{"SetsLast", "c", "[abc]", true}, Pattern{"SetNot", "d", "[abc]", false},
        Pattern{"SetIsOneCharacter", "ab", "[abc]", false},
        Pattern{"SetOfNothing", "", "[abc]", false}, Pattern{"SetInAnyCase", "Ä", "[xä]", true},
        Pattern{"RangesFirst", "a", "[a-c]", true}, Pattern{"RangesMiddle", "B", "[a-c]", true},
        Pattern{"RangesLast", "c", "[A-C]", true}, Pattern{"RangeBefore", "`", "[a-c]", false},
        Pattern{"RangeBehind", "d", "[a-c]", false}, Pattern{"RangeOfOne", "a", "[a-a]", true},
        Pattern{"RangesHyphenIsNotHeld", "-", "[a-c]", false},
        Pattern{"RangesAndCharacters", "7", "[a-cx0-9]", true},
        Pattern{"RangesAndCharactersBetween", "x", "[a-cx0-9]", true},
        Pattern{"RangesAndCharactersNot", "d", "[a-cx0-9]", false},
        Pattern{"AllButASet", "d", "[!abc]", true}, Pattern{"AllButASetNot", "B", "[!abc]", false},
        Pattern{"AllButARange", "5", "[!a-z]", true},
        Pattern{"AllButARangeNot", "z", "[!a-z]", false}, Pattern{"AllButOne", "a", "[!a]", false},
        Pattern{"AllButOneAnother", "b", "[!a]", true},
        Pattern{"AllButASetIsStillOneCharacter", "", "[!a]", false},
        Pattern{"ExclamationMarkInside", "!", "[a!]", true},
        Pattern{"ExclamationMarkOutside", "!", "!", true},
        Pattern{"HyphenFirst", "-", "[-a]", true}, Pattern{"HyphenLast", "-", "[a-]", true},
        Pattern{"HyphenFirstOfAllBut", "-", "[!-a]", false},
        Pattern{"HyphenAlone", "-", "[-]", true}, Pattern{"HyphenOutside", "a-c", "a-c", true},
        Pattern{"CaretInside", "^", "[a^]", true}, Pattern{"CaretAlone", "^", "[^]", true},
        Pattern{"PercentItself", "5%", "5[%]", true},
        Pattern{"PercentIsNoRun", "5x", "5[%]", false},
        Pattern{"UnderscoreItself", "a_b", "a[_]b", true},
        Pattern{"UnderscoreIsNoWildcard", "axb", "a[_]b", false},
        Pattern{"WildcardsInASet", "_", "[%_]", true},
        Pattern{"WildcardsInASetNot", "x", "[%_]", false},
        Pattern{"OpenBracketItself", "[a]", "[[]a]", true},
        Pattern{"OpenBracketInASet", "[", "[a[]", true},
        Pattern{"ClosedBracketItself", "]", "]", true},
        Pattern{"SetBehindARun", "Unit 7", "%[0-9]", true},
        Pattern{"SetBehindARunNot", "Unit x", "%[0-9]", false},
        Pattern{"SetBeforeARun", "7 Unit", "[0-9]%", true},
        Pattern{"SetInsideRuns", "xx7yy", "%[0-9]%", true},
        Pattern{"SetInsideRunsNot", "xxyy", "%[0-9]%", false},
        Pattern{"SetInsideRunsLater", "a1b2", "%b[0-9]%", true},
        Pattern{"ItselfInsideRuns", "50% off", "%[%]%", true},
        Pattern{"ItselfInsideRunsNot", "50 off", "%[%]%", false},
        Pattern{"TwoSets", "b2", "[a-c][1-3]", true},
        Pattern{"TwoSetsSwapped", "2b", "[a-c][1-3]", false},
        Pattern{"BrokenByteInASet", "\xFF", "[\xFE\xFF]", true},
        Pattern{"BrokenByteOutsideOfASet", "\xFD", "[\xFE\xFF]", false}),
    [](const testing::TestParamInfo<Pattern>& entry) { return std::string(entry.param.name); });

TEST(MatchesPatternTest, RepetitiveTextsTakeNoLonger) {
  const std::u32string text(1'000'000, U'a');
  LikePattern pattern = ReadPattern("%b%");
  pattern.parts.insert(1, 500'000, U'a');
  EXPECT_FALSE(MatchesPattern(text, pattern));
}

struct BadPattern {
  const char* name;
  std::string_view pattern;
  std::string_view failure;
};

class ReadPatternTest : public testing::TestWithParam<BadPattern> {};

TEST_P(ReadPatternTest, RefusesWhatIsNoPattern) {
  try {
    static_cast<void>(ReadPattern(GetParam().pattern));
    FAIL() << "read";
  } catch (const qorcred::RuntimeError& error) {
    EXPECT_EQ(error.number(), qorcred::ErrorNumber::kInvalidProcedureCall);
    EXPECT_EQ(error.description(), "the pattern of LIKE has " + std::string(GetParam().failure));
  }
}

constexpr std::string_view kOpen = "a '[' that is not closed: write '[[]' for the character itself";
constexpr std::string_view kEmpty = "an empty set of characters";
constexpr std::string_view kCaret =
    "a set that begins with '^': write '[!' for all but its characters";
constexpr std::string_view kHyphen = "a '-' between no two characters: write it at the set's end";
constexpr std::string_view kBackwards = "a set whose range runs backwards";

INSTANTIATE_TEST_SUITE_P(
    Table, ReadPatternTest,
    testing::Values(BadPattern{"BracketLeftOpen", "[", kOpen},
                    BadPattern{"SetLeftOpen", "ab[c", kOpen},
                    BadPattern{"SecondSetLeftOpen", "[a]%[b", kOpen},
                    BadPattern{"ClosedBeforeItOpens", "]a[", kOpen},
                    BadPattern{"EmptySet", "a[]", kEmpty},
                    BadPattern{"AllButNothing", "[!]", kEmpty}, BadPattern{"Caret", "[^a]", kCaret},
                    BadPattern{"CaretBehindAllBut", "[!^a]", kCaret},
                    BadPattern{"HyphenBehindARange", "[a-c-e]", kHyphen},
                    BadPattern{"RangeBackwards", "[c-a]", kBackwards},
                    BadPattern{"RangeBackwardsByOne", "[b-a]", kBackwards},
                    BadPattern{"RangeBackwardsWithoutRegardToCase", "[Z-a]", kBackwards}),
    [](const testing::TestParamInfo<BadPattern>& entry) { return std::string(entry.param.name); });

}  // namespace

}  // namespace qorhost::dialect

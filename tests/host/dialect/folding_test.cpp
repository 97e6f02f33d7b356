#include "host/dialect/folding.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace qorhost::dialect {

namespace {

struct Pair {
  const char* name;
  std::string_view one;
  std::string_view other;
  int order;  // of one against other
};

class CompareFoldedTest : public testing::TestWithParam<Pair> {};

TEST_P(CompareFoldedTest, OrdersBothWays) {
  const auto sign = [](int number) { return (number > 0) - (number < 0); };
  EXPECT_EQ(sign(CompareFolded(GetParam().one, GetParam().other)), GetParam().order);
  EXPECT_EQ(sign(CompareFolded(GetParam().other, GetParam().one)), -GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CompareFoldedTest,
    testing::Values(Pair{"Empty", "", "", 0}, Pair{"EmptyFirst", "", "a", -1},
                    Pair{"AsciiCase", "Hello", "hELLO", 0}, Pair{"AsciiOrder", "a", "B", -1},
                    Pair{"Prefix", "ab", "ABC", -1}, Pair{"Umlauts", "ÄÖÜ", "äöü", 0},
                    Pair{"Greek", "ΣΊΣΥΦΟΣ", "σίσυφος", 0}, Pair{"Cyrillic", "ЖЯ", "жя", 0},
                    Pair{"KelvinSign", "\xE2\x84\xAA", "k", 0},
                    Pair{"SharpS",
                         "Stra\xC3\x9F"
                         "e",
                         "STRA\xE1\xBA\x9E"
                         "E",
                         0},
                    Pair{"Deseret", "\xF0\x90\x90\x80", "\xF0\x90\x90\xA8", 0},
                    Pair{"AsciiBeforeOthers", "z", "ä", -1},
                    Pair{"PunctuationBetweenLetters", "_", "A", -1},
                    Pair{"BrokenByteAboveAll", "\xF4\x8F\xBF\xBF", "\xFF", -1},
                    Pair{"BrokenBytesByValue", "\xFE", "\xFF", -1},
                    Pair{"BrokenByteEqualsItself", "a\xC3", "A\xC3", 0},
                    Pair{"ZeroBytes", std::string_view("a\0b", 3), std::string_view("A\0B", 3), 0}),
    [](const testing::TestParamInfo<Pair>& entry) { return std::string(entry.param.name); });

TEST(CompareFoldedTest, IsATotalOrder) {
  const std::array<std::string_view, 12> texts{"",  "a",  "A",    "ab",    "aB", "z",
                                               "ä", "Äa", "\xFF", "a\xFF", "é",  "_"};
  for (const std::string_view one : texts) {
    EXPECT_EQ(CompareFolded(one, one), 0);
    for (const std::string_view other : texts) {
      for (const std::string_view third : texts) {
        if (CompareFolded(one, other) <= 0 && CompareFolded(other, third) <= 0) {
          EXPECT_LE(CompareFolded(one, third), 0) << one << '|' << other << '|' << third;
        }
      }
    }
  }
}

struct Pattern {
  const char* name;
  std::string_view text;
  std::string_view pattern;
  bool matches;
};

class MatchesPatternTest : public testing::TestWithParam<Pattern> {};

TEST_P(MatchesPatternTest, FollowsTheWildcards) {
  EXPECT_EQ(MatchesPattern(Folded(GetParam().text), Folded(GetParam().pattern)),
            GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MatchesPatternTest,
    testing::Values(Pattern{"EmptyByEmpty", "", "", true}, Pattern{"EmptyByRun", "", "%", true},
                    Pattern{"EmptyByOne", "", "_", false}, Pattern{"TextByEmpty", "a", "", false},
                    Pattern{"Same", "abc", "ABC", true}, Pattern{"Longer", "abcd", "abc", false},
                    Pattern{"Shorter", "ab", "abc", false}, Pattern{"Begins", "abcd", "ab%", true},
                    Pattern{"BeginsNot", "xabcd", "ab%", false},
                    Pattern{"Ends", "abcd", "%cd", true}, Pattern{"EndsNot", "abcdx", "%cd", false},
                    Pattern{"Contains", "abcd", "%bc%", true},
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
                    Pattern{"Umlaut", "ÄRGER", "%rger", true},
                    Pattern{"UmlautFolded", "ÄRGER", "ä%", true},
                    Pattern{"ManyRuns", "abc", "%%%a%%%c%%%", true},
                    Pattern{"SelfSimilar", "aaaaab", "%aab", true},
                    Pattern{"SelfSimilarInside", "abababac", "%ababac%", true},
                    Pattern{"BrokenBytes", "a\xFF", "a_", true},
                    Pattern{"BracketIsNothingSpecial", "b", "[a-c]", false}),
    [](const testing::TestParamInfo<Pattern>& entry) { return std::string(entry.param.name); });

TEST(MatchesPatternTest, RepetitiveTextsTakeNoLonger) {
  const std::u32string text(1'000'000, U'a');
  const std::u32string pattern = U"%" + std::u32string(500'000, U'a') + U"b%";
  EXPECT_FALSE(MatchesPattern(text, pattern));
}

TEST(CaseOfTextsTest, LeavesBrokenBytes) {
  EXPECT_EQ(UpperText("\xC3"
                      "a\xFFä"),
            "\xC3"
            "A\xFFÄ");
  EXPECT_EQ(LowerText("\xC3"
                      "A\xFFÄ"),
            "\xC3"
            "a\xFFä");
}

}  // namespace

}  // namespace qorhost::dialect

#include "frame/text.h"

#include <gtest/gtest.h>

#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

TEST(TextTest, TrimRemovesBlanksOnly) {
  const struct {
    const char* name;
    const char* text;
    const char* expected;
  } rows[] = {
      {"Nothing", "", ""},
      {"OnlyBlanks", "   ", ""},
      {"BothEnds", "  12 ", "12"},
      {"InsideStays", " 1 2 ", "1 2"},
      {"TabsStay", "\t12 \t", "\t12 \t"},
      {"LineBreaksStay", " \n12\r\n", "\n12\r\n"},
      {"NoBreakSpaceStays", "\xC2\xA0 1", "\xC2\xA0 1"},
      {"NothingToDo", "12", "12"},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(Trim(row.text), row.expected); });
}

TEST(TextTest, TheEndOfATextIsCutByUtf16Units) {
  const struct {
    const char* name;
    std::string_view text;
    std::size_t units;
    std::string_view expected;
  } rows[] = {
      {"Nothing", "", 2, ""},
      {"NoUnits", "abc", 0, ""},
      {"Fewer", "0930", 2, "30"},
      {"Exactly", "30", 2, "30"},
      {"More", "9", 2, "9"},
      {"TwoBytes", "a\xC3\xA4\xC3\xB6", 2, "\xC3\xA4\xC3\xB6"},
      {"WholePair", "a\xF0\x9F\x98\x80", 2, "\xF0\x9F\x98\x80"},
      {"WithinAPair", "\xF0\x9F\x98\x80z", 2, "z"},
      {"HalfAPair", "a\xF0\x9F\x98\x80", 1, ""},
      {"BrokenBytes", "a\xFF\xFE", 2, "\xFF\xFE"},
  };
  ForEachRow(rows,
             [](const auto& row) { EXPECT_EQ(RightUtf16(row.text, row.units), row.expected); });
}

TEST(TextTest, AMiddlePartIsCutByUtf16Units) {
  const struct {
    const char* name;
    std::string_view text;
    std::size_t first;
    std::size_t units;
    std::string_view expected;
  } rows[] = {
      {"Nothing", "", 2, 2, ""},
      {"Middle", "240315", 2, 2, "03"},
      {"FromTheStart", "240315", 0, 2, "24"},
      {"CutAtTheEnd", "240", 2, 2, "0"},
      {"BehindTheEnd", "24", 2, 2, ""},
      {"FarBehindTheEnd", "2", 5, 2, ""},
      {"BehindAPair",
       "\xF0\x9F\x98\x80"
       "03",
       2, 2, "03"},
      {"StartsWithinAPair",
       "a\xF0\x9F\x98\x80"
       "03",
       2, 2, "0"},
      {"EndsWithinAPair", "ab\xF0\x9F\x98\x80", 1, 2, "b"},
      {"NothingButAHalf",
       "a\xF0\x9F\x98\x80"
       "3",
       2, 1, ""},
      {"BrokenBytes",
       "a\xFF\xFE"
       "b",
       1, 2, "\xFF\xFE"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(MidUtf16(row.text, row.first, row.units), row.expected);
  });
}

TEST(TextTest, LengthsCountUtf16Units) {
  const struct {
    const char* name;
    std::string_view text;
    std::size_t expected;
  } rows[] = {
      {"Nothing", "", 0},
      {"Ascii", "abc", 3},
      {"TwoBytes", "\xC3\xA4", 1},
      {"LastOfTwoBytes", "\xDF\xBF", 1},
      {"FirstOfThreeBytes", "\xE0\xA0\x80", 1},
      {"ThreeBytes", "\xE2\x82\xAC", 1},
      {"LastBelowSurrogates", "\xED\x9F\xBF", 1},
      {"LastOfThreeBytes", "\xEF\xBF\xBF", 1},
      {"SurrogatePair", "\xF0\x9F\x98\x80", 2},
      {"LastCharacter", "\xF4\x8F\xBF\xBF", 2},
      {"LoneContinuation", "\x80", 1},
      {"Overlong", "\xC0\xAF", 2},
      {"OverlongThreeBytes", "\xE0\x9F\xBF", 3},
      {"OverlongFourBytes", "\xF0\x8F\xBF\xBF", 4},
      {"EncodedSurrogate", "\xED\xA0\x80", 3},
      {"BeyondUnicode", "\xF4\x90\x80\x80", 4},
      {"NeverALead", "\xF5\xFF", 2},
      {"CutTwoBytes", "a\xC3", 2},
      {"CutThreeBytes", "\xE2\x82", 2},
      {"CutFourBytes", "\xF0\x9F\x98", 3},
      {"BrokenInside", "\xE2(\xAC", 3},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(Utf16Length(row.text), row.expected); });
}

TEST(TextTest, LeftNeverCutsACharacter) {
  const struct {
    const char* name;
    std::string_view text;
    std::size_t units;
    std::string_view expected;
  } rows[] = {
      {"None", "abc", 0, ""},
      {"Some", "abc", 2, "ab"},
      {"Exactly", "abc", 3, "abc"},
      {"More", "abc", 4, "abc"},
      {"TwoByteCharacters", "\xC3\xA4\xC3\xB6\xC3\xBC", 2, "\xC3\xA4\xC3\xB6"},
      {"FewerUnitsThanBytes", "\xC3\xA4\xC3\xB6", 3, "\xC3\xA4\xC3\xB6"},
      {"BeforeAPair", "a\xF0\x9F\x98\x80", 1, "a"},
      {"HalfAPair", "a\xF0\x9F\x98\x80z", 2, "a"},
      {"WholePair", "a\xF0\x9F\x98\x80z", 3, "a\xF0\x9F\x98\x80"},
      {"InvalidBytes", "\xFF\xFE\xFD", 2, "\xFF\xFE"},
      {"Empty", "", 5, ""},
  };
  ForEachRow(rows,
             [](const auto& row) { EXPECT_EQ(LeftUtf16(row.text, row.units), row.expected); });
}

TEST(TextTest, UpperAsciiLeavesOtherLettersAlone) {
  EXPECT_EQ(UpperAscii("Single az AZ `{@[ 09"), "SINGLE AZ AZ `{@[ 09");
  EXPECT_EQ(UpperAscii("\xC3\xA4"), "\xC3\xA4");
  EXPECT_EQ(UpperAscii(""), "");
}

TEST(TextTest, ReplaceAllGoesOnceFromTheLeft) {
  const struct {
    const char* name;
    const char* text;
    const char* from;
    const char* to;
    const char* expected;
  } rows[] = {
      {"Nothing", "", "a", "b", ""},
      {"NotFound", "xyz", "a", "b", "xyz"},
      {"Every", "banana", "a", "oo", "boonoonoo"},
      {"Shorter", "banana", "an", "", "ba"},
      {"NotOverlapping", "aaa", "aa", "b", "ba"},
      {"ResultIsNotReadAgain", "aa", "a", "aa", "aaaa"},
      {"WholeText", "abc", "abc", "x", "x"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(ReplaceAll(row.text, row.from, row.to), row.expected);
  });
}

TEST(TextTest, DigitsAreOneAtLeastAndNothingElse) {
  EXPECT_TRUE(IsDigits("0"));
  EXPECT_TRUE(IsDigits("0123456789"));
  for (const std::string_view other : {"", " 1", "-1", "1.5", "/", ":", "12a", "\u0661"}) {
    EXPECT_FALSE(IsDigits(other)) << other;
  }
}

TEST(TextTest, ContainsFindsAnyPart) {
  EXPECT_TRUE(Contains("abc", ""));
  EXPECT_TRUE(Contains("abc", "bc"));
  EXPECT_FALSE(Contains("abc", "BC"));
  EXPECT_FALSE(Contains("", "a"));
}

TEST(TextTest, ComparesWithoutCase) {
  const struct {
    const char* name;
    std::string_view one;
    std::string_view other;
    int expected;
  } rows[] = {
      {"BothEmpty", "", "", 0},
      {"EmptyFirst", "", "a", -1},
      {"PrefixFirst", "ab", "abc", -1},
      {"AsciiCase", "Doe JANE", "doe jane", 0},
      {"AsciiOrder", "abd", "ABC", 1},
      {"BesideTheLetters", "[", "{", -1},
      {"LowerSortsLikeUpper", "a", "B", -1},
      {"Umlauts", "\xC3\x84\xC3\x96\xC3\x9C", "\xC3\xA4\xC3\xB6\xC3\xBC", 0},
      {"MultiplicationSignHasNoCase", "\xC3\x97", "\xC3\xB7", -1},
      {"MicroSignIsMu", "\xC2\xB5", "\xCE\xBC", 0},
      {"FirstExtended", "\xC4\x80", "\xC4\x81", 0},
      {"LowerDotlessIStays", "\xC4\xB1", "\xC4\xB0", 1},
      {"OddPairs", "\xC4\xB9", "\xC4\xBA", 0},
      {"NoPairAcrossTheGap", "\xC4\xB8", "\xC4\xB9", -1},
      {"PolishZ", "\xC5\xBB", "\xC5\xBC", 0},
      {"YWithDiaeresis", "\xC5\xB8", "\xC3\xBF", 0},
      {"LongS", "\xC5\xBF", "S", 0},
      {"Greek", "\xCE\xA3\xCE\x91", "\xCF\x82\xCE\xB1", 0},
      {"GreekAccents", "\xCE\x86\xCE\x88\xCE\x8C\xCE\x8E", "\xCE\xAC\xCE\xAD\xCF\x8C\xCF\x8D", 0},
      {"Coptic", "\xCF\xA2", "\xCF\xA3", 0},
      {"CyrillicIo", "\xD0\x81", "\xD1\x91", 0},
      {"Cyrillic", "\xD0\x96\xD0\xAF", "\xD0\xB6\xD1\x8F", 0},
      {"CyrillicPairs", "\xD2\x90", "\xD2\x91", 0},
      {"CyrillicPalochka", "\xD3\x80", "\xD3\x8F", 0},
      {"Armenian", "\xD4\xB1\xD5\x96", "\xD5\xA1\xD6\x86", 0},
      {"CapitalSharpS", "\xE1\xBA\x9E", "\xC3\x9F", 0},
      {"Vietnamese", "\xE1\xBA\xA0", "\xE1\xBA\xA1", 0},
      {"NoCaseAtAll", "\xE2\x82\xAC", "\xE2\x82\xAD", -1},
      {"SameInvalidBytes", "a\xFF", "A\xFF", 0},
      {"InvalidByteIsNoCharacter", "\xE4", "\xC3\xA4", 1},
      {"InvalidBytesAfterEveryCharacter", "\x80", "\xF4\x8F\xBF\xBF", 1},
      {"InvalidBytesInTheirOrder", "\x80", "\x81", -1},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(CompareIgnoringCase(row.one, row.other), row.expected);
    EXPECT_EQ(CompareIgnoringCase(row.other, row.one), -row.expected);
  });
}

}  // namespace
}  // namespace qorcred

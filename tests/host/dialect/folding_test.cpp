#include "host/dialect/folding.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "frame/utf8.h"

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

std::string Utf8Of(char32_t point) {
  std::string text;
  if (point < qorcred::kFirstSupplementary) {
    qorcred::AppendUtf8(text, point);
    return text;
  }
  for (const unsigned shift : {18U, 12U, 6U, 0U}) {
    const unsigned bits = (point >> shift) & 0x3FU;
    text += static_cast<char>(shift == 18U ? 0xF0U | bits : 0x80U | bits);
  }
  return text;
}

TEST(FoldPointTest, EveryLetterFoldsLikeItsOtherCases) {
  constexpr char32_t kDotlessI = 0x131;  // it shares its capital with the i, but is another letter
  constexpr char32_t kEndOfLetters = 0x20000;  // no letter above has cases
  constexpr char32_t kFirstSurrogate = 0xD800;
  constexpr char32_t kLastSurrogate = 0xDFFF;
  for (char32_t point = 0; point < kEndOfLetters; ++point) {
    if (point >= kFirstSurrogate && point <= kLastSurrogate) continue;
    const std::string text = Utf8Of(point);
    const std::string upper = UpperText(text);
    const std::string lower = LowerText(text);
    if (point == kDotlessI || (upper == text && lower == text)) {
      EXPECT_EQ(FoldPoint(point), point) << std::hex << static_cast<unsigned>(point);
    } else {
      EXPECT_EQ(CompareFolded(text, upper), 0) << std::hex << static_cast<unsigned>(point);
      EXPECT_EQ(CompareFolded(text, lower), 0) << std::hex << static_cast<unsigned>(point);
    }
    EXPECT_EQ(FoldPoint(FoldPoint(point)), FoldPoint(point));
  }
}

TEST(FoldPointTest, BrokenBytesAreTheirOwn) {
  for (char32_t byte = 0x80; byte <= 0xFF; ++byte) {
    EXPECT_EQ(FoldPoint(qorcred::kInvalidByte + byte), qorcred::kInvalidByte + byte);
  }
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

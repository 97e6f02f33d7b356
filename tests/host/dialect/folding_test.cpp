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

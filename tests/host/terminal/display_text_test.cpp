// Texts from outside on a terminal.
#include "host/terminal/display_text.h"

#include <gtest/gtest.h>

namespace qorhost::test {
namespace {

struct TextRow {
  const char* name;
  std::string_view text;
  std::string_view shown;
};

class DisplayableText : public testing::TestWithParam<TextRow> {};

TEST_P(DisplayableText, IsHarmless) {
  EXPECT_EQ(Displayable(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DisplayableText,
    testing::Values(TextRow{"Plain", "O'Brien Zoë 😀", "O'Brien Zoë 😀"}, TextRow{"Nothing", "", ""},
                    TextRow{"LineFeedAndTab", "a\nb\tc", "a\\nb\\tc"},
                    TextRow{"EscapeSequence", "\x1B[2Jgone", "\\x1B[2Jgone"},
                    TextRow{"CarriageReturnBellAndDelete", "a\r\a\x7F", "a\\x0D\\x07\\x7F"},
                    TextRow{"ControlCharacterOfTheUpperHalf",
                            "a\xC2\x9B"
                            "1m",
                            "a\\x9B1m"},
                    TextRow{"NulInside", std::string_view("a\0b", 3), "a\\x00b"},
                    TextRow{"ReadingDirection",
                            "a\xE2\x80\xAE"
                            "b",
                            "a\\u202Eb"},
                    TextRow{"LineSeparator",
                            "a\xE2\x80\xA8"
                            "b",
                            "a\\u2028b"},
                    TextRow{"BytesThatAreNotUtf8", "a\xFF\xC3", "a\xEF\xBF\xBD\xEF\xBF\xBD"},
                    TextRow{"OverlongSlash", "\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DisplayWidth, CountsTheColumnsThatCharactersTake) {
  EXPECT_EQ(DisplayWidth(""), 0U);
  EXPECT_EQ(DisplayWidth("Zoë"), 3U);
  EXPECT_EQ(DisplayWidth("Zoe\xCC\x88"), 3U) << "a combining mark takes none";
  EXPECT_EQ(DisplayWidth("東京"), 4U) << "wide characters take two";
}

TEST(PaddedTo, FillsWithBlanksAndCutsNothing) {
  EXPECT_EQ(PaddedTo("ë", 3), "ë  ");
  EXPECT_EQ(PaddedTo("long", 3), "long");
}

}  // namespace
}  // namespace qorhost::test

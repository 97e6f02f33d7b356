// Texts of desktop database files from the bytes of their pages.
#include "host/files/desktop_file/desktop_text.h"

#include <gtest/gtest.h>

namespace qorhost::test {
namespace {

using namespace std::string_view_literals;
using desktop_file::IsKnownCodePage;
using desktop_file::TextOfCodePage;
using desktop_file::TextOfUtf16;

struct Utf16Case {
  const char* name;
  std::string_view bytes;
  std::string_view utf8;
  bool isWhole = true;
};

class TextsOfPages : public testing::TestWithParam<Utf16Case> {};

TEST_P(TextsOfPages, AreReadInFull) {
  const DesktopText text = TextOfUtf16(GetParam().bytes);
  EXPECT_EQ(text.utf8, GetParam().utf8);
  EXPECT_EQ(text.isWhole, GetParam().isWhole);
}
INSTANTIATE_TEST_SUITE_P(
    Utf16, TextsOfPages,
    testing::Values(Utf16Case{"Empty", ""sv, ""sv}, Utf16Case{"Letters", "A\0b\0"sv, "Ab"sv},
                    Utf16Case{"TwoBytes", "\xFC\0"sv, "\xC3\xBC"sv},
                    Utf16Case{"ThreeBytes", "\xE5\x65"sv, "\xE6\x97\xA5"sv},
                    Utf16Case{"BeyondTheBasicPlane", "\x3C\xD8\xE1\xDF"sv, "\xF0\x9F\x8F\xA1"sv},
                    Utf16Case{"Zero", "a\0\0\0b\0"sv, "a\0b"sv},
                    Utf16Case{"FirstHalfAlone", "a\0\x3C\xD8"sv, "a\xEF\xBF\xBD"sv, false},
                    Utf16Case{"FirstHalfBeforeALetter", "\x3C\xD8z\0"sv, "\xEF\xBF\xBDz"sv, false},
                    Utf16Case{"TwoFirstHalves", "\x3C\xD8\x3C\xD8\xE1\xDF"sv,
                              "\xEF\xBF\xBD\xF0\x9F\x8F\xA1"sv, false},
                    Utf16Case{"SecondHalfAlone", "\xE1\xDFz\0"sv, "\xEF\xBF\xBDz"sv, false},
                    Utf16Case{"OddByte", "a\0b"sv, "a\xEF\xBF\xBD"sv, false},
                    Utf16Case{"ShortForm",
                              "\xFF\xFE"
                              "Abc\xFC"sv,
                              "Abc\xC3\xBC"sv},
                    Utf16Case{"ShortFormOfNothing", "\xFF\xFE"sv, ""sv},
                    Utf16Case{"ShortFormThatChanges",
                              "\xFF\xFE"
                              "A\0\x59\x01\0z"sv,
                              "A\xC5\x99z"sv},
                    Utf16Case{"ShortFormThatEndsLong",
                              "\xFF\xFE"
                              "A\0\x3C\xD8\xE1\xDF"sv,
                              "A\xF0\x9F\x8F\xA1"sv},
                    Utf16Case{"ShortFormWithAnOddByte",
                              "\xFF\xFE"
                              "A\0\x59"sv,
                              "A\xEF\xBF\xBD"sv, false}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(TextsOfTheOldestFormat, AreReadInTheirCodePage) {
  EXPECT_EQ(TextOfCodePage("Dve\xF8"
                           "e",
                           1250)
                .utf8,
            "Dve\xC5\x99"
            "e");
  EXPECT_EQ(TextOfCodePage("T\xFCr", 1252).utf8, "T\xC3\xBCr");
  EXPECT_EQ(TextOfCodePage("\xC4\xE2\xE5\xF0\xFC", 1251).utf8, "Дверь");
  EXPECT_TRUE(TextOfCodePage("T\xFCr", 1252).isWhole);
}

TEST(TextsOfTheOldestFormat, KeepTheirPlaceWhereTheCodePageHasNothing) {
  const DesktopText text = TextOfCodePage("a\x81z", 1252);
  EXPECT_EQ(text.utf8, "a\xEF\xBF\xBDz");
  EXPECT_FALSE(text.isWhole);
}

TEST(TextsOfTheOldestFormat, UnknownCodePagesAreTold) {
  EXPECT_TRUE(IsKnownCodePage(1250));
  EXPECT_FALSE(IsKnownCodePage(0));
  EXPECT_FALSE(IsKnownCodePage(1));
}

}  // namespace
}  // namespace qorhost::test

#include "frame/base64.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "outcome.h"
#include "plain_host.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

std::string DecodedOutcome(std::string_view text) {
  qortest::PlainHost host;
  Base64Decoder decoder;
  return Outcome([&] { return decoder.Decode(host, text); });
}

TEST(Base64Test, DecodesWithAndWithoutPadding) {
  const struct {
    const char* name;
    std::string_view text;
    std::string_view expected;
  } rows[] = {
      {"ThreeBytes", "QUJD", "ABC"},
      {"TwoBytes", "QUI=", "AB"},
      {"OneByte", "QQ==", "A"},
      {"TwoGroups", "QUJDREVG", "ABCDEF"},
      {"PaddingInTheSecondGroup", "QUJDRA==", "ABCD"},
      {"Number", "NjU1MzU=", "65535"},
      {"ZeroBytes", "AAAA", std::string_view("\0\0\0", 3)},
      {"LastOfTheAlphabet", "////", "\xC3\xBF\xC3\xBF\xC3\xBF"},
      {"BytesFrom128On", "gIqg", "\xE2\x82\xAC\xC5\xA0\xC2\xA0"},
      {"HighBytes", "6fz/", "\xC3\xA9\xC3\xBC\xC3\xBF"},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(DecodedOutcome(row.text), row.expected); });
}

TEST(Base64Test, OtherBytesAreMixedInAfterTheFirstPlace) {
  // They count as 64: its bit falls into the byte before, or into the last one.
  const struct {
    const char* name;
    std::string_view text;
    std::string_view expected;
  } rows[] = {
      {"InTheSecondPlace", "Q*JD",
       "D\x02"
       "C"},
      {"InTheThirdPlace", "QU*D", std::string_view("AP\x03", 3)},
      {"InTheLastPlace", "QUJ*", "AB@"},
      {"LineBreakInside", "QU\nD", std::string_view("AP\x03", 3)},
      {"BlankInTheLastPlace", "QUJ ", "AB@"},
      {"PaddingInside", "QUI=QUJD", "AB@ABC"},
      {"EqualsInTheLastPlaceButOneDropsTwo", "QU=D", "A"},
      {"EqualsInTheSecondPlace", "Q=JD",
       "D\x02"
       "C"},
      {"NotAnsi",
       "QU\xE2\x82\xAC"
       "D",
       std::string_view("AP\x03", 3)},
      {"SurrogatePairTakesTwoPlaces", "QU\xF0\x9F\x98\x80", std::string_view("AP@", 3)},
      {"InvalidUtf8",
       "QU\xFF"
       "D",
       std::string_view("AP\x03", 3)},
      {"ZeroByte", std::string_view("QU\0D", 4), std::string_view("AP\x03", 3)},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(DecodedOutcome(row.text), row.expected); });
}

TEST(Base64Test, RaisesForWhatItCannotHold) {
  const struct {
    const char* name;
    std::string_view text;
    const char* expected;
  } rows[] = {
      {"FirstPlaceOutsideTheAlphabet", "*UJD", "error 6"},
      {"FirstPlaceOfALaterGroup", "QUJD*UJD", "error 6"},
      {"PaddingInTheFirstPlace", "====", "error 6"},
      {"LineBreakBetweenTheGroups", "QUJD\nREVGQUI", "error 6"},
      {"FirstPlaceNotAnsi", "\xE2\x82\xACUJD", "error 6"},
      {"Empty", "", "error 9"},
      {"OneCharacter", "Q", "error 9"},
      {"TwoCharacters", "QQ", "error 9"},
      {"ThreeCharacters", "QQ=", "error 9"},
      {"OneCharacterOutsideTheAlphabet", "*", "error 9"},
      {"FiveCharacters", "QUJDQ", "error 9"},
      {"SixCharacters", "QUJDQQ", "error 9"},
      {"SevenCharacters", "QUJDQQ=", "error 9"},
      {"LineBreakAtTheEnd", "QUJD\n", "error 9"},
      {"LineBreakOfTwoCharactersAtTheEnd", "QUJD\r\n", "error 9"},
      {"IncompleteGroupThatWouldOverflow", "QUJD*UJ", "error 9"},
      {"OverflowBeforeAnIncompleteGroup", "*UJDQ", "error 6"},
      {"FourBytesOfThreeCharacters", "QU\xC3\xA4", "error 9"},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(DecodedOutcome(row.text), row.expected); });
}

TEST(Base64Test, EveryByteComesBackAsItsCharacter) {
  qortest::PlainHost host;
  Base64Decoder decoder;
  std::vector<std::uint8_t> bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes.push_back(static_cast<std::uint8_t>(byte));
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_EQ(decoder.Decode(host, EncodeBase64(text)), host.AnsiToText(bytes)) << byte;
  }
}

TEST(Base64Test, DoesNotChangeItsArgument) {
  qortest::PlainHost host;
  Base64Decoder decoder;
  const std::string text = "QUI=";
  EXPECT_EQ(decoder.Decode(host, text), "AB");
  EXPECT_EQ(text, "QUI=");
}

/// Counts the conversions; gives every character `width` bytes.
class CountingHost final : public qortest::PlainHost {
 public:
  explicit CountingHost(std::size_t width) : width_(width) {}

  std::vector<std::uint8_t> TextToAnsi(std::string_view text) override {
    if (text == kBase64Alphabet) {
      ++alphabets;
      return {text.begin(), text.end()};
    }
    std::vector<std::uint8_t> bytes;
    for (const char letter : text) {
      bytes.insert(bytes.end(), width_, static_cast<std::uint8_t>(letter));
    }
    return bytes;
  }

  int alphabets = 0;

 private:
  std::size_t width_;
};

TEST(Base64Test, EachDecoderAsksForTheAlphabetOnce) {
  CountingHost host(1);
  Base64Decoder decoder;
  EXPECT_EQ(host.alphabets, 0);
  EXPECT_EQ(decoder.Decode(host, "QUJD"), "ABC");
  EXPECT_EQ(decoder.Decode(host, "QUI="), "AB");
  EXPECT_EQ(host.alphabets, 1);
  Base64Decoder another;
  EXPECT_EQ(another.Decode(host, "QUJD"), "ABC");
  EXPECT_EQ(host.alphabets, 2);
}

TEST(Base64Test, AFailedFirstCallKeepsTheAlphabet) {
  CountingHost host(1);
  Base64Decoder decoder;
  EXPECT_EQ(Outcome([&] { return decoder.Decode(host, ""); }), "error 9");
  EXPECT_EQ(decoder.Decode(host, "QUJD"), "ABC");
  EXPECT_EQ(host.alphabets, 1);
}

TEST(Base64Test, ACodePageOfOtherWidthsRunsOutOfRange) {
  const struct {
    const char* name;
    std::size_t width;
  } rows[] = {{"TwoBytesACharacter", 2}, {"NoBytesAtAll", 0}};
  ForEachRow(rows, [](const auto& row) {
    CountingHost host(row.width);
    Base64Decoder decoder;
    EXPECT_EQ(Outcome([&] { return decoder.Decode(host, "QUJD"); }), "error 9");
  });
}

TEST(Base64Test, ACodePageWithoutTheAlphabetRunsOutOfRange) {
  class ShortHost final : public qortest::PlainHost {
   public:
    std::vector<std::uint8_t> TextToAnsi(std::string_view) override { return {'A'}; }
  };
  ShortHost host;
  Base64Decoder decoder;
  EXPECT_EQ(Outcome([&] { return decoder.Decode(host, "QUJD"); }), "error 9");
}

}  // namespace
}  // namespace qorcred

// Names by their words, without accents and letter case.
#include "host/desks/name_words.h"

#include <gmock/gmock.h>

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(NameWords, HaveNoAccentsAndNoLetterCase) {
  EXPECT_EQ(Plain("Öztürk"), "ozturk");
  EXPECT_EQ(Plain("O\u0308ztu\u0308rk"), "ozturk");  // decomposed
  EXPECT_EQ(Plain("SØREN Łuk Đorđe"), "soren luk dorde");
  EXPECT_EQ(Plain("Straße"), "strasse");
  EXPECT_EQ(Plain("\xFF"
                  "Ab"),
            "\xFF"
            "ab");
}

TEST(FoldedTexts, AreOneHoweverAnAccentIsEncoded) {
  EXPECT_EQ(FoldedText("ÖZTÜRK"), U"öztürk");
  EXPECT_EQ(FoldedText("O\u0308zTU\u0308RK"), U"öztürk");
  EXPECT_EQ(FoldedText("Zw\u1E69"), FoldedText("ZWs\u0307\u0323")) << "marks in another order";
  EXPECT_NE(FoldedText("Öztürk"), FoldedText("Ozturk"));
  EXPECT_EQ(FoldedText("Straße"), U"straße");
  EXPECT_EQ(FoldedText(""), U"");
  EXPECT_EQ(FoldedText("\xFFO\u0308").size(), 3U) << "what is not UTF-8 is not composed";
}

TEST(NameWords, AreDividedByEverythingButApostrophes) {
  EXPECT_THAT(WordsOf("Meyer-Lund,  Ana"), ElementsAre("meyer", "lund", "ana"));
  EXPECT_THAT(WordsOf("O'Brien"), ElementsAre("obrien"));
  EXPECT_THAT(WordsOf("O\u2019Brien"), ElementsAre("obrien"));
  EXPECT_THAT(WordsOf(" .,- "), IsEmpty());
}

TEST(NameWords, MatchByPartsWordsOrWhole) {
  const Words name = WordsOf("Tanaka Xenia M");
  EXPECT_EQ(MatchOf(WordsOf("xenia m tanaka"), name), NameMatch::kWhole);
  EXPECT_EQ(MatchOf(WordsOf("TANAKA"), name), NameMatch::kWords);
  EXPECT_EQ(MatchOf(WordsOf("Tanaka X"), name), NameMatch::kParts);
  EXPECT_EQ(MatchOf(WordsOf("naka"), name), NameMatch::kNone);
  EXPECT_EQ(MatchOf({}, name), NameMatch::kNone);
}

TEST(NameWords, AWordOfTheNameStandsForOneOnly) {
  EXPECT_EQ(MatchOf(WordsOf("ta ta"), WordsOf("Tanaka Xenia")), NameMatch::kNone);
  // The shorter part leaves the longer one its word.
  EXPECT_EQ(MatchOf(WordsOf("t ta"), WordsOf("Tanaka T")), NameMatch::kParts);
  EXPECT_EQ(MatchOf(WordsOf("t tanaka"), WordsOf("Tanaka T")), NameMatch::kWhole);
}

TEST(NameWords, FindTheNamesWithWhichTheyGoBest) {
  const std::vector<Words> names{WordsOf("Tanaka Xenia"), WordsOf("Tan Xaver"), WordsOf("Tan"),
                                 WordsOf("Öztürk Tan"), WordsOf("TAN")};
  EXPECT_THAT(BestMatches(WordsOf("tan"), names), ElementsAre(2, 4)) << "a whole name";
  EXPECT_THAT(BestMatches(WordsOf("x tan"), names), ElementsAre(0, 1)) << "parts alone";
  EXPECT_THAT(BestMatches(WordsOf("ozturk"), names), ElementsAre(3));
  EXPECT_THAT(BestMatches(WordsOf("none"), names), IsEmpty());
  EXPECT_THAT(BestMatches({}, names), IsEmpty());
  EXPECT_THAT(BestMatches(WordsOf("tan"), {}), IsEmpty());
}

TEST(NameReaders, ReadTheWordsOfOneTextAfterTheOther) {
  NameReader reader;
  for (const char* text : {"", " ", "Tanaka", "O'Brien-Smith, J.", "Öztürk  Zeynep", "x'y 2nd",
                           "M\xC3\xBCller's Sons", "\xFF bad", "Zoe\xCC\x88"}) {
    const Words words = WordsOf(text);
    const std::vector<std::string_view>& read = reader.Read({text});
    EXPECT_EQ(Words(read.begin(), read.end()), words) << text;
  }
  const std::vector<std::string_view>& parts = reader.Read({"Tanaka", "", "Xenia M"});
  EXPECT_EQ(Words(parts.begin(), parts.end()), (Words{"tanaka", "xenia", "m"}));
}

}  // namespace
}  // namespace qorhost::test

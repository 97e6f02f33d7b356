// Which word is meant by a misspelt one.
#include "host/desks/near_words.h"

#include <gtest/gtest.h>

#include <utility>

namespace qorhost::test {
namespace {

const std::vector<std::string> kKnown{"credentials", "dircodes", "units", "list"};

TEST(Suggestions, ForgiveALetterInThree) {
  EXPECT_EQ(MostLike("credntials", kKnown), "credentials");
  EXPECT_EQ(MostLike("dirCode", kKnown), "dircodes");
  EXPECT_EQ(MostLike("lsit", kKnown), "list");
  EXPECT_EQ(MostLike("unit", kKnown), "units");
}

TEST(Suggestions, AreNotMadeForOtherWords) {
  EXPECT_EQ(MostLike("doors", kKnown), "");
  EXPECT_EQ(MostLike("x", kKnown), "");
  EXPECT_EQ(MostLike("", kKnown), "");
  EXPECT_EQ(MostLike(std::string(100'000, 'l'), kKnown), "");
}

TEST(Suggestions, TheNearestOneWins) {
  EXPECT_EQ(MostLike("edit", {"exit", "edit"}), "edit");
  EXPECT_EQ(MostLike("ad", {"assign", "add"}), "add");
  EXPECT_EQ(MostLike("unit", {"init", "units"}), "units");
  EXPECT_EQ(MostLike("unit", {"units", "init"}), "units");
}

TEST(NearWords, DifferByOneLetterOrTwoExchanged) {
  for (const auto& [one, other] :
       std::vector<std::pair<std::string, std::string>>{{"tanaka", "tanaka"},
                                                        {"tanaka", "tanakaa"},
                                                        {"tanaka", "anaka"},
                                                        {"tanaka", "tenaka"},
                                                        {"tanaka", "tanaak"},
                                                        {"", "a"},
                                                        {"ab", "ba"}}) {
    EXPECT_TRUE(IsNearly(one, other)) << one << " " << other;
    EXPECT_TRUE(IsNearly(other, one)) << one << " " << other;
  }
  for (const auto& [one, other] : std::vector<std::pair<std::string, std::string>>{
           {"tanaka", "tenaki"}, {"tanaka", "tanakaab"}, {"tanaka", "aantka"}, {"", "ab"}}) {
    EXPECT_FALSE(IsNearly(one, other)) << one << " " << other;
    EXPECT_FALSE(IsNearly(other, one)) << one << " " << other;
  }
}

}  // namespace
}  // namespace qorhost::test

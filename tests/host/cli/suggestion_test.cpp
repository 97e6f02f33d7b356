// Which word is meant by a misspelt one.
#include "host/cli/suggestion.h"

#include <gtest/gtest.h>

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
}

}  // namespace
}  // namespace qorhost::test

#include "host/screens/list_items.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using qorhost::ListItem;
using qorhost::ListItems;

ListItems Letters() {
  ListItems items;
  for (const char* text : {"a", "b", "c"}) {
    items.Append({text, 0});
  }
  return items;
}

std::string Texts(const ListItems& items) {
  std::string texts;
  for (const ListItem& item : items) {
    texts += item.text;
  }
  return texts;
}

TEST(ListItemsTest, ACopySharesTheItems) {
  const ListItems items = Letters();
  const ListItems copy = items;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_TRUE(copy.Shares(items));
  EXPECT_EQ(&copy[0], &items[0]);
  EXPECT_EQ(copy, items);
}

TEST(ListItemsTest, EveryChangeOfSharedItemsLeavesTheCopyAlone) {
  const std::vector<std::pair<const char*, void (*)(ListItems&)>> changes{
      {"", [](ListItems& items) { items.Clear(); }},
      {"abcd",
       [](ListItems& items) {
         items.Append({"d", 0});
       }},
      {"xabc",
       [](ListItems& items) {
         items.Insert(0, {"x", 0});
       }},
      {"abcx",
       [](ListItems& items) {
         items.Insert(3, {"x", 0});
       }},
      {"ac", [](ListItems& items) { items.Erase(1); }},
      {"ab", [](ListItems& items) { items.Erase(2); }},
      {"axc", [](ListItems& items) { items.SetText(1, "x"); }},
  };
  for (const auto& [expected, change] : changes) {
    ListItems items = Letters();
    const ListItems copy = items;
    change(items);
    EXPECT_EQ(Texts(items), expected);
    EXPECT_EQ(Texts(copy), "abc") << expected;
    EXPECT_FALSE(items == copy) << expected;
  }
}

TEST(ListItemsTest, ANumberWrittenIntoSharedItemsLeavesTheCopyAlone) {
  ListItems items = Letters();
  const ListItems copy = items;
  items.SetData(1, 7);
  EXPECT_EQ(items[1].data, 7);
  EXPECT_EQ(copy[1].data, 0);
  EXPECT_FALSE(items == copy);
}

TEST(ListItemsTest, WhatIsAppendedBehindSharedItemsDoesNotCopyThem) {
  ListItems items = Letters();
  items.Append({"d", 0});
  items.Erase(3);  // the memory has room for a fourth
  const ListItems copy = items;
  items.Append({"d", 1});
  items.SetText(3, "x");
  EXPECT_EQ(&items[0], &copy[0]);
  items.Erase(3);
  EXPECT_TRUE(items.Shares(copy));
  EXPECT_EQ(Texts(copy), "abc");
}

TEST(ListItemsTest, AListThatIsPutBackAgainAndAgainGrowsWithoutCopying) {
  ListItems items = Letters();
  items.Append({"d", 0});
  items.Erase(3);
  const ListItems kept = items;
  for (int time = 0; time < 3; ++time) {
    items.Append({"d", time});
    EXPECT_EQ(Texts(items), "abcd");
    EXPECT_EQ(&items[0], &kept[0]) << time;
    items = kept;
    EXPECT_EQ(Texts(items), "abc");
  }
}

TEST(ListItemsTest, OnlyOneOfTwoListsGrowsInTheSharedMemory) {
  ListItems one = Letters();
  ListItems other = one;
  one.Append({"1", 0});
  other.Append({"2", 0});
  other.Append({"3", 0});
  one.Append({"4", 0});
  EXPECT_EQ(Texts(one), "abc14");
  EXPECT_EQ(Texts(other), "abc23");
}

TEST(ListItemsTest, ALongerCopyKeepsItsItemsWhenTheListShrinks) {
  ListItems items = Letters();
  const ListItems three = items;
  items.Append({"d", 0});
  const ListItems four = items;
  items.Erase(3);
  items.Append({"e", 0});
  items = three;
  items.Append({"f", 0});
  EXPECT_EQ(Texts(items), "abcf");
  EXPECT_EQ(Texts(four), "abcd");
  EXPECT_EQ(Texts(three), "abc");
}

TEST(ListItemsTest, ACopyOutlivesTheList) {
  ListItems copy;
  {
    ListItems items = Letters();
    copy = items;
    items.Append({"d", 0});
  }
  EXPECT_EQ(Texts(copy), "abc");
  copy.Append({"e", 0});
  EXPECT_EQ(Texts(copy), "abce");
}

TEST(ListItemsTest, AListThatWasMovedFromIsEmpty) {
  ListItems items = Letters();
  const ListItems moved = std::move(items);
  EXPECT_EQ(Texts(moved), "abc");
  EXPECT_EQ(items.size(), 0U);  // NOLINT(bugprone-use-after-move)
  items.Append({"x", 0});
  EXPECT_EQ(Texts(items), "x");
}

TEST(ListItemsTest, EqualItemsInOtherMemoryAreEqual) {
  EXPECT_EQ(Letters(), Letters());
  EXPECT_EQ(ListItems(), ListItems());
  EXPECT_FALSE(Letters() == ListItems());
}

}  // namespace

#include "host/screens/list_model.h"

#include <gtest/gtest.h>

#include <vector>

#include "frame/controls.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Get;
using qorcred::Missing;
using qorcred::Null;
using qorcred::Put;
using qorcred::Value;
using qorhost::ListModel;
using qortest::Raises;

class ListModelTest : public ::testing::Test {
 protected:
  void AddLetters() {
    for (const char* letter : {"a", "b", "c"}) {
      Call(list_, "AddItem", letter);
    }
  }
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (std::int32_t at = 0; at < list_.count(); ++at) {
      texts.push_back(list_.Text(at));
    }
    return texts;
  }

  ListModel list_;
};

TEST_F(ListModelTest, StartsEmptyWithNothingSelected) {
  EXPECT_EQ(Get(list_, "ListCount"), Value(0));
  EXPECT_EQ(Get(list_, "ListIndex"), Value(-1));
  EXPECT_EQ(Get(list_, "NewIndex"), Value(-1));
  EXPECT_EQ(Get(list_, "Text"), Value(""));
}

TEST_F(ListModelTest, AddItemAppendsAndNewIndexNamesTheItemAddedLast) {
  AddLetters();
  EXPECT_EQ(Texts(), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(Get(list_, "NewIndex"), Value(2));
  EXPECT_EQ(Get(list_, "ItemData", 2), Value(0)) << "a new item's number is 0";
}

TEST_F(ListModelTest, AddItemAtAnIndexShiftsTheItemsBehind) {
  AddLetters();
  Put(list_, "ItemData", 1, 20);
  Call(list_, "AddItem", "x", 1);
  EXPECT_EQ(Texts(), (std::vector<std::string>{"a", "x", "b", "c"}));
  EXPECT_EQ(Get(list_, "NewIndex"), Value(1));
  EXPECT_EQ(Get(list_, "ItemData", 1), Value(0));
  EXPECT_EQ(Get(list_, "ItemData", 2), Value(20));
}

TEST_F(ListModelTest, AddItemAtTheCountAppends) {
  AddLetters();
  Call(list_, "AddItem", "d", 3);
  EXPECT_EQ(Texts().back(), "d");
}

TEST_F(ListModelTest, AddItemWithAnOmittedIndexAppends) {
  AddLetters();
  Call(list_, "AddItem", "d", Missing{});
  EXPECT_EQ(Texts().back(), "d");
}

TEST_F(ListModelTest, AddItemTakesNumbersAsText) {
  Call(list_, "AddItem", 17);
  EXPECT_EQ(list_.Text(0), "17");
}

TEST_F(ListModelTest, AddItemLeavesTheCallersTextAlone) {
  std::vector<Value> arguments{Value("a long text that does not fit into the string itself")};
  list_.Invoke("AddItem", qorcred::InvokeKind::kCall, arguments);
  EXPECT_EQ(arguments[0], Value("a long text that does not fit into the string itself"));
}

TEST_F(ListModelTest, TheSelectionStaysOnItsItemWhenItemsAreAddedOrRemovedBeforeIt) {
  AddLetters();
  Put(list_, "ListIndex", 1);
  Call(list_, "AddItem", "x", 0);
  EXPECT_EQ(Get(list_, "Text"), Value("b"));
  EXPECT_EQ(Get(list_, "ListIndex"), Value(2));
  Call(list_, "RemoveItem", 0);
  EXPECT_EQ(Get(list_, "Text"), Value("b"));
  Call(list_, "RemoveItem", 2);
  EXPECT_EQ(Get(list_, "ListIndex"), Value(1));
}

TEST_F(ListModelTest, RemovingTheSelectedItemClearsTheSelection) {
  AddLetters();
  Put(list_, "ListIndex", 1);
  Call(list_, "RemoveItem", 1);
  EXPECT_EQ(Get(list_, "ListIndex"), Value(-1));
  EXPECT_EQ(Get(list_, "NewIndex"), Value(-1));
  EXPECT_EQ(Texts(), (std::vector<std::string>{"a", "c"}));
}

TEST_F(ListModelTest, ClearForgetsItemsSelectionAndNewIndex) {
  AddLetters();
  Put(list_, "ListIndex", 1);
  Call(list_, "Clear");
  EXPECT_EQ(Get(list_, "ListCount"), Value(0));
  EXPECT_EQ(Get(list_, "ListIndex"), Value(-1));
  EXPECT_EQ(Get(list_, "NewIndex"), Value(-1));
}

TEST_F(ListModelTest, ListIndexTakesMinusOneToTheLastIndexOnly) {
  AddLetters();
  for (const int index : {-1, 0, 2}) {
    Put(list_, "ListIndex", index);
    EXPECT_EQ(Get(list_, "ListIndex"), Value(index));
  }
  for (const int index : {-2, 3}) {
    EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { Put(list_, "ListIndex", index); }))
        << index;
    EXPECT_EQ(Get(list_, "ListIndex"), Value(2)) << "a refused index changes nothing";
  }
}

TEST_F(ListModelTest, ItemDataConvertsTextsAndRefusesOthers) {
  AddLetters();
  Put(list_, "ItemData", 0, "-100");
  EXPECT_EQ(Get(list_, "ItemData", 0), Value(-100));
  Put(list_, "ItemData", 0, 2.5);
  EXPECT_EQ(Get(list_, "ItemData", 0), Value(2)) << "rounded half to even";
  EXPECT_TRUE(Raises(ErrorNumber::kTypeMismatch, [&] { Put(list_, "ItemData", 0, "ten"); }));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidUseOfNull, [&] { Put(list_, "ItemData", 0, Null{}); }));
  EXPECT_TRUE(Raises(ErrorNumber::kOverflow, [&] { Put(list_, "ItemData", 0, 2147483648.0); }));
  EXPECT_EQ(Get(list_, "ItemData", 0), Value(2));
}

TEST_F(ListModelTest, IndexesOutsideTheListAreRefusedAndChangeNothing) {
  AddLetters();
  for (const int index : {-1, 3}) {
    EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { Get(list_, "ItemData", index); }));
    EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { Put(list_, "ItemData", index, 1); }));
    EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { Get(list_, "List", index); }));
    EXPECT_TRUE(
        Raises(ErrorNumber::kInvalidProcedureCall, [&] { Call(list_, "RemoveItem", index); }));
  }
  for (const int index : {-1, 4}) {
    EXPECT_TRUE(
        Raises(ErrorNumber::kInvalidProcedureCall, [&] { Call(list_, "AddItem", "x", index); }));
  }
  EXPECT_EQ(Texts(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(ListModelTest, ListReadsAndWritesAnItemsText) {
  AddLetters();
  Put(list_, "List", 1, "beta");
  EXPECT_EQ(Get(list_, "List", 1), Value("beta"));
}

TEST_F(ListModelTest, WritingTheTextSelectsTheItemThatHasIt) {
  AddLetters();
  Put(list_, "Text", "c");
  EXPECT_EQ(Get(list_, "ListIndex"), Value(2));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { Put(list_, "Text", "z"); }));
  EXPECT_EQ(Get(list_, ""), Value("c")) << "the text is the default member";
}

TEST_F(ListModelTest, TheHandlerHearsOfEveryChangeOfTheSelectionThroughListIndex) {
  AddLetters();
  std::vector<std::int32_t> heard;
  const auto listening = list_.OnSelect([&](std::int32_t index) { heard.push_back(index); });
  Put(list_, "ListIndex", 1);
  Put(list_, "ListIndex", 1);
  Put(list_, "ListIndex", -1);
  Put(list_, "ListIndex", 0);
  Call(list_, "RemoveItem", 0);
  Call(list_, "Clear");
  EXPECT_EQ(heard, (std::vector<std::int32_t>{1, -1, 0}));
}

TEST_F(ListModelTest, TheHandlerMayRefillTheListAndReplaceItself) {
  AddLetters();
  qorhost::Subscription listening;
  listening = list_.OnSelect([&](std::int32_t) {
    listening = list_.OnSelect([](std::int32_t) {});
    list_.Clear();
    list_.AddItem("only");
    list_.Select(0);
  });
  Put(list_, "ListIndex", 2);
  EXPECT_EQ(list_.SelectedText(), "only");
}

TEST_F(ListModelTest, AnItemIsAddedWithItsNumber) {
  AddLetters();
  EXPECT_EQ(list_.AddItemWithData("d", 40), 3);
  EXPECT_EQ(list_.ItemData(3), 40);
  EXPECT_EQ(list_.newIndex(), 3);
  list_.SetItemData(3, 41);
  list_.SetText(3, "e");
  EXPECT_EQ(Get(list_, "ItemData", 3), Value(41));
  EXPECT_EQ(Get(list_, "List", 3), Value("e"));
  EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { list_.SetItemData(4, 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::kIndexOutOfRange, [&] { list_.SetText(-1, "x"); }));
}

TEST_F(ListModelTest, FindsItemsByTextAndNumber) {
  AddLetters();
  Put(list_, "ItemData", 2, 30);
  EXPECT_EQ(list_.FindText("b"), 1);
  EXPECT_EQ(list_.FindText("z"), ListModel::kNone);
  EXPECT_EQ(list_.FindData(30), 2);
  EXPECT_EQ(list_.FindData(31), ListModel::kNone);
}

TEST_F(ListModelTest, WrongArgumentCountsAreRefused) {
  AddLetters();
  const auto number = ErrorNumber::kWrongArgumentCount;
  EXPECT_TRUE(Raises(number, [&] { Call(list_, "AddItem"); }));
  EXPECT_TRUE(Raises(number, [&] { Call(list_, "AddItem", "x", 0, 0); }));
  EXPECT_TRUE(Raises(number, [&] { Call(list_, "Clear", 1); }));
  EXPECT_TRUE(Raises(number, [&] { Call(list_, "RemoveItem"); }));
  EXPECT_TRUE(Raises(number, [&] { Get(list_, "ItemData"); }));
  EXPECT_TRUE(Raises(number, [&] { Put(list_, "ItemData", 1); }));
  EXPECT_TRUE(Raises(number, [&] { Get(list_, "ListCount", 1); }));
  EXPECT_TRUE(Raises(number, [&] { Put(list_, "ListIndex", 1, 2); }));
  EXPECT_TRUE(Raises(number, [&] { Get(list_, "NewIndex", 1); }));
  EXPECT_TRUE(Raises(number, [&] { Get(list_, "Text", 1); }));
}

TEST_F(ListModelTest, ReadOnlyMembersAndMethodsCannotBeWritten) {
  for (const char* member : {"NewIndex", "ListCount", "Clear", "AddItem", "RemoveItem"}) {
    EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Put(list_, member, 1); })) << member;
  }
}

TEST_F(ListModelTest, MembersThatOtherControlsHaveAreUnknown) {
  for (const char* member : {"Value", "Month", "MaxLength", "Count", "Sorted", "x"}) {
    EXPECT_TRUE(Raises(ErrorNumber::kUnknownMember, [&] { Get(list_, member); })) << member;
  }
}

TEST_F(ListModelTest, MemberNamesCompareWithoutLetterCase) {
  Call(list_, "ADDITEM", "a");
  EXPECT_EQ(Get(list_, "listcount"), Value(1));
}

TEST_F(ListModelTest, HoldsTheLongestCredentialListThroughTheTypedView) {
  const auto list = std::make_shared<ListModel>();
  const qorcred::ListControl view{qorcred::ObjectRef(list)};
  constexpr std::int32_t kMost = 65535;
  for (std::int32_t number = 1; number <= kMost; ++number) {
    view.AddItemWithData("Transmitter-" + std::to_string(number), number);
  }
  EXPECT_EQ(list->count(), kMost);
  EXPECT_EQ(list->ItemData(kMost - 1), kMost);
  EXPECT_EQ(list->Text(0), "Transmitter-1");
}

}  // namespace

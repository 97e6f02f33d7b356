#include "frame/object.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "frame/convert.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

/// Remembers how it was reached and answers with the number of arguments.
class Witness final : public Object {
 public:
  Value Invoke(std::string_view member, InvokeKind kind, Arguments arguments) override {
    lastMember = member;
    lastKind = kind;
    lastArguments.assign(arguments.begin(), arguments.end());
    lastPassing.clear();
    for (std::size_t at = 0; at < arguments.size(); ++at) {
      lastPassing.push_back(arguments.PassingOf(at));
    }
    for (Value& argument : arguments) argument = "changed";
    return static_cast<std::int32_t>(arguments.size());
  }

  std::string lastMember;
  InvokeKind lastKind = InvokeKind::kCall;
  std::vector<Value> lastArguments;
  std::vector<Passing> lastPassing;
};

TEST(ObjectTest, GetReadsWithItsIndexes) {
  Witness object;
  EXPECT_EQ(Get(object, "ItemData", 3), Value(1));
  EXPECT_EQ(object.lastMember, "ItemData");
  EXPECT_EQ(object.lastKind, InvokeKind::kGet);
  EXPECT_EQ(object.lastArguments, std::vector<Value>{Value(3)});
  EXPECT_EQ(Get(object, "Text"), Value(0));
}

TEST(ObjectTest, PutHandsTheValueOverLast) {
  Witness object;
  Put(object, "ItemData", 3, "text");
  EXPECT_EQ(object.lastKind, InvokeKind::kPut);
  EXPECT_EQ(object.lastArguments, (std::vector<Value>{Value(3), Value("text")}));
}

TEST(ObjectTest, CallHandsEveryTypeOver) {
  Witness object;
  const Date date{46053.5};
  Call(object, "Run", true, std::int16_t{2}, 3, 4.5, date, std::string("five"), Null(), Missing(),
       StringArray{"a", "b"});
  EXPECT_EQ(object.lastKind, InvokeKind::kCall);
  EXPECT_EQ(object.lastArguments, (std::vector<Value>{true, std::int16_t{2}, 3, 4.5, date, "five",
                                                      Null(), Missing(), StringArray{"a", "b"}}));
}

TEST(ObjectTest, ArgumentsAreValuesUnlessTheyAreVariables) {
  Witness object;
  Get(object, "ItemData", 3);
  EXPECT_EQ(object.lastPassing, std::vector<Passing>{Passing::kValue});
  Put(object, "ItemData", 3, "text");
  EXPECT_EQ(object.lastPassing, (std::vector<Passing>{Passing::kValue, Passing::kValue}));
  Call(object, "Run", 1, Variable(2), true);
  EXPECT_EQ(object.lastArguments, (std::vector<Value>{1, 2, true}));
  EXPECT_EQ(object.lastPassing,
            (std::vector<Passing>{Passing::kValue, Passing::kVariable, Passing::kValue}));
}

TEST(ObjectTest, ArgumentsAreReadBackUnlessToldOtherwise) {
  Witness object;
  std::vector<Value> arguments{1, 2};
  object.Invoke("Fill", InvokeKind::kCall, arguments);
  EXPECT_EQ(object.lastPassing, (std::vector<Passing>{Passing::kReadBack, Passing::kReadBack}));
  const std::array told{Passing::kVariable};
  object.Invoke("Fill", InvokeKind::kCall, {arguments, told});
  EXPECT_EQ(object.lastPassing, (std::vector<Passing>{Passing::kVariable, Passing::kReadBack}));
}

TEST(ObjectTest, ArgumentsComeBackChanged) {
  Witness object;
  std::vector<Value> arguments{1, 2};
  object.Invoke("Fill", InvokeKind::kCall, arguments);
  EXPECT_EQ(arguments, (std::vector<Value>{"changed", "changed"}));
}

TEST(ObjectTest, RequireObjectGivesTheReferenceOrTheRightError) {
  const ObjectRef object = std::make_shared<Witness>();
  EXPECT_EQ(RequireObject(Value(object)), object);
  const struct {
    const char* name;
    Value value;
    const char* expected;
  } rows[] = {
      {"NothingAssigned", Value(ObjectRef()), "error 91"},
      {"Empty", Value(), "error 424"},
      {"Null", Null(), "error 424"},
      {"Number", 5, "error 424"},
      {"Text", "cboAssignedTo", "error 424"},
      {"LeftOut", Missing(), "error 424"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { static_cast<void>(RequireObject(row.value)); }), row.expected);
  });
}

TEST(ObjectTest, RequireSetRefusesANullReference) {
  const ObjectRef object = std::make_shared<Witness>();
  EXPECT_EQ(&RequireSet(object), object.get());
  EXPECT_EQ(Outcome([] { static_cast<void>(RequireSet(ObjectRef())); }), "error 91");
}

TEST(ObjectTest, MemberNamesCompareWithoutAsciiCase) {
  const struct {
    const char* name;
    const char* one;
    const char* other;
    bool same;
  } rows[] = {
      {"Identical", "ItemData", "ItemData", true},
      {"OtherCase", "ItemData", "ITEMdata", true},
      {"BothEmpty", "", "", true},
      {"OneEmpty", "", "Text", false},
      {"Prefix", "Item", "ItemData", false},
      {"OtherLetter", "ItemData", "ItemDate", false},
      {"BesideTheLetters", "@[", "`{", false},
      {"BeyondAscii", "\xC3\x84", "\xC3\xA4", false},
  };
  ForEachRow(rows, [](const auto& row) { EXPECT_EQ(SameMember(row.one, row.other), row.same); });
}

}  // namespace
}  // namespace qorcred

// Late-bound calls by a member table: what arguments become, what is refused, what is handed back.
#include "frame/member_table.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

constexpr Parameter kBoolean[] = {{"blnFlag", ValueType::kBoolean}};
constexpr Parameter kInteger[] = {{"intNumber", ValueType::kInteger}};
constexpr Parameter kLong[] = {{"lngNumber", ValueType::kLong}};
constexpr Parameter kDouble[] = {{"dblNumber", ValueType::kDouble}};
constexpr Parameter kDate[] = {{"dtmDay", ValueType::kDate}};
constexpr Parameter kString[] = {{"strText", ValueType::kString}};
constexpr Parameter kObject[] = {{"objAny", ValueType::kObject}};
constexpr Parameter kTexts[] = {{"strTexts", ValueType::kStringArray, true}};
constexpr Parameter kAnything[] = {{"varAny", ValueType::kEmpty}};
constexpr Parameter kThree[] = {{"lngByRef", ValueType::kLong, true},
                                {"lngByVal", ValueType::kLong},
                                {"lngOptional", ValueType::kLong, true, -5}};
constexpr Parameter kDefaults[] = {
    {"blnOptional", ValueType::kBoolean, false, true},
    {"objOptional", ValueType::kObject, false, Omitting::kGivesNothing},
    {"lngOptional", ValueType::kLong, false, 4}};

/// Remembers the arguments that its members received; an operation then writes 7 over each.
class Sample final : public Controller {
 public:
  [[nodiscard]] std::span<const Member> Members() const override;

  std::vector<Value> received;
  int runs = 0;
};

Value Run(Controller& controller, InvokeKind /*kind*/, Arguments arguments) {
  Sample& sample = static_cast<Sample&>(controller);
  ++sample.runs;
  sample.received.assign(arguments.begin(), arguments.end());
  for (Value& argument : arguments) argument = 7;
  return "done";
}

Value RunProperty(Controller& controller, InvokeKind kind, Arguments arguments) {
  Sample& sample = static_cast<Sample&>(controller);
  ++sample.runs;
  if (kind == InvokeKind::kPut) sample.received.assign(arguments.begin(), arguments.end());
  return kind == InvokeKind::kGet ? Value("read") : Value();
}

constexpr Member kMembers[] = {
    {1, "TakeBoolean", MemberKind::kOperation, kBoolean, ValueType::kString, Run},
    {2, "TakeInteger", MemberKind::kOperation, kInteger, ValueType::kString, Run},
    {3, "TakeLong", MemberKind::kOperation, kLong, ValueType::kString, Run},
    {4, "TakeDouble", MemberKind::kOperation, kDouble, ValueType::kString, Run},
    {5, "TakeDate", MemberKind::kOperation, kDate, ValueType::kString, Run},
    {6, "TakeString", MemberKind::kOperation, kString, ValueType::kString, Run},
    {7, "TakeObject", MemberKind::kOperation, kObject, ValueType::kString, Run},
    {8, "TakeTexts", MemberKind::kOperation, kTexts, ValueType::kString, Run},
    {9, "TakeAnything", MemberKind::kOperation, kAnything, ValueType::kString, Run},
    {10, "TakeThree", MemberKind::kOperation, kThree, ValueType::kString, Run},
    {13, "TakeDefaults", MemberKind::kOperation, kDefaults, ValueType::kString, Run},
    {11, "Screen", MemberKind::kProperty, {}, ValueType::kObject, RunProperty},
    {12, "Count", MemberKind::kProperty, {}, ValueType::kLong, RunProperty},
};

std::span<const Member> Sample::Members() const {
  return kMembers;
}

const ObjectRef& SomeObject() {
  static const ObjectRef object = std::make_shared<Sample>();
  return object;
}

TEST(MemberTableTest, ArgumentsBecomeTheTypeOfTheirParameter) {
  const struct {
    const char* name;
    const char* member;
    Value given;
    Value received;
  } rows[] = {
      {"BooleanOfAWord", "TakeBoolean", "true", true},
      {"BooleanOfANumber", "TakeBoolean", 2.5, true},
      {"BooleanOfEmpty", "TakeBoolean", Value(), false},
      {"IntegerOfALong", "TakeInteger", 32767, std::int16_t{32767}},
      {"IntegerOfAHalf", "TakeInteger", -2.5, std::int16_t{-2}},
      {"IntegerOfTrue", "TakeInteger", true, std::int16_t{-1}},
      {"LongOfAText", "TakeLong", " 12 ", 12},
      {"LongOfAnInteger", "TakeLong", std::int16_t{12}, 12},
      {"LongOfEmpty", "TakeLong", Value(), 0},
      {"DoubleOfAText", "TakeDouble", "2.5", 2.5},
      {"DoubleOfALong", "TakeDouble", 3, 3.0},
      {"DateOfAText", "TakeDate", "1/31/2026", Date{46053.0}},
      {"DateOfANumber", "TakeDate", 46053.5, Date{46053.5}},
      {"StringOfANumber", "TakeString", 12.5, "12.5"},
      {"StringOfADate", "TakeString", Date{46053.0}, "1/31/2026"},
      {"StringOfEmpty", "TakeString", Value(), ""},
      {"Object", "TakeObject", SomeObject(), SomeObject()},
      {"Nothing", "TakeObject", ObjectRef(), ObjectRef()},
      {"Texts", "TakeTexts", StringArray{"a", "b"}, StringArray{"a", "b"}},
      {"NoTexts", "TakeTexts", StringArray(), StringArray()},
      {"AnyNull", "TakeAnything", Null(), Null()},
      {"AnyEmpty", "TakeAnything", Value(), Value()},
      {"AnyObject", "TakeAnything", SomeObject(), SomeObject()},
  };
  ForEachRow(rows, [](const auto& row) {
    Sample sample;
    EXPECT_EQ(Call(sample, row.member, row.given), Value("done"));
    EXPECT_EQ(sample.received, std::vector<Value>{row.received});
  });
}

TEST(MemberTableTest, ArgumentsThatCannotBecomeItAreRefusedBeforeTheMemberRuns) {
  const struct {
    const char* name;
    const char* member;
    Value given;
    const char* expected;
  } rows[] = {
      {"BooleanOfAText", "TakeBoolean", "yes", "error 13"},
      {"BooleanOfNull", "TakeBoolean", Null(), "error 94"},
      {"IntegerTooLarge", "TakeInteger", 32768, "error 6"},
      {"IntegerTooSmall", "TakeInteger", -32769, "error 6"},
      {"IntegerOfAText", "TakeInteger", "12a", "error 13"},
      {"LongTooLarge", "TakeLong", 2147483648.0, "error 6"},
      {"LongOfAnObject", "TakeLong", SomeObject(), "error 13"},
      {"LongOfNull", "TakeLong", Null(), "error 94"},
      {"DoubleOfAText", "TakeDouble", "", "error 13"},
      {"DoubleOfNull", "TakeDouble", Null(), "error 94"},
      {"DateOfAText", "TakeDate", "someday", "error 13"},
      {"DateOutsideTheCalendar", "TakeDate", 1E7, "error 6"},
      {"DateOfNull", "TakeDate", Null(), "error 94"},
      {"StringOfNull", "TakeString", Null(), "error 94"},
      {"StringOfAnObject", "TakeString", SomeObject(), "error 13"},
      {"StringOfTexts", "TakeString", StringArray{"a"}, "error 13"},
      {"ObjectOfEmpty", "TakeObject", Value(), "error 424"},
      {"ObjectOfNull", "TakeObject", Null(), "error 424"},
      {"ObjectOfAText", "TakeObject", "screen", "error 424"},
      {"TextsOfAText", "TakeTexts", "a", "error 13"},
      {"TextsOfEmpty", "TakeTexts", Value(), "error 13"},
      {"TextsOfAnObject", "TakeTexts", SomeObject(), "error 13"},
  };
  ForEachRow(rows, [](const auto& row) {
    Sample sample;
    EXPECT_EQ(Outcome([&] { Call(sample, row.member, row.given); }), row.expected);
    EXPECT_EQ(sample.runs, 0);
  });
}

TEST(MemberTableTest, OperationsAreCountedTheirArguments) {
  const struct {
    const char* name;
    std::vector<Value> arguments;
    const char* expected;
  } rows[] = {
      {"All", {1, 2, 3}, "done"},
      {"WithoutTheOptionalOne", {1, 2}, "done"},
      {"OptionalOneOmitted", {1, 2, Missing()}, "done"},
      {"TooMany", {1, 2, 3, 4}, "error 450"},
      {"TooManyOmitted", {1, 2, 3, Missing()}, "error 450"},
      {"None", {}, "error 449"},
      {"WithoutTheSecond", {1}, "error 449"},
      {"FirstOmitted", {Missing(), 2, 3}, "error 449"},
      {"SecondOmitted", {1, Missing(), 3}, "error 449"},
  };
  ForEachRow(rows, [](const auto& row) {
    Sample sample;
    std::vector<Value> arguments = row.arguments;
    EXPECT_EQ(Outcome([&] { sample.Invoke("TakeThree", InvokeKind::kCall, arguments); }),
              row.expected);
    EXPECT_EQ(sample.runs, row.expected == std::string("done") ? 1 : 0);
  });
}

TEST(MemberTableTest, AnOmittedArgumentArrivesAsItsDefault) {
  Sample sample;
  Call(sample, "TakeThree", 1, 2);
  EXPECT_EQ(sample.received, (std::vector<Value>{1, 2, -5}));
  Call(sample, "TakeThree", 1, 2, Missing());
  EXPECT_EQ(sample.received, (std::vector<Value>{1, 2, -5}));
  Call(sample, "TakeDefaults");
  EXPECT_EQ(sample.received, (std::vector<Value>{true, ObjectRef(), 4}));
  Call(sample, "TakeDefaults", Missing(), Missing(), 9);
  EXPECT_EQ(sample.received, (std::vector<Value>{true, ObjectRef(), 9}));
}

TEST(MemberTableTest, AGivenArgumentIsNeverReplacedByTheDefault) {
  Sample sample;
  Call(sample, "TakeDefaults", false, SomeObject(), 0);
  EXPECT_EQ(sample.received, (std::vector<Value>{false, SomeObject(), 0}));
  Call(sample, "TakeDefaults", Value(), ObjectRef(), Value());
  EXPECT_EQ(sample.received, (std::vector<Value>{false, ObjectRef(), 0}));
}

TEST(MemberTableTest, OnlyByRefArgumentsThatWereGivenComeBack) {
  Sample sample;
  std::vector<Value> all{"1", "2", "3"};
  sample.Invoke("TakeThree", InvokeKind::kCall, all);
  EXPECT_EQ(all, (std::vector<Value>{7, "2", 7}));

  std::vector<Value> omitted{"1", "2", Missing()};
  sample.Invoke("TakeThree", InvokeKind::kCall, omitted);
  EXPECT_EQ(omitted, (std::vector<Value>{7, "2", Missing()}));
}

TEST(MemberTableTest, RefusedArgumentsStayAsTheyWere) {
  Sample sample;
  std::vector<Value> arguments{"1", "two", "3"};
  EXPECT_EQ(Outcome([&] { sample.Invoke("TakeThree", InvokeKind::kCall, arguments); }), "error 13");
  EXPECT_EQ(arguments, (std::vector<Value>{"1", "two", "3"}));
}

TEST(MemberTableTest, AnObjectPropertyIsReleasedWithEmptyOrNothing) {
  for (const Value& nothing : {Value(), Value(ObjectRef())}) {
    Sample sample;
    Put(sample, "Screen", nothing);
    EXPECT_EQ(sample.received, std::vector<Value>{ObjectRef()});
  }
}

TEST(MemberTableTest, PropertiesAreConvertedAndCounted) {
  const struct {
    const char* name;
    const char* member;
    InvokeKind kind;
    std::vector<Value> arguments;
    const char* expected;
  } rows[] = {
      {"Read", "Count", InvokeKind::kGet, {}, "done"},
      {"ReadByACall", "Count", InvokeKind::kCall, {}, "done"},
      {"ReadWithAnIndex", "Count", InvokeKind::kGet, {1}, "error 450"},
      {"Put", "Count", InvokeKind::kPut, {"12"}, "done"},
      {"PutOfATextThatIsNoNumber", "Count", InvokeKind::kPut, {"twelve"}, "error 13"},
      {"PutOfNull", "Count", InvokeKind::kPut, {Null()}, "error 94"},
      {"PutOfNoValue", "Count", InvokeKind::kPut, {}, "error 450"},
      {"PutWithAnIndex", "Count", InvokeKind::kPut, {1, 12}, "error 450"},
      {"PutOfAnObject", "Screen", InvokeKind::kPut, {SomeObject()}, "done"},
      {"PutOfANumberForAnObject", "Screen", InvokeKind::kPut, {5}, "error 424"},
      {"PutOfNullForAnObject", "Screen", InvokeKind::kPut, {Null()}, "error 424"},
  };
  ForEachRow(rows, [](const auto& row) {
    Sample sample;
    std::vector<Value> arguments = row.arguments;
    EXPECT_EQ(Outcome([&] { sample.Invoke(row.member, row.kind, arguments); }), row.expected);
    EXPECT_EQ(sample.runs, row.expected == std::string("done") ? 1 : 0);
  });
}

TEST(MemberTableTest, APutReceivesTheConvertedValueAndGivesNothing) {
  Sample sample;
  std::vector<Value> arguments{"12"};
  EXPECT_EQ(sample.Invoke("count", InvokeKind::kPut, arguments), Value());
  EXPECT_EQ(sample.received, std::vector<Value>{12});
  EXPECT_EQ(Get(sample, "COUNT"), Value("read"));
}

TEST(MemberTableTest, UnknownMembersAndPutsOnOperationsAreRefused) {
  Sample sample;
  EXPECT_EQ(Outcome([&] { Call(sample, "TakeNothing"); }), "error 438");
  EXPECT_EQ(Outcome([&] { Get(sample, ""); }), "error 438");
  EXPECT_EQ(Outcome([&] { Put(sample, "TakeLong", 1); }), "error 438");
  EXPECT_EQ(sample.runs, 0);
}

TEST(MemberTableTest, MembersAreFoundInAnyCase) {
  ASSERT_NE(FindMember(kMembers, "takelong"), nullptr);
  EXPECT_EQ(FindMember(kMembers, "takelong")->id, 3);
  EXPECT_EQ(FindMember(kMembers, "TakeLon"), nullptr);
  EXPECT_EQ(FindMember({}, "TakeLong"), nullptr);
}

}  // namespace
}  // namespace qorcred

// Rows made from member pointers: each kind of parameter and result on its way through a call.
#include "frame/member_rows.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qorcred {
namespace {

/// What the base of two controllers offers works in the table of each.
class Base : public Controller {
 public:
  [[nodiscard]] std::int32_t unit() const { return unit_; }
  void set_unit(std::int32_t unit) { unit_ = unit; }

 private:
  std::int32_t unit_ = 3;
};

class Sample final : public Base {
 public:
  [[nodiscard]] std::span<const Member> Members() const override;

  [[nodiscard]] const ObjectRef& screen() const { return screen_; }
  void set_screen(ObjectRef screen) { screen_ = std::move(screen); }
  [[nodiscard]] const std::string& name() const { return name_; }
  void set_name(std::string name) { name_ = std::move(name); }

  std::string Join(bool flag, std::int32_t number, std::string_view text) {
    return std::string(flag ? "yes" : "no") + std::to_string(number) + std::string(text);
  }
  std::int32_t Change(std::int32_t& number, std::string& text, StringArray& texts,
                      ObjectRef& object) {
    number += 1;
    text += "!";
    texts.emplace_back("more");
    object = screen_;
    return 12;
  }
  bool Store(const ObjectRef& object, std::int32_t* rid) {
    if (rid != nullptr) *rid = 7;
    return object != nullptr;
  }
  void Forget() { name_.clear(); }

 private:
  ObjectRef screen_;
  std::string name_ = "sample";
};

constexpr Parameter kJoin[] = {{"blnFlag", ValueType::kBoolean},
                               {"lngNumber", ValueType::kLong},
                               {"strText", ValueType::kString}};
constexpr Parameter kChange[] = {{"lngNumber", ValueType::kLong, true},
                                 {"strText", ValueType::kString, true},
                                 {"strTexts", ValueType::kStringArray, true},
                                 {"objAny", ValueType::kObject, true}};
constexpr Parameter kStore[] = {{"objAny", ValueType::kObject, true},
                                {"lngRID", ValueType::kLong, true, 0}};
constexpr Member kMembers[] = {
    Property<&Sample::screen, &Sample::set_screen>(1, "Screen"),
    Property<&Sample::name, &Sample::set_name>(2, "Name"),
    Property<&Sample::unit, &Sample::set_unit>(3, "Unit"),
    Operation<&Sample::Join>(4, "Join", kJoin),
    Operation<&Sample::Change>(5, "Change", kChange),
    Operation<&Sample::Store>(6, "Store", kStore),
    Operation<&Sample::Forget>(7, "Forget"),
};

std::span<const Member> Sample::Members() const {
  return kMembers;
}

// Rows that do not fit their functions are refused when they are compiled.
using JoinThunk = member_rows::Thunk<&Sample::Join>;
using ChangeThunk = member_rows::Thunk<&Sample::Change>;
using StoreThunk = member_rows::Thunk<&Sample::Store>;
constexpr Parameter kFlag{"blnFlag", ValueType::kBoolean};
constexpr Parameter kNumber{"lngNumber", ValueType::kLong};
constexpr Parameter kText{"strText", ValueType::kString};
constexpr Parameter kOptionalNumber{"lngNumber", ValueType::kLong, false, 5};
constexpr Parameter kOptionalText{"strText", ValueType::kString, false, 5};
constexpr Parameter kFlagWithANumber{"blnFlag", ValueType::kBoolean, false, 1};

constexpr Parameter kTooFew[] = {kFlag, kNumber};
constexpr Parameter kTooMany[] = {kFlag, kNumber, kText, kText};
constexpr Parameter kOtherType[] = {kNumber, kNumber, kText};
constexpr Parameter kOtherDefault[] = {kFlagWithANumber, kOptionalNumber, kOptionalText};
constexpr Parameter kRequiredBehindOptional[] = {kFlag, kOptionalNumber, kText};
constexpr Parameter kByValue[] = {{"objAny", ValueType::kObject, true},
                                  {"lngRID", ValueType::kLong}};

static_assert(JoinThunk::Fits(kJoin));
static_assert(!JoinThunk::Fits(kTooFew));
static_assert(!JoinThunk::Fits(kTooMany));
static_assert(!JoinThunk::Fits(kOtherType));
static_assert(!JoinThunk::Fits(kOtherDefault));
static_assert(!JoinThunk::Fits(kRequiredBehindOptional));
static_assert(ChangeThunk::Fits(kChange));
static_assert(StoreThunk::Fits(kStore));
static_assert(!StoreThunk::Fits(kByValue));

TEST(MemberRowsTest, TypesComeFromTheFunctions) {
  const ValueType expected[] = {ValueType::kObject, ValueType::kString, ValueType::kLong,
                                ValueType::kString, ValueType::kLong,   ValueType::kBoolean,
                                ValueType::kEmpty};
  for (std::size_t at = 0; at < std::size(kMembers); ++at) {
    EXPECT_EQ(kMembers[at].type, expected[at]) << kMembers[at].name;
    EXPECT_EQ(kMembers[at].kind, at < 3 ? MemberKind::kProperty : MemberKind::kOperation);
  }
}

TEST(MemberRowsTest, ValuesAreHandedIn) {
  Sample sample;
  EXPECT_EQ(Call(sample, "Join", true, 5, "x"), Value("yes5x"));
}

TEST(MemberRowsTest, WhatAFunctionChangesComesBack) {
  Sample sample;
  const ObjectRef screen = std::make_shared<Sample>();
  sample.set_screen(screen);
  std::vector<Value> arguments{1, "a", StringArray{"b"}, ObjectRef()};
  EXPECT_EQ(sample.Invoke("Change", InvokeKind::kCall, arguments), Value(12));
  EXPECT_EQ(arguments, (std::vector<Value>{2, "a!", StringArray{"b", "more"}, screen}));
}

TEST(MemberRowsTest, AResultByPointerComesBackToo) {
  Sample sample;
  std::vector<Value> arguments{ObjectRef(), 1};
  EXPECT_EQ(sample.Invoke("Store", InvokeKind::kCall, arguments), Value(false));
  EXPECT_EQ(arguments[1], Value(7));
  EXPECT_EQ(Call(sample, "Store", sample.screen()), Value(false));
}

TEST(MemberRowsTest, AFunctionWithoutResultGivesEmpty) {
  Sample sample;
  EXPECT_EQ(Call(sample, "Forget"), Value());
  EXPECT_EQ(sample.name(), "");
}

TEST(MemberRowsTest, PropertiesAreReadAndPut) {
  Sample sample;
  Put(sample, "Unit", 9);
  EXPECT_EQ(Get(sample, "Unit"), Value(9));
  EXPECT_EQ(sample.unit(), 9);
  Put(sample, "Name", "other");
  EXPECT_EQ(Get(sample, "Name"), Value("other"));
  const ObjectRef screen = std::make_shared<Sample>();
  Put(sample, "Screen", screen);
  EXPECT_EQ(Get(sample, "Screen"), Value(screen));
}

}  // namespace
}  // namespace qorcred

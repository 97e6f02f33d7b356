#include "frame/convert.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "frame/result_table.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

Value SomeObject() {
  return ObjectRef(std::make_shared<ResultTable>());
}

struct Row {
  const char* name;
  Value value;
  const char* expected;
};

template <typename Convert, std::size_t kCount>
void Check(const Row (&rows)[kCount], Convert convert) {
  ForEachRow(rows, [&](const Row& row) {
    EXPECT_EQ(Outcome([&] { return convert(row.value); }), row.expected);
  });
}

TEST(ToTextTest, WritesEveryType) {
  const Row rows[] = {
      {"Empty", Value(), ""},
      {"Null", Null(), "error 94"},
      {"True", true, "True"},
      {"False", false, "False"},
      {"Integer", std::int16_t{-32768}, "-32768"},
      {"Long", std::numeric_limits<std::int32_t>::min(), "-2147483648"},
      {"Zero", 0, "0"},
      {"WholeDouble", 12.0, "12"},
      {"Fraction", 12.5, "12.5"},
      {"LargeDouble", 1E15, "1E+15"},
      {"NotANumber", kNotANumber, "error 6"},
      {"Date", Date{46053.0}, "1/31/2026"},
      {"DateAndTime", Date{46053.0 + (14 * 3600 + 5 * 60 + 9) / 86400.0}, "1/31/2026 2:05:09 PM"},
      {"DateOutsideTheCalendar", Date{kNotANumber}, "error 5"},
      {"String", "a b ", "a b "},
      {"Object", SomeObject(), "error 13"},
      {"Nothing", ObjectRef(), "error 13"},
      {"Array", StringArray{"a"}, "error 13"},
      {"LeftOut", Missing(), "error 13"},
  };
  Check(rows, [](const Value& value) { return ToText(value); });
  Check(rows, [](Value value) { return ToText(std::move(value)); });
}

TEST(TextOrEmptyTest, GivesNothingForNullAndElseTheText) {
  const Row rows[] = {
      {"Empty", Value(), ""},
      {"Null", Null(), ""},
      {"True", true, "True"},
      {"Number", 12, "12"},
      {"String", "a", "a"},
      {"Object", SomeObject(), "error 13"},
      {"LeftOut", Missing(), "error 13"},
  };
  Check(rows, [](const Value& value) { return TextOrEmpty(value); });
  Check(rows, [](Value value) { return TextOrEmpty(std::move(value)); });
}

TEST(ToBooleanTest, ReadsNumbersAndTheTwoWords) {
  const Row rows[] = {
      {"Empty", Value(), "false"},
      {"Null", Null(), "error 94"},
      {"True", true, "true"},
      {"False", false, "false"},
      {"Zero", 0, "false"},
      {"One", 1, "true"},
      {"MinusOne", -1, "true"},
      {"ShortZero", std::int16_t{0}, "false"},
      {"Fraction", 0.25, "true"},
      {"MinusZero", -0.0, "false"},
      {"NotANumber", kNotANumber, "error 6"},
      {"Date", Date{1.0}, "true"},
      {"WordTrue", "True", "true"},
      {"WordInAnyCase", "fALSE", "false"},
      {"WordWithBlanks", " true ", "true"},
      {"NumericText", "-1", "true"},
      {"ZeroText", "0.0", "false"},
      {"Yes", "Yes", "error 13"},
      {"EmptyText", "", "error 13"},
      {"Object", SomeObject(), "error 13"},
      {"Array", StringArray{}, "error 13"},
      {"LeftOut", Missing(), "error 13"},
  };
  Check(rows, [](const Value& value) { return ToBoolean(value); });
}

TEST(ToIntegerTest, RoundsHalfToEvenWithin16Bits) {
  const Row rows[] = {
      {"Empty", Value(), "0"},
      {"Null", Null(), "error 94"},
      {"True", true, "-1"},
      {"False", false, "0"},
      {"Itself", std::int16_t{7}, "7"},
      {"Largest", 32767, "32767"},
      {"TooLarge", 32768, "error 6"},
      {"Smallest", -32768, "-32768"},
      {"TooSmall", -32769, "error 6"},
      {"RoundsDownToTheLargest", 32767.49, "32767"},
      {"RoundsUpOutOfRange", 32767.5, "error 6"},
      {"RoundsToTheSmallest", -32768.5, "-32768"},
      {"RoundsDownOutOfRange", -32768.51, "error 6"},
      {"LargestText", "32767", "32767"},
      {"TooLargeText", "32768", "error 6"},
      {"Infinity", kInfinity, "error 6"},
      {"NotANumber", kNotANumber, "error 6"},
      {"Date", Date{366.5}, "366"},
      {"DateTooLate", Date{46053.0}, "error 6"},
      {"NoNumber", "12a", "error 13"},
      {"Object", SomeObject(), "error 13"},
      {"LeftOut", Missing(), "error 13"},
  };
  Check(rows, [](const Value& value) { return ToInteger(value); });
}

TEST(ToLongTest, RoundsHalfToEvenWithin32Bits) {
  const Row rows[] = {
      {"Empty", Value(), "0"},
      {"Null", Null(), "error 94"},
      {"True", true, "-1"},
      {"False", false, "0"},
      {"Integer", std::int16_t{-5}, "-5"},
      {"Itself", 70000, "70000"},
      {"Half", 0.5, "0"},
      {"OneAndAHalf", 1.5, "2"},
      {"TwoAndAHalf", 2.5, "2"},
      {"ThreeAndAHalf", 3.5, "4"},
      {"MinusHalf", -0.5, "0"},
      {"MinusOneAndAHalf", -1.5, "-2"},
      {"MinusTwoAndAHalf", -2.5, "-2"},
      {"JustBelowHalf", 0.49999999999999994, "0"},
      {"JustAboveHalf", 0.50000000000000011, "1"},
      {"Largest", 2147483647.0, "2147483647"},
      {"RoundsDownToTheLargest", 2147483647.49, "2147483647"},
      {"TooLarge", 2147483648.0, "error 6"},
      {"RoundsUpOutOfRange", 2147483647.5, "error 6"},
      {"Smallest", -2147483648.0, "-2147483648"},
      {"RoundsToTheSmallest", -2147483648.5, "-2147483648"},
      {"TooSmall", -2147483649.0, "error 6"},
      {"Infinity", kInfinity, "error 6"},
      {"NegativeInfinity", -kInfinity, "error 6"},
      {"NotANumber", kNotANumber, "error 6"},
      {"Text", " 1,234 ", "1234"},
      {"TextWithFraction", "2.5", "2"},
      {"LargestText", "2147483647", "2147483647"},
      {"TooLargeText", "2147483648", "error 6"},
      {"NegativeText", "(12)", "-12"},
      {"HexadecimalText", "&HFFFF", "-1"},
      {"TextBeyondADouble", "1E400", "error 6"},
      {"EmptyText", "", "error 13"},
      {"TextWithMore", "12 Main Street", "error 13"},
      {"Word", "True", "error 13"},
      {"DateText", "1/31/2026", "error 13"},
      {"Date", Date{46053.5}, "46054"},
      {"InfiniteDate", Date{kInfinity}, "error 6"},
      {"Object", SomeObject(), "error 13"},
      {"Array", StringArray{"1"}, "error 13"},
      {"LeftOut", Missing(), "error 13"},
  };
  Check(rows, [](const Value& value) { return ToLong(value); });
}

TEST(ToDoubleTest, DoesNotRound) {
  const Row rows[] = {
      {"Empty", Value(), "0"},
      {"Null", Null(), "error 94"},
      {"True", true, "-1"},
      {"Integer", std::int16_t{-5}, "-5"},
      {"Long", 2147483647, "2147483647"},
      {"Fraction", 2.5, "2.5"},
      {"Text", "2.5", "2.5"},
      {"Infinity", kInfinity, "error 6"},
      {"Date", Date{1.25}, "1.25"},
      {"NotANumberDate", Date{kNotANumber}, "error 6"},
      {"NoNumber", "x", "error 13"},
      {"Object", SomeObject(), "error 13"},
  };
  Check(rows, [](const Value& value) { return ToDouble(value); });
}

TEST(ToDateTest, ReadsDatesTextsAndSerials) {
  const Row rows[] = {
      {"Itself", Date{46053.25}, "46053.25"},
      {"Empty", Value(), "0"},
      {"Null", Null(), "error 94"},
      {"True", true, "-1"},
      {"Serial", 46053, "46053"},
      {"SerialWithTime", 46053.5, "46053.5"},
      {"FirstDay", -657434, "-657434"},
      {"EndOfTheFirstDay", -657434.75, "-657434.75"},
      {"BeforeTheFirstDay", -657435, "error 6"},
      {"EndOfTheLastDay", 2958465.75, "2958465.75"},
      {"AfterTheLastDay", 2958466, "error 6"},
      {"NotANumber", kNotANumber, "error 6"},
      {"DateOutsideTheCalendar", Date{3000000.0}, "error 6"},
      {"Text", "1/31/2026 12:00", "46053.5"},
      {"NumericText", "46053", "error 13"},
      {"NoDate", "2/30/2026", "error 13"},
      {"EmptyText", "", "error 13"},
      {"Object", SomeObject(), "error 13"},
      {"LeftOut", Missing(), "error 13"},
  };
  Check(rows, [](const Value& value) { return ToDate(value); });
}

TEST(IsNumericTest, DependsOnTheType) {
  const Row rows[] = {
      {"Empty", Value(), "true"},
      {"Null", Null(), "false"},
      {"Boolean", false, "true"},
      {"Integer", std::int16_t{0}, "true"},
      {"Long", 0, "true"},
      {"Double", 0.5, "true"},
      {"Date", Date{1.0}, "false"},
      {"NumericText", " 12 ", "true"},
      {"OtherText", "12a", "false"},
      {"EmptyText", "", "false"},
      {"Object", SomeObject(), "false"},
      {"Array", StringArray{"1"}, "false"},
      {"LeftOut", Missing(), "false"},
  };
  Check(rows, [](const Value& value) { return IsNumeric(value); });
}

TEST(NumericValueTest, ReadsTheTextOfTheValue) {
  const Row rows[] = {
      {"Empty", Value(), "0"},
      {"Null", Null(), "0"},
      {"EmptyText", "", "0"},
      {"Integer", std::int16_t{-3}, "-3"},
      {"Long", -2147483647, "-2147483647"},
      {"Double", 2.5, "2.5"},
      {"DoubleByItsText", 0.1 + 0.2, "0.3"},
      {"LeadingNumber", "12 Main Street", "12"},
      {"GroupingEnds", "1,234", "1"},
      // Their texts are "True" and "1/31/2026".
      {"True", true, "0"},
      {"Date", Date{46053.0}, "1"},
      {"Object", SomeObject(), "error 13"},
      {"LeftOut", Missing(), "error 13"},
      {"TextBeyondADouble", "1E400", "error 6"},
  };
  Check(rows, [](const Value& value) { return NumericValue(value); });
}

TEST(IsEmptyTextTest, CountsEmptyNullAndNoText) {
  const Row rows[] = {
      {"Empty", Value(), "true"},
      {"Null", Null(), "true"},
      {"EmptyText", "", "true"},
      {"Blank", " ", "false"},
      {"Zero", 0, "false"},
      {"False", false, "false"},
      {"LeftOut", Missing(), "false"},
      {"Object", ObjectRef(), "false"},
  };
  Check(rows, [](const Value& value) { return IsEmptyText(value); });
}

TEST(RoundTest, RefusesWhatDoesNotFit) {
  EXPECT_EQ(RoundToInteger(-0.5), 0);
  EXPECT_EQ(RoundToLong(1E9 + 0.5), 1'000'000'000);
  EXPECT_EQ(Outcome([] { return RoundToInteger(kNotANumber); }), "error 6");
  EXPECT_EQ(Outcome([] { return RoundToLong(1E300); }), "error 6");
}

TEST(EqualsTest, ComparesByTheTypesOfBothSides) {
  const struct {
    const char* name;
    Value one;
    Value other;
    const char* expected;
  } rows[] = {
      {"NumbersOfTwoTypes", 5, std::int16_t{5}, "true"},
      {"NumberAndFraction", 5, 5.5, "false"},
      {"TrueAndMinusOne", true, -1, "true"},
      {"TrueAndOne", true, 1, "false"},
      {"FalseAndZero", false, 0.0, "true"},
      {"SameDates", Date{1.5}, Date{1.5}, "true"},
      {"DateAndSerial", Date{1.5}, 1.5, "true"},
      {"SameTexts", "abc", "abc", "true"},
      {"TextsInOtherCase", "Single", "SINGLE", "false"},
      {"TextsThatAreTheSameNumber", "1", "1.0", "false"},
      {"TextAndNumber", "1.0", 1, "true"},
      {"NumberAndText", 1, " 1 ", "true"},
      {"TextAndOtherNumber", "2", 1, "false"},
      {"TextThatIsNoNumber", "abc", 1, "error 13"},
      {"EmptyTextAndNumber", "", 0, "error 13"},
      {"TextAndNotANumber", "1", kNotANumber, "error 6"},
      {"WordAndBoolean", "True", true, "true"},
      {"BooleanAndWord", false, "false", "true"},
      {"NumericTextAndBoolean", "-1", true, "true"},
      {"OneAndTrue", "1", true, "false"},
      {"OtherWordAndBoolean", "Yes", true, "error 13"},
      {"TextAndDate", "1/31/2026", Date{46053.0}, "true"},
      {"DateAndText", Date{46053.0}, "2026-01-31", "true"},
      {"NoDateAndDate", "soon", Date{46053.0}, "error 13"},
      {"EmptyAndEmpty", Value(), Value(), "true"},
      {"EmptyAndZero", Value(), 0, "true"},
      {"EmptyAndOne", 1, Value(), "false"},
      {"EmptyAndFalse", Value(), false, "true"},
      {"EmptyAndNoText", Value(), "", "true"},
      {"NoTextAndEmpty", "", Value(), "true"},
      {"TextAndEmpty", "0", Value(), "false"},
      {"NullAndNull", Null(), Null(), "false"},
      {"NullAndNumber", Null(), 0, "false"},
      {"TextAndNull", "", Null(), "false"},
      {"ObjectAndNumber", SomeObject(), 1, "error 13"},
      {"NumberAndObject", 1, SomeObject(), "error 13"},
      {"NullAndObject", Null(), ObjectRef(), "error 13"},
      {"Arrays", StringArray{"a"}, StringArray{"a"}, "error 13"},
      {"LeftOut", Missing(), "", "error 13"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { return Equals(row.one, row.other); }), row.expected);
    EXPECT_EQ(Outcome([&] { return Equals(row.other, row.one); }), row.expected);
  });
}

}  // namespace
}  // namespace qorcred

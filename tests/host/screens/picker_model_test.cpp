#include "host/screens/picker_model.h"

#include <gtest/gtest.h>

#include "frame/date.h"
#include "frame/object.h"
#include "tests/host/screens/expect_error.h"

namespace {

using qorcred::CivilTime;
using qorcred::ErrorNumber;
using qorcred::FromCivil;
using qorcred::Get;
using qorcred::Null;
using qorcred::Put;
using qorcred::ToCivil;
using qorcred::Value;
using qorhost::PickerModel;
using qortest::Raises;

class PickerModelTest : public ::testing::Test {
 protected:
  PickerModel picker_{FromCivil({2026, 1, 31, 14, 5, 9})};
};

TEST_F(PickerModelTest, StartsWithoutADateAndShowsTheDayItWasGiven) {
  EXPECT_EQ(Get(picker_, "Value"), Value(Null{}));
  EXPECT_EQ(Get(picker_, "Year"), Value(2026));
  EXPECT_EQ(Get(picker_, "Month"), Value(1));
  EXPECT_EQ(Get(picker_, "Day"), Value(31));
  EXPECT_EQ(Get(picker_, "Hour"), Value(14));
  EXPECT_EQ(Get(picker_, "Minute"), Value(5));
  EXPECT_EQ(Get(picker_, "Second"), Value(9));
}

TEST_F(PickerModelTest, TheLatestDateIsTheLastDayOfTheYear9999) {
  EXPECT_EQ(Get(picker_, "MaxDate"), Value(FromCivil({9999, 12, 31, 0, 0, 0})));
}

TEST_F(PickerModelTest, PartsOfAChosenDateChangeTheValue) {
  Put(picker_, "Value", FromCivil({2026, 3, 4, 0, 0, 0}));
  Put(picker_, "Hour", 23);
  Put(picker_, "Minute", 59);
  Put(picker_, "Second", 59);
  EXPECT_EQ(Get(picker_, "Value"), Value(FromCivil({2026, 3, 4, 23, 59, 59})));
}

TEST_F(PickerModelTest, PartsWrittenWhileNothingIsChosenChangeWhatIsShownAndChooseNothing) {
  Put(picker_, "Value", FromCivil({2026, 3, 4, 5, 6, 7}));
  Put(picker_, "Value", Null{});
  EXPECT_EQ(Get(picker_, "Day"), Value(4)) << "the date shown last stays";
  Put(picker_, "Year", 2027);
  EXPECT_EQ(Get(picker_, "Value"), Value(Null{}));
  EXPECT_EQ(picker_.shown(), FromCivil({2027, 3, 4, 5, 6, 7}));
}

struct PartRow {
  const char* name;
  const char* part;
  int value;
};

class RefusedPartTest : public ::testing::TestWithParam<PartRow> {};

TEST_P(RefusedPartTest, RaisesAndChangesNothing) {
  const auto start = FromCivil({2026, 1, 31, 14, 5, 9});
  PickerModel picker(start);
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall,
                     [&] { Put(picker, GetParam().part, GetParam().value); }));
  EXPECT_EQ(picker.shown(), start);
}

INSTANTIATE_TEST_SUITE_P(
    Parts, RefusedPartTest,
    ::testing::Values(PartRow{"FebruaryHasNoDay31", "Month", 2}, PartRow{"Month0", "Month", 0},
                      PartRow{"Month13", "Month", 13}, PartRow{"Day0", "Day", 0},
                      PartRow{"Day32", "Day", 32}, PartRow{"Hour24", "Hour", 24},
                      PartRow{"HourBelow0", "Hour", -1}, PartRow{"Minute60", "Minute", 60},
                      PartRow{"Second60", "Second", 60}, PartRow{"YearTooEarly", "Year", 1600},
                      PartRow{"YearTooLate", "Year", 10000},
                      PartRow{"LargestNumber", "Month", 2147483647}),
    [](const auto& row) { return row.param.name; });

TEST_F(PickerModelTest, The29thOfFebruaryNeedsALeapYear) {
  Put(picker_, "Value", FromCivil({2028, 2, 29, 0, 0, 0}));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] { Put(picker_, "Year", 2029); }));
  Put(picker_, "Month", 3);
  Put(picker_, "Day", 1);
  Put(picker_, "Year", 2029);
  EXPECT_EQ(ToCivil(picker_.shown()), (CivilTime{2029, 3, 1, 0, 0, 0}));
}

TEST_F(PickerModelTest, TheLimitsCountByDay) {
  Put(picker_, "MinDate", FromCivil({2026, 1, 1, 12, 0, 0}));
  Put(picker_, "MaxDate", FromCivil({2026, 12, 31, 0, 0, 0}));
  Put(picker_, "Value", FromCivil({2026, 12, 31, 23, 59, 59}));
  Put(picker_, "Value", FromCivil({2026, 1, 1, 0, 0, 0}));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] {
    Put(picker_, "Value", FromCivil({2027, 1, 1, 0, 0, 0}));
  }));
  EXPECT_TRUE(Raises(ErrorNumber::kInvalidProcedureCall, [&] {
    Put(picker_, "Value", FromCivil({2025, 12, 31, 23, 59, 59}));
  }));
  EXPECT_EQ(picker_.shown(), FromCivil({2026, 1, 1, 0, 0, 0}));
}

TEST_F(PickerModelTest, TheValueTakesDateTextsAndRefusesOthers) {
  Put(picker_, "Value", "3/4/2026");
  EXPECT_EQ(Get(picker_, ""), Value(FromCivil({2026, 3, 4, 0, 0, 0})));
  EXPECT_TRUE(Raises(ErrorNumber::kTypeMismatch, [&] { Put(picker_, "Value", "tomorrow"); }));
  EXPECT_EQ(picker_.shown(), FromCivil({2026, 3, 4, 0, 0, 0}));
}

TEST_F(PickerModelTest, WrongArgumentCountsAreRefused) {
  const auto number = ErrorNumber::kWrongArgumentCount;
  EXPECT_TRUE(Raises(number, [&] { Get(picker_, "Value", 1); }));
  EXPECT_TRUE(Raises(number, [&] { Put(picker_, "Month", 1, 2); }));
  EXPECT_TRUE(Raises(number, [&] { Get(picker_, "MaxDate", 1); }));
}

}  // namespace

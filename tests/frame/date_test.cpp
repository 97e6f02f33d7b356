#include "frame/date.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

constexpr double kSecond = 1.0 / 86400.0;
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

std::string ShownCivil(const CivilTime& civil) {
  std::string text;
  for (const int part : {civil.year, civil.month, civil.day, civil.hour, civil.minute}) {
    text += std::to_string(part) + " ";
  }
  return text + std::to_string(civil.second);
}

TEST(DateTest, SerialsAndCalendarDatesMatch) {
  const struct {
    const char* name;
    double serial;
    const char* civil;
  } rows[] = {
      {"DayZero", 0.0, "1899 12 30 0 0 0"},
      {"DayOne", 1.0, "1899 12 31 0 0 0"},
      {"FirstOf1900", 2.0, "1900 1 1 0 0 0"},
      {"NoLeapDayIn1900", 61.0, "1900 3 1 0 0 0"},
      {"LeapDayOf2000", 36585.0, "2000 2 29 0 0 0"},
      {"LeapDayOf2024", 45351.0, "2024 2 29 0 0 0"},
      {"NoLeapDayIn2100", 73110.0, "2100 3 1 0 0 0"},
      {"LastOfDecember", 46022.0, "2025 12 31 0 0 0"},
      {"FirstOfJanuary", 46023.0, "2026 1 1 0 0 0"},
      {"Noon", 46053.5, "2026 1 31 12 0 0"},
      {"DayBeforeDayZero", -1.0, "1899 12 29 0 0 0"},
      {"TimeBeforeDayZeroCountsForward", -1.25, "1899 12 29 6 0 0"},
      {"LateBeforeDayZero", -1.75, "1899 12 29 18 0 0"},
      {"FirstDay", -657434.0, "100 1 1 0 0 0"},
      {"NoonOfTheFirstDay", -657434.5, "100 1 1 12 0 0"},
      {"LastDay", 2958465.0, "9999 12 31 0 0 0"},
  };
  ForEachRow(rows, [](const auto& row) {
    const CivilTime civil = ToCivil(Date{row.serial});
    EXPECT_EQ(ShownCivil(civil), row.civil);
    EXPECT_EQ(FromCivil(civil).serial, row.serial);
  });
}

TEST(DateTest, EveryDayOfTheCalendarComesBack) {
  int previous = 31;
  for (std::int32_t day = -657434; day <= 2958465; ++day) {
    const CivilTime civil = ToCivil(Date{static_cast<double>(day)});
    ASSERT_EQ(FromCivil(civil).serial, day);
    ASSERT_TRUE(civil.day == previous + 1 || (civil.day == 1 && previous >= 28)) << day;
    previous = civil.day;
  }
}

TEST(DateTest, EverySecondOfADayComesBack) {
  for (const int day : {30, 29}) {
    for (int second = 0; second < 86400; ++second) {
      const Date date = FromCivil({1899, 12, day, 0, 0, second});
      const CivilTime civil = ToCivil(date);
      ASSERT_EQ((civil.hour * 60 + civil.minute) * 60 + civil.second, second);
      ASSERT_EQ(civil.day, day);
    }
  }
}

TEST(DateTest, HalfOfTheMinusOneToOneRangeIsDayZero) {
  EXPECT_EQ(ShownCivil(ToCivil(Date{-0.25})), "1899 12 30 6 0 0");
  EXPECT_EQ(ShownCivil(ToCivil(Date{0.25})), "1899 12 30 6 0 0");
}

TEST(DateTest, RoundingCarriesInsteadOfShowingSixtySeconds) {
  const struct {
    const char* name;
    double serial;
    const char* civil;
  } rows[] = {
      {"DownWithinTheSecond", 46053.0 + 59.4 * kSecond, "2026 1 31 0 0 59"},
      {"IntoTheMinute", 46053.0 + 59.6 * kSecond, "2026 1 31 0 1 0"},
      {"IntoTheHour", 46053.0 + 3599.6 * kSecond, "2026 1 31 1 0 0"},
      {"IntoTheNextDay", 46054.0 - 0.4 * kSecond, "2026 2 1 0 0 0"},
      {"IntoTheNextYear", 46023.0 - 0.4 * kSecond, "2026 1 1 0 0 0"},
      {"IntoTheNextDayBeforeDayZero", -1.0 - (1.0 - 0.4 * kSecond), "1899 12 30 0 0 0"},
      {"NeverPastTheLastDay", 2958466.0 - 0.4 * kSecond, "9999 12 31 23 59 59"},
  };
  ForEachRow(rows,
             [](const auto& row) { EXPECT_EQ(ShownCivil(ToCivil(Date{row.serial})), row.civil); });
}

TEST(DateTest, PartsOutsideTheirRangeCarryOver) {
  const struct {
    const char* name;
    CivilTime civil;
    const char* expected;
  } rows[] = {
      {"Month13", {2025, 13, 1, 0, 0, 0}, "2026 1 1 0 0 0"},
      {"Month0", {2026, 0, 15, 0, 0, 0}, "2025 12 15 0 0 0"},
      {"MonthMinus12", {2026, -12, 1, 0, 0, 0}, "2024 12 1 0 0 0"},
      {"Day0", {2026, 3, 0, 0, 0, 0}, "2026 2 28 0 0 0"},
      {"Day32", {2026, 1, 32, 0, 0, 0}, "2026 2 1 0 0 0"},
      {"LeapDayOfACommonYear", {2025, 2, 29, 0, 0, 0}, "2025 3 1 0 0 0"},
      {"Hour24", {2026, 1, 31, 24, 0, 0}, "2026 2 1 0 0 0"},
      {"HourMinus1", {2026, 1, 1, -1, 0, 0}, "2025 12 31 23 0 0"},
      {"Minute60", {2026, 1, 31, 23, 60, 0}, "2026 2 1 0 0 0"},
      {"SecondMinus1", {2026, 1, 1, 0, 0, -1}, "2025 12 31 23 59 59"},
      {"AcrossDayZero", {1899, 12, 30, -1, 0, 0}, "1899 12 29 23 0 0"},
      {"ManySeconds", {2026, 1, 1, 0, 0, 2147483647}, "2094 1 19 3 14 7"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(ShownCivil(ToCivil(FromCivil(row.civil))), row.expected);
  });
}

TEST(DateTest, OutsideTheCalendarIsAnError) {
  const struct {
    const char* name;
    CivilTime civil;
    const char* expected;
  } rows[] = {
      {"FirstDay", {100, 1, 1, 0, 0, 0}, "-657434"},
      {"DayBeforeTheFirst", {100, 1, 0, 0, 0, 0}, "error 5"},
      {"SecondBeforeTheFirstDay", {100, 1, 1, 0, 0, -1}, "error 5"},
      {"LastDay", {9999, 12, 31, 0, 0, 0}, "2958465"},
      {"DayAfterTheLast", {9999, 12, 32, 0, 0, 0}, "error 5"},
      {"EndOfTheLastDay", {9999, 12, 31, 24, 0, 0}, "error 5"},
      {"LargestYear", {2147483647, 1, 1, 0, 0, 0}, "error 5"},
      {"SmallestEverything",
       {-2147483647, -2147483647, -2147483647, -2147483647, -2147483647, -2147483647},
       "error 5"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { return FromCivil(row.civil); }), row.expected);
  });
}

TEST(DateTest, ASerialOutsideTheCalendarIsAnErrorEverywhere) {
  const Date now{46053.0};
  for (const double serial : {-657435.0, 2958466.0, 1E300, -kLargest, kNotANumber}) {
    SCOPED_TRACE(serial);
    const Date date{serial};
    EXPECT_FALSE(IsInCalendar(serial));
    EXPECT_EQ(Outcome([&] { return ShownCivil(ToCivil(date)); }), "error 5");
    EXPECT_EQ(Outcome([&] { return DayOf(date); }), "error 5");
    EXPECT_EQ(Outcome([&] { return AddDays(date, 0.0); }), "error 5");
    EXPECT_EQ(Outcome([&] { return DaysBetween(date, now); }), "error 5");
    EXPECT_EQ(Outcome([&] { return MinutesBetween(now, date); }), "error 5");
    EXPECT_EQ(Outcome([&] { return SecondsBetween(date, date); }), "error 5");
    EXPECT_EQ(Outcome([&] { return DateText(date); }), "error 5");
  }
  for (const double serial : {-657434.99, 2958465.99, 0.0}) EXPECT_TRUE(IsInCalendar(serial));
}

TEST(DateTest, DayOfDropsTheTime) {
  EXPECT_EQ(DayOf(Date{46053.75}).serial, 46053.0);
  EXPECT_EQ(DayOf(Date{46053.0}).serial, 46053.0);
  EXPECT_EQ(DayOf(Date{-1.75}).serial, -1.0);
  EXPECT_EQ(DayOf(Date{-0.75}).serial, 0.0);
}

TEST(DateTest, AddDaysKeepsTheTime) {
  const struct {
    const char* name;
    double serial;
    double days;
    const char* expected;
  } rows[] = {
      {"None", 46053.25, 0.0, "46053.25"},
      {"Forward", 46053.25, 30.0, "46083.25"},
      {"Back", 46053.25, -30.0, "46023.25"},
      {"HalfToEvenDown", 46053.0, 2.5, "46055"},
      {"HalfToEvenUp", 46053.0, 3.5, "46057"},
      {"NegativeHalfToEven", 46053.0, -0.5, "46053"},
      {"BackAcrossDayZero", 1.25, -2.0, "-1.25"},
      {"ForwardAcrossDayZero", -1.25, 2.0, "1.25"},
      {"ToTheLastDay", 2958464.0, 1.0, "2958465"},
      {"PastTheLastDay", 2958465.0, 1.0, "error 5"},
      {"ToTheFirstDay", -657433.0, -1.0, "-657434"},
      {"PastTheFirstDay", -657434.0, -1.0, "error 5"},
      {"FarTooMany", 46053.0, kLargest, "error 5"},
      {"FarTooFew", 46053.0, -kLargest, "error 5"},
      {"NotANumber", 46053.0, kNotANumber, "error 5"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { return AddDays(Date{row.serial}, row.days); }), row.expected);
  });
}

TEST(DateTest, DifferencesCountBoundariesNotAmounts) {
  const auto at = [](int day, int hour, int minute, int second) {
    return FromCivil({2026, 1, day, hour, minute, second});
  };
  const struct {
    const char* name;
    Date from;
    Date to;
    int days;
    int minutes;
    int seconds;
  } rows[] = {
      {"Same", at(31, 14, 5, 9), at(31, 14, 5, 9), 0, 0, 0},
      {"OneSecondWithinTheMinute", at(31, 14, 5, 9), at(31, 14, 5, 10), 0, 0, 1},
      {"OneSecondAcrossTheMinute", at(31, 14, 5, 59), at(31, 14, 6, 0), 0, 1, 1},
      {"LongMinute", at(31, 14, 5, 0), at(31, 14, 6, 59), 0, 1, 119},
      {"Backwards", at(31, 14, 6, 0), at(31, 14, 5, 59), 0, -1, -1},
      {"OneSecondAcrossMidnight", at(30, 23, 59, 59), at(31, 0, 0, 0), 1, 1, 1},
      {"AlmostTwoDays", at(29, 0, 0, 0), at(30, 23, 59, 59), 1, 2879, 172799},
      {"WholeWeekBack", at(31, 8, 0, 0), at(24, 8, 0, 0), -7, -10080, -604800},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(DaysBetween(row.from, row.to), row.days);
    EXPECT_EQ(MinutesBetween(row.from, row.to), row.minutes);
    EXPECT_EQ(SecondsBetween(row.from, row.to), row.seconds);
  });
  EXPECT_EQ(MinutesBetween(Date{-1.75}, Date{-1.25}), -720);
  EXPECT_EQ(DaysBetween(Date{-1.75}, Date{0.25}), 1);
}

TEST(DateTextTest, LeavesOutWhatSaysNothing) {
  const struct {
    const char* name;
    CivilTime civil;
    const char* expected;
  } rows[] = {
      {"Afternoon", {2026, 1, 31, 14, 5, 9}, "1/31/2026 2:05:09 PM"},
      {"Midnight", {2026, 1, 31, 0, 0, 0}, "1/31/2026"},
      {"SecondPastMidnight", {2026, 1, 31, 0, 0, 1}, "1/31/2026 12:00:01 AM"},
      {"Morning", {2026, 12, 1, 9, 30, 0}, "12/1/2026 9:30:00 AM"},
      {"Noon", {2026, 12, 1, 12, 0, 0}, "12/1/2026 12:00:00 PM"},
      {"EndOfTheDay", {2026, 12, 31, 23, 59, 59}, "12/31/2026 11:59:59 PM"},
      {"DayZeroIsATime", {1899, 12, 30, 14, 5, 9}, "2:05:09 PM"},
      {"MidnightOfDayZero", {1899, 12, 30, 0, 0, 0}, "12:00:00 AM"},
      {"BeforeDayZero", {1899, 12, 29, 6, 0, 0}, "12/29/1899 6:00:00 AM"},
      {"ThreeDigitYear", {100, 1, 1, 0, 0, 0}, "1/1/100"},
      {"LastYear", {9999, 12, 31, 0, 0, 0}, "12/31/9999"},
  };
  ForEachRow(rows, [](const auto& row) {
    const Date date = FromCivil(row.civil);
    EXPECT_EQ(DateText(date), row.expected);
    ASSERT_TRUE(ParseDate(row.expected).has_value());
    EXPECT_EQ(ParseDate(row.expected)->serial, date.serial);
  });
}

TEST(DateTextTest, RoundsToTheNearestSecond) {
  EXPECT_EQ(DateText(Date{46054.0 - 0.4 * kSecond}), "2/1/2026");
  EXPECT_EQ(DateText(Date{46053.5 - 0.4 * kSecond}), "1/31/2026 12:00:00 PM");
}

TEST(ParseDateTest, ReadsItsForms) {
  const struct {
    const char* name;
    std::string_view text;
    const char* expected;  // year month day hour minute second, or "none"
  } rows[] = {
      {"MonthDayYear", "1/31/2026", "2026 1 31 0 0 0"},
      {"TwoDigitMonthAndDay", "01/02/2026", "2026 1 2 0 0 0"},
      {"BlanksAround", "  1/31/2026 ", "2026 1 31 0 0 0"},
      {"TwoDigitYear00", "1/1/00", "2000 1 1 0 0 0"},
      {"TwoDigitYear29", "1/1/29", "2029 1 1 0 0 0"},
      {"TwoDigitYear30", "1/1/30", "1930 1 1 0 0 0"},
      {"TwoDigitYear99", "1/1/99", "1999 1 1 0 0 0"},
      {"ThreeDigitYear", "1/1/100", "100 1 1 0 0 0"},
      {"LeapDay", "2/29/2024", "2024 2 29 0 0 0"},
      {"NoLeapDay", "2/29/2025", "none"},
      {"NoLeapDayInACentury", "2/29/1900", "none"},
      {"LeapDayInAFourthCentury", "2/29/2000", "2000 2 29 0 0 0"},
      {"Month0", "0/1/2026", "none"},
      {"Month13", "13/1/2026", "none"},
      {"Day0", "1/0/2026", "none"},
      {"Day32", "1/32/2026", "none"},
      {"Day31OfAShortMonth", "4/31/2026", "none"},
      {"Day31OfDecember", "12/31/2026", "2026 12 31 0 0 0"},
      {"OneDigitYear", "1/1/5", "none"},
      {"YearBeforeTheCalendar", "1/1/099", "none"},
      {"FiveDigitYear", "1/1/20260", "none"},
      {"YearFirst", "2026/1/31", "none"},
      {"NoYear", "1/31", "none"},
      {"EmptyYear", "1/31/", "none"},
      {"EmptyDay", "1//2026", "none"},
      {"BlankInside", "1/ 31/2026", "none"},
      {"LettersBehind", "1/31/2026x", "none"},
      {"NegativeMonth", "-1/31/2026", "none"},
      {"NamedMonth", "31 Jan 2026", "2026 1 31 0 0 0"},
      {"NamedMonthInAnyCase", "31 jAN 2026", "2026 1 31 0 0 0"},
      {"FullMonthName", "5 September 2026", "2026 9 5 0 0 0"},
      {"NamedMonthWithTime", "31 Jan 2026 14:05", "2026 1 31 14 5 0"},
      {"MoreBlanks", "31  Jan  2026   14:05", "2026 1 31 14 5 0"},
      {"NamedMonthWithTwoDigitYear", "31 Dec 29", "2029 12 31 0 0 0"},
      {"UnknownMonthName", "31 Foo 2026", "none"},
      {"CutMonthName", "31 Ja 2026", "none"},
      {"NamedMonthOnly", "31 Jan", "none"},
      {"MonthNameFirst", "Jan 31 2026", "none"},
      {"NamedMonthWithoutBlank", "31Jan 2026", "none"},
      {"NamedDay0", "0 Jan 2026", "none"},
      {"NamedYearFirst", "2026 Jan 31", "none"},
      {"Iso", "2026-01-31", "2026 1 31 0 0 0"},
      {"IsoShortParts", "2026-1-5", "2026 1 5 0 0 0"},
      {"IsoWithTime", "2026-01-31 14:05:09", "2026 1 31 14 5 9"},
      {"IsoWithT", "2026-01-31T14:05:09", "2026 1 31 14 5 9"},
      {"IsoTwoDigitYear", "26-01-31", "none"},
      {"IsoTAlone", "2026-01-31T", "none"},
      {"IsoZone", "2026-01-31T14:05:09Z", "none"},
      {"IsoFraction", "2026-01-31 14:05:09.5", "none"},
      {"IsoNoDay", "2026-01", "none"},
      {"HoursAndMinutes", "1/31/2026 14:05", "2026 1 31 14 5 0"},
      {"ShortHour", "1/31/2026 4:05", "2026 1 31 4 5 0"},
      {"Seconds", "1/31/2026 14:05:59", "2026 1 31 14 5 59"},
      {"LastSecond", "1/31/2026 23:59:59", "2026 1 31 23 59 59"},
      {"Hour24", "1/31/2026 24:00", "none"},
      {"Minute60", "1/31/2026 23:60", "none"},
      {"Second60", "1/31/2026 23:59:60", "none"},
      {"ThreeDigitMinute", "1/31/2026 23:059", "none"},
      {"Afternoon", "1/31/2026 2:05:09 PM", "2026 1 31 14 5 9"},
      {"Morning", "1/31/2026 2:05:09 AM", "2026 1 31 2 5 9"},
      {"AfternoonInLowerCase", "1/31/2026 2:05 pm", "2026 1 31 14 5 0"},
      {"AfternoonWithoutBlank", "1/31/2026 2:05PM", "2026 1 31 14 5 0"},
      {"TwelveAm", "1/31/2026 12:00:00 AM", "2026 1 31 0 0 0"},
      {"TwelvePm", "1/31/2026 12:00:00 PM", "2026 1 31 12 0 0"},
      {"Hour0Am", "1/31/2026 0:30 AM", "none"},
      {"Hour13Pm", "1/31/2026 13:00 PM", "none"},
      {"HalfASuffix", "1/31/2026 2:05 P", "none"},
      {"NoTimeAfterT", "1/31/2026T", "none"},
      {"HourOnly", "1/31/2026 14", "none"},
      {"ColonOnly", "1/31/2026 14:", "none"},
      {"SecondColonOnly", "1/31/2026 14:05:", "none"},
      {"TwoTimes", "1/31/2026 14:05 14:05", "none"},
      {"TimeAlone", "14:05", "1899 12 30 14 5 0"},
      {"TimeAloneWithSuffix", "2:05:09 PM", "1899 12 30 14 5 9"},
      {"TimeAloneWithMore", "14:05 x", "none"},
      {"TimeThenDate", "14:05 1/31/2026", "none"},
      {"Nothing", "", "none"},
      {"Blanks", "   ", "none"},
      {"Word", "tomorrow", "none"},
      {"Number", "46053", "none"},
      {"LongNumber", "123456789012345678901234567890", "none"},
      {"Separators", "//", "none"},
      {"InvalidUtf8", "\xFF/\xFE/\xFD", "none"},
      {"ZeroByte", std::string_view("1/31/2026\0", 10), "none"},
  };
  ForEachRow(rows, [](const auto& row) {
    const std::optional<Date> date = ParseDate(row.text);
    EXPECT_EQ(date ? ShownCivil(ToCivil(*date)) : "none", row.expected);
  });
}

}  // namespace
}  // namespace qorcred

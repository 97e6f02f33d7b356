#include "host/dialect/format_picture.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "frame/runtime_error.h"

namespace qorhost::dialect {

namespace {

using qorcred::Value;

Value DateOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Value(qorcred::FromCivil({year, month, day, hour, minute, second}));
}

struct Formatted {
  const char* name;
  Value value;
  std::string_view picture;
  std::string_view text;
};

class FormatValueTest : public testing::TestWithParam<Formatted> {};

TEST_P(FormatValueTest, WritesThePicture) {
  EXPECT_EQ(FormatValue(GetParam().value, GetParam().picture), GetParam().text);
}

constexpr auto kNameOf = [](const testing::TestParamInfo<Formatted>& entry) {
  return std::string(entry.param.name);
};

const Value kAfternoon = DateOf(2024, 3, 5, 14, 30, 9);
const Value kMorning = DateOf(2026, 11, 15, 0, 5, 0);

INSTANTIATE_TEST_SUITE_P(
    NamedDates, FormatValueTest,
    testing::Values(
        Formatted{"GeneralDate", kAfternoon, "General Date", "3/5/2024 2:30:09 PM"},
        Formatted{"GeneralDateWithoutATime", DateOf(2024, 3, 5), "General Date", "3/5/2024"},
        Formatted{"GeneralDateWithoutADay", Value(0.5), "General Date", "12:00:00 PM"},
        Formatted{"LongDate", kAfternoon, "Long Date", "Tuesday, March 5, 2024"},
        Formatted{"MediumDate", kAfternoon, "Medium Date", "05-Mar-24"},
        Formatted{"ShortDate", kAfternoon, "Short Date", "3/5/2024"},
        Formatted{"ShortDateOfTwoDigits", kMorning, "Short Date", "11/15/2026"},
        Formatted{"LongTime", kAfternoon, "Long Time", "2:30:09 PM"},
        Formatted{"LongTimeAfterMidnight", kMorning, "Long Time", "12:05:00 AM"},
        Formatted{"MediumTime", kAfternoon, "Medium Time", "02:30 PM"},
        Formatted{"MediumTimeAfterMidnight", kMorning, "Medium Time", "12:05 AM"},
        Formatted{"ShortTime", kAfternoon, "Short Time", "14:30"},
        Formatted{"ShortTimeAfterMidnight", kMorning, "Short Time", "00:05"},
        Formatted{"NamesInAnyCase", kAfternoon, "lOnG dAtE", "Tuesday, March 5, 2024"},
        Formatted{"OfADateText", Value("5 Mar 2024 14:30"), "Short Time", "14:30"},
        Formatted{"OfANumberText", Value("45356.5"), "General Date", "3/5/2024 12:00:00 PM"},
        Formatted{"OfANumber", Value(45356.0), "Medium Date", "05-Mar-24"},
        Formatted{"OfAnotherText", Value("soon"), "Long Date", "soon"},
        Formatted{"OfANumberTextBeyondTheCalendar", Value("9999999"), "Long Date", "9999999"},
        Formatted{"OfAnEmptyText", Value(""), "General Date", ""}),
    kNameOf);

INSTANTIATE_TEST_SUITE_P(
    NamedNumbers, FormatValueTest,
    testing::Values(
        Formatted{"GeneralNumber", Value(1234.5), "General Number", "1234.5"},
        Formatted{"GeneralNumberOfAText", Value(" 1,234.50 "), "General Number", "1234.5"},
        Formatted{"Fixed", Value(1234.567), "Fixed", "1234.57"},
        Formatted{"FixedWhole", Value(12.0), "Fixed", "12.00"},
        Formatted{"FixedZero", Value(0.0), "Fixed", "0.00"},
        Formatted{"FixedBelowOne", Value(0.5), "Fixed", "0.50"},
        Formatted{"FixedHundredth", Value(0.01), "Fixed", "0.01"},
        Formatted{"FixedHalfUp", Value(0.005), "Fixed", "0.01"},
        Formatted{"FixedBelowHalf", Value(0.00499), "Fixed", "0.00"},
        Formatted{"FixedFarBelowHalf", Value(0.0009), "Fixed", "0.00"},
        Formatted{"FixedAsShown", Value(1.005), "Fixed", "1.01"},
        Formatted{"FixedCarries", Value(9.995), "Fixed", "10.00"},
        Formatted{"FixedCarriesWithin", Value(1.995), "Fixed", "2.00"},
        Formatted{"FixedCarriesToTheFirst", Value(0.995), "Fixed", "1.00"},
        Formatted{"FixedNegative", Value(-1234.565), "Fixed", "-1234.57"},
        Formatted{"FixedNegativeZero", Value(-0.001), "Fixed", "0.00"},
        Formatted{"FixedFifteenDigits", Value(123456789012345.0), "Fixed", "123456789012345.00"},
        Formatted{"FixedBeyondTheDigits", Value(1e20), "Fixed", "100000000000000000000.00"},
        Formatted{"FixedTiny", Value(5e-324), "Fixed", "0.00"},
        Formatted{"Standard", Value(1234567.891), "Standard", "1,234,567.89"},
        Formatted{"StandardThousand", Value(1000.0), "Standard", "1,000.00"},
        Formatted{"StandardBelowThousand", Value(999.99), "Standard", "999.99"},
        Formatted{"StandardCarriesToThousand", Value(999.995), "Standard", "1,000.00"},
        Formatted{"StandardMillion", Value(1000000.0), "Standard", "1,000,000.00"},
        Formatted{"StandardNegative", Value(-123.0), "Standard", "-123.00"},
        Formatted{"Currency", Value(1234.5), "Currency", "$1,234.50"},
        Formatted{"CurrencyNegative", Value(-1234.5), "Currency", "($1,234.50)"},
        Formatted{"CurrencyNegativeZero", Value(-0.001), "Currency", "$0.00"},
        Formatted{"Percent", Value(0.1234), "Percent", "12.34%"},
        Formatted{"PercentOfOne", Value(1.0), "Percent", "100.00%"},
        Formatted{"PercentZero", Value(0.0), "Percent", "0.00%"},
        Formatted{"PercentSmall", Value(0.001), "Percent", "0.10%"},
        Formatted{"PercentRounded", Value(0.28125), "Percent", "28.13%"},
        Formatted{"PercentNegative", Value(-0.5), "Percent", "-50.00%"},
        Formatted{"Scientific", Value(12345.0), "Scientific", "1.23E+04"},
        Formatted{"ScientificZero", Value(0.0), "Scientific", "0.00E+00"},
        Formatted{"ScientificOne", Value(1.0), "Scientific", "1.00E+00"},
        Formatted{"ScientificSmall", Value(0.00012355), "Scientific", "1.24E-04"},
        Formatted{"ScientificCarries", Value(9.995), "Scientific", "1.00E+01"},
        Formatted{"ScientificNegative", Value(-5.0), "Scientific", "-5.00E+00"},
        Formatted{"ScientificLarge", Value(1.5e300), "Scientific", "1.50E+300"},
        Formatted{"Yes", Value(-1.0), "Yes/No", "Yes"}, Formatted{"No", Value(0.0), "Yes/No", "No"},
        Formatted{"YesOfAFraction", Value(0.25), "Yes/No", "Yes"},
        Formatted{"True", Value(1.0), "True/False", "True"},
        Formatted{"False", Value(0.0), "True/False", "False"},
        Formatted{"On", Value(2.0), "On/Off", "On"}, Formatted{"Off", Value(0.0), "on/off", "Off"},
        Formatted{"WordTrue", Value("TRUE"), "Yes/No", "Yes"},
        Formatted{"WordFalse", Value("false"), "On/Off", "Off"},
        Formatted{"OtherWord", Value("maybe"), "Yes/No", "maybe"},
        Formatted{"OfADate", DateOf(2024, 3, 5), "Fixed", "45356.00"},
        Formatted{"NumberOfADateText", Value("3/5/2024"), "Standard", "45,356.00"},
        Formatted{"TextWithoutANumber", Value("abc"), "Percent", "abc"},
        Formatted{"TextBeyondADouble", Value("1e999"), "Fixed", "1e999"}),
    kNameOf);

INSTANTIATE_TEST_SUITE_P(
    Pictures, FormatValueTest,
    testing::Values(Formatted{"None", Value(1.5), "", "1.5"},
                    Formatted{"Zeros", Value(7.0), "0000", "0007"},
                    Formatted{"DayMonthYear", kAfternoon, "DD MM YYYY", "05 03 2024"},
                    Formatted{"EveryPart", kAfternoon,
                              "d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss",
                              "5 05 Tue Tuesday 3 03 Mar March 24 2024 14 14 30 30 9 09"},
                    Formatted{"EverySeparator", kAfternoon, "d-m/yy.h,n:s d", "5-3/24.14,30:9 5"},
                    Formatted{"HalfDay", kAfternoon, "h:mm AM/PM", "2:30 PM"},
                    Formatted{"MinutesBehindHours", kAfternoon, "hh:mm", "14:30"}),
    kNameOf);

TEST(FormatValueTest, InfiniteNumbersOverflow) {
  const Value infinite(std::numeric_limits<double>::infinity());
  for (const char* picture : {"Fixed", "Scientific", "Yes/No", "Long Date", "000", "dd", ""}) {
    EXPECT_THROW(static_cast<void>(FormatValue(infinite, picture)), qorcred::RuntimeError)
        << picture;
  }
}

TEST(FormatValueTest, NumbersThatAreNoDatesOverflow) {
  EXPECT_THROW(static_cast<void>(FormatValue(Value(9999999.0), "Long Date")),
               qorcred::RuntimeError);
}

class UnknownPictureTest : public testing::TestWithParam<std::string_view> {};

TEST_P(UnknownPictureTest, IsRefused) {
  const std::string failure = "Format does not know the picture '" + std::string(GetParam()) +
                              "': it takes parts of dates such as 'dd mm yyyy', zeros such as "
                              "'000', and named formats such as 'Short Date'";
  for (const Value& value : {Value(1.5), Value("abc"), kAfternoon}) {
    try {
      FAIL() << FormatValue(value, GetParam());
    } catch (const qorcred::RuntimeError& error) {
      EXPECT_EQ(error.number(), qorcred::ErrorNumber::kInvalidProcedureCall);
      EXPECT_EQ(error.description(), failure);
    }
  }
  EXPECT_THROW(RequirePicture(GetParam()), qorcred::RuntimeError);
}

INSTANTIATE_TEST_SUITE_P(Table, UnknownPictureTest,
                         testing::Values("0.00", "#,##0", "#", "0%", "0 ", "00-00", "ddddd",
                                         "dddddd", "mmmmm", "y", "yyy", "yyyyy", "hhh", "nnn",
                                         "sss", "w", "ww", "q", "c", "ttttt", "am/pm", "AMPM",
                                         "A/P", "AM/P", "h AM", "dd. 'of' mmm", "dd\\d", "dd;mm",
                                         "dd_mm", "Long  Date", "Long Date ", "Very Long Date",
                                         "Long", "Euro", ">", "<", "@", "&", "-", " ", ".",
                                         "dd\xFF", "T\xC3\xA4g"));

TEST(RequirePictureTest, TakesWhatFormatWrites) {
  for (const char* picture : {"", "0", "000000000", "DD MM YYYY", "d", "-d", "hh:nn:ss AM/PM",
                              "AM/PM", "general date", "Scientific", "YES/NO"}) {
    EXPECT_NO_THROW(RequirePicture(picture)) << picture;
  }
}

}  // namespace

}  // namespace qorhost::dialect

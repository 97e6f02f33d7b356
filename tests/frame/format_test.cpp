#include "frame/format.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "frame/date.h"
#include "frame/result_table.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

struct Row {
  const char* name;
  Value value;
  std::string picture;
  std::string expected;
};

template <std::size_t kCount>
void Check(const Row (&rows)[kCount]) {
  ForEachRow(rows, [](const Row& row) {
    EXPECT_EQ(Outcome([&] { return Format(row.value, row.picture); }), row.expected);
  });
}

TEST(FormatTest, DatePictures) {
  const Date afternoon = FromCivil({2026, 3, 5, 14, 7, 9});
  const Date midnight = FromCivil({2026, 11, 30, 0, 0, 0});
  const Row rows[] = {
      {"DayMonthNameYearTime", afternoon, "dd MMM yyyy HH:mm", "05 Mar 2026 14:07"},
      {"UpperCase", afternoon, "DD MMM YYYY HH:MM", "05 Mar 2026 14:07"},
      {"MonthDayYear", afternoon, "mm/dd/yyyy", "03/05/2026"},
      {"DayMonthYear", afternoon, "DD MM YYYY", "05 03 2026"},
      {"ShortParts", afternoon, "m/d/yy h:n:s", "3/5/26 14:7:9"},
      {"Names", afternoon, "dddd, d mmmm yyyy", "Thursday, 5 March 2026"},
      {"ShortNames", midnight, "ddd mmm", "Mon Nov"},
      {"MinutesAfterHours", afternoon, "hh:mm:ss", "14:07:09"},
      {"SingleMinuteAfterHour", afternoon, "h:m", "14:7"},
      {"MonthNameAfterHours", afternoon, "hh mmm", "14 Mar"},
      {"MonthWithoutHours", afternoon, "mm:ss", "03:09"},
      {"MonthAfterMinutes", afternoon, "hh:nn mm", "14:07 03"},
      {"MinutesAlone", afternoon, "nn", "07"},
      {"TwelveHours", afternoon, "h:mm AM/PM", "2:07 PM"},
      {"TwelveHoursInTheMorning", FromCivil({2026, 3, 5, 9, 7, 9}), "hh:mm am/pm", "09:07 AM"},
      {"TwelveAtMidnight", midnight, "hh:mm AM/PM", "12:00 AM"},
      {"TwelveAtNoon", FromCivil({2026, 3, 5, 12, 0, 0}), "h AM/PM", "12 PM"},
      {"MonthAfterAmPm", afternoon, "h AM/PM mm", "2 PM 03"},
      {"MidnightHours", midnight, "hh:mm", "00:00"},
      {"OtherCharactersStay", afternoon, "[yyyy] 'T' \xC3\xA4 #0.", "[2026] 'T' \xC3\xA4 #0."},
      {"SingleYearLetterStays", afternoon, "y", "y"},
      {"ThreeYearLetters", afternoon, "yyy", "26y"},
      {"FiveDayLetters", afternoon, "ddddd", "Thursday5"},
      {"ThreeHourLetters", afternoon, "hhh", "1414"},
      {"YearBefore1000", FromCivil({100, 1, 1, 0, 0, 0}), "yyyy yy", "0100 00"},
      {"WeekdayBeforeDayZero", FromCivil({1899, 12, 29, 0, 0, 0}), "dddd", "Friday"},
      {"WeekdayOfDayZero", FromCivil({1899, 12, 30, 0, 0, 0}), "dddd", "Saturday"},
      {"WeekdayAfterDayZero", FromCivil({1899, 12, 31, 0, 0, 0}), "dddd", "Sunday"},
      {"RoundsUpToTheMinute", Date{46053.5 - 0.4 / 86400.0}, "dd MMM yyyy HH:mm",
       "31 Jan 2026 12:00"},
      {"NoPicture", midnight, "", "11/30/2026"},
      {"Null", Null(), "dd MMM yyyy HH:mm", ""},
      {"NullWithoutPicture", Null(), "", ""},
      {"Empty", Value(), "yyyy-mm-dd", "1899-12-30"},
      {"Serial", 46053, "mm/dd/yyyy", "01/31/2026"},
      {"SerialOutsideTheCalendar", 3000000, "mm/dd/yyyy", "error 6"},
      {"DateOutsideTheCalendar", Date{kNotANumber}, "mm/dd/yyyy", "error 6"},
      {"DateText", "1/31/2026 2:05:09 PM", "dd MMM yyyy HH:mm", "31 Jan 2026 14:05"},
      {"IsoText", "2026-01-31", "DD MM YYYY", "31 01 2026"},
      {"SerialText", "46053", "mm/dd/yyyy", "01/31/2026"},
      {"SerialTextOutsideTheCalendar", "3000000", "mm/dd/yyyy", "3000000"},
      {"OtherText", "No Name", "mm/dd/yyyy", "No Name"},
      {"EmptyText", "", "mm/dd/yyyy", ""},
      {"Object", ObjectRef(std::make_shared<ResultTable>()), "mm/dd/yyyy", "error 13"},
      {"LeftOut", Missing(), "mm/dd/yyyy", "error 13"},
      {"LeftOutWithoutPicture", Missing(), "", "error 13"},
  };
  Check(rows);
}

TEST(FormatTest, NumberPictures) {
  const Row rows[] = {
      {"Padded", 12, "0000", "0012"},
      {"ExactWidth", 1234, "0000", "1234"},
      {"Wider", 12345, "0000", "12345"},
      {"SingleZero", 0, "0", "0"},
      {"ZeroPadded", 0, "000", "000"},
      {"Negative", -12, "0000", "-0012"},
      {"HalfAwayFromZero", 2.5, "0", "3"},
      {"HalfAwayFromZeroBelow", -2.5, "0", "-3"},
      {"HalfOfOne", 0.5, "0", "1"},
      {"JustBelowHalf", 0.49999999999999994, "0", "0"},
      {"NegativeThatRoundsToZero", -0.4, "00", "00"},
      {"True", true, "00", "-01"},
      {"Empty", Value(), "00", "00"},
      {"Null", Null(), "00", ""},
      {"Large", 1E20, "0", "100000000000000000000"},
      {"Text", "12", "0000", "0012"},
      {"TextWithFraction", " 1,234.5 ", "0", "1235"},
      {"OtherText", "12a", "0000", "12a"},
      {"TextBeyondADouble", "1E400", "0", "1E400"},
      {"EmptyText", "", "0000", ""},
      {"DateText", "1/31/2026", "0", "46053"},
      {"Date", Date{46053.5}, "000000", "046054"},
      {"NotANumber", kNotANumber, "0", "error 6"},
      {"Array", StringArray{"1"}, "0", "error 13"},
  };
  Check(rows);
}

TEST(FormatTest, WritesEveryDigitOfTheLargestNumber) {
  const std::string text = Format(-std::numeric_limits<double>::max(), "0");
  EXPECT_EQ(text.size(), 310U);
  EXPECT_EQ(text.substr(0, 18), "-17976931348623157");
  EXPECT_EQ(Format(7, std::string(100'000, '0')), std::string(99'999, '0') + "7");
}

}  // namespace
}  // namespace qorcred

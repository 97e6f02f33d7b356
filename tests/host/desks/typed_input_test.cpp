// Texts, numbers and dates as a person types them.
#include "host/desks/typed_input.h"

#include <gmock/gmock.h>

#include "frame/date.h"
#include "host/desks/input_fault.h"

namespace qorhost {
namespace {

constexpr std::string_view kField = "first day";

TEST(IsTypable, RefusesControlCharactersAndBytesThatAreNotUtf8) {
  EXPECT_TRUE(IsTypable(""));
  EXPECT_TRUE(IsTypable(" 12 O'Brien ë"));
  EXPECT_FALSE(IsTypable("1\n2"));
  EXPECT_FALSE(IsTypable("\x1B"));
  EXPECT_FALSE(IsTypable("\xFF"));
}

TEST(IsTypable, RefusesControlCharactersOfTheUpperHalf) {
  EXPECT_FALSE(
      IsTypable("a\xC2\x9B"
                "1m"));
  EXPECT_TRUE(IsTypable("\xC2\xA0"));
}

TEST(TypedText, NamesItsFieldAndKeepsTheValueAsItCame) {
  try {
    (void)TypedText(kField, "1\n2");
    FAIL() << "taken";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), kField);
    EXPECT_EQ(fault.value(), "1\n2");
  }
}

TEST(ReadLong, TakesWholeNumbersOf32BitsAndNothingElse) {
  EXPECT_EQ(ReadLong(kField, "2147483647"), 2147483647);
  EXPECT_EQ(ReadLong(kField, "-7"), -7);
  for (const char* given : {"", " ", "2147483648", "1.5", "1 2", "ten", "0x1", "--1", "+-1", "+"}) {
    EXPECT_THROW((void)ReadLong(kField, given), InputFault) << given;
  }
}

TEST(ReadLong, TellsTheRangeInWords) {
  EXPECT_EQ(ReadLong(kField, "0", kFromZero), 0);
  try {
    (void)ReadLong(kField, "-1", kFromZero);
    FAIL() << "taken";
  } catch (const InputFault& fault) {
    EXPECT_STREQ(fault.what(),
                 "first day '-1' must be a whole number from 0 to 2147483647, in digits alone");
  }
}

TEST(WholeNumbers, HaveOneForm) {
  for (const char* given : {"5", "+5", " 5", "5 ", " +5 ", "005"}) {
    EXPECT_EQ(WholeNumber(given), 5) << given;
    EXPECT_EQ(ReadLong(kField, given), 5) << given;
    EXPECT_TRUE(IsWholeNumber(given)) << given;
  }
  EXPECT_EQ(TypedNumber(kField, " +05 "), "05");
  EXPECT_EQ(TypedNumber(kField, "-5"), "-5") << "the controller's to refuse";
  EXPECT_EQ(TypedNumber(kField, " five "), " five ");
  EXPECT_EQ(TypedNumber(kField, "99999999999999999999"), "99999999999999999999");
  EXPECT_THROW((void)TypedNumber(kField, "5.0"), InputFault);
}

TEST(ReadDate, TellsADayFromAMoment) {
  const GivenDate day = ReadDate(kField, "2026-12-31");
  EXPECT_FALSE(day.hasTime);
  EXPECT_EQ(day.date, qorcred::FromCivil({2026, 12, 31, 0, 0, 0}));
  EXPECT_TRUE(ReadDate(kField, "2026-12-31 18:00").hasTime);
  for (const char* given : {"", "soon", "18:00"}) {
    EXPECT_THROW((void)ReadDate(kField, given), InputFault) << given;
  }
}

TEST(ReadDate, TakesTheTOfPrograms) {
  const GivenDate read = ReadDate(kField, "2026-12-31T18:00:05");
  EXPECT_TRUE(read.hasTime);
  EXPECT_EQ(read.date, qorcred::FromCivil({2026, 12, 31, 18, 0, 5}));
  EXPECT_THROW((void)ReadDate(kField, "2026-12-31T18:00:05+00:00"), InputFault) << "no clock";
  EXPECT_THROW((void)ReadDate(kField, "2026-12-31T"), InputFault);
}

TEST(ReadMoment, TakesAnOffsetAndGivesWhatTheClockShows) {
  const auto utc = [](std::string_view given) {
    const GivenDate read = ReadMoment(kField, given, TimeOf::kUtc);
    EXPECT_TRUE(read.hasTime);
    return WithUtcOffset(read.date);
  };
  EXPECT_EQ(utc("2026-11-23T07:13:42+00:00"), "2026-11-23T07:13:42+00:00");
  EXPECT_EQ(utc("2026-11-23T07:13:42Z"), "2026-11-23T07:13:42+00:00");
  EXPECT_EQ(utc(" 2026-11-23 07:13+01:30 "), "2026-11-23T05:43:00+00:00");
  EXPECT_EQ(utc("2026-11-23T23:13:42-02:00"), "2026-11-24T01:13:42+00:00");
  EXPECT_EQ(utc("2026-11-23 07:13:42"), "2026-11-23T07:13:42+00:00") << "the clock's own";
  EXPECT_FALSE(ReadMoment(kField, "2026-11-23", TimeOf::kUtc).hasTime);
  for (const char* month : {"01", "07"}) {
    const std::string date = std::string("2026-") + month + "-23 07:13:42";
    const qorcred::Date place = ReadDate(kField, date).date;
    EXPECT_EQ(ReadMoment(kField, WithOffset(place), TimeOf::kPlace).date, place) << month;
  }
  for (const char* given : {"soon+01:00", "2026-11-23T07:13:42+1:00", "2026-11-23T07:13:42+ab:00",
                            "9999-12-31T23:59:59-05:00", "Z", "2026-11-23+01:00"}) {
    EXPECT_THROW((void)ReadMoment(kField, given, TimeOf::kUtc), InputFault) << given;
  }
  EXPECT_THROW((void)ReadMoment(kField, "2026-11-23T07:13:42Z", TimeOf::kCalendar), InputFault);
}

TEST(ChooseDate, TakesTheLastSecondOfADayThatEndsSomething) {
  PickerModel picker(qorcred::FromCivil({2026, 1, 31, 0, 0, 0}));
  ChooseDate(picker, kField, "2026-12-31", true);
  EXPECT_EQ(picker.shown(), qorcred::FromCivil({2026, 12, 31, 23, 59, 59}));
  ChooseDate(picker, kField, "2026-12-31 18:00", true);
  EXPECT_EQ(picker.shown(), qorcred::FromCivil({2026, 12, 31, 18, 0, 0}));
  ChooseDate(picker, kField, "2026-12-31", false);
  EXPECT_EQ(picker.shown(), qorcred::FromCivil({2026, 12, 31, 0, 0, 0}));
}

TEST(ChooseDate, RefusesWhatThePickerDoesNotOfferAndLeavesIt) {
  PickerModel picker(qorcred::FromCivil({2026, 1, 31, 0, 0, 0}));
  EXPECT_THROW(ChooseDate(picker, kField, "1500-01-01", false), InputFault);
  EXPECT_EQ(picker.shown(), qorcred::FromCivil({2026, 1, 31, 0, 0, 0}));
}

}  // namespace
}  // namespace qorhost

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
  for (const char* given : {"", "2147483648", "1.5", " 1", "1 ", "ten"}) {
    EXPECT_THROW((void)ReadLong(kField, given), InputFault) << given;
  }
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

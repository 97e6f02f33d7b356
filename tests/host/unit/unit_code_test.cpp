#include "host/unit/unit_code.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/unit/sample_code.h"

namespace {

using qorcred::unit_place::Place;
using qorhost::FaultIn;
using qorhost::FaultInText;
using qorhost::UnitCode;
using qortest::SampleCode;
using qortest::With;
using ::testing::HasSubstr;
using namespace qorcred::unit_place;  // the places

TEST(UnitCodeTest, ACodeWithEverythingHasNoFault) {
  EXPECT_EQ(FaultIn(SampleCode()), "");
}

TEST(UnitCodeTest, AFaultNamesItsField) {
  EXPECT_EQ(FaultIn(With(kDisplayName, "O'Neil")),
            "the display name holds an apostrophe, which would end the text in a statement");
  EXPECT_EQ(FaultInText("Phone No.", "1'"),
            "Phone No. holds an apostrophe, which would end the text in a statement");
  EXPECT_EQ(FaultInText("Phone No.", "1"), "");
}

struct Row {
  const char* name;
  Place place;
  std::string text;
  const char* fault;  ///< part of it; "" for none
};

class UnitCodeFieldTest : public ::testing::TestWithParam<Row> {};

TEST_P(UnitCodeFieldTest, IsChecked) {
  const Row& row = GetParam();
  const std::string fault = FaultIn(With(row.place, row.text));
  if (std::string_view(row.fault).empty()) {
    EXPECT_EQ(fault, "");
  } else {
    EXPECT_THAT(fault, HasSubstr(row.fault));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Fields, UnitCodeFieldTest,
    ::testing::Values(
        Row{"CodeMissing", kCode, "", "directory code must be a number"},
        Row{"CodeNegative", kCode, "-1", "directory code must be a number"},
        Row{"CodeFraction", kCode, "1.5", "directory code must be a number"},
        Row{"CodeZero", kCode, "0", ""}, Row{"CodeLargest", kCode, "999999999999999", ""},
        Row{"CodeTooLarge", kCode, "1000000000000000", "more than 15 digits"},
        Row{"CodeWithZerosInFront", kCode, "0000000000000000007", ""},
        Row{"TextEmpty", kPhone, "", ""},
        Row{"TextApostrophe", kDisplayName, "O'Neil", "apostrophe"},
        Row{"TextHole", kPhone, "1, ,2", "missing value"},
        Row{"TextEqualsHole", kCfPhone, "a= ,b", "missing value"},
        Row{"TextBrokenUtf8", kDisplayName, "\xC3", "not valid UTF-8"},
        Row{"TextNul", kExtension, std::string("1\0", 2), "NUL"},
        Row{"TextPlaceholder", kCfExtension, "_LMDATE_", "takes for the time"},
        Row{"TextLongest", kPhone, std::string(255, '5'), ""},
        Row{"TextTooLong", kPhone, std::string(256, '5'), "more than 255 characters"},
        Row{"TextUtf8", kDisplayName, "Gro\xC3\x9F \xF0\x9F\x98\x80", ""},
        Row{"TextLineBreak", kDisplayName, "a\nb", ""},
        Row{"FlagEmpty", kActive, "", "must be 0 or 1"},
        Row{"FlagTwo", kIsDndChecked, "2", "must be 0 or 1"},
        Row{"FlagTrue", kIsCfChecked, "True", "must be 0 or 1"},
        Row{"FlagOff", kStartDateUsed, "0", ""},
        Row{"DateMissingInUse", kStartDate, "", "in use but empty"},
        Row{"DateShort", kEndDate, "24031", "YYMMDD"},
        Row{"DateNoSuchDay", kStartDate, "250229", "YYMMDD"},
        Row{"DateLeapDay", kStartDate, "240229", ""},
        Row{"DateMonth0", kStartDate, "240029", "YYMMDD"},
        Row{"DateLetters", kStartDate, "24O315", "YYMMDD"}, Row{"TimeEmpty", kStartTime, "", ""},
        Row{"TimeLast", kEndTime, "2359", ""}, Row{"Time24", kEndTime, "2400", "hhmm"},
        Row{"TimeMinute60", kStartTime, "1260", "hhmm"},
        Row{"TimeColon", kStartTime, "9:30", "hhmm"}, Row{"ScheduleEmpty", kDndSchedule, "", ""},
        Row{"ScheduleLargest", kCfSchedule, "2147483647", ""},
        Row{"ScheduleTooLarge", kCfSchedule, "2147483648", "above 2147483647"},
        Row{"ScheduleNegative", kDndSchedule, "-1", "number of digits"},
        Row{"DelayFraction", kTimeDelay, "2.5", "number of digits"},
        Row{"DelayEmpty", kCfTimeDelay, "", ""}, Row{"ModeEmpty", kDisplayMode, "", ""},
        Row{"ModeThree", kDisplayMode, "3", ""}, Row{"ModeFour", kDisplayMode, "4", "display mode"},
        Row{"ModeLong", kDisplayMode, "01", "display mode"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(UnitCodeTest, UnusedDatesAreStillChecked) {
  UnitCode code = With(kStartDateUsed, "0");
  code[kStartDate] = "999999";
  EXPECT_THAT(FaultIn(code), HasSubstr("YYMMDD"));
}

TEST(UnitCodeTest, TheCanonicalFormIsTheSameForEqualCodes) {
  UnitCode one = SampleCode();
  UnitCode other = SampleCode();
  other.fields[0] = "left over";
  other[kCode] = "000101";
  other[kTimeDelay] = "0030";
  other[kDndSchedule] = "05";
  qorhost::MakeCanonical(one);
  qorhost::MakeCanonical(other);
  EXPECT_EQ(one, other);
  EXPECT_EQ(qorhost::NumberOf(other), 101);
}

TEST(UnitCodeTest, TheCanonicalFormFillsWhatUnitsLeaveOut) {
  UnitCode code = SampleCode();
  code[kStartDateUsed] = "0";
  code[kEndTime] = "";
  code[kTimeDelay] = "";
  code[kDndSchedule] = "";
  code[kDisplayMode] = "";
  qorhost::MakeCanonical(code);
  EXPECT_EQ(code[kStartDate], "");
  EXPECT_EQ(code[kStartTime], "");
  EXPECT_EQ(code[kEndTime], "0000");
  EXPECT_EQ(code[kTimeDelay], "2");
  EXPECT_EQ(code[kDndSchedule], "");
  EXPECT_EQ(code[kDisplayMode], "0");
}

TEST(UnitCodeTest, DetailsHoldNullForNoSchedule) {
  UnitCode code = SampleCode();
  code[kDndSchedule] = "";
  const qorcred::StringArray details = qorhost::DetailsOf(code);
  ASSERT_EQ(details.size(), qorhost::kUnitFieldCount);
  EXPECT_EQ(details[kDndSchedule], "Null");
  EXPECT_EQ(details[kCfSchedule], "7");
  EXPECT_EQ(details[kCode], "101");
  EXPECT_EQ(details[kStartDate], "240315");
}

}  // namespace

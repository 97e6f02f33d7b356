// The rules by which cells of desktop database files become values of a store.
#include "host/desks/moving_in/cell_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

#include "host/files/csv_reader.h"

namespace qorhost {

std::ostream& operator<<(std::ostream& out, Settlement settlement) {
  return out << WordFor(settlement);
}

namespace test {
namespace {

using dialect::ColumnType;
using qorcred::Null;
using qorcred::Value;
using enum ColumnType;
using enum Settlement;

struct ConversionCase {
  const char* name;
  DesktopCell cell;
  ColumnType type;
  Value value;
  std::optional<Settlement> settlement = std::nullopt;
  std::string_view kind = "";
};

DesktopText Text(std::string utf8) {
  return {std::move(utf8), true};
}

std::int64_t Whole(std::int64_t number) {
  return number;
}

constexpr double kEndless = std::numeric_limits<double>::infinity();

const ConversionCase kCases[] = {
    {"NullToLong", DesktopNull{}, kLong, Null{}},
    {"NullToDouble", DesktopNull{}, kDouble, Null{}},
    {"NullToDate", DesktopNull{}, kDate, Null{}},
    {"NullToText", DesktopNull{}, kText, Null{}},
    {"NullToFlag", DesktopNull{}, kBoolean, false, kAdjusted, "null-flag"},

    {"WholeToLong", Whole(255), kLong, 255},
    {"LowestLong", Whole(-2147483648), kLong, std::numeric_limits<std::int32_t>::min()},
    {"HighestLong", Whole(2147483647), kLong, 2147483647},
    {"YesToLong", true, kLong, -1},
    {"NoToLong", false, kLong, 0},
    {"DoubleToLong", 500.0, kLong, 500},
    {"FractionToLong", 12.5, kLong, Null{}, kRefused, "number-range"},
    {"BeyondLong", 2147483648.0, kLong, Null{}, kRefused, "number-range"},
    {"BelowLong", -2147483649.0, kLong, Null{}, kRefused, "number-range"},
    {"EndlessToLong", kEndless, kLong, Null{}, kRefused, "number-range"},
    {"NoNumberToLong", std::nan(""), kLong, Null{}, kRefused, "number-range"},
    {"CurrencyToLong", DesktopCurrency{70'000}, kLong, 7},
    {"CurrencyWithCentsToLong", DesktopCurrency{70'500}, kLong, Null{}, kRefused, "number-range"},
    {"DateToLong", DesktopDate{45000}, kLong, Null{}, kRefused, "other-type"},
    {"BytesToLong", DesktopBytes{"abc"}, kLong, Null{}, kRefused, "other-type"},

    {"DigitsToLong", Text("42"), kLong, 42},
    {"MinusToLong", Text("-7"), kLong, -7},
    {"BlanksToLong", Text(" 3 "), kLong, 3, kAdjusted, "number-as-text"},
    {"PointToLong", Text("1.0"), kLong, 1, kAdjusted, "number-as-text"},
    {"PlusToLong", Text("+1"), kLong, 1, kAdjusted, "number-as-text"},
    {"NothingToLong", Text(""), kLong, Null{}, kAdjusted, "number-as-text"},
    {"BlankToLong", Text("  "), kLong, Null{}, kAdjusted, "number-as-text"},
    {"WordsToLong", Text("left door"), kLong, Null{}, kRefused, "text-for-number"},
    {"CommaToLong", Text("2,5"), kLong, Null{}, kRefused, "text-for-number"},
    {"ExponentToLong", Text("1e3"), kLong, Null{}, kRefused, "text-for-number"},
    {"SignAloneToLong", Text("-"), kLong, Null{}, kRefused, "text-for-number"},
    {"TwoSignsToLong", Text("+-1"), kLong, Null{}, kRefused, "text-for-number"},
    {"FractionTextToLong", Text("2.5"), kLong, Null{}, kRefused, "text-for-number"},
    {"LargeTextToLong", Text("99999999999"), kLong, Null{}, kRefused, "text-for-number"},

    {"EndlessTextToLong", Text(std::string(400, '9')), kLong, Null{}, kRefused, "text-for-number"},
    {"EndlessTextToDouble", Text(std::string(400, '9')), kDouble, Null{}, kRefused,
     "text-for-number"},
    {"EndlessTextToFlag", Text(std::string(400, '9')), kBoolean, Null{}, kRefused, "text-for-flag"},
    {"ManyZerosToLong", Text(std::string(400, '0') + "7"), kLong, 7, kAdjusted, "number-as-text"},
    {"WholeToDouble", Whole(101), kDouble, 101.0},
    {"DoubleToDouble", 0.5, kDouble, 0.5},
    {"LargeToDouble", 1e300, kDouble, 1e300},
    {"EndlessToDouble", -kEndless, kDouble, Null{}, kRefused, "number-range"},
    {"TextToDouble", Text("2.5"), kDouble, 2.5},

    {"YesToFlag", true, kBoolean, true},
    {"NoToFlag", false, kBoolean, false},
    {"MinusOneToFlag", Whole(-1), kBoolean, true},
    {"ZeroToFlag", Whole(0), kBoolean, false},
    {"SevenToFlag", Whole(7), kBoolean, true, kAdjusted, "number-for-flag"},
    {"YesTextToFlag", Text("yes"), kBoolean, true, kAdjusted, "flag-as-text"},
    {"ZeroTextToFlag", Text("0"), kBoolean, false, kAdjusted, "flag-as-text"},
    {"NothingToFlag", Text(""), kBoolean, false, kAdjusted, "null-flag"},
    {"BlankToFlag", Text(" "), kBoolean, false, kAdjusted, "null-flag"},
    {"WordsToFlag", Text("maybe"), kBoolean, Null{}, kRefused, "text-for-flag"},
    {"DateToFlag", DesktopDate{1}, kBoolean, Null{}, kRefused, "other-type"},

    {"DayToDate", DesktopDate{45356}, kDate, "2024-03-05 00:00:00"},
    {"LeapSecondsToDate", DesktopDate{45351 + 49079 / 86400.0}, kDate, "2024-02-29 13:37:59"},
    {"BeforeZeroToDate", DesktopDate{-1.25}, kDate, "1899-12-29 06:00:00"},
    {"ZeroDayToDate", DesktopDate{86399 / 86400.0}, kDate, "1899-12-30 23:59:59"},
    {"FirstDate", DesktopDate{-657434}, kDate, "0100-01-01 00:00:00"},
    {"FirstDayToDate", DesktopDate{-657434.5}, kDate, "0100-01-01 12:00:00"},
    {"EndOfFirstDayToDate", DesktopDate{-657434 - 86399 / 86400.0}, kDate, "0100-01-01 23:59:59"},
    {"EndlessToDate", DesktopDate{-kEndless}, kDate, Null{}, kRefused, "date-range"},
    {"LastDate", DesktopDate{2958465 + 86399 / 86400.0}, kDate, "9999-12-31 23:59:59"},
    {"LastSecondToDate", DesktopDate{2958465 + 86399.3 / 86400}, kDate, "9999-12-31 23:59:59",
     kAdjusted, "seconds"},
    {"LastTenthToDate", DesktopDate{2958465 + 86399.95 / 86400}, kDate, "9999-12-31 23:59:59",
     kAdjusted, "seconds"},
    {"LastMomentToDate", DesktopDate{std::nextafter(2958466.0, 0.0)}, kDate, "9999-12-31 23:59:59",
     kAdjusted, "seconds"},
    {"LastMomentToText", DesktopDate{std::nextafter(2958466.0, 0.0)}, kText, "9999-12-31 23:59:59",
     kAdjusted, "other-type"},
    {"BeforeTheFirstDate", DesktopDate{-657435}, kDate, Null{}, kRefused, "date-range"},
    {"BehindTheLastDate", DesktopDate{2958466}, kDate, Null{}, kRefused, "date-range"},
    {"NoDate", DesktopDate{std::nan("")}, kDate, Null{}, kRefused, "date-range"},
    {"TenthsToDate", DesktopDate{45356 + 52259.6 / 86400}, kDate, "2024-03-05 14:31:00", kAdjusted,
     "seconds"},
    {"TextToDate", Text("2024-05-06 10:11:12"), kDate, "2024-05-06 10:11:12", kAdjusted,
     "text-for-date"},
    {"NothingToDate", Text(""), kDate, Null{}, kAdjusted, "text-for-date"},
    {"OtherTextToDate", Text("6.5.2024"), kDate, Null{}, kRefused, "text-for-date"},
    {"NumberToDate", Whole(45356), kDate, Null{}, kRefused, "other-type"},

    {"TextToText", Text("Dvůr 🚪"), kText, "Dvůr 🚪"},
    {"EmptyTextToText", Text(""), kText, ""},
    {"JoinedEmojiToText", Text("👩‍👧"), kText, "👩‍👧"},
    {"BrokenToText", DesktopText{"Lone \xEF\xBF\xBD", false}, kText, "Lone \xEF\xBF\xBD", kAdjusted,
     "broken-text"},
    {"ZeroInText", Text(std::string("a\0b", 3)), kText,
     "a\xEF\xBF\xBD"
     "b",
     kAdjusted, "control-character"},
    {"TabInText", Text("a\tb"), kText, "a\tb", kKept, "control-character"},
    {"TurnedText",
     Text("\xE2\x80\xAE"
          "ab"),
     kText,
     "\xE2\x80\xAE"
     "ab",
     kKept, "control-character"},
    {"LongestText", Text(std::string(CsvReader::kLongestCell, 'n')), kText,
     std::string(CsvReader::kLongestCell, 'n')},
    {"LongText", Text(std::string(CsvReader::kLongestCell + 1, 'n')), kText,
     std::string(CsvReader::kLongestCell + 1, 'n'), kKept, "long-text"},
    {"NumberToText", Whole(301), kText, "301", kAdjusted, "other-type"},
    {"CurrencyToText", DesktopCurrency{-500}, kText, "-0.05", kAdjusted, "other-type"},
    {"DateToText", DesktopDate{45356}, kText, "2024-03-05 00:00:00", kAdjusted, "other-type"},
    {"BytesToText", DesktopBytes{"abc"}, kText, Null{}, kRefused, "other-type"},
};

class CellConversion : public testing::TestWithParam<ConversionCase> {};

TEST_P(CellConversion, GivesTheValueAndTellsWhatItChanged) {
  const ConversionCase& wanted = GetParam();
  const ConvertedCell converted = Converted(wanted.cell, wanted.type);
  EXPECT_TRUE(converted.value == wanted.value) << ShownStored(converted.value);
  ASSERT_EQ(converted.remark.has_value(), wanted.settlement.has_value());
  if (converted.remark) {
    EXPECT_EQ(converted.remark->settlement, *wanted.settlement);
    EXPECT_EQ(converted.remark->kind, wanted.kind);
    EXPECT_FALSE(converted.remark->reason.empty());
  }
}
INSTANTIATE_TEST_SUITE_P(Rules, CellConversion, testing::ValuesIn(kCases),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(ShownCells, StandOnOneLineAndAreCut) {
  EXPECT_EQ(ShownCell(DesktopNull{}), "Null");
  EXPECT_EQ(ShownCell(Text("")), "\"\"");
  EXPECT_EQ(ShownCell(Text("a\nb")), "\"a\\nb\"");
  EXPECT_EQ(ShownCell(Text(std::string(61, 'n'))), '"' + std::string(60, 'n') + "…\"");
  EXPECT_EQ(ShownCell(DesktopDate{45356 + 52259.6 / 86400}), "2024-03-05 14:30:59.600");
  EXPECT_EQ(ShownCell(DesktopDate{-1.25}), "1899-12-29 06:00:00");
  EXPECT_EQ(ShownCell(DesktopDate{1e9}), "day 1000000000");
  EXPECT_EQ(ShownCell(DesktopDate{2958465 + 86399.95 / 86400}), "9999-12-31 23:59:59.950");
  EXPECT_EQ(ShownCell(DesktopDate{std::nextafter(2958466.0, 0.0)}), "9999-12-31 23:59:59");
  EXPECT_EQ(ShownCell(DesktopBytes{"abc"}), "3 bytes");
  EXPECT_EQ(ShownCell(true), "Yes");
}

}  // namespace
}  // namespace test
}  // namespace qorhost

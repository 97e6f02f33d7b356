#include "frame/number_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "frame/convert.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;
using qortest::Outcome;

TEST(ValTest, ReadsTheNumberAtTheStart) {
  const struct {
    const char* name;
    std::string_view text;
    const char* expected;
  } rows[] = {
      {"Nothing", "", "0"},
      {"Blank", "   ", "0"},
      {"Whole", "123", "123"},
      {"LeadingZeros", "000123", "123"},
      {"Positive", "+5", "5"},
      {"Negative", "-12", "-12"},
      {"TwoSigns", "--12", "0"},
      {"SignAlone", "-", "0"},
      {"SignBehindIsNotRead", "12-", "12"},
      {"Fraction", "1.25", "1.25"},
      {"LeadingPoint", ".5", "0.5"},
      {"NegativeLeadingPoint", "-.5", "-0.5"},
      {"TrailingPoint", "5.", "5"},
      {"PointAlone", ".", "0"},
      {"SecondPointEnds", "1.2.3", "1.2"},
      {"CommaEnds", "1,234", "1"},
      {"LetterEnds", "12abc", "12"},
      {"NoNumberAtTheStart", "abc12", "0"},
      {"CurrencyIsNotRead", "$5", "0"},
      {"BracketIsNotRead", "(5)", "0"},
      {"BlanksInFront", "  42", "42"},
      {"BlanksInside", "1 2 3", "123"},
      {"BlankAfterTheSign", "- 7", "-7"},
      {"BlanksAroundThePoint", "1 . 5", "1.5"},
      {"TabsAndLineFeedsInside", "\t1\n2", "12"},
      {"CarriageReturnEnds", "1\r2", "1"},
      {"NoBreakSpaceEnds",
       "1\xC2\xA0"
       "2",
       "1"},
      {"ZeroByteEnds", std::string_view("1\0002", 3), "1"},
      {"Exponent", "1E3", "1000"},
      {"LowerExponent", "1e3", "1000"},
      {"DoubleExponent", "1D3", "1000"},
      {"LowerDoubleExponent", "25d-1", "2.5"},
      {"PositiveExponent", "1E+3", "1000"},
      {"NegativeExponent", "15E-1", "1.5"},
      {"BlanksInsideTheExponent", "1 E - 2", "0.01"},
      {"ExponentWithoutDigits", "12E", "12"},
      {"ExponentWithSignOnly", "12E+", "12"},
      {"ExponentAlone", "E5", "0"},
      {"PointAndExponentAlone", ".E5", "0"},
      {"SecondExponentEnds", "1E2E3", "100"},
      {"PointInExponentEnds", "1E2.5", "100"},
      {"Largest", "1.7976931348623157E308", "1.7976931348623157e+308"},
      {"TooLarge", "1E309", "error 6"},
      {"JustTooLarge", "1.8E308", "error 6"},
      {"NegativeTooLarge", "-1E309", "error 6"},
      {"HugeExponent", "1E99999999999999999999", "error 6"},
      {"HugeExponentOfZero", "0E99999999999999999999", "0"},
      {"Smallest", "5E-324", "5e-324"},
      {"TooSmall", "1E-325", "0"},
      {"HugeNegativeExponent", "1E-99999999999999999999", "0"},
      {"Hexadecimal", "&HFF", "255"},
      {"LowerHexadecimal", "&hff", "255"},
      {"BlanksInHexadecimal", " & H F F", "255"},
      {"LargestShortHexadecimal", "&H7FFF", "32767"},
      {"FourDigitsAreSigned", "&H8000", "-32768"},
      {"AllBitsOfFourDigits", "&HFFFF", "-1"},
      {"FiveDigitsAreLong", "&H0FFFF", "65535"},
      {"MarkedLong", "&HFFFF&", "65535"},
      {"LargestLong", "&H7FFFFFFF", "2147483647"},
      {"EightDigitsAreSigned", "&H80000000", "-2147483648"},
      {"AllBitsOfEightDigits", "&HFFFFFFFF", "-1"},
      {"SystemColour", "&H8000000F", "-2147483633"},
      {"MoreThan32Bits", "&H100000000", "0"},
      {"LeadingZerosDoNotCountAsBits", "&H000000000001", "1"},
      {"HexadecimalEndsAtOtherLetters", "&H1G", "1"},
      {"HexadecimalWithoutDigits", "&HG", "0"},
      {"HexadecimalPrefixAlone", "&H", "0"},
      {"AmpersandAlone", "&", "0"},
      {"AmpersandAndOtherLetter", "&X1", "0"},
      {"AmpersandAndDigits", "&12", "0"},
      {"SignedHexadecimal", "-&H10", "0"},
      {"Octal", "&O17", "15"},
      {"LowerOctal", "&o17", "15"},
      {"OctalEndsAtEight", "&O18", "1"},
      {"LargestShortOctal", "&O77777", "32767"},
      {"SixDigitsAreSigned", "&O100000", "-32768"},
      {"AllBitsOfSixDigits", "&O177777", "-1"},
      {"OctalBeyond16Bits", "&O200000", "65536"},
      {"SevenDigitsAreLong", "&O0177777", "65535"},
      {"LargestOctal", "&O37777777777", "-1"},
      {"OctalMoreThan32Bits", "&O40000000000", "0"},
      {"NotANumberWord", "NaN", "0"},
      {"InfinityWord", "inf", "0"},
      {"HexadecimalAsInC", "0x10", "0"},
      {"True", "True", "0"},
      {"DateText", "1/31/2026", "1"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { return Val(row.text); }), row.expected);
  });
}

TEST(ValTest, RoundsLongDigitsOnlyOnce) {
  // 2^53 + 1 lies halfway between two doubles: what stands far behind decides.
  const std::string half = "9007199254740993";
  EXPECT_EQ(Val(half), 9007199254740992.0);
  EXPECT_EQ(Val(half + "." + std::string(2000, '0')), 9007199254740992.0);
  EXPECT_EQ(Val(half + "." + std::string(2000, '0') + "1"), 9007199254740994.0);
}

TEST(ValTest, ReadsAMillionDigits) {
  const std::string zeros(1'000'000, '0');
  EXPECT_EQ(Val("0." + zeros + "1E1000001"), 1.0);
  EXPECT_EQ(Val("1" + zeros + "E-1000000"), 1.0);
  EXPECT_EQ(Val("0." + zeros), 0.0);
  EXPECT_EQ(Val(std::string(1'000'000, ' ') + "7"), 7.0);
  EXPECT_EQ(Outcome([&] { return Val("1" + zeros); }), "error 6");
}

struct NumericRow {
  const char* name;
  std::string_view text;
  const char* number;  // what the text is worth, "error 13" for what is no number
};

const NumericRow kNumericRows[] = {
    {"Nothing", "", "error 13"},
    {"Blank", " ", "error 13"},
    {"Whole", "123", "123"},
    {"BlanksAround", "  123  ", "123"},
    {"BlankInside", "1 2", "error 13"},
    {"TabInFront", "\t1", "error 13"},
    {"Positive", "+5", "5"},
    {"Negative", "-12", "-12"},
    {"BlankAfterTheSign", "- 12", "-12"},
    {"SignBehind", "12-", "-12"},
    {"BlankBeforeTheSignBehind", "12 -", "-12"},
    {"PositiveBehind", "12+", "12"},
    {"SignsOnBothSides", "-12-", "error 13"},
    {"TwoSigns", "--12", "error 13"},
    {"SignAlone", "-", "error 13"},
    {"Fraction", "1.25", "1.25"},
    {"LeadingPoint", ".5", "0.5"},
    {"TrailingPoint", "5.", "5"},
    {"PointAlone", ".", "error 13"},
    {"SecondPoint", "1.2.3", "error 13"},
    {"Grouping", "1,234,567.5", "1234567.5"},
    {"GroupingAnywhere", "1,2", "12"},
    {"CommasInARow", "1,,2", "12"},
    {"CommaBehind", "1,", "1"},
    {"CommaInFront", ",1", "error 13"},
    {"CommaAfterThePoint", "1.2,3", "error 13"},
    {"Exponent", "1E3", "1000"},
    {"LowerExponent", "1e-3", "0.001"},
    {"DoubleExponent", "1D3", "1000"},
    {"LowerDoubleExponent", "1d+3", "1000"},
    {"ExponentWithoutDigits", "1E", "error 13"},
    {"ExponentWithSignOnly", "1E+", "error 13"},
    {"ExponentAlone", "E5", "error 13"},
    {"BlankInsideTheExponent", "1E 5", "error 13"},
    {"ExponentThenSign", "1E5-", "-1e+05"},
    {"Brackets", "(5)", "-5"},
    {"BlanksInBrackets", "( 5 )", "-5"},
    {"OpenBracketOnly", "(5", "error 13"},
    {"ClosingBracketOnly", "5)", "error 13"},
    {"EmptyBrackets", "()", "error 13"},
    {"SignInBrackets", "(-5)", "error 13"},
    {"SignBeforeBrackets", "-(5)", "error 13"},
    {"SignBehindBrackets", "(5)-", "error 13"},
    {"TwoBrackets", "((5))", "error 13"},
    {"Currency", "$5", "5"},
    {"CurrencyBehind", "5$", "5"},
    {"CurrencyAndSign", "-$5", "-5"},
    {"SignAfterCurrency", "$-5", "-5"},
    {"CurrencyInBrackets", "($5)", "-5"},
    {"CurrencyBeforeBrackets", "$(5)", "-5"},
    {"TwoCurrencySigns", "$5$", "error 13"},
    {"OtherCurrency",
     "\xE2\x82\xAC"
     "5",
     "error 13"},
    {"Percent", "5%", "error 13"},
    {"Hexadecimal", "&HFF", "255"},
    {"BlanksAroundHexadecimal", " &hff ", "255"},
    {"SignedShortHexadecimal", "&HFFFF", "-1"},
    {"LongHexadecimal", "&H10000", "65536"},
    {"MarkedLongHexadecimal", "&HFFFF&", "65535"},
    {"HexadecimalWithoutDigits", "&H", "error 13"},
    {"HexadecimalWithOtherLetters", "&HG1", "error 13"},
    {"HexadecimalWithTrailingLetters", "&H1G", "error 13"},
    {"BlankInHexadecimal", "&H F", "error 13"},
    {"MoreThan32Bits", "&H100000000", "error 13"},
    {"SignedHexadecimal", "-&H10", "error 13"},
    {"Octal", "&O17", "15"},
    {"OctalWithEight", "&O8", "error 13"},
    {"AmpersandAlone", "&", "error 13"},
    {"TrailingLetters", "12abc", "error 13"},
    {"LeadingLetters", "abc12", "error 13"},
    {"Words", "True", "error 13"},
    {"NotANumberWord", "NaN", "error 13"},
    {"InfinityWord", "inf", "error 13"},
    {"Date", "1/31/2026", "error 13"},
    {"ZeroByte", std::string_view("1\0", 2), "error 13"},
    {"FullWidthDigit", "\xEF\xBC\x91", "error 13"},
    {"TooSmall", "1E-400", "0"},
};

TEST(NumericTextTest, TheTestAndTheConversionAgree) {
  ForEachRow(kNumericRows, [](const NumericRow& row) {
    EXPECT_EQ(IsNumeric(row.text), row.number != std::string_view("error 13"));
    EXPECT_EQ(Outcome([&] { return ToDouble(row.text); }), row.number);
  });
}

TEST(NumericTextTest, ATextBeyondTheRangeIsNotNumericAndOverflows) {
  for (const char* text : {"1E309", "-1E309", "1E99999999999999999999"}) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(IsNumeric(std::string_view(text)));
    EXPECT_EQ(ReadNumber(text).reading, NumberReading::kTooLarge);
    EXPECT_EQ(Outcome([&] { return ToDouble(text); }), "error 6");
  }
}

TEST(NumberTextTest, WritesUpTo15DigitsThenExponents) {
  const struct {
    const char* name;
    double number;
    const char* expected;
  } rows[] = {
      {"Zero", 0.0, "0"},
      {"MinusZero", -0.0, "0"},
      {"One", 1.0, "1"},
      {"Negative", -12.0, "-12"},
      {"Half", 0.5, "0.5"},
      {"NegativeFraction", -0.25, "-0.25"},
      {"RoundingDust", 0.1 + 0.2, "0.3"},
      {"Third", 1.0 / 3.0, "0.333333333333333"},
      {"TwoThirds", 2.0 / 3.0, "0.666666666666667"},
      {"FifteenDigits", 123456789012345.0, "123456789012345"},
      {"LargestPlain", 999999999999999.0, "999999999999999"},
      {"FirstWithExponent", 1E15, "1E+15"},
      {"SixteenDigits", 1234567890123456.0, "1.23456789012346E+15"},
      {"SmallestPlain", 0.0001, "0.0001"},
      {"FirstWithNegativeExponent", 0.00001, "1E-05"},
      {"SmallWithDigits", 0.0000123, "1.23E-05"},
      {"ThreeExponentDigits", 1E100, "1E+100"},
      {"Largest", std::numeric_limits<double>::max(), "1.79769313486232E+308"},
      {"Smallest", std::numeric_limits<double>::denorm_min(), "4.94065645841247E-324"},
      {"Infinity", std::numeric_limits<double>::infinity(), "error 6"},
      {"NegativeInfinity", -std::numeric_limits<double>::infinity(), "error 6"},
      {"NotANumber", std::numeric_limits<double>::quiet_NaN(), "error 6"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(Outcome([&] { return NumberText(row.number); }), row.expected);
  });
}

}  // namespace
}  // namespace qorcred

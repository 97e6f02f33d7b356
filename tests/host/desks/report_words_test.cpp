#include "host/desks/report_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string>

#include "host/desks/input_fault.h"

namespace qorhost {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::vector<ReportField>& Fields() {
  static const std::vector<ReportField> kFields{{"Phone No.", FieldKind::kText},
                                                {"Phone No. Delay", FieldKind::kNumber},
                                                {"Directory Start Date", FieldKind::kDate},
                                                {"Do Not Disturb", FieldKind::kYesNo},
                                                {"Show Display Name", FieldKind::kYesNoText},
                                                {"Floor", FieldKind::kOther},
                                                {"Credential Type", FieldKind::kCredentialType},
                                                {"", FieldKind::kText},
                                                {"Größe", FieldKind::kNumber}};
  return kFields;
}

struct ConditionRow {
  const char* name;
  const char* where;
  std::int32_t field;
  std::int32_t operation;
  const char* first;
  const char* second = "";
};

class ConditionTest : public testing::TestWithParam<ConditionRow> {};

TEST_P(ConditionTest, IsReadAsItsPlacesAndValues) {
  const ReportCondition condition = ReadCondition(GetParam().where, Fields());
  EXPECT_EQ(condition.field, GetParam().field);
  EXPECT_EQ(condition.operation, GetParam().operation);
  EXPECT_EQ(condition.first, GetParam().first);
  EXPECT_EQ(condition.second, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConditionTest,
    testing::Values(
        ConditionRow{"Equal", "Phone No. equal 555", 0, 0, "555"},
        ConditionRow{"EqualSymbol", "Phone No. = 555", 0, 0, "555"},
        ConditionRow{"SymbolWithoutBlanks", "Phone No.=555", 0, 0, "555"},
        ConditionRow{"DoesNotEqual", "Phone No. does not equal 555", 0, 1, "555"},
        ConditionRow{"UnequalSymbol", "Phone No. <>555", 0, 1, "555"},
        ConditionRow{"BeginsWith", "Phone No. begins with 55", 0, 2, "55"},
        ConditionRow{"DoesNotBeginWith", "Phone No. does not begin with 55", 0, 3, "55"},
        ConditionRow{"EndsWith", "Phone No. ends with 5", 0, 4, "5"},
        ConditionRow{"DoesNotEndWith", "Phone No. does not end with 5", 0, 5, "5"},
        ConditionRow{"Contains", "Phone No. contains 5", 0, 6, "5"},
        ConditionRow{"DoesNotContain", "Phone No. does not contain 5", 0, 7, "5"},
        ConditionRow{"AnyCase", "PHONE NO. Does Not CONTAIN aB", 0, 7, "aB"},
        ConditionRow{"LongestFieldWins", "phone no. delay = 5", 1, 0, "5"},
        ConditionRow{"NumberUnequal", "Phone No. Delay does not equal 5", 1, 1, "5"},
        ConditionRow{"Greater", "Phone No. Delay greater than 5", 1, 2, "5"},
        ConditionRow{"GreaterSymbol", "Phone No. Delay >5", 1, 2, "5"},
        ConditionRow{"GreaterOrEqual", "Phone No. Delay greater than or equal 5", 1, 3, "5"},
        ConditionRow{"GreaterOrEqualSymbol", "Phone No. Delay>=5", 1, 3, "5"},
        ConditionRow{"Less", "Phone No. Delay less than 5", 1, 4, "5"},
        ConditionRow{"LessSymbol", "Phone No. Delay < 5", 1, 4, "5"},
        ConditionRow{"LessOrEqual", "Phone No. Delay less than or equal 5", 1, 5, "5"},
        ConditionRow{"LessOrEqualSymbol", "Phone No. Delay <= 5", 1, 5, "5"},
        ConditionRow{"Between", "Phone No. Delay between 5 AND 9", 1, 6, "5", "9"},
        ConditionRow{"NotBetween", "Phone No. Delay not between 5 and 9", 1, 7, "5", "9"},
        ConditionRow{"BetweenDates", "Directory Start Date between 2026-01-01 AND 2026-12-31", 2, 6,
                     "2026-01-01", "2026-12-31"},
        ConditionRow{"NegativeNumber", "Phone No. Delay = -5", 1, 0, "-5"},
        ConditionRow{"NoValue", "Phone No. equal", 0, 0, ""},
        ConditionRow{"NoValueBehindASymbol", "  Phone No.=  ", 0, 0, ""},
        ConditionRow{"ValueIsKeptAsItIs", "Phone No. = '; DROP -- \" %", 0, 0, "'; DROP -- \" %"},
        ConditionRow{"ValueWithAnOperator", "Phone No. contains = and >", 0, 6, "= and >"},
        ConditionRow{"AndIsPartOfAText", "Phone No. equal salt and pepper", 0, 0,
                     "salt and pepper"},
        ConditionRow{"Yes", "Do Not Disturb = YES", 3, 0, "YES"},
        ConditionRow{"No", "Do Not Disturb <> false", 3, 1, "false"},
        ConditionRow{"YesAsText", "Show Display Name equal no", 4, 0, "no"},
        ConditionRow{"Other", "Floor does not equal 3", 5, 1, "3"},
        ConditionRow{"Type", "Credential Type = transmitter", 6, 0, "transmitter"},
        ConditionRow{"NamesBeyondAscii", "GRÖßE >= 3", 8, 3, "3"}),
    [](const auto& row) { return std::string(row.param.name); });

std::string FailureOf(std::string_view where) {
  try {
    (void)ReadCondition(where, Fields());
  } catch (const InputFault& error) {
    return error.what();
  }
  return "read";
}

TEST(ReportWordsTest, AnUnknownFieldIsAnsweredWithTheFields) {
  for (const char* where :
       {"", "Phone", "Phone No.Delay = 5", "Tenant = 5", "= 5", "Phone No = 5"}) {
    EXPECT_THAT(FailureOf(where), HasSubstr("Phone No., Phone No. Delay, Directory Start Date, "))
        << where;
  }
}

TEST(ReportWordsTest, WithoutFieldsThatIsWhatIsSaid) {
  try {
    (void)ReadCondition("Phone No. = 5", {});
    ADD_FAILURE() << "nothing was refused";
  } catch (const InputFault& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("the store has no fields to narrow this report by"));
  }
}

TEST(ReportWordsTest, AnUnknownOperatorIsAnsweredWithThoseOfTheField) {
  EXPECT_THAT(FailureOf("Phone No. like 5"),
              HasSubstr("equal (=), does not equal (<>), begins with, does not begin with, "));
  EXPECT_THAT(FailureOf("Phone No. Delay contains 5"), HasSubstr("greater than or equal (>=)"));
  EXPECT_THAT(FailureOf("Do Not Disturb > yes"),
              HasSubstr("'Do Not Disturb': equal (=), does not equal (<>)"));
  EXPECT_THAT(FailureOf("Credential Type <> card26"), Not(HasSubstr("does not")));
}

TEST(ReportWordsTest, AnOperatorIsAWholeWordOrSymbol) {
  for (const char* where :
       {"Phone No.", "Phone No. equals 5", "Phone No. => 5", "Phone No. == 5",
        "Phone No. Delay >< 5", "Phone No. Delay betweenish 5 AND 6", "Phone No. > 5"}) {
    EXPECT_THAT(FailureOf(where), HasSubstr("has no operator that goes with")) << where;
  }
}

/// The cells of a row of a table in a page, without the blanks around them.
std::vector<std::string> CellsOf(std::string_view row) {
  std::vector<std::string> cells;
  for (std::size_t begin = 1; begin < row.size();) {
    const std::size_t end = std::min(row.find('|', begin), row.size());
    std::string_view cell = row.substr(begin, end - begin);
    while (cell.starts_with(' ')) cell.remove_prefix(1);
    while (cell.ends_with(' ')) cell.remove_suffix(1);
    cells.emplace_back(cell);
    begin = end + 1;
  }
  return cells;
}

// Hosts of other makers fill their lists by this table.
TEST(ReportWordsTest, TheOperatorsAreThoseOfThePageInItsOrder) {
  // The last as the report has it.
  const std::array columns{ReportField{"", FieldKind::kText}, ReportField{"", FieldKind::kNumber},
                           ReportField{"", FieldKind::kYesNo},
                           ReportField{"", FieldKind::kCredentialType, 1}};
  std::ifstream page(QORHOST_DOCS "/host-reports.md");
  std::string line;
  while (std::getline(page, line) && !line.starts_with("| Place | Texts, schedules")) {
  }
  ASSERT_EQ(CellsOf(line).size(), 1 + columns.size());
  std::getline(page, line);
  std::array<std::vector<std::string>, 4> listed;
  std::size_t places = 0;
  while (std::getline(page, line) && line.starts_with('|')) {
    const std::vector<std::string> cells = CellsOf(line);
    EXPECT_EQ(cells[0], std::to_string(places++));
    for (std::size_t column = 0; column < columns.size(); ++column) {
      if (const std::string& word = cells.at(column + 1); !word.empty()) {
        listed[column].push_back(word);
      }
    }
  }
  for (std::size_t column = 0; column < columns.size(); ++column) {
    std::vector<std::string> words;
    for (const ReportOperator& one : OperatorsOf(columns[column])) words.emplace_back(one.word);
    EXPECT_EQ(words, listed[column]) << "column " << column + 1;
  }
  for (const FieldKind kind : {FieldKind::kSchedule, FieldKind::kDate}) {
    const std::size_t column = kind == FieldKind::kDate ? 1 : 0;
    EXPECT_EQ(OperatorsFor(kind).data(), OperatorsOf(columns[column]).data());
  }
}

TEST(ReportWordsTest, AFieldsNameIsToldAsItIs) {
  const std::vector<ReportField> fields{{"{value} {{field}}", FieldKind::kYesNo}};
  const auto failure = [&fields](std::string_view where) {
    try {
      (void)ReadCondition(where, fields);
    } catch (const InputFault& error) {
      return std::string(error.what());
    }
    return std::string("read");
  };
  EXPECT_THAT(failure("Floor = 5"),
              HasSubstr("'Floor = 5' begins with no field: {value} {{field}}"));
  EXPECT_THAT(failure("{value} {{field}} > 5"), HasSubstr("goes with '{value} {{field}}': equal"));
}

TEST(ReportWordsTest, ARangeNeedsTwoValues) {
  for (const char* where :
       {"Phone No. Delay between", "Phone No. Delay between 5", "Phone No. Delay between 5 AND",
        "Phone No. Delay between AND 5", "Phone No. Delay not between 5,9"}) {
    EXPECT_THAT(FailureOf(where), HasSubstr("needs two values")) << where;
  }
}

TEST(ReportWordsTest, ADateMustBeAWholeDay) {
  EXPECT_THAT(FailureOf("Directory Start Date = soon"), HasSubstr("'soon' is no date"));
  EXPECT_THAT(FailureOf("Directory Start Date ="), HasSubstr("is no date"));
  EXPECT_THAT(FailureOf("Directory Start Date between 2026-01-01 AND never"),
              HasSubstr("'never' is no date"));
  EXPECT_THAT(FailureOf("Directory Start Date = 2026-01-01 12:00"), HasSubstr("whole days"));
}

TEST(ReportWordsTest, AYesNoFieldTakesNothingElse) {
  for (const char* value : {"", "maybe", "1", "yes please"}) {
    EXPECT_THAT(FailureOf(std::string("Do Not Disturb = ") + value),
                HasSubstr("is neither yes nor no"))
        << value;
    EXPECT_THAT(FailureOf(std::string("Show Display Name = ") + value),
                HasSubstr("is neither yes nor no"))
        << value;
  }
}

const std::vector<ReportField>& NarrowFields() {
  static const std::vector<ReportField> kFields{
      {"Card Number", FieldKind::kNumber, 0, false, kFromZero},
      {"CF Time Delay", FieldKind::kNumberText, 0, true, kFromZero},
      {"DND Schedule", FieldKind::kSchedule, 0, false, {}, {"Night Shift", "Late's"}},
      {"Display Name", FieldKind::kText, 1}};
  return kFields;
}

struct NotUnderstood {
  std::string_view name;
  std::string_view where;
  std::string_view answer;
};

class NotUnderstoodTest : public testing::TestWithParam<NotUnderstood> {};

// Each of these once found no rows, or all of them, without a word.
TEST_P(NotUnderstoodTest, IsAFaultThatSaysWhatIsRight) {
  try {
    (void)ReadCondition(GetParam().where, NarrowFields());
    ADD_FAILURE() << "nothing was refused";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), report_input::kCondition);
    EXPECT_EQ(fault.value(), GetParam().where);
    EXPECT_THAT(fault.what(), HasSubstr(std::string(GetParam().answer)));
  }
}

constexpr std::string_view kWhole = "takes a whole number from 0 to 2147483647, in digits alone";
constexpr std::string_view kNoText = "ends without a text to look for; 'equal' without one";
constexpr std::string_view kOrder = "the first value of a range must not be above the second";

INSTANTIATE_TEST_SUITE_P(
    Conditions, NotUnderstoodTest,
    testing::Values(
        NotUnderstood{"Fraction", "Card Number = 1.5", kWhole},
        NotUnderstood{"BelowZero", "Card Number = -1", kWhole},
        NotUnderstood{"Power", "Card Number > 1e-5", kWhole},
        NotUnderstood{"LargePower", "Card Number <> 9e9", kWhole},
        NotUnderstood{"TooLarge", "Card Number = 2147483648", kWhole},
        NotUnderstood{"OtherDigits", "Card Number = &H10", kWhole},
        NotUnderstood{"TwoSigns", "Card Number = +-5", "takes a number, and '+-5' is none"},
        NotUnderstood{"FractionInARange", "Card Number between 1 AND 2.5", kWhole},
        NotUnderstood{"RangeBackwards", "Card Number between 5 AND 1", kOrder},
        NotUnderstood{"NotRangeBackwards", "Card Number not between 10 AND 9", kOrder},
        NotUnderstood{"ThreeValues", "Card Number between 1 AND 2 AND 3",
                      "takes a number, and '2 AND 3' is none"},
        NotUnderstood{"SearchedNumber", "CF Time Delay contains x", "takes a number"},
        NotUnderstood{"SearchedNumberMissing", "CF Time Delay ends with", "ends without a value"},
        NotUnderstood{"UnknownSchedule", "DND Schedule = nosuch",
                      "'nosuch' is none of the unit's schedules: Night Shift, Late's"},
        NotUnderstood{"UnknownScheduleUnequal", "DND Schedule <> Night",
                      "'Night' is none of the unit's schedules"},
        NotUnderstood{"NoSchedule", "DND Schedule =", "takes the name of a schedule"},
        NotUnderstood{"NoPartOfASchedule", "DND Schedule contains", "the name of a schedule"},
        NotUnderstood{"BeginsWithNothing", "Display Name begins with", kNoText},
        NotUnderstood{"DoesNotBeginWithNothing", "Display Name does not begin with", kNoText},
        NotUnderstood{"EndsWithNothing", "Display Name ends with", kNoText},
        NotUnderstood{"DoesNotEndWithNothing", "Display Name does not end with", kNoText},
        NotUnderstood{"ContainsNothing", "Display Name contains", kNoText},
        NotUnderstood{"OperatorLeftOut", "Display Name does not contain x",
                      "has no operator that goes with 'Display Name': equal (=), does not equal "
                      "(<>), begins with, does not begin with, ends with, does not end with, "
                      "contains"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ReportWordsTest, ADayRangeIsInOrder) {
  EXPECT_THAT(FailureOf("Directory Start Date between 2026-12-31 AND 2026-01-01"),
              HasSubstr("the first value of a range must not be above the second"));
  EXPECT_EQ(FailureOf("Directory Start Date between 2026-01-01 AND 2026-01-01"), "read");
}

TEST(ReportWordsTest, WhatIsUnderstoodIsReadInItsPlainForm) {
  const auto first = [](std::string_view where) {
    return ReadCondition(where, NarrowFields()).first;
  };
  EXPECT_EQ(first("Card Number = 007"), "7");
  EXPECT_EQ(first("Card Number = +7"), "7");
  EXPECT_EQ(first("Card Number between 5 AND 5"), "5");
  EXPECT_EQ(first("Card Number = 2147483647"), "2147483647");
  EXPECT_EQ(first("CF Time Delay contains 2"), "2");
  EXPECT_EQ(first("CF Time Delay ="), "") << "those that have none";
  EXPECT_EQ(first("DND Schedule = NIGHT shift"), "NIGHT shift");
  EXPECT_EQ(first("DND Schedule <> Late''s"), "Late''s") << "as the statement takes it";
  EXPECT_EQ(first("DND Schedule contains nosuch"), "nosuch") << "a part, which none may have";
  EXPECT_EQ(first("Display Name ="), "") << "those that have none";
  EXPECT_EQ(first("Display Name does not equal"), "");
}

TEST(ReportWordsTest, EveryOperatorHasTheWordThatTheControllersKnow) {
  const auto words = [](FieldKind kind) {
    std::string list;
    for (const ReportOperator& known : OperatorsFor(kind)) {
      list += std::string(known.word) + "|";
    }
    return list;
  };
  EXPECT_EQ(words(FieldKind::kText),
            "equal|does not equal|begins with|does not begin with|ends with|does not end with|"
            "contains|does not contain|");
  EXPECT_EQ(words(FieldKind::kNumber),
            "equal|does not equal|greater than|greater than or equal|less than|less than or equal|"
            "between|not between|");
  EXPECT_EQ(words(FieldKind::kDate), words(FieldKind::kNumber));
  EXPECT_EQ(words(FieldKind::kYesNo), "equal|does not equal|");
  EXPECT_EQ(words(FieldKind::kCredentialType), "equal|does not equal|");
}

}  // namespace
}  // namespace qorhost

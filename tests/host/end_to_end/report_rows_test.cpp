// Both reports on the real store: the rows that a statement gives are those that plain C++ chooses
// over the same rows. The rows and the conditions are random; QORCRED_SEED repeats a run.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "frame/result_table.h"
#include "frame/text.h"
#include "tests/host/end_to_end/report_code_oracle.h"
#include "tests/host/end_to_end/report_credential_oracle.h"
#include "tests/host/end_to_end/report_desk.h"
#include "tests/host/store/engine.h"

namespace qortest {
namespace {

using qorcred::Value;

constexpr PopulationSize kSize{2000, 24, 900, 1500};
constexpr std::int32_t kOtherUnit = 2;

// A value as typed, and what it stands for.
struct Typed {
  std::string typed;
  std::string text;
  std::optional<double> number;
  std::string digits;
};

Typed TypedText(std::string text) {
  Typed value;
  value.text = std::string(qorcred::Trim(text));
  value.typed = qorcred::ReplaceAll(text, "'", "''");
  return value;
}

Typed TypedNumber(std::string typed, double number, std::string digits) {
  Typed value = TypedText(std::move(typed));
  value.number = number;
  value.digits = std::move(digits);
  return value;
}

Typed RandomNumber(Dice& dice, std::int32_t low, std::int32_t high) {
  static const Typed kSpecial[] = {TypedText(""),
                                   TypedText("   "),
                                   TypedNumber("1.50", 1.5, "1.5"),
                                   TypedNumber("12abc", 12, "12"),
                                   TypedNumber("none", 0, "0"),
                                   TypedNumber("-1", -1, "-1"),
                                   TypedNumber("  7 ", 7, "7"),
                                   TypedNumber("99999", 99999, "99999")};
  if (dice.Chance(30)) return dice.One(kSpecial);
  const std::int32_t number = dice.Number(low, high);
  return TypedNumber(std::to_string(number), number, std::to_string(number));
}

// The text with a bracket that no other closes in brackets itself, where it stands for itself.
std::string WithoutOpenSet(std::string text) {
  const std::size_t last = text.rfind('[');
  if (last != std::string::npos && text.find(']', last) == std::string::npos) {
    text.insert(last + 1, "[]");
  }
  return text;
}

// A text of the rows or a piece of one, now and then in the other case or with a wildcard.
Typed RandomText(Dice& dice, const std::vector<std::string>& texts) {
  static const char* const kSpecial[] = {"", " ", "%", "_", "no such", "--", "/*", "[a]", "''"};
  if (dice.Chance(15)) return TypedText(dice.One(kSpecial));
  std::string text = dice.One(texts);
  const std::size_t length = qorcred::Utf16Length(text);
  if (length > 0 && dice.Chance(60)) {
    const std::size_t first = dice.Throw(length);
    text = qorcred::MidUtf16(text, first, 1 + dice.Throw(length - first));
  }
  if (dice.Chance(30)) text = OtherCase(text);
  if (dice.Chance(10)) text += dice.Chance(50) ? "_" : "%";
  return TypedText(WithoutOpenSet(text));
}

qorcred::Date RandomDay(Dice& dice) {
  return qorcred::FromCivil(
      {2024, 3, dice.Number(1, 9), dice.Number(0, 23), dice.Number(0, 59), 0});
}

std::vector<std::string> TextsOf(const Population& population) {
  std::vector<std::string> texts;
  const auto add = [&texts](const Value& cell) {
    if (const auto* text = cell.As<std::string>()) texts.push_back(*text);
  };
  for (const CodeRow& row : population.codes) {
    add(row[CodeColumn::kName]);
    add(row[CodeColumn::kPhone]);
  }
  for (const ScheduleRow& row : population.schedules) add(row.name);
  for (const TenantRow& row : population.tenants) {
    add(row.lastName);
    add(row.lastName);
  }
  return texts;
}

bool HasNumberValues(std::int32_t field) {
  return field == 51 || field == 54 || field == 61;
}

// The desk, filled once for all tests.
class Reports {
 public:
  Reports() : dice_(Seed()), population_(MakePopulation(dice_, kSize)) {
    WritePopulation(population_, desk_.store());
    if (!qorhost::test::FollowsLinksToOtherUnits()) {
      population_ = WithoutLinksToOtherUnits(std::move(population_));
    }
    texts_ = TextsOf(population_);
  }

  [[nodiscard]] ReportDesk& desk() { return desk_; }
  [[nodiscard]] const Population& population() const { return population_; }
  [[nodiscard]] const std::vector<std::string>& texts() const { return texts_; }

 private:
  Dice dice_;
  Population population_;
  ReportDesk desk_;
  std::vector<std::string> texts_;
};

Reports& SharedReports() {
  static Reports reports;
  return reports;
}

class ReportRowsTest : public testing::Test {
 protected:
  void SetUp() override { desk_.Clear(); }

  [[nodiscard]] ReportDesk& desk() { return desk_; }
  [[nodiscard]] const Population& population() const { return SharedReports().population(); }
  [[nodiscard]] const std::vector<std::string>& texts() const { return SharedReports().texts(); }

  // Puts a random condition on a field into a row.
  CodeCondition EnterCode(std::size_t row, std::int32_t field, std::int32_t operation, Dice& dice) {
    const Typed value =
        HasNumberValues(field) ? RandomNumber(dice, 0, 900)
        : field == 66 || field == 67
            ? TypedText(std::array{"Yes", "no", "TRUE", "-1", "0", "", "maybe"}[dice.Throw(7)])
        : field == 68 || field == 80
            ? TypedText(dice.Chance(10) ? "" : std::to_string(dice.Throw(12)))
            : RandomText(dice, texts());
    CodeCondition condition{field,        operation,       value.text,      value.number,
                            value.digits, dice.Chance(50), RandomDay(dice), RandomDay(dice)};
    desk_.Enter(row, CodeEntry{field, operation, value.typed, condition.checked, condition.from,
                               condition.to});
    return condition;
  }

  CredentialCondition EnterCredential(std::size_t row, std::int32_t field, std::int32_t operation,
                                      Dice& dice) {
    CredentialCondition condition;
    condition.field = field;
    condition.operation = operation;
    condition.word = field == 3 ? kTextWords[operation] : kNumberWords[operation];
    condition.type = dice.Number(0, 4);
    Typed first;
    Typed second;
    if (field == 3) {
      first = dice.Chance(25) ? TypedText("") : RandomText(dice, texts());
    } else {
      first = CardNumber(dice);
      second = CardNumber(dice);
    }
    condition.text = first.text;
    condition.number = first.number;
    condition.secondNumber = second.number;
    desk_.Enter(row, CredentialEntry{field, operation, condition.word, first.typed, second.typed,
                                     condition.type});
    return condition;
  }

  void ExpectCodes(std::int32_t unit, const std::vector<CodeCondition>& conditions) {
    const ReportOutcome outcome = desk_.ReportCodes(unit);
    SCOPED_TRACE(outcome.statement);
    const auto expected = SelectedCodes(population(), unit, conditions);
    ++statements_;
    if (!expected) {
      ++refused_;
      EXPECT_FALSE(outcome.succeeded);
      EXPECT_FALSE(outcome.error.text.empty());
      EXPECT_TRUE(outcome.hasNoRows());
      return;
    }
    ASSERT_TRUE(outcome.succeeded) << outcome.error.text;
    ASSERT_EQ(outcome.rowCount(), static_cast<std::int32_t>(expected->size()));
    empty_ += expected->empty() ? 1 : 0;
    ExpectCells(outcome, *expected);
  }

  void ExpectCredentials(std::int32_t unit, const std::vector<CredentialCondition>& conditions) {
    const ReportOutcome outcome = desk_.ReportCredentials(unit);
    SCOPED_TRACE(outcome.statement);
    const auto expected = CredentialLines(population(), unit, conditions);
    ++statements_;
    EXPECT_EQ(outcome.succeeded, expected.has_value());
    if (!expected) {
      ++refused_;
      EXPECT_TRUE(outcome.hasNoRows());
      return;
    }
    ASSERT_EQ(outcome.rowCount(), static_cast<std::int32_t>(expected->size()));
    empty_ += expected->empty() ? 1 : 0;
    ExpectLines(outcome, *expected);
  }

  [[nodiscard]] std::size_t statements() const { return statements_; }
  [[nodiscard]] std::size_t refused() const { return refused_; }
  [[nodiscard]] std::size_t empty() const { return empty_; }

 private:
  static Typed CardNumber(Dice& dice) {
    if (dice.Chance(10)) return TypedText("");
    if (dice.Chance(10)) return TypedNumber("12.5", 12.5, "");
    const std::int32_t number = dice.Number(-1, 420);
    return TypedNumber(std::to_string(number), number, "");
  }

  // Every cell of every row, and the order: by display name, those without one first.
  static void ExpectCells(const ReportOutcome& outcome, std::vector<const CodeRow*> expected) {
    const auto rid = [](const CodeRow* row) {
      return *(*row)[CodeColumn::kRid].As<std::int32_t>();
    };
    std::sort(expected.begin(), expected.end(),
              [&](const CodeRow* one, const CodeRow* other) { return rid(one) < rid(other); });
    const auto& table = dynamic_cast<const qorcred::ResultTable&>(*outcome.rows);
    std::set<std::int32_t> seen;
    std::u32string previous;
    bool named = false;
    const std::int32_t count = outcome.rowCount();
    for (std::int32_t line = 0; line < count; ++line) {
      const Value& row = table.At(line, static_cast<std::int32_t>(CodeColumn::kRid));
      ASSERT_NE(row.As<std::int32_t>(), nullptr);
      const auto found = std::lower_bound(
          expected.begin(), expected.end(), *row.As<std::int32_t>(),
          [&](const CodeRow* one, std::int32_t wanted) { return rid(one) < wanted; });
      ASSERT_TRUE(found != expected.end() && rid(*found) == *row.As<std::int32_t>())
          << "not expected: RID " << *row.As<std::int32_t>();
      for (std::size_t column = 0; column < kCodeColumns; ++column) {
        // An assertion for each of millions of cells would take most of the test's time.
        if (table.At(line, static_cast<std::int32_t>(column)) != (*found)->cells[column]) {
          FAIL() << "another cell: RID " << rid(*found) << " column " << column;
        }
      }
      const auto* name = (**found)[CodeColumn::kName].As<std::string>();
      ASSERT_FALSE(named && name == nullptr);
      named = name != nullptr;
      if (named) {
        ASSERT_LE(previous, Plain(*name));
        previous = Plain(*name);
      }
      ASSERT_TRUE(seen.insert(rid(*found)).second) << "twice: RID " << rid(*found);
    }
  }

  static void ExpectLines(const ReportOutcome& outcome, std::vector<CredentialLine> expected) {
    const auto key = [](const CredentialLine& line) {
      return std::pair(*line[8].As<std::int32_t>(), *line[9].As<std::int32_t>());
    };
    const auto less = [&](const CredentialLine& one, const CredentialLine& other) {
      return key(one) < key(other);
    };
    const auto& table = dynamic_cast<const qorcred::ResultTable&>(*outcome.rows);
    std::vector<CredentialLine> lines;
    const std::int32_t count = outcome.rowCount();
    for (std::int32_t row = 0; row < count; ++row) {
      CredentialLine line;
      for (std::size_t column = 0; column < kCredentialColumns; ++column) {
        line[column] = table.At(row, static_cast<std::int32_t>(column));
      }
      ASSERT_NE(line[8].As<std::int32_t>(), nullptr);
      ASSERT_NE(line[9].As<std::int32_t>(), nullptr);
      lines.push_back(std::move(line));
    }
    std::sort(lines.begin(), lines.end(), less);
    std::sort(expected.begin(), expected.end(), less);
    for (std::size_t row = 0; row < lines.size(); ++row) {
      for (std::size_t column = 0; column < kCredentialColumns; ++column) {
        if (lines[row][column] != expected[row][column]) {
          FAIL() << "another cell: credential " << key(expected[row]).first << " column " << column;
        }
      }
    }
  }

  ReportDesk& desk_ = SharedReports().desk();
  std::size_t statements_ = 0;
  std::size_t refused_ = 0;
  std::size_t empty_ = 0;
};

constexpr std::int32_t kCodeFields[] = {51, 52, 53, 54, 55, 56, 57, 58, 59, 60,
                                        61, 62, 63, 64, 65, 66, 67, 68, 80};

TEST_F(ReportRowsTest, CodesWithoutConditionsAreThoseOfTheUnit) {
  for (const std::int32_t unit : {kUnit, kOtherUnit, 3}) ExpectCodes(unit, {});
}

TEST_F(ReportRowsTest, EveryFieldWithEveryOperatorSelectsWhatItMeans) {
  Dice dice(Seed() + 1);
  for (const std::int32_t field : kCodeFields) {
    for (std::int32_t operation = 0; operation < kOperations; ++operation) {
      for (int round = 0; round < 2; ++round) {
        ASSERT_NO_FATAL_FAILURE(ExpectCodes(kUnit, {EnterCode(0, field, operation, dice)}));
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_EQ(refused(), 0U);
  // Neither all nor nothing: most conditions tell rows apart.
  EXPECT_LT(empty(), statements() / 3);
}

TEST_F(ReportRowsTest, RandomRowsOfConditionsSelectWhatTheyMean) {
  Dice dice(Seed() + 2);
  for (int round = 0; round < 250; ++round) {
    desk().Clear();
    std::vector<CodeCondition> conditions;
    // Rows between them may stay empty.
    for (std::size_t row = 0; row < 5; ++row) {
      if (dice.Chance(50)) continue;
      const std::int32_t field = dice.One(kCodeFields);
      conditions.push_back(EnterCode(row, field, dice.Number(0, kOperations - 1), dice));
    }
    ASSERT_NO_FATAL_FAILURE(ExpectCodes(dice.Chance(70) ? kUnit : kOtherUnit, conditions));
    if (HasFailure()) return;
  }
  EXPECT_EQ(refused(), 0U);
}

TEST_F(ReportRowsTest, ASixthRowOfCodesDoesNotCount) {
  Dice dice(Seed() + 3);
  (void)EnterCode(5, 51, 0, dice);
  ExpectCodes(kUnit, {});
}

TEST_F(ReportRowsTest, FieldsWithoutAColumnAreRefusedWhereTheyAreCompared) {
  Dice dice(Seed() + 4);
  for (const std::int32_t field : {0, 50, 69, 70, 32767}) {
    for (std::int32_t operation = 0; operation < kOperations; ++operation) {
      const CodeCondition condition = EnterCode(0, field, operation, dice);
      ASSERT_NO_FATAL_FAILURE(ExpectCodes(kUnit, {condition}));
    }
  }
  EXPECT_EQ(refused(), 11U);  // two comparisons for each field, and schedules for 69
}

TEST_F(ReportRowsTest, WithoutADateOnlyMissingDatesAreOnThatDay) {
  for (std::int32_t operation = 0; operation < kOperations; ++operation) {
    SCOPED_TRACE(operation);
    desk().Enter(0, CodeEntry{63, operation, "", false, std::nullopt, std::nullopt});
    const ReportOutcome outcome = desk().ReportCodes(kUnit);
    // "# 23:59:59#" is a time of the calendar's first day; "##" is no date.
    EXPECT_EQ(outcome.succeeded, operation < 3 || operation == 5) << outcome.error.text;
    if (operation < 2) {
      for (std::int32_t row = 0; row < outcome.rowCount(); ++row) {
        const Value start =
            outcome.table().Cell(row, static_cast<std::int32_t>(CodeColumn::kStart));
        EXPECT_EQ(IsNull(start), operation == 0);
      }
      EXPECT_GT(outcome.rowCount(), 0);
    }
  }
}

TEST_F(ReportRowsTest, CredentialsWithoutConditionsAreThoseOfTheUnit) {
  for (const std::int32_t unit : {kUnit, kOtherUnit, 3}) ExpectCredentials(unit, {});
}

TEST_F(ReportRowsTest, EveryFieldOfCredentialsWithEveryOperatorSelectsWhatItMeans) {
  Dice dice(Seed() + 5);
  for (std::int32_t field = 0; field < 4; ++field) {
    for (std::int32_t operation = 0; operation < kOperations; ++operation) {
      for (int round = 0; round < 5; ++round) {
        ASSERT_NO_FATAL_FAILURE(
            ExpectCredentials(kUnit, {EnterCredential(0, field, operation, dice)}));
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_EQ(refused(), 0U);
  EXPECT_LT(empty(), statements() / 3);
}

TEST_F(ReportRowsTest, RandomRowsOfConditionsOnCredentialsSelectWhatTheyMean) {
  Dice dice(Seed() + 6);
  for (int round = 0; round < 250; ++round) {
    desk().Clear();
    std::vector<CredentialCondition> conditions;
    for (std::size_t row = 0; row < ReportDesk::kRows; ++row) {
      if (dice.Chance(60)) continue;
      conditions.push_back(
          EnterCredential(row, dice.Number(0, 3), dice.Number(0, kOperations - 1), dice));
    }
    ASSERT_NO_FATAL_FAILURE(ExpectCredentials(dice.Chance(70) ? kUnit : kOtherUnit, conditions));
    if (HasFailure()) return;
  }
  EXPECT_GT(refused(), 0U);  // a name and no name together
  EXPECT_LT(refused(), statements() / 3);
}

TEST_F(ReportRowsTest, ANameBesideNoNameIsRefused) {
  desk().Enter(0, CredentialEntry{3, 0, "equal", "Doe", "", 0});
  desk().Enter(1, CredentialEntry{3, 6, "contains", "", "", 0});
  const ReportOutcome outcome = desk().ReportCredentials(kUnit);
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_TRUE(outcome.hasNoRows());
  const ReportOutcome told = desk().Select(outcome.statement);
  EXPECT_TRUE(told.error.flag);
  EXPECT_NE(told.error.text.find("unknown"), std::string::npos) << told.error.text;
}

TEST_F(ReportRowsTest, ARangeUnderAnotherOperatorIsRefused) {
  desk().Enter(0, CredentialEntry{1, 6, "equal", "5", "", 0});
  EXPECT_FALSE(desk().ReportCredentials(kUnit).succeeded);
  desk().Enter(0, CredentialEntry{1, 0, "between", "5", "9", 0});
  EXPECT_FALSE(desk().ReportCredentials(kUnit).succeeded);
}

}  // namespace
}  // namespace qortest

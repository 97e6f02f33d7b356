// Hostile values in the filter rows of both reports, on a real store: what they make of the
// statement, what the store answers, and that nothing is changed. docs/security.md holds the table
// of what came out; QORCRED_UPDATE_GOLDEN=1 writes it anew.
#include "tests/host/end_to_end/report_attempts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/store/patience.h"
#include "tests/host/end_to_end/report_desk.h"
#include "tests/host/store/engine.h"

namespace qortest {
namespace {

using qorcred::ReplaceAll;
using qorcred::TextOrEmpty;
using qorcred::Trim;

// All that belongs to the unit 2 is called so.
constexpr std::string_view kForeign = "Foreign";

constexpr std::string_view kRows =
    "INSERT INTO Units (UnitKey, UnitName) VALUES (2, 'Foreign');"
    "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, DISPLAYNAME, TIMEDELAY, CFTIMEDELAY)"
    " VALUES (1, 1, 'Roe', 0, 5), (1, 2, 'O''Brien', 3, 7), (1, 3, NULL, NULL, NULL),"
    " (2, 1, 'Foreign', 0, 7);"
    "INSERT INTO Tenants (UnitKey, LastName, FirstName, Resident) VALUES (2, 'Foreign', 'Fay', 0);"
    "INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode, IDCode)"
    " VALUES (11, 1, 0, 7, 1, 1), (12, 1, 1, 8, 1, 1), (13, 1, 2, 0, 1, 1), (14, 2, 2, 77, 9, 9);"
    "UPDATE Tenants SET CREDENTIALID1 = 11 WHERE LastName = 'Roe';"
    "UPDATE Tenants SET CREDENTIALID1 = 14 WHERE LastName = 'Foreign';";

// Where a value is typed.
struct Place {
  std::string_view caption;
  ReportOutcome (*run)(ReportDesk& desk, std::string_view value);
};

ReportOutcome RunCode(ReportDesk& desk, std::int32_t field, std::int32_t operation,
                      std::string_view value) {
  CodeEntry entry;
  entry.field = field;
  entry.operation = operation;
  entry.value = value;
  desk.Enter(0, entry);
  return desk.ReportCodes(kUnit);
}

ReportOutcome RunCredential(ReportDesk& desk, std::int32_t field, std::int32_t operation,
                            std::string_view word, std::string_view value) {
  CredentialEntry entry;
  entry.field = field;
  entry.operation = operation;
  entry.word = word;
  entry.value = value;
  desk.Enter(0, entry);
  ReportOutcome outcome = desk.ReportCredentials(kUnit);
  // The controller says whether it succeeded; the manager says why not.
  if (!outcome.succeeded) outcome.error = desk.Select(outcome.statement).error;
  return outcome;
}

constexpr Place kDisplayName{"Display Name contains", [](ReportDesk& desk, std::string_view value) {
                               return RunCode(desk, 65, 6, value);
                             }};
constexpr Place kCardNumber{"Card Number equal", [](ReportDesk& desk, std::string_view value) {
                              return RunCredential(desk, 1, 0, "equal", value);
                            }};
constexpr Place kTenantName{"Tenant Name equal", [](ReportDesk& desk, std::string_view value) {
                              return RunCredential(desk, 3, 0, "equal", value);
                            }};
constexpr Place kPlaces[] = {kDisplayName, kCardNumber, kTenantName};

// The rest of the places in which a value is pasted.
constexpr Place kFurtherPlaces[] = {
    {"Phone No. equal",
     [](ReportDesk& desk, std::string_view value) { return RunCode(desk, 52, 0, value); }},
    {"Extension does not begin with",
     [](ReportDesk& desk, std::string_view value) { return RunCode(desk, 53, 3, value); }},
    {"DND Schedule ends with",
     [](ReportDesk& desk, std::string_view value) { return RunCode(desk, 56, 4, value); }},
    {"Display Name does not contain",
     [](ReportDesk& desk, std::string_view value) { return RunCode(desk, 65, 7, value); }},
    {"Show Display Name equal",
     [](ReportDesk& desk, std::string_view value) { return RunCode(desk, 66, 0, value); }},
    {"Facility Code greater than or equal",
     [](ReportDesk& desk, std::string_view value) {
       return RunCredential(desk, 2, 3, "greater than or equal", value);
     }},
    {"Tenant Name does not contain",
     [](ReportDesk& desk, std::string_view value) {
       return RunCredential(desk, 3, 7, "does not contain", value);
     }},
};

bool HasForeignRows(const ReportOutcome& outcome) {
  const qorcred::TableView table = outcome.table();
  for (std::int32_t row = 0; row < outcome.rowCount(); ++row) {
    for (std::int32_t column = 0; column <= table.UpperColumn(); ++column) {
      if (qorcred::Contains(TextOrEmpty(table.Cell(row, column)), kForeign)) return true;
    }
  }
  return false;
}

// What came out, in words.
std::string OutcomeText(const ReportOutcome& outcome) {
  if (!outcome.succeeded) {
    // The documented table is that of the engine that looks for such bytes and finds none.
    if (!qorhost::test::ReadsBytesThatAreNoText() &&
        qorcred::Contains(outcome.error.text, "bytes that are no UTF-8")) {
      return "0 rows";
    }
    constexpr std::size_t kMost = 70;
    std::string text = outcome.error.text;
    // "line 1, column 9: what is wrong": the place is a matter of the statement's length.
    const std::size_t place = text.find(": ");
    if (text.rfind("line ", 0) == 0 && place != std::string::npos) text.erase(0, place + 2);
    return "refused: " + Visible(text, kMost);
  }
  const std::int32_t rows = outcome.rowCount();
  return std::to_string(rows) + (rows == 1 ? " row" : " rows") +
         (HasForeignRows(outcome) ? ", other units' too" : "");
}

std::string CodeSpan(std::string_view text) {
  // A code span that holds no backtick; a bar would end the table's cell.
  return "`" + ReplaceAll(text, "|", "\\|") + "`";
}

class ReportAttemptsTest : public testing::Test {
 protected:
  ReportAttemptsTest() {
    desk_.Run(std::string(kRows));
    qorhost::Patience patience;
    patience.work = std::chrono::milliseconds(1500);  // for what a server would never end
    desk_.store().store().SetPatience(patience);
    desk_.Clear();
    before_ = desk_.Dump();
    changes_ = Changes();
  }

  // Runs an attempt in a place and checks all that holds whatever the store answers.
  ReportOutcome Try(const Place& place, const Attempt& attempt) {
    SCOPED_TRACE(std::string(place.caption) + ", " + attempt.name);
    // A text without any meaning marks the places where values go.
    constexpr std::string_view kMark = "qqqqq";
    const std::string pattern = place.run(desk_, kMark).statement;
    EXPECT_TRUE(qorcred::Contains(pattern, kMark));

    const ReportOutcome outcome = place.run(desk_, attempt.value);
    // EXPECT_EQ would print a million characters.
    EXPECT_TRUE(outcome.statement == ReplaceAll(pattern, kMark, Trim(attempt.value)))
        << Visible(outcome.statement, 2000);
    EXPECT_EQ(outcome.succeeded, outcome.error.text.empty());
    EXPECT_TRUE(outcome.succeeded || outcome.hasNoRows());
    ExpectUntouched();
    return outcome;
  }

  /// Rows that were added, changed or deleted so far, undone ones too.
  [[nodiscard]] std::int64_t Changes() {
    return qorhost::test::RowsEverChanged(desk_.store().store());
  }

  void ExpectUntouched() {
    EXPECT_EQ(Changes(), changes_);
    EXPECT_TRUE(desk_.Dump() == before_);
    EXPECT_EQ(desk_.store().OpenTransactions(), 0);
    EXPECT_EQ(desk_.store().BusyStatements(), 0);
    EXPECT_TRUE(desk_.trapped.empty());
    EXPECT_TRUE(desk_.messages.empty());
  }

  // The report works as before.
  void ExpectWellAfterwards() {
    EXPECT_EQ(kDisplayName.run(desk_, "o").rowCount(), 2);
    EXPECT_EQ(kCardNumber.run(desk_, "7").rowCount(), 1);
  }

  ReportDesk desk_;

 private:
  std::string before_;
  std::int64_t changes_ = 0;
};

// 4 tenants to the power of 15: nobody would wait for the end.
TEST_F(ReportAttemptsTest, AConditionThatJoinsTablesWithoutEndIsRefused) {
  std::string value = "0 OR (SELECT Count(*) FROM Tenants t0";
  for (int table = 1; table < 15; ++table) value += ", Tenants t" + std::to_string(table);
  value += " WHERE t0.RID + t14.RID > 1) > 0";
  const ReportOutcome outcome = kCardNumber.run(desk_, value);
  EXPECT_FALSE(outcome.succeeded);
  EXPECT_TRUE(outcome.hasNoRows());
  EXPECT_TRUE(qorcred::Contains(outcome.error.text, "narrow it")) << outcome.error.text;
  ExpectUntouched();
  ExpectWellAfterwards();
}

TEST_F(ReportAttemptsTest, ADumpTellsWhatChanged) {
  const std::string before = desk_.Dump();
  desk_.Run("UPDATE Tenants SET LastName = 'x' WHERE LastName = 'Doe'");
  EXPECT_NE(desk_.Dump(), before);
}

std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST_F(ReportAttemptsTest, ChangeNothingAndComeOutAsDocumented) {
  std::string table = "| Attempt | Value |";
  std::string rule = "\n|---|---|";
  for (const Place& place : kPlaces) {
    table += " " + std::string(place.caption) + " |";
    rule += "---|";
  }
  table += rule + "\n";
  for (const Attempt& attempt : Attempts()) {
    constexpr std::size_t kMost = 100;
    table += "| " + attempt.name + " | ";
    table += attempt.shown.empty() ? CodeSpan(Visible(attempt.value, kMost)) : attempt.shown;
    for (const Place& place : kPlaces) {
      table += " | " + ReplaceAll(OutcomeText(Try(place, attempt)), "|", "\\|");
    }
    table += " |\n";
  }
  ExpectWellAfterwards();

  constexpr std::string_view kBegin = "<!-- table of attempts -->\n";
  constexpr std::string_view kEnd = "<!-- end of the table -->\n";
  const std::string path = std::string(QORCRED_DOCS_DIR) + "/security.md";
  std::string document = FileText(path);
  const std::size_t begin = document.find(kBegin);
  const std::size_t end = document.find(kEnd);
  ASSERT_TRUE(begin != std::string::npos && end != std::string::npos && begin < end) << path;
  const std::size_t first = begin + kBegin.size();
  if (std::getenv("QORCRED_UPDATE_GOLDEN") != nullptr && qorhost::test::ReadsBytesThatAreNoText()) {
    ASSERT_EQ(std::getenv("CI"), nullptr) << "goldens are not written in CI";
    document.replace(first, end - first, table);
    std::ofstream(path, std::ios::binary) << document;
  }
  const std::size_t size = document.find(kEnd) - first;
  EXPECT_EQ(document.substr(first, size), table);
}

TEST_F(ReportAttemptsTest, ChangeNothingInAnyOtherPlace) {
  for (const Attempt& attempt : Attempts()) {
    // How long texts fare is a matter of the text alone: two kinds of them will do.
    constexpr std::size_t kLong = 100'000;
    const bool isOneOfMany = attempt.value.size() > kLong && attempt.name != "a million letters" &&
                             attempt.name != "a million apostrophes";
    if (isOneOfMany) continue;
    for (const Place& place : kFurtherPlaces) (void)Try(place, attempt);
  }
  ExpectWellAfterwards();
}

struct NumberPlace {
  std::int32_t field;
  std::int32_t operation;
};

// Two conditions on numbers, a range, and the field that is a number or a text.
constexpr NumberPlace kNumberPlaces[] = {{51, 0}, {54, 2}, {51, 6}, {61, 1}, {61, 7}};

// The statement for a value, or nothing when the value is no number that a double holds.
std::optional<std::string> NumberStatement(ReportDesk& desk, const NumberPlace& place,
                                           std::string_view value) {
  CodeEntry entry;
  entry.field = place.field;
  entry.operation = place.operation;
  entry.value = value;
  desk.Enter(0, entry);
  try {
    return desk.codes().pbGenSql(desk.connection(), kUnit);
  } catch (const qorcred::RuntimeError& failure) {
    EXPECT_EQ(failure.number(), qorcred::ErrorNumber::kOverflow);
    return std::nullopt;
  }
}

TEST_F(ReportAttemptsTest, OfNumberFieldsOfCodesOnlyTheLeadingNumberIsPasted) {
  constexpr std::string_view kMark = "12345";
  for (const NumberPlace& place : kNumberPlaces) {
    const std::string pattern = NumberStatement(desk_, place, kMark).value_or("");
    const std::size_t start = pattern.find(kMark);
    EXPECT_EQ(start == std::string::npos, place.operation == 6);  // a range gives no condition
    std::size_t overflows = 0;
    for (const Attempt& attempt : Attempts()) {
      SCOPED_TRACE(attempt.name);
      const auto statement = NumberStatement(desk_, place, attempt.value);
      overflows += statement ? 0 : 1;
      if (!statement) continue;
      if (start == std::string::npos) {
        EXPECT_EQ(*statement, pattern);
        continue;
      }
      // What stands where the mark stood.
      const std::size_t behind = pattern.size() - start - kMark.size();
      ASSERT_GT(statement->size(), start + behind);
      const std::string pasted = statement->substr(start, statement->size() - start - behind);
      EXPECT_EQ(pasted.find_first_not_of("0123456789.-+E"), std::string::npos) << pasted;
      EXPECT_EQ(*statement, ReplaceAll(pattern, kMark, pasted));
    }
    EXPECT_EQ(overflows, 2U);  // 1e999 and a million digits
    ExpectUntouched();
  }
}

TEST_F(ReportAttemptsTest, ChangeNothingAsTheBoundsOfARange) {
  for (const Attempt& attempt : Attempts()) {
    SCOPED_TRACE(attempt.name);
    CredentialEntry entry;
    entry.field = 1;
    entry.operation = 6;
    entry.word = "between";
    entry.value = "0";
    entry.secondValue = attempt.value;
    desk_.Enter(0, entry);
    const ReportOutcome outcome = desk_.ReportCredentials(kUnit);
    EXPECT_TRUE(qorcred::Contains(outcome.statement,
                                  "a.PINNo Between 0 And " + std::string(Trim(attempt.value))));
    ExpectUntouched();
  }
  ExpectWellAfterwards();
}

TEST_F(ReportAttemptsTest, RidsForDeletionArePastedIntoOneDeletionAlone) {
  std::int32_t deleted = 0;
  for (const std::string_view rids :
       {"12); DELETE FROM Tenants WHERE (1 = 1", "12) --", "12) /*"}) {
    desk_.credentials().set_gstrRIDsForDeletion(std::string(rids));
    EXPECT_FALSE(desk_.credentials().pbDelete(desk_.connection(), kUnit, deleted));
    EXPECT_EQ(deleted, 0);
    desk_.messages.clear();
    ExpectUntouched();
  }
  // Within one deletion they reach what they name.
  desk_.credentials().set_gstrRIDsForDeletion("0) OR (UnitKey = 2");
  EXPECT_TRUE(desk_.credentials().pbDelete(desk_.connection(), kUnit, deleted));
  EXPECT_EQ(deleted, 1);
  EXPECT_EQ(desk_.Rows("SELECT RID FROM CredentialBank ORDER BY RID"), "11;12;13;");
}

TEST_F(ReportAttemptsTest, APlaceholderInAValueTakesTheValuesOfALaterRange) {
  CredentialEntry name;
  name.field = 3;
  name.operation = 6;
  name.word = "contains";
  name.value = "^1 ^2";
  desk_.Enter(0, name);
  CredentialEntry range;
  range.field = 1;
  range.operation = 6;
  range.word = "between";
  range.value = "^2";
  range.secondValue = "9";
  desk_.Enter(1, range);
  const ReportOutcome outcome = desk_.ReportCredentials(kUnit);
  EXPECT_TRUE(qorcred::Contains(outcome.statement, "Like '%9 9%'")) << outcome.statement;
  EXPECT_TRUE(qorcred::Contains(outcome.statement, "Between 9 And 9")) << outcome.statement;
  EXPECT_TRUE(outcome.succeeded);
  ExpectUntouched();
}

}  // namespace
}  // namespace qortest

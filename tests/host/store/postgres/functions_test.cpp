// The functions of the dialect on the server give what they give on SQLite, where they are the
// host's own code: results, failures and their words.
#include <gtest/gtest.h>

#include <array>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "dialect_database.h"
#include "host/dialect/folding.h"
#include "host/store/store_error.h"
#include "test_server.h"
#include "tests/host/dialect/test_database.h"

namespace qorhost::postgres::test {

namespace {

using dialect::test::CaseDatabase;
using dialect::test::TestDatabase;

/// Everything that numbers, dates and words are read from.
constexpr auto kTexts = std::to_array<std::string_view>({
    "",
    " ",
    "0",
    "-0",
    "1",
    "-1",
    "+1",
    "1-",
    "1+",
    "(1)",
    "( 1 )",
    "(-1)",
    "-(1)",
    "((1))",
    "(1",
    "1)",
    "$1",
    "1$",
    "$-1",
    "-$1",
    "$$1",
    "$1$",
    "1,234",
    "1,,2",
    ",1",
    "1,",
    "1.5",
    ".5",
    "5.",
    ".",
    "1.5.2",
    "1,5.5,5",
    " 42 ",
    "4 2",
    "1e3",
    "1E+3",
    "1e-3",
    "1d2",
    "1e",
    "1e+",
    "e1",
    "1e5x",
    "1e308",
    "1.7976931348623157e308",
    "1.7976931348623159e308",
    "1e309",
    "1e-323",
    "4e-324",
    "2e-324",
    "1e-400",
    "0e999",
    "1e99999999999999",
    "1e-99999999999999",
    "123456789012345678901234567890",
    "0.1000000000000000055511151231257827",
    "&HFF",
    "&hff&",
    "&HFFFF",
    "&HFFFF&",
    "&H10000",
    "&HFFFFFFFF",
    "&H100000000",
    "&O17",
    "&o177777",
    "&O200000",
    "&O8",
    "&H",
    "&",
    "&HFG",
    "12 34abc",
    "\t1\n2",
    "2147483647",
    "2147483648",
    "-2147483649",
    "2.5",
    "3.5",
    "-2.5",
    "1e15",
    "999999999999999",
    "1e-5",
    "0.0001",
    "123456.789",
    "0.30000000000000004",
    "-0.5",
    "0.5",
    "45356.5",
    "-1.25",
    "-657434",
    "-657435",
    "2958465.5",
    "2958466",
    "60",
    "True",
    "FALSE",
    " true",
    "Yes",
    "abc",
    "3/5/2024",
    "03/05/24",
    "3/5/29",
    "3/5/30",
    "3/5/5",
    "3/5/123",
    "3/5/99",
    "13/1/2024",
    "2/29/2024",
    "2/29/2023",
    "2/29/1900",
    "2/29/2000",
    "0/1/2024",
    "1/0/2024",
    "1/32/2024",
    "001/05/2026",
    "1/005/2026",
    "1/5/02026",
    "1/5/2026 2:05:09 PM",
    "1/5/2026 2:05pm",
    "1/5/2026 13:05 PM",
    "1/5/2026 0:05 AM",
    "1/5/2026 12:05 AM",
    "1/5/2026 24:00",
    "1/5/2026 23:60",
    "1/5/2026T14:05",
    "1/5/2026  14:05",
    "1/5/2026 T14:05",
    "1/5/2026 14",
    "1/5/202614:05",
    "2026-01-05",
    "2026-1-5",
    "26-01-05",
    "2026-01-05 14:05:09",
    "2026-01-05T14:05:09",
    "0100-01-01 00:00:00",
    "0099-12-31",
    "9999-12-31 23:59:59",
    "05 Feb 2026",
    "5 february 2026 14:30",
    "5 Febr 2026",
    "005 Feb 2026",
    "5  Feb  26",
    "Feb 5 2026",
    "31 Apr 2026",
    "14:05",
    "2:05:09 PM",
    "14:05:09.5",
    ":05",
    "1899-12-30",
    "1899-12-29 06:00",
    "12/30/1899",
    "1/1/1800 6:00",
    "\xC3\x84rger",
    "STRASSE \xC3\x9F",
    "a\xF0\x9F\x98\x80"
    "b",
    "\xF0\x9F\x98\x80",
    "O'Brien",
    "a\\b%c_d[e]",
});

/// What is asked of each; ? stands for the text.
constexpr auto kQuestions = std::to_array<std::string_view>({
    "SELECT Val(?)",
    "SELECT Val(Trim(?) & '5')",
    "SELECT ? + 0",
    "SELECT ? * '2.5'",
    "SELECT -Trim(?)",
    "SELECT (? + 0) \\ 3",
    "SELECT (? + 0) Mod 7",
    "SELECT (? + 0) / 3",
    "SELECT ((? + 0) / 3) & ''",
    "SELECT ((? + 0) * 1000) & '|'",
    "SELECT Len(?), UCase(?), LCase(?), Trim(?), LTrim(?), RTrim(?)",
    "SELECT Left(?, 2), Right(?, 2), Mid(?, 2), Mid(?, 2, 2), Mid(?, 9)",
    "SELECT Left('abcdef', Trim(?))",
    "SELECT Mid('abcdef', Trim(?), 2)",
    "SELECT Format(?, 'yyyy-mm-dd hh:nn:ss')",
    "SELECT Format(?, 'dddd d mmmm yy h:m:s AM/PM')",
    "SELECT Format(?, 'General Date')",
    "SELECT Format(?, 'Long Date'), Format(?, 'Medium Time'), Format(?, 'Short Date')",
    "SELECT Format(?, '000')",
    "SELECT Format(?, 'General Number')",
    "SELECT Format(?, 'Fixed'), Format(?, 'Standard'), Format(?, 'Percent'), Format(?, 'Currency')",
    "SELECT Format(?, 'Scientific'), Format(?, 'Yes/No'), Format(?, 'True/False'), Format(?, "
    "'On/Off')",
    "SELECT Format(? + 0, 'Standard'), Format(? + 0, 'Scientific'), Format(? + 0, '0000')",
    "SELECT Format(? + 0, 'dd mm yyyy hh:nn:ss')",
    "SELECT Format(?), Format(?, ''), Format(?, Null)",
    "SELECT Format(1.5, Trim(?))",
    "SELECT #1/1/2026# + Trim(?)",
    "SELECT #1/1/2026# - Trim(?)",
    "SELECT RID FROM Tenants WHERE ACTIVESTARTTIME = Trim(?)",
    "SELECT RID FROM Tenants WHERE ACTIVEENDTIME > Trim(?) ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo = ? ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo > ? ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo <= ? ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo IN (?, 100) ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo NOT BETWEEN ? AND 100 ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo = Trim(?) ORDER BY RID",
    "SELECT RID FROM CredentialBank WHERE PINNo + 0 < Trim(?) ORDER BY RID",
    "SELECT RID FROM DirectoryCode WHERE ACTIVE = ? ORDER BY RID",
    "SELECT RID FROM DirectoryCode WHERE PHONENUMBER < ? ORDER BY RID",
    "SELECT RID FROM Tenants WHERE LastName >= ? ORDER BY RID",
    "SELECT RID FROM Tenants WHERE MODIFIED <> ? ORDER BY RID",
    "SELECT RID FROM Tenants WHERE MODIFIED < Trim(?) ORDER BY RID",
    "SELECT iif(RID < 3, ?, RID) FROM Tenants ORDER BY 1 DESC, RID",
    "SELECT RID FROM Tenants WHERE iif(RID < 3, ?, RID) < '2' ORDER BY RID",
    "SELECT RID FROM Tenants WHERE iif(RID < 3, ?, RID) = RID ORDER BY RID",
    "SELECT 1 WHERE '' LIKE ?",
    "SELECT 1 FROM Units WHERE RID = 1 AND 'a\\b%c_d[e]' LIKE Trim(?)",
    "SELECT 1 FROM Units WHERE RID = 1 AND ? LIKE '%1%'",
    "SELECT 1 FROM Units WHERE RID = 1 AND ? LIKE '[!0-9]%'",
    "SELECT iif(?, 1, 2)",
    "SELECT Nz(?) & Nz(Null) & Nz(Null, ?)",
});

std::string Replaced(std::string_view question, std::string_view text) {
  std::string literal = "'";
  for (const char letter : text) {
    literal.append(letter == '\'' ? 2 : 1, letter);
  }
  literal += "'";
  std::string sql;
  for (const char letter : question) {
    sql.append(letter == '?' ? literal : std::string(1, letter));
  }
  return sql;
}

/// What both engines say before their failures is their own.
std::string WithoutLead(const std::string& text) {
  constexpr std::string_view kLead = "The statement failed: ";
  return text.compare(0, kLead.size(), kLead) == 0 ? text.substr(kLead.size()) : text;
}

std::string AnswerOf(CaseDatabase& database, const std::string& sql) {
  try {
    std::string answer;
    for (const std::vector<std::string>& row : database.Run(sql).rows) {
      for (const std::string& cell : row) {
        answer += cell + ", ";
      }
      answer += "; ";
    }
    return answer;
  } catch (const std::exception& failure) {
    return "fails: " + WithoutLead(failure.what());
  }
}

/// One question for both; what it leaves on the server, a failure too, is undone.
void Compare(TestDatabase& here, DialectDatabase& there, const std::string& sql) {
  there.connection().RunAll("SAVEPOINT question");
  const std::string expected = AnswerOf(here, sql);
  EXPECT_EQ(AnswerOf(there, sql), expected) << sql;
  there.connection().RunAll("ROLLBACK TO question; RELEASE question");
}

class ServerFunctions : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string missing = TestServer::Missing(); !missing.empty()) {
      GTEST_SKIP() << missing;
    }
  }
};

class ServerQuestions : public ServerFunctions,
                        public testing::WithParamInterface<std::string_view> {};

TEST_P(ServerQuestions, AreAnsweredAsOnSqlite) {
  TestDatabase here;
  DialectDatabase there;
  for (const std::string_view text : kTexts) {
    Compare(here, there, Replaced(GetParam(), text));
  }
}

INSTANTIATE_TEST_SUITE_P(Table, ServerQuestions, testing::ValuesIn(kQuestions),
                         [](const testing::TestParamInfo<std::string_view>& entry) {
                           return "Question" + std::to_string(entry.index + 1);
                         });

std::string Utf8Of(char32_t point) {
  const auto byte = [](char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
  };
  if (point < 0x80) {
    return {byte(point)};
  }
  if (point < 0x800) {
    return {byte(0xC0 | point >> 6), byte(0x80 | (point & 0x3F))};
  }
  if (point < 0x10000) {
    return {byte(0xE0 | point >> 12), byte(0x80 | (point >> 6 & 0x3F)),
            byte(0x80 | (point & 0x3F))};
  }
  return {byte(0xF0 | point >> 18), byte(0x80 | (point >> 12 & 0x3F)),
          byte(0x80 | (point >> 6 & 0x3F)), byte(0x80 | (point & 0x3F))};
}

/// Every character that has letter case, and its neighbours.
std::string EveryLetter() {
  const auto hasCase = [](char32_t point) {
    return dialect::FoldPoint(point) != point || dialect::UpperPoint(point) != point ||
           dialect::LowerPoint(point) != point;
  };
  std::string letters;
  for (char32_t point = 1; point < 0x10FFFF; ++point) {
    const bool isSurrogate = point >= 0xD7FF && point <= 0xE000;
    if (!isSurrogate && (hasCase(point - 1) || hasCase(point) || hasCase(point + 1))) {
      letters += Utf8Of(point);
    }
  }
  return letters;
}

TEST_F(ServerFunctions, KnowTheCaseOfEveryLetter) {
  DialectDatabase there;
  const std::string letters = EveryLetter();
  ASSERT_GT(letters.size(), 5000U);
  const std::array sent{Sent(letters)};
  const Result result =
      there.connection().Run("SELECT desktop.key($1), desktop.ucase($1), desktop.lcase($1)", sent);
  std::string folded;
  for (const char32_t point : dialect::Folded(letters)) {
    folded += Utf8Of(point);
  }
  EXPECT_EQ(result.Text(0, 0), folded);
  EXPECT_EQ(result.Text(0, 1), dialect::UpperText(letters));
  EXPECT_EQ(result.Text(0, 2), dialect::LowerText(letters));
}

TEST_F(ServerFunctions, KnowTheCaseOfLettersOfCommonAlphabetsAlone) {
  DialectDatabase there;
  const std::string letters = "\xC3\x84\xC3\x9F\xCE\xA3\xCF\x82\xD0\x96\xD4\xB1\xC5\xBF Kelvin";
  const std::array sent{Sent(letters)};
  const Result result = there.connection().Run("SELECT desktop.key($1), desktop.ucase($1)", sent);
  std::string folded;
  for (const char32_t point : dialect::Folded(letters)) {
    folded += Utf8Of(point);
  }
  EXPECT_EQ(result.Text(0, 0), folded);
  EXPECT_EQ(result.Text(0, 1), dialect::UpperText(letters));
}

TEST_F(ServerFunctions, ReadPatternsOfEveryKind) {
  TestDatabase here;
  DialectDatabase there;
  for (const std::string_view pattern : {"%",
                                         "_",
                                         "a%",
                                         "%a",
                                         "%a%",
                                         "a_c",
                                         "[abc]%",
                                         "[!abc]%",
                                         "[a-c]%",
                                         "[!a-c]%",
                                         "[-a]%",
                                         "[a-]%",
                                         "[a-b-c]",
                                         "[c-a]",
                                         "[]",
                                         "[!]",
                                         "[^a]",
                                         "[^]",
                                         "[a",
                                         "a]",
                                         "[[]%",
                                         "[%]",
                                         "[_]",
                                         "%[\\]%",
                                         "\\%",
                                         "\\_",
                                         "%.%",
                                         "a*",
                                         "a+",
                                         "(a)",
                                         "a{1}",
                                         "$a",
                                         "^a",
                                         "[\xC3\xA0-\xC3\xBF]%",
                                         "[!\xC3\x84]%",
                                         "[\xF0\x9F\x98\x80]%",
                                         "_\xF0\x9F\x98\x80_",
                                         "[ -~]%",
                                         "[A-Z][a-z]%",
                                         "[&-.]%"}) {
    for (const std::string_view text : {"",
                                        "a",
                                        "abc",
                                        "ABC",
                                        "\xC3\x84rger",
                                        "a*",
                                        "a+",
                                        "(a)",
                                        "a{1}",
                                        "$a",
                                        "^a",
                                        "^",
                                        "a\\b",
                                        "\\",
                                        "%",
                                        "_x",
                                        "[",
                                        "]",
                                        "-",
                                        "a.b",
                                        "x\xF0\x9F\x98\x80y",
                                        "\xF0\x9F\x98\x80",
                                        "line\nend",
                                        "&",
                                        "Zz"}) {
      Compare(here, there,
              Replaced("SELECT 1 FROM Units WHERE RID = 1 AND ? LIKE ", text) +
                  Replaced("Trim(?)", pattern));
    }
  }
}

}  // namespace

}  // namespace qorhost::postgres::test

// Taking a script apart.
#include "host/dialect/script.h"

#include <gtest/gtest.h>

#include "host/dialect/translator.h"

namespace qorhost::dialect {
namespace {

struct Part {
  std::string text;
  std::size_t line;
  std::size_t column;
};

void ExpectParts(std::string_view script, const std::vector<Part>& expected) {
  const std::vector<ScriptStatement> statements = StatementsOf(script);
  ASSERT_EQ(statements.size(), expected.size()) << script;
  for (std::size_t at = 0; at < expected.size(); ++at) {
    EXPECT_EQ(statements[at].text, expected[at].text) << script;
    EXPECT_EQ(statements[at].line, expected[at].line) << script;
    EXPECT_EQ(statements[at].column, expected[at].column) << script;
  }
}

TEST(Scripts, AreCutAtSemicolons) {
  ExpectParts("", {});
  ExpectParts(" ;; \n;", {});
  ExpectParts("SELECT 1", {{"SELECT 1", 1, 1}});
  ExpectParts("SELECT 1;", {{"SELECT 1", 1, 1}});
  ExpectParts(" a b ;\n  c", {{"a b", 1, 2}, {"c", 2, 3}});
  ExpectParts("ä;b", {{"ä", 1, 1}, {"b", 1, 3}});
}

TEST(Scripts, KeepWhatStandsInTextsNamesAndDates) {
  ExpectParts("x ';' \";--\" [;/*] #;# 'it''s;'; y",
              {{"x ';' \";--\" [;/*] #;# 'it''s;'", 1, 1}, {"y", 1, 33}});
}

TEST(Scripts, LeaveCommentsOutAndKeepTheLines) {
  ExpectParts("-- a; b\nc -- d;\n/* e;\n */ f; g", {{"c      \n     \n    f", 2, 1}, {"g", 4, 8}});
  ExpectParts("a/**/b--", {{"a    b", 1, 1}});
}

TEST(Scripts, AreRefusedWithTheirOwnLine) {
  for (const char* script : {"a;\n 'b", "a;\n /* b", "a;\n [b", "a;\n #b", "a;\n ?"}) {
    try {
      (void)StatementsOf(script);
      ADD_FAILURE() << script;
    } catch (const SqlError& error) {
      EXPECT_EQ(error.line(), 2U) << script;
      EXPECT_EQ(error.column(), 2U) << script;
    }
  }
}

TEST(Scripts, OfManyStatementsTakeTheirTime) {
  std::string script;
  for (int at = 0; at < 100'000; ++at) {
    script += "a /* b */ 'c';\n";
  }
  const std::vector<ScriptStatement> statements = StatementsOf(script);
  ASSERT_EQ(statements.size(), 100'000U);
  EXPECT_EQ(statements.back().line, 100'000U);
}

}  // namespace
}  // namespace qorhost::dialect

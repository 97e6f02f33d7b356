// The questions about stored codes that saving, deleting and renumbering share, and the pass that
// closes the holes in their statements.
#include "frame/sql_text.h"
#include "tests/dircodes/dir_code_fixture.h"

namespace qortest {
namespace {

using qorcred::Null;
using qorcred::ReplaceEmptyWithNull;
using qorcred::Value;

class RecordChecks : public DirCodeTest {};

TEST_F(RecordChecks, AnyRowOfTheUnitMakesACodeTaken) {
  const struct {
    const char* name;
    Value cell;
    bool taken;
  } rows[] = {{"Number", 12.0, true},  {"Zero", 0, true},           {"EmptyText", "", false},
              {"Null", Null{}, false}, {"Nothing", Value(), false}, {"Text", "12", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    DirCodeScreen screen;
    screen.EnterNew("12");
    screen.host().database().Select("SELECT DIRECTORYCODE FROM DIRECTORYCODE", {{row.cell}});
    EXPECT_EQ(screen.SaveNew(), !row.taken);
  }
}

TEST_F(RecordChecks, AFailedQueryTakesNoCode) {
  Screen().EnterNew("12");
  Database().Error("SELECT DIRECTORYCODE FROM DIRECTORYCODE", "locked");
  EXPECT_TRUE(Screen().SaveNew());
}

TEST_F(RecordChecks, ATenantThatRefersToTheRowHoldsIt) {
  const struct {
    const char* name;
    std::vector<Row> rows;
    bool held;
  } rows[] = {{"NoTenant", {}, false},
              {"Tenant", {{17}}, true},
              {"Null", {{Null{}}}, false},
              {"Empty", {{""}}, false},
              {"Several", {{17}, {17}}, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    DirCodeScreen screen;
    screen.host().database().Select("FROM TENANTS", row.rows);
    EXPECT_FALSE(screen.Delete(kStoredRow, true, true));
    const Lines messages = screen.host().transcript().StartingWith("MsgBox 52");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].find("is applied to a Tenant") != std::string::npos, row.held);
  }
}

TEST_F(RecordChecks, HolesInAStatementBecomeNull) {
  const struct {
    const char* sql;
    const char* expected;
  } rows[] = {
      {"SET A='',B=1", "SET A=Null,B=1"},
      {"1, , , 2", "1, Null, Null, 2"},
      {", , , ,", ", Null, Null, Null,"},
      {"A= ,B= ,C", "A= Null,B= Null,C"},
      {"A=,B=-1,,C", "A=,B=-1,,C"},
      {"'O''Neil'", "'ONullNeil'"},
      {"''''", "NullNull"},
      {"'''", "Null'"},
      {"", ""},
      {",  ,", ",  ,"},
  };
  for (const auto& row : rows) EXPECT_EQ(ReplaceEmptyWithNull(row.sql), row.expected) << row.sql;
}

}  // namespace
}  // namespace qortest

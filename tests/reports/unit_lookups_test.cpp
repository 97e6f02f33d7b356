// The unit's name and the lengths of its codes.
#include <cstdint>
#include <string>

#include "frame/runtime_error.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::Null;
using qorcred::Value;

class UnitLookups : public DirCodeReportTest {
 protected:
  std::string Name(std::int32_t unit = kUnit) {
    return Controller().pbGetUnitName(Connection(), unit);
  }
  std::int32_t CodeLength() { return Controller().pbGetEntryLength(Connection(), true); }
  std::int32_t EntryLength() { return Controller().pbGetEntryLength(Connection()); }
};

TEST_F(UnitLookups, FindTheName) {
  Database().Select("FROM Units", {{"North gate", "other"}, {"South gate", "other"}});
  EXPECT_EQ(Name(), "North gate");
  EXPECT_TRUE(TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT UnitName FROM Units WHERE UnitKey = 7" -> 2 rows
    Release "qorDBI.clsDBManager"
  )~"));
}

TEST_F(UnitLookups, OfAnUnknownUnitFindNoName) {
  EXPECT_EQ(Name(-1), "");
  EXPECT_TRUE(TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT UnitName FROM Units WHERE UnitKey = -1" -> no rows
    Release "qorDBI.clsDBManager"
  )~"));
}

TEST_F(UnitLookups, TakeTheNameAsText) {
  const struct {
    const char* name;
    Value cell;
    std::string expected;
  } rows[] = {{"Text", " North ", " North "}, {"Number", 12, "12"}, {"Empty", Value(), ""},
              {"Null", Null{}, ""},           {"Blank", " ", " "},  {"Quote", "O'Hare", "O'Hare"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Database().Replace("FROM Units", {.rows = {{row.cell}}});
    EXPECT_EQ(Name(), row.expected);
  }
}

TEST_F(UnitLookups, OfTheNameReadTheUnitOfTheCall) {
  Controller().set_mlngUnitKey(99);
  (void)Name(3);
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect"),
            Lines{"ExecuteSelect \"SELECT UnitName FROM Units WHERE UnitKey = 3\" -> no rows"});
}

TEST_F(UnitLookups, FindTheLengthOfDirectoryCodes) {
  Database().Select("MaxDigitsDirectoryCode", {{4}});
  EXPECT_EQ(CodeLength(), 4);
  EXPECT_TRUE(TranscriptIs(R"~(
    CreateObject "qorDBI.clsDBManager"
    ExecuteSelect "SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey = 7" -> 1 row
    Release "qorDBI.clsDBManager"
  )~"));
}

TEST_F(UnitLookups, FindTheLengthOfEntryCodesUnlessToldOtherwise) {
  Database().Select("MaxDigitsEntryCode", {{6}});
  EXPECT_EQ(EntryLength(), 6);
  EXPECT_EQ(Controller().pbGetEntryLength(Connection(), false), 6);
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect"),
            Lines(2,
                  "ExecuteSelect \"SELECT MaxDigitsEntryCode FROM UnitSettings WHERE UnitKey = 7\" "
                  "-> 1 row"));
}

TEST_F(UnitLookups, OfLengthsReadTheUnitOfTheReport) {
  for (const std::int32_t unit : {0, -1, 2147483647}) {
    Controller().set_mlngUnitKey(unit);
    Host().StartOver();
    EXPECT_EQ(CodeLength(), 0);
    EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect"),
              Lines{"ExecuteSelect \"SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey "
                    "= " +
                    std::to_string(unit) + "\" -> no rows"});
  }
}

TEST_F(UnitLookups, TakeTheLengthAsAWholeNumber) {
  const struct {
    const char* name;
    Value cell;
    std::int32_t expected;
    int trapped;
  } rows[] = {
      {"Number", 4, 4, 0},      {"Negative", -4, -4, 0},
      {"Text", "4", 4, 0},      {"TextWithBlanks", " 4 ", 4, 0},
      {"Double", 4.5, 4, 0},    {"DoubleToEven", 5.5, 6, 0},
      {"Boolean", true, -1, 0}, {"EmptyText", "", 0, 0},
      {"Word", "four", 0, 13},  {"LeadingNumber", "4 digits", 0, 13},
      {"Blank", " ", 0, 13},    {"TooLarge", 3e9, 0, 6},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Host().StartOver();
    Database().Replace("MaxDigitsDirectoryCode", {.rows = {{row.cell}}});
    EXPECT_EQ(CodeLength(), row.expected);
    const auto& trapped = Host().services().trapped();
    ASSERT_EQ(trapped.size(), row.trapped == 0 ? 0U : 1U);
    if (row.trapped != 0) {
      EXPECT_EQ(trapped.front(),
                std::pair(std::string("pbGetEntryLength"), static_cast<ErrorNumber>(row.trapped)));
    }
  }
}

TEST_F(UnitLookups, OfALengthThatIsNullFindNone) {
  Database().Replace("MaxDigitsDirectoryCode", {.rows = {{Null{}}}});
  EXPECT_EQ(CodeLength(), 0);
  EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
}

TEST_F(UnitLookups, BearAFailedStatement) {
  Database().Error("FROM Units", "locked");
  Database().Error("FROM UnitSettings", "locked");
  EXPECT_EQ(Name(), "");
  EXPECT_EQ(CodeLength(), 0);
  EXPECT_EQ(EntryLength(), 0);
  EXPECT_TRUE(Host().services().trapped().empty());
}

TEST_F(UnitLookups, BearACallThatRaises) {
  for (const std::string_view call : {"CreateObject", "ExecuteSelect"}) {
    SCOPED_TRACE(call);
    Database().Replace("FROM", {.rows = {{4}}});
    Host().StartOver();
    Host().gate().FailOn(std::string(call));
    EXPECT_EQ(Name(), "");
    Host().gate().FailOn(std::string(call));
    EXPECT_EQ(CodeLength(), 0);
    EXPECT_EQ(Host().services().trapped().size(), 2U);
    EXPECT_EQ(Host().services().LiveComponents(), 0);
    EXPECT_TRUE(Host().transcript().StartingWith("MsgBox").empty());
  }
}

TEST_F(UnitLookups, NeedNoScreen) {
  Controller().set_gfrmTxFilter(nullptr);
  Database().Replace("FROM", {.rows = {{4}}});
  EXPECT_EQ(Name(), "4");
  EXPECT_EQ(CodeLength(), 4);
}

}  // namespace
}  // namespace qortest

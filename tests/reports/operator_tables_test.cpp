// The pieces of text that the filter rows' operators and fields stand for: every blank counts.
#include "reports/operator_tables.h"

#include <string>
#include <vector>

#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using Pieces = std::vector<std::string>;

TEST(OperatorTables, OfNumbers) {
  EXPECT_EQ(
      qorcred::FilledOperatorTables().numeric,
      (Pieces{"=", "<>", ">", ">=", "<", "<=", "Between ^1 And ^2", "Not Between ^1 And ^2"}));
}

TEST(OperatorTables, OfTexts) {
  EXPECT_EQ(qorcred::FilledOperatorTables().text,
            (Pieces{"= '^'", " <> '^'", " Like '^%'", " Not Like '^%'", " Like '%^' ",
                    " Not Like '%^' ", " Like '%^%' ", " Not Like '%^%' "}));
}

TEST(OperatorTables, OfDates) {
  EXPECT_EQ(qorcred::FilledOperatorTables().date,
            (Pieces{" = #^# ", " <> #^# ", " > #^# ", " >=#^# ", " < #^# ", " <= #^# ",
                    " Between #^1# And #^2# ", " Not Between #^1# And #^2#"}));
}

TEST(OperatorTables, OfFields) {
  EXPECT_EQ(qorcred::FilledOperatorTables().field,
            (Pieces{"a.CredentialType", "a.PINNo", "a.FacilityCode",
                    "b.LastName & ' ' & b.FirstName & ' ' & b.MiddleInitial"}));
}

template <typename Report>
class FilledOperatorTables : public ReportTest<Report> {};
TYPED_TEST_SUITE(FilledOperatorTables, BothReports, ReportNames);

TYPED_TEST(FilledOperatorTables, NeedNothingOfTheHost) {
  this->Controller().set_gfrmTxFilter(nullptr);
  EXPECT_TRUE(this->Controller().pbPopulateArrOperators());
  EXPECT_TRUE(this->Controller().pbPopulateArrOperators());
  EXPECT_EQ(this->Host().gate().calls(), 0U);
  EXPECT_TRUE(this->TranscriptIs(""));
}

// Filling them again replaces them: the pieces keep their places.
TEST(FilledOperatorTablesOfCredentials, DoNotGrow) {
  CredentialReportDesk desk;
  for (int times = 0; times < 3; ++times) {
    EXPECT_TRUE(desk.controller().pbPopulateArrOperators());
  }
  ChooseFieldAt(desk.host(), 0, 1);
  ChooseOperator(desk.host(), 0, 8);
  EnterValues(desk.host(), 0, "5");
  qorcred::ObjectRef rows = std::make_shared<qorcred::ResultTable>();
  std::string statement;
  EXPECT_FALSE(desk.controller().pbGenSql(desk.host().connection(), kUnit, rows, statement));
  ChooseOperator(desk.host(), 0, 1);
  EXPECT_TRUE(desk.controller().pbGenSql(desk.host().connection(), kUnit, rows, statement));
  EXPECT_NE(statement.find(" And a.PINNo <>5 Union "), std::string::npos);
}

}  // namespace
}  // namespace qortest

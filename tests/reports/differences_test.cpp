// What the two report controllers do differently on purpose, and what they have in common where it
// may surprise, side by side.
#include <functional>
#include <memory>
#include <string>

#include "frame/result_table.h"
#include "frame/runtime_error.h"
#include "tests/reports/report_fixture.h"

namespace qortest {
namespace {

using qorcred::ErrorNumber;
using qorcred::ObjectRef;
using qorcred::ResultTable;

/// Both statements for one arrangement of the filter rows.
struct Statements {
  explicit Statements(const std::function<void(RecordingHost&)>& arrange) {
    credentials.controller().pbPopulateArrOperators();
    arrange(codes.host());
    arrange(credentials.host());
    codes.host().StartOver();
    credentials.host().StartOver();
  }
  std::string OfCodes() { return codes.controller().pbGenSql(codes.host().connection(), kUnit); }
  std::string OfCredentials() {
    ObjectRef rows = std::make_shared<ResultTable>();
    std::string statement;
    done =
        credentials.controller().pbGenSql(credentials.host().connection(), kUnit, rows, statement);
    return statement;
  }
  DirCodeReportDesk codes;
  CredentialReportDesk credentials;
  bool done = false;
};

TEST(ReportDifferences, OnlyTheStatementOfCodesRaises) {
  Statements statements([](RecordingHost&) {});
  statements.codes.controller().set_gfrmTxFilter(nullptr);
  statements.credentials.controller().set_gfrmTxFilter(nullptr);
  EXPECT_EQ(ErrorOf([&] { (void)statements.OfCodes(); }),
            static_cast<int>(ErrorNumber::kObjectNotSet));
  EXPECT_EQ(ErrorOf([&] { (void)statements.OfCredentials(); }), 0);
  EXPECT_FALSE(statements.done);
  EXPECT_TRUE(statements.codes.host().services().trapped().empty());
  EXPECT_EQ(statements.credentials.host().services().trapped().size(), 1U);
}

TEST(ReportDifferences, OnlyCredentialsRunTheirStatement) {
  Statements statements([](RecordingHost&) {});
  const std::string codes = statements.OfCodes();
  const std::string credentials = statements.OfCredentials();
  EXPECT_TRUE(
      statements.codes.host().transcript().StartingWith("ExecuteSelect \"" + codes).empty());
  EXPECT_EQ(statements.credentials.host()
                .transcript()
                .StartingWith("ExecuteSelect \"" + credentials)
                .size(),
            1U);
}

TEST(ReportDifferences, OnlyCodesStopAtTheFifthRow) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 5, 1);
    ChooseOperator(host, 5, 0, "equal");
    EnterValues(host, 5, "12");
  });
  EXPECT_EQ(statements.OfCodes().find("12"), std::string::npos);
  EXPECT_NE(statements.OfCredentials().find(" And a.PINNo =12"), std::string::npos);
}

TEST(ReportDifferences, OnlyCredentialsCountTheRowsAndReadTheWord) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 0, 1);
    ChooseOperator(host, 0, 0, "equal");
  });
  (void)statements.OfCodes();
  (void)statements.OfCredentials();
  EXPECT_TRUE(statements.codes.host().transcript().StartingWith("cboField.Count").empty());
  EXPECT_TRUE(statements.codes.host().transcript().StartingWith("cboFilter(0).Text").empty());
  EXPECT_EQ(statements.credentials.host().transcript().StartingWith("cboField.Count").size(), 1U);
  EXPECT_EQ(statements.credentials.host().transcript().StartingWith("cboFilter(0).Text").size(),
            1U);
}

TEST(ReportDifferences, OnlyCodesTouchThePickers) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 0, 1);
    ChooseOperator(host, 0, 0, "equal");
  });
  (void)statements.OfCodes();
  (void)statements.OfCredentials();
  EXPECT_EQ(statements.codes.host().transcript().StartingWith("dtp").size(), 8U);
  EXPECT_TRUE(statements.credentials.host().transcript().StartingWith("dtp").empty());
}

// An empty number: codes without one, or credentials with any.
TEST(ReportDifferences, OnlyCodesLookForEmptyNumbers) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 0, 1);
    ChooseOperator(host, 0, 0, "equal");
  });
  ChooseField(statements.codes.host(), 0, 51);
  EXPECT_NE(statements.OfCodes().find(" IS NULL "), std::string::npos);
  EXPECT_EQ(statements.OfCredentials().find("a.PINNo ="), std::string::npos);
}

TEST(ReportDifferences, OnlyCodesReadTheirNumbers) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 0, 1);
    ChooseOperator(host, 0, 0, "equal");
    EnterValues(host, 0, "1.50 or 1=1");
  });
  ChooseField(statements.codes.host(), 0, 51);
  EXPECT_NE(statements.OfCodes().find(" IN (1.5) "), std::string::npos);
  EXPECT_NE(statements.OfCredentials().find(" And a.PINNo =1.50 or 1=1"), std::string::npos);
}

TEST(ReportDifferences, OnlyCredentialsHaveRangesOfNumbers) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 0, 1);
    ChooseOperator(host, 0, 6, "between");
    EnterValues(host, 0, "5", "9");
  });
  ChooseField(statements.codes.host(), 0, 51);
  EXPECT_TRUE(statements.OfCodes().ends_with(
      "DirectoryCode.DirectoryCode >= 0 Order By UCase(DirectoryCode.DisplayName)"));
  EXPECT_NE(statements.OfCredentials().find("a.PINNo Between 5 And 9"), std::string::npos);
}

TEST(ReportDifferences, OnlyCredentialsReplacePlaceholdersInValues) {
  Statements statements([](RecordingHost& host) {
    ChooseFieldAt(host, 0, 3);
    ChooseOperator(host, 0, 0, "equal");
    EnterValues(host, 0, "^1");
    ChooseFieldAt(host, 1, 1);
    ChooseOperator(host, 1, 6, "between");
    EnterValues(host, 1, "5", "9");
  });
  ChooseField(statements.codes.host(), 0, 52);
  ChooseField(statements.codes.host(), 1, 52);
  EXPECT_NE(statements.OfCodes().find("IN ('^1')"), std::string::npos);
  EXPECT_NE(statements.OfCredentials().find("= '5'"), std::string::npos);
}

// Codes are listed in the directory-code report, yet it is credentials that both delete.
TEST(ReportDifferences, NoneIsInWhatTheyDelete) {
  Statements statements([](RecordingHost&) {});
  statements.codes.controller().set_gstrRIDsForDeletion("17");
  statements.credentials.controller().set_gstrRIDsForDeletion("17");
  std::int32_t byCodes = 0;
  std::int32_t byCredentials = 0;
  EXPECT_TRUE(
      statements.codes.controller().pbDelete(statements.codes.host().connection(), kUnit, byCodes));
  EXPECT_TRUE(statements.credentials.controller().pbDelete(
      statements.credentials.host().connection(), kUnit, byCredentials));
  EXPECT_EQ(statements.codes.host().transcript().Read(Detail::kEverything),
            statements.credentials.host().transcript().Read(Detail::kEverything));
  EXPECT_EQ(statements.codes.host().transcript().StartingWith("ExecuteQueryDelete"),
            Lines{"ExecuteQueryDelete \"Delete From CredentialBank Where unitkey=7 And RID in "
                  "(17)\" -> 1"});
  EXPECT_EQ(byCodes, byCredentials);
}

}  // namespace
}  // namespace qortest

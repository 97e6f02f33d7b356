// The reports worked at a desk: rows, outcomes, deletions, faults of conditions.
#include <gmock/gmock.h>

#include <algorithm>

#include "host/desks/credential_report.h"
#include "host/desks/dir_code_report.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Reports : public DeskFixture {
 protected:
  /// The cells of a column as texts.
  static std::vector<std::string> ColumnOf(const Table& table, std::string_view title) {
    std::vector<std::string> cells;
    const auto found =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [title](const TableColumn& column) { return column.title == title; });
    EXPECT_NE(found, table.columns.end()) << title;
    for (const auto& row : table.rows) {
      cells.push_back(
          qorcred::TextOrEmpty(row[static_cast<std::size_t>(found - table.columns.begin())]));
    }
    return cells;
  }
};

TEST_F(Reports, ConditionsNarrowTheDirectoryCodes) {
  DirCodeReport report(session(), kUnit);
  EXPECT_THAT(report.Narrow({"Call Forwarding = yes"}), IsEmpty());
  EXPECT_TRUE(report.Compose().done());
  EXPECT_TRUE(report.Run().done());
  EXPECT_THAT(ColumnOf(report.Complete(), "Call Forwarding"), testing::Each("True"));
  EXPECT_THAT(ColumnOf(report.Visible(), "Directory Code"), testing::Contains("0103"));
}

TEST_F(Reports, ARangeOfNumbersThatDoesNotNarrowIsNoted) {
  DirCodeReport report(session(), kUnit);
  EXPECT_THAT(report.Narrow({"Directory Code between 101 AND 103"}),
              ElementsAre(HasSubstr("say 'Directory Code >= 101' and 'Directory Code <= 103'")));
}

TEST_F(Reports, WhatIsNoConditionNamesTheField) {
  DirCodeReport codes(session(), kUnit);
  for (const char* condition :
       {"Floor = 5", "Display Name > 5", "Do Not Disturb = maybe", "Directory Start Date = soon",
        "Directory Start Date = 1500-01-01", "Display Name = a\nb"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)codes.Narrow({condition}); }), report_input::kCondition)
        << condition;
  }
  EXPECT_EQ(FieldAtFault([&] { (void)codes.Narrow(std::vector<std::string>(6, "Active = yes")); }),
            report_input::kCondition);
  EXPECT_EQ(FieldAtFault([&] {
              const CredentialReport report(session(), kUnit, {"Credential Type = key"});
            }),
            report_input::kCondition);
}

TEST_F(Reports, AStatementThatAValueBreaksIsAFailure) {
  CredentialReport report(session(), kUnit, {"Tenant Name contains '"});
  const Outcome ran = report.Run();
  EXPECT_EQ(ran.ending, Ending::kFailed);
  EXPECT_FALSE(ran.failures.empty());
  EXPECT_THAT(report.statement(), HasSubstr("'"));
}

TEST_F(Reports, EveryTypeIsFoundByItsWordAndItsName) {
  for (const char* type : {"transmitter", "Transmitter", "TRANSMITTER"}) {
    CredentialReport report(session(), kUnit, {std::string("Credential Type = ") + type});
    ASSERT_TRUE(report.Run().done());
    EXPECT_THAT(ColumnOf(report.Visible(), "Credential Type"), testing::Each("Transmitter"));
  }
  CredentialReport none(session(), kUnit, {"Credential Type = card35"});
  EXPECT_TRUE(none.Run().done());
  EXPECT_THAT(none.Visible().rows, IsEmpty());
}

TEST_F(Reports, ADeletionTellsItsRowsAndSparesWhatATenantHolds) {
  const std::string held = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62");
  CredentialReport report(session(), kUnit, {"Tenant Name equal"});
  ASSERT_TRUE(report.Run().done());
  std::vector<std::string> free;
  for (const std::string& rid : ColumnOf(report.Complete(), "RID")) {
    const std::string holders =
        "SELECT TenantID FROM Tenants WHERE CREDENTIALID1=" + rid + " OR CREDENTIALID2=" + rid;
    if (CountOf(holders) == 0) {
      free.push_back(rid);
    }
  }
  ASSERT_GE(free.size(), 2U);

  const DeletedCredentials refused = report.Delete(GivenRids(held + "," + free[0]));
  EXPECT_EQ(refused.ending, Ending::kRefused);
  EXPECT_EQ(refused.rows, 0);
  const DeletedCredentials deleted = report.Delete(GivenRids(free[0] + "," + free[1]));
  EXPECT_TRUE(deleted.done());
  EXPECT_EQ(deleted.given, 2U);
  EXPECT_EQ(deleted.rows, 2);
}

TEST(Rids, AreWholeNumbersWithCommasBetween) {
  EXPECT_EQ(GivenRids("17").count(), 1U);
  EXPECT_EQ(GivenRids("17,18,21").count(), 3U);
  EXPECT_EQ(GivenRids("17,18,21").text(), "17,18,21");
  for (const char* given : {"", ",", "17,", ",17", "17;18", "1 7", "-1", "x", "99999999999"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)GivenRids(given); }), report_input::kRids) << given;
  }
}

}  // namespace
}  // namespace qorhost::test

// The credential report worked at a desk: its rows, faults of conditions, deletions.
#include "host/desks/credential_report.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "host/desks/store_statement.h"
#include "tests/host/desks/report_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class CredentialReports : public ReportFixture {
 protected:
  /// The credentials' numbers under the conditions, in order.
  [[nodiscard]] std::vector<int> NumbersWhere(const std::vector<std::string>& conditions) {
    std::vector<int> numbers;
    for (const std::string& number : ColumnOf(Credentials(conditions), "Card Number")) {
      numbers.push_back(std::stoi(number));
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
  }
  /// The RIDs of the unit's credentials that nobody holds.
  [[nodiscard]] std::vector<std::string> FreeRids() {
    std::vector<std::string> free;
    for (const std::string& rid : ColumnOf(Credentials({"Tenant Name equal"}), "RID")) {
      if (CountOf("SELECT TenantID FROM Tenants WHERE CREDENTIALID1=" + rid +
                  " OR CREDENTIALID2=" + rid) == 0) {
        free.push_back(rid);
      }
    }
    return free;
  }
  [[nodiscard]] std::size_t CredentialCount() { return CountOf("SELECT RID FROM CredentialBank"); }
  [[nodiscard]] DeletedCredentials Delete(const std::string& rids) {
    return CredentialReport(session(), kUnit, {}).Delete(GivenRids(rids));
  }
};

TEST_F(CredentialReports, ListTheCredentialsWithTheirTenants) {
  CredentialReport report(session(), kUnit, {"Card Number between 1001 AND 1002"});
  ASSERT_TRUE(report.Run().done());
  EXPECT_EQ(CsvOf(report.Visible()),
            "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button "
            "Number,Assigned To,RID\r\n"
            "Corvin 30-Bit Card,1001,7,,,,Hollis Elena G,489\r\n"
            "Corvin 30-Bit Card,1002,7,,,,O'Brien Paula H,490\r\n");
  EXPECT_EQ(CsvOf(Credentials({"Card Number = 1001"})),
            "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button "
            "Number,Assigned To,RID,Tenant RID\r\n"
            "Corvin 30-Bit Card,1001,7,,,,Hollis Elena G,489,61\r\n");
}

TEST_F(CredentialReports, HaveEveryCredentialWithoutConditions) {
  // A credential that a resident holds comes twice: under the name and as unassigned.
  EXPECT_EQ(Credentials().rows.size(),
            CountOf("SELECT RID FROM CredentialBank WHERE UnitKey=2") +
                CountOf("SELECT TenantID FROM Tenants WHERE UnitKey=2 AND Resident<>0 AND "
                        "CREDENTIALID1 IS NOT NULL"));
  const Table unassigned = Credentials({"Tenant Name equal"});
  EXPECT_THAT(unassigned.rows, Not(IsEmpty()));
  EXPECT_THAT(ColumnOf(unassigned, "Assigned To"), Each("Unassigned"));
  EXPECT_THAT(ColumnOf(unassigned, "Tenant RID"), Each("-1"));
}

TEST_F(CredentialReports, AreNarrowedByConditions) {
  EXPECT_THAT(NumbersWhere({"Tenant Name equal Hollis Elena G", "Credential Type = card30"}),
              ElementsAre(1001));
  EXPECT_THAT(NumbersWhere({"Card Number >= 1002", "Card Number <= 1004", "Card Number <> 1003",
                            "Facility Code = 7", "Facility Code > 6", "Facility Code < 8"}),
              ElementsAre(1002, 1004));
  EXPECT_THAT(NumbersWhere({"Card Number = 60000"}), IsEmpty());
}

TEST_F(CredentialReports, FindEveryTypeByItsWordAndItsName) {
  for (const char* type : {"transmitter", "Transmitter", "TRANSMITTER"}) {
    const Table table = Credentials({std::string("Credential Type = ") + type});
    EXPECT_THAT(ColumnOf(table, "Credential Type"), Each("Transmitter"));
    EXPECT_EQ(table.rows.size(),
              CountOf("SELECT RID FROM CredentialBank WHERE UnitKey=2 AND CredentialType=2"));
  }
  EXPECT_EQ(NumbersWhere({"Credential Type = Corvin 30-Bit Card"}),
            NumbersWhere({"Credential Type = corvin 30 bit card"}));
  EXPECT_THAT(NumbersWhere({"Credential Type = corvin 30 bit card"}), Not(IsEmpty()));
  EXPECT_THAT(NumbersWhere({"Credential Type = card35"}), IsEmpty());
}

TEST_F(CredentialReports, NameATypeThatIsNone) {
  try {
    const CredentialReport report(session(), kUnit, {"Credential Type = paper"});
    ADD_FAILURE() << "nothing was refused";
  } catch (const InputFault& fault) {
    EXPECT_EQ(fault.field(), report_input::kCondition);
    EXPECT_EQ(fault.value(), "paper");
    EXPECT_THAT(fault.what(),
                HasSubstr("Standard 26-Bit Card (card26), Transmitter (transmitter)"));
  }
}

TEST_F(CredentialReports, KeepTheirStatement) {
  CredentialReport report(session(), kUnit, {"Tenant Name equal"});
  EXPECT_TRUE(report.Run().done());
  EXPECT_THAT(report.statement(),
              AllOf(StartsWith(" SELECT  IIf([CredentialType]=0,"), Not(HasSubstr("Union"))));
}

TEST_F(CredentialReports, FailWithAValueThatBreaksTheStatement) {
  CredentialReport quote(session(), kUnit, {"Tenant Name contains '"});
  const Outcome ran = quote.Run();
  EXPECT_EQ(ran.ending, Ending::kFailed);
  EXPECT_FALSE(ran.failures.empty());
  EXPECT_THAT(quote.statement(), HasSubstr("'"));
  EXPECT_EQ(FieldAtFault([this] {
              const CredentialReport number(session(), kUnit,
                                            {"Card Number = 1; DROP TABLE Tenants"});
            }),
            report_input::kCondition);
  CredentialReport second(session(), kUnit, {"Tenant Name = x'; DROP TABLE Tenants; '"});
  const Outcome two = second.Run();
  EXPECT_EQ(two.ending, Ending::kFailed);
  ASSERT_FALSE(two.failures.empty());
  EXPECT_THAT(two.failures[0], HasSubstr("only one statement is allowed"));
  CredentialReport names(session(), kUnit, {"Tenant Name =", "Tenant Name = Abel"});
  EXPECT_EQ(names.Run().ending, Ending::kFailed);
}

TEST_F(CredentialReports, DeleteWhatNobodyHolds) {
  const std::vector<std::string> free = FreeRids();
  ASSERT_GE(free.size(), 2U);
  const std::size_t before = CredentialCount();
  const DeletedCredentials deleted = Delete(free[0] + "," + free[1] + ",2147483647");
  EXPECT_TRUE(deleted.done());
  EXPECT_EQ(deleted.given, 3U);
  EXPECT_EQ(deleted.rows, 2);
  EXPECT_EQ(CredentialCount(), before - 2);
  EXPECT_EQ(
      CountOf("SELECT RID FROM CredentialBank WHERE RID IN (" + free[0] + "," + free[1] + ")"), 0U);
}

TEST_F(CredentialReports, DeleteNothingWhenATenantHoldsOne) {
  const std::string held = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62");
  const std::vector<std::string> free = FreeRids();
  ASSERT_GE(free.size(), 1U);
  const std::size_t before = CredentialCount();
  const DeletedCredentials refused = Delete(free[0] + "," + held);
  EXPECT_EQ(refused.ending, Ending::kRefused);
  EXPECT_EQ(refused.rows, 0);
  EXPECT_THAT(shown_, ElementsAre("Credentials which are assigned to tenants cannot be deleted. "
                                  "Please deselect those credentials."));
  EXPECT_EQ(CredentialCount(), before);
}

TEST_F(CredentialReports, DeleteNothingThatOthersHaveChangedSinceItWasShown) {
  const std::vector<std::string> free = FreeRids();
  ASSERT_GE(free.size(), 2U);
  const std::size_t before = CredentialCount();
  const std::vector<std::string> changes{
      "UPDATE CREDENTIALBANK SET PINNO=60001 WHERE RID=" + free[0],
      "UPDATE TENANTS SET CREDENTIALID1=" + free[0] + " WHERE UNITKEY=1 AND TENANTID=1"};
  for (const std::string& change : changes) {
    CredentialReport report(session(), kUnit, {});
    ASSERT_TRUE(report.Run().done());
    (void)StoreStatements(change).Run(session());
    const DeletedCredentials stale = report.Delete(GivenRids(free[0] + "," + free[1]));
    EXPECT_EQ(stale.ending, Ending::kStale) << change;
    EXPECT_THAT(stale.changes, testing::SizeIs(1)) << change;
    EXPECT_EQ(CredentialCount(), before) << change;
    // The other row is as it was shown.
    if (change == changes.back()) {
      CredentialReport again(session(), kUnit, {});
      ASSERT_TRUE(again.Run().done());
      (void)StoreStatements("UPDATE CREDENTIALBANK SET PINNO=60002 WHERE RID=" + free[0])
          .Run(session());
      EXPECT_TRUE(again.Delete(GivenRids(free[1])).done());
    }
  }
}

TEST_F(CredentialReports, SayWhenNothingWasDeleted) {
  const DeletedCredentials none = Delete("2147483647");
  EXPECT_EQ(none.ending, Ending::kRefused);
  EXPECT_FALSE(none.returned);
  EXPECT_THAT(shown_, ElementsAre("Credentials(s) are not deleted successfully."));
}

}  // namespace
}  // namespace qorhost::test

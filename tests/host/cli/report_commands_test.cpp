// The report commands: their options, what they print of a report, how they end.
#include <gmock/gmock.h>

#include <sstream>

#include "tests/host/cli/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::vector<std::string> Lines(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

class Reports : public DirCodeFixture {
 protected:
  /// `report dircodes` of unit 2.
  [[nodiscard]] Outcome Codes(std::vector<std::string> words) {
    words.insert(words.begin(), {"--unit", "2", "report", "dircodes"});
    return Run(std::move(words));
  }
  /// `report credentials` of unit 2.
  [[nodiscard]] Outcome Credentials(std::vector<std::string> words) {
    words.insert(words.begin(), {"--unit", "2", "report", "credentials"});
    return Run(std::move(words));
  }
  /// The RID of one of the unit's credentials that nobody holds.
  [[nodiscard]] std::string FreeRid(std::size_t at) {
    return Rows({"sql",
                 "SELECT RID FROM CredentialBank WHERE UnitKey=2 AND RID NOT IN (SELECT "
                 "CREDENTIALID1 FROM Tenants WHERE CREDENTIALID1 IS NOT NULL) AND RID NOT IN "
                 "(SELECT CREDENTIALID2 FROM Tenants WHERE CREDENTIALID2 IS NOT NULL) ORDER BY "
                 "RID"})
        .at(at)["RID"]
        .dump();
  }
  [[nodiscard]] int Count(const std::string& from) {
    return Rows({"sql", "SELECT COUNT(*) AS n FROM " + from})[0]["n"].get<int>();
  }
};

TEST_F(Reports, TheTableOfCodesIsHeadedByTheUnitAndHasTheVisibleColumns) {
  const Outcome outcome = Codes({});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  const std::vector<std::string> lines = Lines(outcome.out);
  ASSERT_EQ(lines.size(), 10U);
  EXPECT_EQ(lines[0], "Linden Park");
  EXPECT_EQ(lines[1],
            "Directory Code  Phone No.  Phone No. Extension  Phone No. Delay  Display Name   "
            "Directory Status  Directory Start Date  Directory End Date  Do Not Disturb  DND "
            "Schedule  Call Forwarding  CF Schedule  CF Phone No.  CF Extension  CF Time Delay");
  EXPECT_THAT(lines[3], StartsWith("0101            555-0100 "));
  EXPECT_EQ(lines[9], "6 rows");
}

TEST_F(Reports, JsonOfCodesHasEveryColumnAsItIsShown) {
  const nlohmann::json rows = Rows({"--unit", "2", "report", "dircodes"});
  ASSERT_EQ(rows.size(), 6U);
  EXPECT_EQ(rows[3].size(), 17U);
  EXPECT_EQ(rows[3]["Directory Code"], 104);
  EXPECT_EQ(rows[3]["Phone No. Extension"], nullptr);
  EXPECT_EQ(rows[3]["Phone No. Delay"], 2);
  EXPECT_EQ(rows[3]["Do Not Disturb"], true);
  EXPECT_EQ(rows[3]["CF Schedule"], "<None>");
}

TEST_F(Reports, CsvOfCodesHasEveryColumnUnderItsName) {
  Change(
      "UPDATE DIRECTORYCODE SET DISPLAYNAME='=1+1', PHONENUMBER='5,5' WHERE UNITKEY=2 AND "
      "DIRECTORYCODE=101");
  const Outcome outcome = Codes({"--format", "csv"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(
      outcome.out,
      StartsWith(
          "Directory Code,Phone No.,Phone No. Extension,Phone No. Delay,Display Name,Directory "
          "Status,Directory Start Date,Directory End Date,Do Not Disturb,DND Schedule,Call "
          "Forwarding,CF Schedule,CF Phone No.,CF Extension,CF Time Delay,Show Display "
          "Name,Show Directory Code\r\n"
          "0101,\"5,5\",,2,'=1+1,Active,,,no,<None>,no,<None>,,,2,yes,yes\r\n"));
  EXPECT_EQ(Lines(outcome.out).size(), 7U);
}

TEST_F(Reports, SqlPrintsTheStatementAlone) {
  const Outcome codes =
      Codes({"--format", "sql", "--where", "Display Name begins with Apartment 10"});
  EXPECT_EQ(codes.status, 0);
  EXPECT_EQ(codes.err, "");
  ASSERT_EQ(Lines(codes.out).size(), 1U);
  EXPECT_THAT(codes.out,
              AllOf(StartsWith("SELECT DirectoryCode.DirectoryCode, DirectoryCode.PhoneNumber, "),
                    HasSubstr(" AND DirectoryCode.DisplayName LIKE 'Apartment 10%'  Order By ")));
  const Outcome run = Run({"sql", codes.out.substr(0, codes.out.size() - 1)});
  EXPECT_THAT(run.out, HasSubstr("6 rows"));

  const Outcome credentials = Credentials({"--format", "sql", "--where", "Tenant Name equal"});
  EXPECT_EQ(credentials.status, 0);
  ASSERT_EQ(Lines(credentials.out).size(), 1U);
  EXPECT_THAT(credentials.out,
              AllOf(StartsWith(" SELECT  IIf([CredentialType]=0,"), Not(HasSubstr("Union"))));
}

TEST_F(Reports, AReportWithoutRowsSaysSoAndSucceeds) {
  const std::vector<std::string> nothing{"--where", "Directory Code = 9999"};
  const Outcome table = Codes(nothing);
  EXPECT_EQ(table.status, 0);
  EXPECT_EQ(table.out, "Linden Park\nno rows\n");
  EXPECT_EQ(Lines(Codes({nothing[0], nothing[1], "--format", "csv"}).out).size(), 1U);
  EXPECT_EQ(Codes({nothing[0], nothing[1], "--json"}).out, "[]\n");
  EXPECT_EQ(Credentials({"--where", "Card Number = 60000"}).out, "Linden Park\nno rows\n");
}

TEST_F(Reports, AConditionThatIsNotUnderstoodPrintsNoRows) {
  const Outcome range = Codes({"--where", "Directory Code between 101 AND 103"});
  EXPECT_EQ(range.err,
            "qorhost: --where 'Directory Code between 101 AND 103' has no operator that goes with "
            "'Directory Code': equal (=), does not equal (<>), greater than (>), greater than or "
            "equal (>=), less than (<), less than or equal (<=); for a range give two "
            "conditions\n");
  const Outcome nothing = Credentials({"--where", "Card Number ="});
  EXPECT_EQ(nothing.err,
            "qorhost: --where 'Card Number =' ends without a value: 'Card Number' takes a "
            "number\n");
  const Outcome text = Credentials({"--where", "Facility Code > seven"});
  EXPECT_EQ(text.err,
            "qorhost: --where 'Facility Code > seven': 'Facility Code' takes a number, and 'seven' "
            "is none\n");
  for (const Outcome& outcome :
       {range, nothing, text, Codes({"--where", "Phone No. Delay not between 1 AND 2"}),
        Codes({"--where", "Directory Code <>"}), Codes({"--where", "Phone No. Delay >"}),
        Codes({"--where", "Directory Code = 101a"}), Codes({"--where", "Directory Code = 1,2"}),
        Credentials({"--where", "Card Number between x AND 9"}),
        Credentials({"--where", "Card Number between 1 AND 1e999"})}) {
    EXPECT_EQ(outcome.status, 2) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("qorhost: --where '"));
  }
}

TEST_F(Reports, SeveralConditionsMustAllHold) {
  EXPECT_THAT(Codes({"--where", "Directory Code >= 102", "--where", "Directory Code < 104"}).out,
              HasSubstr("2 rows\n"));
  EXPECT_THAT(Credentials({"--where", "Card Number >= 1002", "--where", "Card Number <= 1004"}).out,
              HasSubstr("3 rows\n"));
}

TEST_F(Reports, AWrongConditionIsAMistakeInTheOption) {
  const Outcome field = Codes({"--where", "Tenant = Abel"});
  EXPECT_THAT(field.err,
              StartsWith("qorhost: --where 'Tenant = Abel' begins with no field: Directory "
                         "Code, "));
  const Outcome type = Credentials({"--where", "Credential Type = paper"});
  EXPECT_EQ(
      type.err,
      "qorhost: --where: 'paper' is no credential type: Corvin 30-Bit Card (card30), Standard "
      "26-Bit Card (card26), Transmitter (transmitter), Corporate 1000 35-Bit Card "
      "(card35)\n");
  std::vector<std::string> words;
  for (int number = 1; number <= 6; ++number) {
    words.insert(words.end(), {"--where", "Directory Code <> " + std::to_string(100 + number)});
  }
  const Outcome six = Codes(words);
  EXPECT_EQ(six.err, "qorhost: the report takes at most 5 conditions, not 6\n");
  for (const Outcome& outcome : {field, type, six}) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
  }
}

TEST_F(Reports, NoScheduleIsAskedForByTheFieldThatSaysSo) {
  const Outcome dnd =
      Run({"--unit", "2", "report", "dircodes", "--where", "DND Schedule = <None>"});
  EXPECT_EQ(dnd.status, 2);
  EXPECT_THAT(dnd.err, HasSubstr("rows without one have 'Do Not Disturb = no'"));
  EXPECT_THAT(Run({"--unit", "2", "report", "dircodes", "--where", "CF Schedule <> <None>"}).err,
              HasSubstr("rows without one have 'Call Forwarding = no'"));
}

TEST_F(Reports, AValueThatBreaksTheStatementFailsWithAHint) {
  const Outcome codes = Codes({"--where", "Display Name contains O'Brien"});
  EXPECT_EQ(codes.status, 3);
  EXPECT_EQ(codes.out, "");
  EXPECT_THAT(codes.err,
              AllOf(HasSubstr("line 1, column"), HasSubstr("write a quote in one twice")));
  const Outcome names = Credentials({"--where", "Tenant Name =", "--where", "Tenant Name = Abel"});
  EXPECT_EQ(names.status, 3);
  EXPECT_EQ(names.out, "");
  EXPECT_THAT(names.err, HasSubstr("ask for a name and for none in two reports"));
}

TEST_F(Reports, TheCredentialsAreListedWithTheirTenants) {
  const Outcome outcome = Credentials({"--where", "Card Number between 1001 AND 1002"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "Linden Park\n"
            "Credential Type     Card Number  Facility Code  ID Code  Sequence Number  Button "
            "Number  Assigned To      RID\n"
            "------------------  -----------  -------------  -------  ---------------  "
            "-------------  ---------------  ---\n"
            "Corvin 30-Bit Card         1001              7                                        "
            "   Hollis Elena G   489\n"
            "Corvin 30-Bit Card         1002              7                                        "
            "   O'Brien Paula H  490\n"
            "2 rows\n");
  const Outcome csv = Credentials({"--where", "Card Number = 1001", "--format", "csv"});
  EXPECT_EQ(csv.out,
            "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button "
            "Number,Assigned To,RID,Tenant RID\r\n"
            "Corvin 30-Bit Card,1001,7,,,,Hollis Elena G,489,61\r\n");
}

TEST_F(Reports, JsonIsAFormatAndNothingElse) {
  EXPECT_EQ(Codes({"--json"}).out, Codes({"--format", "json"}).out);
  EXPECT_EQ(Codes({"--json", "--format", "json"}).status, 0);
  const Outcome both = Codes({"--json", "--format", "csv"});
  EXPECT_EQ(both.status, 2);
  EXPECT_THAT(both.err, HasSubstr("exclude each other"));
  EXPECT_EQ(Codes({"--format", "xml"}).status, 2);
}

TEST_F(Reports, DeletesChosenCredentials) {
  const std::string first = FreeRid(0);
  const std::string second = FreeRid(1);
  const Outcome outcome = Credentials({"--delete", "rid:" + first + "," + second + ",2147483647"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Deleted 2 of 3 credentials in unit 2, Linden Park.\n");
  EXPECT_EQ(Count("CredentialBank WHERE RID IN (" + first + "," + second + ")"), 0);
}

TEST_F(Reports, DeletesNothingWhenATenantHoldsOne) {
  const Outcome outcome = Credentials({"--delete", "rid:" + FreeRid(0) + ",489"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err,
            "Pello RT [information]: Credentials which are assigned to tenants cannot be deleted. "
            "Please deselect those credentials.\n");
}

TEST_F(Reports, SaysWhenNothingWasDeleted) {
  const Outcome outcome = Credentials({"--delete", "RID:2147483647"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "Pello RT [information]: Credentials(s) are not deleted successfully.\n");
}

TEST_F(Reports, DeletionTakesRidsAndNoConditions) {
  const Outcome outcome = Credentials({"--delete=rid:1 OR 1=1"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err,
            "qorhost: --delete '1 OR 1=1' must be RIDs of the report with commas between them, as "
            "in 17,18,21\n");
  const Outcome bare = Credentials({"--delete", FreeRid(0)});
  EXPECT_EQ(bare.status, 2);
  EXPECT_THAT(bare.err, HasSubstr("as in rid:17,18,21: a bare number is the number on a "
                                  "credential"));
  EXPECT_EQ(Credentials({"--delete="}).status, 2);
  EXPECT_EQ(Credentials({"--delete=rid:"}).status, 2);
  EXPECT_EQ(Credentials({"--delete=rid:-1"}).status, 2);
  EXPECT_EQ(Credentials({"--delete", "rid:1", "--where", "Card Number = 5"}).status, 2);
  EXPECT_EQ(Credentials({"--delete", "rid:1", "--format", "csv"}).status, 2);
  EXPECT_EQ(Codes({"--delete", "rid:1"}).status, 2);
}

TEST_F(Reports, JsonCountsWhatWasDeleted) {
  EXPECT_EQ(Credentials({"--delete", "rid:" + FreeRid(0), "--json"}).out,
            "{\"unit\":2,\"stored\":true,\"dry_run\":false,\"rows\":1,\"changes\":null}\n");
}

TEST_F(Reports, TraceShowsTheCallsAndLeavesTheRowsAlone) {
  const Outcome plain = Codes({"--where", "Directory Code = 103"});
  const Outcome traced = Codes({"--where", "Directory Code = 103", "--trace"});
  EXPECT_EQ(traced.out, plain.out);
  EXPECT_THAT(
      traced.err,
      AllOf(ContainsRegex("  cboField\\[0\\]@[0-9]+.ListIndex -> 0\n"),
            ContainsRegex("  cboFilter\\[4\\]@[0-9]+.ListIndex -> -1\n"),
            ContainsRegex("  Columns\\[0\\]@[0-9]+.Caption -> \"Directory Code\"\n"),
            ContainsRegex("  objGrid@[0-9]+.ReBind\\(\\)\n  objGrid@[0-9]+.Refresh\\(\\)\n")));
}

TEST_F(Reports, HelpShowsExamples) {
  for (const char* report : {"dircodes", "credentials"}) {
    const Outcome outcome = Run({"report", report, "--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("--where"), HasSubstr("Examples:\n  qorhost report")));
  }
  EXPECT_EQ(Run({"report"}).status, 2);
  EXPECT_EQ(Run({"report", "tenants"}).status, 2);
}

TEST_F(Reports, AnOlderStoreIsBroughtUpToDateFirst) {
  {
    sqlite::Database store(File("building.db"), OpenMode::kReadWrite);
    store.Run(
        "DROP VIEW CurrentVersions; DROP TABLE AuditEntries; DROP TABLE AuditRows; DROP TABLE "
        "UnitVersions; DROP TABLE "
        "StoreSeal;"
        "DELETE FROM TenantSelectionFields; PRAGMA user_version=1");
  }
  EXPECT_THAT(Codes({}).out, HasSubstr("6 rows"));
  EXPECT_EQ(Count("TenantSelectionFields"), 17);
}

TEST_F(Reports, FindWhoIsUnassignedByTheWordThatTheyPrint) {
  const nlohmann::json without =
      Rows({"report", "credentials", "--unit", "2", "--where", "Tenant Name ="});
  EXPECT_GT(without.size(), 0U);
  EXPECT_EQ(Rows({"report", "credentials", "--unit", "2", "--where", "Assigned To = unassigned"}),
            without);
  EXPECT_EQ(Rows({"report", "credentials", "--unit", "2", "--where", "Tenant Name <> Unassigned"}),
            Rows({"report", "credentials", "--unit", "2", "--where", "Tenant Name <>"}));
}

}  // namespace
}  // namespace qorhost::test

// The report commands: what they print, refuse and delete.
#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "tests/host/cli/dir_code_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
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
  /// The directory codes that the report shows under the conditions, in its order.
  [[nodiscard]] std::vector<std::string> CodesWhere(const std::vector<std::string>& conditions) {
    std::vector<std::string> codes;
    for (const nlohmann::json& row : Rows(Words("dircodes", conditions))) {
      codes.push_back(row["Directory Code"].get<std::string>());
    }
    return codes;
  }
  /// The credentials' numbers under the conditions, in order.
  [[nodiscard]] std::vector<int> NumbersWhere(const std::vector<std::string>& conditions) {
    std::vector<int> numbers;
    for (const nlohmann::json& row : Rows(Words("credentials", conditions))) {
      numbers.push_back(row["Card Number"].get<int>());
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
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

 private:
  [[nodiscard]] static std::vector<std::string> Words(const std::string& report,
                                                      const std::vector<std::string>& conditions) {
    std::vector<std::string> words{"--unit", "2", "report", report};
    for (const std::string& condition : conditions) {
      words.insert(words.end(), {"--where", condition});
    }
    return words;
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
  Change(
      "UPDATE DIRECTORYCODE SET STARTDATE=#2024-03-05 14:30:00#, ACTIVE=False WHERE UNITKEY=2 AND "
      "DIRECTORYCODE=104");
  const nlohmann::json rows = Rows({"--unit", "2", "report", "dircodes"});
  ASSERT_EQ(rows.size(), 6U);
  const nlohmann::json expected{
      {"Directory Code", "0104"},
      {"Phone No.", "555-0103"},
      {"Phone No. Extension", nullptr},
      {"Phone No. Delay", 2},
      {"Display Name", "Apartment 104"},
      {"Directory Status", "Inactive"},
      {"Directory Start Date", "05 Mar 2024 14:30"},
      {"Directory End Date", nullptr},
      {"Do Not Disturb", "True"},
      {"DND Schedule", "Night Shift"},
      {"Call Forwarding", "False"},
      {"CF Schedule", "<None>"},
      {"CF Phone No.", nullptr},
      {"CF Extension", nullptr},
      {"CF Time Delay", 2},
      {"Show Display Name", "True"},
      {"Show Directory Code", "True"},
  };
  EXPECT_EQ(rows[3], expected);
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
          "0101,\"5,5\",,2,'=1+1,Active,,,False,<None>,False,<None>,,,2,True,True\r\n"));
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

TEST_F(Reports, ConditionsNarrowTheCodes) {
  Change(
      "UPDATE DIRECTORYCODE SET STARTDATE=#2026-05-01 08:00:00#, SHOWDISPLAYNAME=False, "
      "CFTIMEDELAY=7 WHERE UNITKEY=2 AND DIRECTORYCODE=105");
  EXPECT_THAT(CodesWhere({"Directory Code = 103"}), ElementsAre("0103"));
  EXPECT_THAT(CodesWhere({"directory code >= 102", "Directory Code < 104"}),
              ElementsAre("0102", "0103"));
  EXPECT_THAT(CodesWhere({"Phone No. ends with 05"}), ElementsAre("0106"));
  EXPECT_THAT(CodesWhere({"Phone No. Extension = 15"}), ElementsAre("0106"));
  EXPECT_THAT(CodesWhere({"Phone No. Delay > 2"}), ElementsAre("0102", "0106"));
  EXPECT_THAT(CodesWhere({"Do Not Disturb = yes"}), ElementsAre("0104"));
  EXPECT_THAT(CodesWhere({"DND Schedule begins with night"}), ElementsAre("0104"));
  EXPECT_THAT(CodesWhere({"Call Forwarding <> no", "CF Phone No. contains 0205"}),
              ElementsAre("0106"));
  EXPECT_THAT(CodesWhere({"Directory Start Date between 2026-05-01 AND 2026-05-01"}),
              ElementsAre("0105"));
  EXPECT_THAT(CodesWhere({"Directory Start Date > 2026-05-01"}), IsEmpty());
  EXPECT_THAT(CodesWhere({"Show Display Name = no"}), ElementsAre("0105"));
  EXPECT_THAT(CodesWhere({"CF Time Delay = 7"}), ElementsAre("0105"));
  EXPECT_THAT(CodesWhere({"Directory Status = no"}), IsEmpty());
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

TEST_F(Reports, ARangeOfNumbersIsSaidNotToNarrowTheCodes) {
  const Outcome outcome = Codes({"--where", "Directory Code between 102 AND 103"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("say 'Directory Code >= 102' and 'Directory Code <= 103'"));
  EXPECT_THAT(outcome.out, HasSubstr("6 rows"));
}

TEST_F(Reports, CodesTakeFiveConditions) {
  std::vector<std::string> words;
  for (int number = 1; number <= 5; ++number) {
    words.insert(words.end(), {"--where", "Directory Code <> " + std::to_string(100 + number)});
  }
  EXPECT_THAT(Codes(words).out, HasSubstr("1 row\n"));
  words.insert(words.end(), {"--where", "Directory Code <> 106"});
  const Outcome outcome = Codes(words);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("at most 5 conditions, not 6"));
}

TEST_F(Reports, AWrongConditionIsAnsweredWithWhatThereIs) {
  const Outcome field = Codes({"--where", "Tenant = Abel"});
  EXPECT_EQ(field.status, 2);
  EXPECT_THAT(field.err, HasSubstr("CF Time Delay, Show Display Name, Show Directory Code"));
  const Outcome operation = Codes({"--where", "Directory End Date like 2026"});
  EXPECT_EQ(operation.status, 2);
  EXPECT_THAT(operation.err, HasSubstr("between, not between"));
  const Outcome type = Credentials({"--where", "Credential Type = paper"});
  EXPECT_EQ(type.status, 2);
  EXPECT_THAT(type.err, HasSubstr("Standard 26 Bit card (card26), Transmitter (transmitter)"));
  const Outcome year = Codes({"--where", "Directory End Date = 1500-01-01"});
  EXPECT_EQ(year.status, 2);
  EXPECT_THAT(year.err, HasSubstr("outside the years"));
  const Outcome control = Codes({"--where", "Display Name = a\nb"});
  EXPECT_EQ(control.status, 2);
  EXPECT_THAT(control.err, HasSubstr("cannot be typed into a box"));
  for (const Outcome& outcome : {field, operation, type, year, control}) {
    EXPECT_EQ(outcome.out, "");
  }
}

TEST_F(Reports, AValueThatBreaksTheStatementFailsWithAHint) {
  for (const char* where :
       {"Display Name contains O'Brien", "Display Name = '; DELETE FROM Tenants"}) {
    const Outcome outcome = Codes({"--where", where});
    EXPECT_EQ(outcome.status, 3) << where;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("line 1, column"), HasSubstr("write a quote in one "
                                                                          "twice")));
  }
  const Outcome number = Credentials({"--where", "Card Number = 1; DROP TABLE Tenants"});
  EXPECT_EQ(number.status, 3);
  EXPECT_EQ(number.out, "");
  EXPECT_THAT(number.err, HasSubstr("only one statement is allowed"));
  const Outcome names = Credentials({"--where", "Tenant Name =", "--where", "Tenant Name = Abel"});
  EXPECT_EQ(names.status, 3);
  EXPECT_THAT(names.err, HasSubstr("ask for a name and for none in two reports"));
}

TEST_F(Reports, AQuoteWrittenTwiceIsFound) {
  Change("UPDATE DIRECTORYCODE SET DISPLAYNAME='O''Brien' WHERE UNITKEY=2 AND DIRECTORYCODE=102");
  EXPECT_THAT(CodesWhere({"Display Name contains O''B"}), ElementsAre("0102"));
}

TEST_F(Reports, AColumnThatTheStoreHidesIsInCsvAlone) {
  Change("UPDATE TenantSelectionFields SET Display=0, DisplaySeq=18 WHERE RID=52");
  const Outcome table = Codes({});
  EXPECT_THAT(Lines(table.out)[1], StartsWith("Directory Code  Phone No. Extension  Phone"));
  EXPECT_THAT(Lines(Codes({"--format", "csv"}).out)[1],
              AllOf(StartsWith("0101,,2,Apartment 101,Active,"), HasSubstr(",True,True,555-0100")));
}

TEST_F(Reports, AStoreWithoutFieldsShowsTheFixedColumns) {
  Change("DELETE FROM TenantSelectionFields WHERE RID > 0");
  const nlohmann::json rows = Rows({"--unit", "2", "report", "dircodes"});
  ASSERT_EQ(rows.size(), 6U);
  EXPECT_EQ(rows[2].size(), 17U);
  EXPECT_EQ(rows[2]["Directory Code"], "0103");
  EXPECT_EQ(rows[2]["CF Schedule"], "Early Shift");
  EXPECT_EQ(rows[2]["Show Directory Code"], "True");
}

TEST_F(Reports, TheSchedulesOfEveryUnitAreNamedEvenWithoutRows) {
  Change("DELETE FROM Schedules WHERE UnitKey=2 AND ScheduleID < 2");
  Change("UPDATE DIRECTORYCODE SET DNDSCHEDULEID=0, CFSCHEDULEID=1 WHERE UNITKEY=2");
  const nlohmann::json rows = Rows({"--unit", "2", "report", "dircodes"});
  EXPECT_EQ(rows[0]["DND Schedule"], "No Access");
  EXPECT_EQ(rows[0]["CF Schedule"], "Full Access");
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
            "Corvin 30 Bit card         1001              7                                        "
            "   Hollis Elena G   489\n"
            "Corvin 30 Bit card         1002              7                                        "
            "   O'Brien Paula H  490\n"
            "2 rows\n");
  const Outcome csv = Credentials({"--where", "Card Number = 1001", "--format", "csv"});
  EXPECT_EQ(csv.out,
            "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button "
            "Number,Assigned To,RID,Tenant RID\r\n"
            "Corvin 30 Bit card,1001,7,,,,Hollis Elena G,489,61\r\n");
}

TEST_F(Reports, AReportWithoutConditionsHasEveryCredential) {
  // A credential that a resident holds comes twice: under the name and as unassigned.
  const nlohmann::json rows = Rows({"--unit", "2", "report", "credentials"});
  EXPECT_EQ(static_cast<int>(rows.size()),
            Count("CredentialBank WHERE UnitKey=2") +
                Count("Tenants WHERE UnitKey=2 AND Resident<>0 AND CREDENTIALID1 IS NOT NULL"));
  const nlohmann::json unassigned =
      Rows({"--unit", "2", "report", "credentials", "--where", "Tenant Name equal"});
  ASSERT_FALSE(unassigned.empty());
  for (const nlohmann::json& row : unassigned) {
    EXPECT_EQ(row["Assigned To"], "Unassigned");
    EXPECT_EQ(row["Tenant RID"], -1);
  }
}

TEST_F(Reports, ConditionsNarrowTheCredentials) {
  EXPECT_THAT(NumbersWhere({"Tenant Name equal Hollis Elena G", "Credential Type = card30"}),
              ElementsAre(1001));
  EXPECT_THAT(NumbersWhere({"Card Number >= 1002", "Card Number <= 1004", "Card Number <> 1003",
                            "Facility Code = 7", "Facility Code > 6", "Facility Code < 8"}),
              ElementsAre(1002, 1004));
  for (const char* type : {"Transmitter", "transmitter"}) {
    const nlohmann::json rows = Rows({"--unit", "2", "report", "credentials", "--where",
                                      std::string("Credential Type = ") + type});
    EXPECT_EQ(static_cast<int>(rows.size()),
              Count("CredentialBank WHERE UnitKey=2 AND CredentialType=2"));
  }
  EXPECT_EQ(NumbersWhere({"Credential Type = Corvin 30-Bit Card"}),
            NumbersWhere({"Credential Type = corvin 30 bit card"}));
  EXPECT_THAT(NumbersWhere({"Credential Type = card35"}), IsEmpty());
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
  const int before = Count("CredentialBank");
  const Outcome outcome = Credentials({"--delete", first + "," + second + ",2147483647"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Deleted 2 of 3 credentials.\n");
  EXPECT_EQ(Count("CredentialBank"), before - 2);
  EXPECT_EQ(Count("CredentialBank WHERE RID IN (" + first + "," + second + ")"), 0);
}

TEST_F(Reports, DeletesNothingWhenATenantHoldsOne) {
  const int before = Count("CredentialBank");
  const Outcome outcome = Credentials({"--delete", FreeRid(0) + ",489"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err,
            "Pello RT [information]: Credentials which are assigned to tenants cannot be deleted. "
            "Please deselect those credentials.\n");
  EXPECT_EQ(Count("CredentialBank"), before);
}

TEST_F(Reports, SaysWhenNothingWasDeleted) {
  const Outcome outcome = Credentials({"--delete", "2147483647", "--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "Pello RT [information]: Credentials(s) are not deleted successfully.\n");
}

TEST_F(Reports, DeletionTakesRidsWithCommasAlone) {
  const int before = Count("CredentialBank");
  for (const char* rids : {"", ",", "1,", ",1", "1,,2", "1 OR 1=1", "1;2", "-1", "1.5", "0x1",
                           "1, 2", "2147483648", "select", "1)--"}) {
    const Outcome outcome = Credentials({std::string("--delete=") + rids});
    EXPECT_EQ(outcome.status, 2) << rids;
    EXPECT_EQ(outcome.out, "") << rids;
  }
  EXPECT_EQ(Credentials({"--delete", "1", "--where", "Card Number = 5"}).status, 2);
  EXPECT_EQ(Credentials({"--delete", "1", "--format", "csv"}).status, 2);
  EXPECT_EQ(Codes({"--delete", "1"}).status, 2);
  EXPECT_EQ(Count("CredentialBank"), before);
}

TEST_F(Reports, JsonCountsWhatWasDeleted) {
  EXPECT_EQ(Credentials({"--delete", FreeRid(0), "--json"}).out, "{\"deleted\":1}\n");
}

TEST_F(Reports, TraceShowsTheCallsAndLeavesTheRowsAlone) {
  const Outcome plain = Codes({"--where", "Directory Code = 103"});
  const Outcome traced = Codes({"--where", "Directory Code = 103", "--trace"});
  EXPECT_EQ(traced.out, plain.out);
  EXPECT_THAT(traced.err, AllOf(HasSubstr("cboField(0).ListIndex -> 0\n"),
                                HasSubstr("cboFilter(4).ListIndex -> -1\n"),
                                HasSubstr("objGrid.Columns(0).Caption -> \"Directory Code\"\n"),
                                HasSubstr("objGrid.ReBind\nobjGrid.Refresh\n")));
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
    store.Run("DELETE FROM TenantSelectionFields; PRAGMA user_version=1");
  }
  EXPECT_THAT(Codes({}).out, HasSubstr("6 rows"));
  EXPECT_EQ(Count("TenantSelectionFields"), 17);
}

TEST_F(Reports, AUnitWithoutANameIsHeadedByItsKey) {
  Change("UPDATE Units SET UnitName='' WHERE UnitKey=2");
  EXPECT_THAT(Codes({}).out, StartsWith("Unit 2\n"));
}

}  // namespace
}  // namespace qorhost::test

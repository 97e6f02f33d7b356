// How the engine runs the statements that the controllers write: by index, without sorting.
#include <gmock/gmock.h>

#include <string>

#include "host/store/sqlite/printer.h"
#include "tests/host/store/sqlite/sqlite_fixture.h"

namespace qorhost::test {

using namespace sqlite;

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct Row {
  const char* name;
  const char* sql;
  const char* plan;  // part of the plan
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.sql;
}

class PlanTest : public SqliteFixture, public testing::WithParamInterface<Row> {
 protected:
  [[nodiscard]] std::string PlanOf(std::string_view sql) {
    dialect::Translator translator(&Print);
    const dialect::Translation translation = translator.Translate(sql, "2026-01-31 14:05:09");
    Statement explain(Raw(), "EXPLAIN QUERY PLAN " + translation.shape->sql);
    std::string plan;
    while (explain.Step()) {
      plan.append(explain.Text(3)).append("; ");
    }
    return plan;
  }
};

TEST_P(PlanTest, UsesItsIndex) {
  EXPECT_THAT(PlanOf(GetParam().sql),
              AllOf(HasSubstr(GetParam().plan), Not(HasSubstr("SCAN")), Not(HasSubstr("TEMP"))));
}

INSTANTIATE_TEST_SUITE_P(
    Statements, PlanTest,
    testing::Values(
        Row{"CredentialList",
            "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,"
            "ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=1 ORDER BY "
            "CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber",
            "CredentialBank_List (UnitKey=?)"},
        Row{"OneCredential",
            "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,"
            "ButtonNumber,LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=1 AND "
            "RID=17 ORDER BY CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber",
            "INTEGER PRIMARY KEY"},
        Row{"DuplicateCard",
            "Select UnitKey,PINNo from CredentialBank where UnitKey = 1 and CredentialType = 0 and "
            "PINNo = 12 and FacilityCode = 3",
            "CredentialBank_List (UnitKey=? AND CredentialType=? AND PINNo=? AND FacilityCode=?)"},
        Row{"CardRange",
            "Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = 1 and CredentialType = "
            "0 and PINNo >=1  and PINNo <=9 and FacilityCode = 3 Order by "
            "CredentialType,PINNo,FacilityCode",
            "CredentialBank_List (UnitKey=? AND CredentialType=? AND PINNo>? AND PINNo<?)"},
        Row{"HolderOfACredential",
            "SELECT TENANTID FROM TENANTS WHERE UNITKEY=1 AND (CREDENTIALID1=7 OR CREDENTIALID2=7)",
            "Tenants_Credential2 (UnitKey=? AND CREDENTIALID2=?)"},
        Row{"ReleaseOfTheFirstSlot",
            "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = 7  AND UNITKEY = 1",
            "Tenants_Credential1 (UnitKey=? AND CREDENTIALID1=?)"},
        Row{"AssignmentToATenant",
            "UPDATE TENANTS SET CREDENTIALID1 = 7 WHERE TENANTID = 3 AND UNITKEY = 1 AND "
            "(CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))",
            "Tenants_TenantID (TenantID=?)"},
        Row{"TenantList",
            "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=1 AND "
            "Resident=0 ORDER BY LastName,FirstName,MiddleInitial ",
            "Tenants_Name (UnitKey=? AND Resident=?)"},
        Row{"StepOfACode", "SELECT RID FROM ProgramSteps WHERE UnitKey=1 AND Code='101'",
            "ProgramSteps_Code (UnitKey=? AND Code=?)"},
        Row{"ScheduleList",
            "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and  "
            "modified <> 3 and UnitKey = 1  Order by ScheduleName ",
            "Schedules_Name (UnitKey=?)"},
        Row{"Doors", "Select UNITKEY, DOORNAME from DOORS where UNITKEY = 1 order by DOORID",
            "DOORS_Unit (UNITKEY=?)"},
        Row{"GroupZero", "Select RID from TenantGroup where UnitKey = 1 AND IsGroupZero=True",
            "TenantGroup_Unit (UnitKey=?)"},
        Row{"DirectoryCodeUse",
            "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE=101 AND UNITKEY=1",
            "DirectoryCode_Code (UNITKEY=? AND DIRECTORYCODE=?)"},
        Row{"DirectoryCodeHolder",
            "SELECT DIRECTORYCODE FROM TENANTS WHERE DIRECTORYCODE=5 AND "
            "UNITKEY=1",
            "Tenants_DirectoryCode (UnitKey=? AND DIRECTORYCODE=?)"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(PlanTest, CredentialsHaveOneIndexOnly) {
  EXPECT_EQ(Number("SELECT count(*) FROM pragma_index_list('CredentialBank')"), 1);
}

}  // namespace
}  // namespace qorhost::test

// The statements by which a merge with a unit writes directory codes, as the manager gets them.
#include <gtest/gtest.h>

#include "frame/convert.h"
#include "tests/host/components/component_fixture.h"

namespace qorhost::test {
namespace {

using qorcred::Missing;
using qorcred::Null;
using qorcred::Value;

class MergeStatementsTest : public ComponentFixture {
 protected:
  // An insert with these literals for the start date and the display name.
  std::int32_t InsertCode(const std::string& startDate, const std::string& displayName) {
    return Insert(
        "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
        "DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,"
        "CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,"
        "MODIFIED,SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values(1,_ROWID_,999999999999999,'5550101',"
        "Null,30,Null,False,7,True,Null,Null,2,'_LMDATE_',True," +
        startDate + ",Null," + displayName + ",999999999999999,0,True,False)");
  }
  // An update whose assignments end with `last`, directly in front of WHERE.
  std::int32_t UpdateCode(std::int32_t rid, const std::string& last) {
    const std::string sql =
        "UPDATE DIRECTORYCODE SET DIRECTORYCODE=102,PHONENUMBER=Null,EXTENSION='9',TIMEDELAY=5,"
        "DNDSCHEDULEID=Null,ISDNDCHECKED=False,CFSCHEDULEID=7,ISCFCHECKED=True,CFPHONENUMBER=Null,"
        "CFEXTENSION=Null,CFTIMEDELAY=40,LASTMODIFIEDDATE='_LMDATE_',ACTIVE=False,STARTDATE=Null,"
        "ENDDATE='12/31/2030 23:59',DISPLAYNAME=Null,MODIFIED=0,OLDDIRECTORYCODE=102," +
        last + " WHERE UNITKEY=1 AND RID=" + std::to_string(rid);
    const Value rows =
        manager().ExecuteUpdate(Connection(), sql, "DIRECTORYCODE", error_, Missing{}, rid);
    EXPECT_EQ(error_.text, "");
    return qorcred::AnsweredNumber(rows);
  }
  Value Cell(const std::string& column) {
    return Scalar("SELECT " + column + " FROM DIRECTORYCODE");
  }
};

TEST_F(MergeStatementsTest, AnInsertReadsBackAsItWasWritten) {
  EXPECT_EQ(InsertCode("'03/15/2024 09:30'", "'Adler, K.'"), 1);
  EXPECT_EQ(qorcred::NumberText(qorcred::NumericValue(Cell("DIRECTORYCODE"))), "999999999999999");
  EXPECT_EQ(Cell("STARTDATE"), Value(qorcred::FromCivil({2024, 3, 15, 9, 30, 0})));
  EXPECT_EQ(Cell("ENDDATE"), Value(Null{}));
  EXPECT_EQ(Cell("LASTMODIFIEDDATE"), Value(now_));
  EXPECT_EQ(Cell("DNDSCHEDULEID"), Value(Null{}));
  EXPECT_EQ(Cell("CFSCHEDULEID"), Value(7));
  EXPECT_EQ(Cell("ISCFCHECKED"), Value(true));
  EXPECT_EQ(Cell("SHOWDIRECTORYCODE"), Value(false));
  EXPECT_EQ(Cell("DISPLAYNAME"), Value("Adler, K."));
}

TEST_F(MergeStatementsTest, ADateWithATrailingBlankIsMidnight) {
  InsertCode("'03/15/2024 '", "Null");
  EXPECT_EQ(Cell("STARTDATE"), Value(qorcred::FromCivil({2024, 3, 15, 0, 0, 0})));
  EXPECT_EQ(Text("SELECT STARTDATE FROM DirectoryCode"), "2024-03-15 00:00:00");
}

TEST_F(MergeStatementsTest, TextsSurviveWhateverTheyLookLike) {
  for (const char* text :
       {"_ROWID_", "x _LMDATE_", "a -- b", "/* a */", "#03/15/2024#", "%_*?", "?1 :a @b $c",
        "[RID]", "\"quoted\"", "line\r\nbreak", ";DELETE FROM TENANTS", "-1", ",,", " , Null, ",
        "True", "1E5", "03/15/2024", "\\", "\xF0\x9F\x98\x80"}) {
    Run("DELETE FROM DirectoryCode");
    InsertCode("Null", "'" + std::string(text) + "'");
    EXPECT_EQ(Cell("DISPLAYNAME"), Value(text));
  }
}

TEST_F(MergeStatementsTest, AnUpdateChangesTheRowWithAndWithoutTheDisplayPart) {
  const std::int32_t rid = InsertCode("'03/15/2024 09:30'", "'Adler, K.'");
  // Without the display part a comma is left in front of WHERE.
  EXPECT_EQ(UpdateCode(rid, ""), 1);
  EXPECT_EQ(Cell("DIRECTORYCODE"), Value(102.0));
  EXPECT_EQ(Cell("STARTDATE"), Value(Null{}));
  EXPECT_EQ(Cell("ENDDATE"), Value(qorcred::FromCivil({2030, 12, 31, 23, 59, 0})));
  EXPECT_EQ(Cell("SHOWDISPLAYNAME"), Value(true));
  EXPECT_EQ(UpdateCode(rid, "SHOWDISPLAYNAME=False,SHOWDIRECTORYCODE=True"), 1);
  EXPECT_EQ(Cell("SHOWDISPLAYNAME"), Value(false));
  EXPECT_EQ(UpdateCode(rid + 1, ""), 0);
}

TEST_F(MergeStatementsTest, ADeletionReleasesTenantsAndLeavesTheTimeInTheirState) {
  InsertCode("Null", "Null");
  Run("INSERT INTO Tenants (UNITKEY, DIRECTORYCODE) VALUES (1, 1), (1, 2)");
  EXPECT_EQ(manager().ExecuteQueryDelete(
                Connection(),
                "DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey=1 AND "
                "RID=1",
                error_),
            1);
  EXPECT_EQ(error_.text, "");
  EXPECT_EQ(qorcred::AnsweredNumber(manager().ExecuteUpdate(
                Connection(),
                "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE UNITKEY=1 AND "
                "DIRECTORYCODE=1",
                "DIRECTORYCODE", error_)),
            1);
  EXPECT_EQ(error_.text, "");
  EXPECT_EQ(Text("SELECT group_concat(ifnull(DIRECTORYCODE, '-') || ' ' || MODIFIED) FROM Tenants"),
            "- 2026-01-31 14:05:09,2 0");
}

}  // namespace
}  // namespace qorhost::test

// The names of tables and columns in the exact spelling of the statements.
#include "frame/schema.h"

#include <gtest/gtest.h>

#include <string_view>

#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

struct NameRow {
  const char* name;
  std::string_view constant;
};

TEST(SchemaTest, TablesAreSpelledAsInStatements) {
  constexpr NameRow kRows[] = {
      {"ACCESSCODEBULK", table::ACCESSCODEBULK},
      {"DOORS", table::DOORS},
      {"SCHEDULES", table::SCHEDULES},
      {"UNITSETTINGS", table::UNITSETTINGS},
      {"TENANTS", table::TENANTS},
      {"DIRECTORYCODE", table::DIRECTORYCODE},
      {"TENANTACCESS", table::TENANTACCESS},
      {"CREDENTIALBANK", table::CREDENTIALBANK},
  };
  ForEachRow(kRows, [](const NameRow& row) { EXPECT_EQ(row.constant, row.name); });
}

TEST(SchemaTest, ColumnsAreSpelledAsInStatements) {
  constexpr NameRow kRows[] = {
      {"DOORNAME", column::DOORNAME},
      {"UNITKEY", column::UNITKEY},
      {"IGNOREFACILITYCODE", column::IGNOREFACILITYCODE},
      {"CARDDEFAULTFACILITYCODE", column::CARDDEFAULTFACILITYCODE},
      {"RFDEFAULTFACILITYCODE", column::RFDEFAULTFACILITYCODE},
      {"CARDTYPE", column::CARDTYPE},
      {"RFTYPE", column::RFTYPE},
      {"MAXDIGITSDIRECTORYCODE", column::MAXDIGITSDIRECTORYCODE},
      {"RECORDDEACTIVATION", column::RECORDDEACTIVATION},
      {"DEACTIVATIONDATE", column::DEACTIVATIONDATE},
      {"DEACTIVATIONDAYS", column::DEACTIVATIONDAYS},
      {"DOORID", column::DOORID},
      {"SCHEDULEID", column::SCHEDULEID},
      {"SCHEDULENAME", column::SCHEDULENAME},
      {"TENANTID", column::TENANTID},
      {"LASTNAME", column::LASTNAME},
      {"FIRSTNAME", column::FIRSTNAME},
      {"MIDDLEINITIAL", column::MIDDLEINITIAL},
      {"NAMEATUNIT", column::NAMEATUNIT},
      {"GROUPID", column::GROUPID},
      {"ADDRESS", column::ADDRESS},
      {"SUITENO", column::SUITENO},
      {"PHONENO", column::PHONENO},
      {"EXTN", column::EXTN},
      {"TIMEDELAY", column::TIMEDELAY},
      {"ACTIVETENANT", column::ACTIVETENANT},
      {"ACTIVESTARTTIME", column::ACTIVESTARTTIME},
      {"ACTIVEENDTIME", column::ACTIVEENDTIME},
      {"SCHEDULE", column::SCHEDULE},
      {"ENTRYCODE", column::ENTRYCODE},
      {"CREDENTIALID1", column::CREDENTIALID1},
      {"CREDENTIALID2", column::CREDENTIALID2},
      {"USERDEFINED1", column::USERDEFINED1},
      {"USERDEFINED2", column::USERDEFINED2},
      {"USERDEFINED3", column::USERDEFINED3},
      {"USERDEFINED4", column::USERDEFINED4},
      {"DOORSCHEDULE1", column::DOORSCHEDULE1},
      {"DOORSCHEDULE2", column::DOORSCHEDULE2},
      {"DOORSCHEDULE3", column::DOORSCHEDULE3},
      {"DOORSCHEDULE4", column::DOORSCHEDULE4},
      {"PICTUREPATH", column::PICTUREPATH},
      {"RID", column::RID},
      {"LASTMODIFIEDDATE", column::LASTMODIFIEDDATE},
      {"MODIFIED", column::MODIFIED},
      {"LINKCODE", column::LINKCODE},
      {"TAGTYPE", column::TAGTYPE},
      {"IDCODE", column::IDCODE},
      {"SEQUENCECODE", column::SEQUENCECODE},
      {"FACILITYCODE", column::FACILITYCODE},
      {"PINNO", column::PINNO},
      {"BUTTONNO", column::BUTTONNO},
      {"OLDDIRECTORYCODE", column::OLDDIRECTORYCODE},
      {"PHONENUMBER", column::PHONENUMBER},
      {"EXTENSION", column::EXTENSION},
      {"DNDSCHEDULEID", column::DNDSCHEDULEID},
      {"ISDNDCHECKED", column::ISDNDCHECKED},
      {"CFSCHEDULEID", column::CFSCHEDULEID},
      {"ISCFCHECKED", column::ISCFCHECKED},
      {"CFPHONENUMBER", column::CFPHONENUMBER},
      {"CFEXTENSION", column::CFEXTENSION},
      {"CFTIMEDELAY", column::CFTIMEDELAY},
      {"ACTIVE", column::ACTIVE},
      {"STARTDATE", column::STARTDATE},
      {"ENDDATE", column::ENDDATE},
      {"DISPLAYNAME", column::DISPLAYNAME},
      {"SHOWDISPLAYNAME", column::SHOWDISPLAYNAME},
      {"SHOWDIRECTORYCODE", column::SHOWDIRECTORYCODE},
  };
  ForEachRow(kRows, [](const NameRow& row) { EXPECT_EQ(row.constant, row.name); });
}

TEST(SchemaTest, TheCredentialInsertHasASpellingOfItsOwn) {
  constexpr NameRow kRows[] = {
      {"UnitKey", column::UnitKey},
      {"CredentialType", column::CredentialType},
      {"PINNo", column::PINNo},
      {"FacilityCode", column::FacilityCode},
      {"IDCode", column::IDCode},
      {"SequenceNumber", column::SequenceNumber},
      {"ButtonNumber", column::ButtonNumber},
  };
  ForEachRow(kRows, [](const NameRow& row) { EXPECT_EQ(row.constant, row.name); });
}

TEST(SchemaTest, TheUnitModelIsAlsoTheTitleOfMessages) {
  EXPECT_EQ(kMessageTitle, "Pello RT");
  EXPECT_EQ(kUnitModel, "Pello RT");
  EXPECT_EQ(kUnitModelJoined, "PelloRT");
}

}  // namespace
}  // namespace qorcred

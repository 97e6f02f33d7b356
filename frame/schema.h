// Names of the data store's tables and columns as statements spell them, and the unit model's name.
#pragma once

#include <string_view>

namespace qorcred {

/// Title of every message box; also the unit model's name.
inline constexpr std::string_view kMessageTitle = "Pello RT";
inline constexpr std::string_view kUnitModel = "Pello RT";
inline constexpr std::string_view kUnitModelJoined = "PelloRT";

/// The text that stands for the time of the change in every statement, and as a literal of one.
inline constexpr std::string_view kLastModifiedText = "_LMDATE_";
inline constexpr std::string_view kLastModifiedLiteral = "'_LMDATE_'";

namespace table {
inline constexpr std::string_view ACCESSCODEBULK = "ACCESSCODEBULK";
inline constexpr std::string_view DOORS = "DOORS";
inline constexpr std::string_view SCHEDULES = "SCHEDULES";
inline constexpr std::string_view UNITSETTINGS = "UNITSETTINGS";
inline constexpr std::string_view TENANTS = "TENANTS";
inline constexpr std::string_view DIRECTORYCODE = "DIRECTORYCODE";
inline constexpr std::string_view TENANTACCESS = "TENANTACCESS";
inline constexpr std::string_view CREDENTIALBANK = "CREDENTIALBANK";
}  // namespace table

namespace column {
inline constexpr std::string_view DOORNAME = "DOORNAME";
inline constexpr std::string_view UNITKEY = "UNITKEY";
inline constexpr std::string_view IGNOREFACILITYCODE = "IGNOREFACILITYCODE";
inline constexpr std::string_view CARDDEFAULTFACILITYCODE = "CARDDEFAULTFACILITYCODE";
inline constexpr std::string_view RFDEFAULTFACILITYCODE = "RFDEFAULTFACILITYCODE";
inline constexpr std::string_view CARDTYPE = "CARDTYPE";
inline constexpr std::string_view RFTYPE = "RFTYPE";
inline constexpr std::string_view MAXDIGITSDIRECTORYCODE = "MAXDIGITSDIRECTORYCODE";
inline constexpr std::string_view RECORDDEACTIVATION = "RECORDDEACTIVATION";
inline constexpr std::string_view DEACTIVATIONDATE = "DEACTIVATIONDATE";
inline constexpr std::string_view DEACTIVATIONDAYS = "DEACTIVATIONDAYS";
inline constexpr std::string_view DOORID = "DOORID";
inline constexpr std::string_view SCHEDULEID = "SCHEDULEID";
inline constexpr std::string_view SCHEDULENAME = "SCHEDULENAME";
inline constexpr std::string_view TENANTID = "TENANTID";
inline constexpr std::string_view LASTNAME = "LASTNAME";
inline constexpr std::string_view FIRSTNAME = "FIRSTNAME";
inline constexpr std::string_view MIDDLEINITIAL = "MIDDLEINITIAL";
inline constexpr std::string_view NAMEATUNIT = "NAMEATUNIT";
inline constexpr std::string_view GROUPID = "GROUPID";
inline constexpr std::string_view ADDRESS = "ADDRESS";
inline constexpr std::string_view SUITENO = "SUITENO";
inline constexpr std::string_view PHONENO = "PHONENO";
inline constexpr std::string_view EXTN = "EXTN";
inline constexpr std::string_view TIMEDELAY = "TIMEDELAY";
inline constexpr std::string_view ACTIVETENANT = "ACTIVETENANT";
inline constexpr std::string_view ACTIVESTARTTIME = "ACTIVESTARTTIME";
inline constexpr std::string_view ACTIVEENDTIME = "ACTIVEENDTIME";
inline constexpr std::string_view SCHEDULE = "SCHEDULE";
inline constexpr std::string_view ENTRYCODE = "ENTRYCODE";
inline constexpr std::string_view CREDENTIALID1 = "CREDENTIALID1";
inline constexpr std::string_view CREDENTIALID2 = "CREDENTIALID2";
inline constexpr std::string_view USERDEFINED1 = "USERDEFINED1";
inline constexpr std::string_view USERDEFINED2 = "USERDEFINED2";
inline constexpr std::string_view USERDEFINED3 = "USERDEFINED3";
inline constexpr std::string_view USERDEFINED4 = "USERDEFINED4";
inline constexpr std::string_view DOORSCHEDULE1 = "DOORSCHEDULE1";
inline constexpr std::string_view DOORSCHEDULE2 = "DOORSCHEDULE2";
inline constexpr std::string_view DOORSCHEDULE3 = "DOORSCHEDULE3";
inline constexpr std::string_view DOORSCHEDULE4 = "DOORSCHEDULE4";
inline constexpr std::string_view PICTUREPATH = "PICTUREPATH";
inline constexpr std::string_view RID = "RID";
inline constexpr std::string_view LASTMODIFIEDDATE = "LASTMODIFIEDDATE";
inline constexpr std::string_view MODIFIED = "MODIFIED";
inline constexpr std::string_view LINKCODE = "LINKCODE";
inline constexpr std::string_view TAGTYPE = "TAGTYPE";
inline constexpr std::string_view IDCODE = "IDCODE";
inline constexpr std::string_view SEQUENCECODE = "SEQUENCECODE";
inline constexpr std::string_view FACILITYCODE = "FACILITYCODE";
inline constexpr std::string_view PINNO = "PINNO";
inline constexpr std::string_view BUTTONNO = "BUTTONNO";
inline constexpr std::string_view OLDDIRECTORYCODE = "OLDDIRECTORYCODE";
inline constexpr std::string_view PHONENUMBER = "PHONENUMBER";
inline constexpr std::string_view EXTENSION = "EXTENSION";
inline constexpr std::string_view DNDSCHEDULEID = "DNDSCHEDULEID";
inline constexpr std::string_view ISDNDCHECKED = "ISDNDCHECKED";
inline constexpr std::string_view CFSCHEDULEID = "CFSCHEDULEID";
inline constexpr std::string_view ISCFCHECKED = "ISCFCHECKED";
inline constexpr std::string_view CFPHONENUMBER = "CFPHONENUMBER";
inline constexpr std::string_view CFEXTENSION = "CFEXTENSION";
inline constexpr std::string_view CFTIMEDELAY = "CFTIMEDELAY";
inline constexpr std::string_view ACTIVE = "ACTIVE";
inline constexpr std::string_view STARTDATE = "STARTDATE";
inline constexpr std::string_view ENDDATE = "ENDDATE";
inline constexpr std::string_view DISPLAYNAME = "DISPLAYNAME";
inline constexpr std::string_view SHOWDISPLAYNAME = "SHOWDISPLAYNAME";
inline constexpr std::string_view SHOWDIRECTORYCODE = "SHOWDIRECTORYCODE";

// The spelling of the credential insert.
inline constexpr std::string_view UnitKey = "UnitKey";
inline constexpr std::string_view CredentialType = "CredentialType";
inline constexpr std::string_view PINNo = "PINNo";
inline constexpr std::string_view FacilityCode = "FacilityCode";
inline constexpr std::string_view IDCode = "IDCode";
inline constexpr std::string_view SequenceNumber = "SequenceNumber";
inline constexpr std::string_view ButtonNumber = "ButtonNumber";
}  // namespace column

}  // namespace qorcred

#include "contract/statements.h"

namespace qorcred::contract {

namespace {

// What several operations run.
constexpr std::string_view kSchedules =
    "Select ScheduleID, ScheduleName from Schedules Where ScheduleID not in (0,1) and  modified <> "
    "3 "
    "and UnitKey = {unit}  Order by ScheduleName ";
constexpr std::string_view kCapacity =
    "SELECT TOTAL FROM UNITTYPES T, UNITSETTINGS S WHERE S.UnitKey = {unit} AND S.UNITTYPE = "
    "T.DESCRIPTION";
constexpr std::string_view kHolders =
    "SELECT TENANTID FROM TENANTS WHERE UNITKEY={unit} AND (CREDENTIALID1={rid} OR "
    "CREDENTIALID2={rid})";
constexpr std::string_view kHolder =
    "SELECT TenantID FROM Tenants WHERE UnitKey={unit} AND Resident=0  AND ((CredentialID1 = {rid} "
    ") "
    "OR ( CredentialID2 = {rid}))";
constexpr std::string_view kReleaseFirst =
    "UPDATE TENANTS SET CREDENTIALID1 = NULL  WHERE CREDENTIALID1 = {rid}  AND UNITKEY = {unit}";
constexpr std::string_view kReleaseSecond =
    "UPDATE TENANTS SET CREDENTIALID2 = NULL  WHERE CREDENTIALID2 = {rid}  AND UNITKEY = {unit}";
constexpr std::string_view kUniqueCode =
    "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE={code} AND UNITKEY={unit}";
constexpr std::string_view kUniqueCodeBeside =
    "SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE DIRECTORYCODE={code} AND UNITKEY={unit} AND RID "
    "<> "
    "{rid}";
constexpr std::string_view kHeldCode =
    "SELECT DIRECTORYCODE FROM TENANTS WHERE DIRECTORYCODE={rid} AND UNITKEY={unit}";
constexpr std::string_view kState = "SELECT MODIFIED FROM DIRECTORYCODE WHERE RID = {rid}";
constexpr std::string_view kHeldChosen =
    "Select TenantID from Tenants where UnitKey={unit} And (CredentialID1 IN ({rids}) OR "
    "CredentialID2 "
    "IN({rids}))";
constexpr std::string_view kDeleteChosen =
    "Delete From CredentialBank Where unitkey={unit} And RID in ({rids})";

// What one operation runs.
constexpr std::string_view kTenantsByName =
    "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey={unit} AND "
    "Resident=0 ORDER BY LastName,FirstName,MiddleInitial ";
constexpr std::string_view kCredentialSettings =
    "SELECT IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, DEACTIVATIONDAYS FROM "
    "UnitSettings WHERE UnitKey={unit}";
constexpr std::string_view kDoors =
    "Select UNITKEY, DOORNAME from DOORS where UNITKEY = {unit} order by DOORID";
constexpr std::string_view kCredentials =
    "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,"
    "LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey={unit} ORDER BY "
    "CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber";
constexpr std::string_view kCredential =
    "SELECT UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,"
    "LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey={unit} AND RID={rid} ORDER BY "
    "CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber";
constexpr std::string_view kHolderOfCredential =
    "SELECT TENANTID,LASTNAME,FIRSTNAME,MIDDLEINITIAL FROM TENANTS WHERE UNITKEY={unit} AND "
    "(CREDENTIALID1={rid} OR CREDENTIALID2={rid})";
constexpr std::string_view kSameCard =
    "Select UnitKey,PINNo from CredentialBank where UnitKey = {unit} and CredentialType = "
    "{type} "
    "and PINNo = {number} and FacilityCode = {facility code}";
constexpr std::string_view kSameTransmitter =
    "Select UnitKey from CredentialBank where UnitKey = {unit} and CredentialType = 2 and "
    "val(PINNo) = {number} and val(FacilityCode) = {facility code} and val(IDCode) = {id code} "
    "and "
    "val(SequenceNumber) = {sequence} and val(ButtonNumber) = {button}";
constexpr std::string_view kCardsOfRange =
    "Select Top 1 UnitKey,PINNo from CredentialBank where UnitKey = {unit} and CredentialType "
    "= "
    "{type} and PINNo >={first}  and PINNo <={last} and FacilityCode = {facility code} Order "
    "by "
    "CredentialType,PINNo,FacilityCode";
constexpr std::string_view kTransmittersOfRange =
    "Select Top 1 UnitKey, PINNo from CredentialBank where UnitKey = {unit} and CredentialType "
    "= 2 "
    "and FacilityCode = {facility code} and IDCode = {id code} and SequenceNumber = {sequence} "
    "and "
    "ButtonNumber = {button} and PINNo >={first}  and PINNo <={last} Order by "
    "CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber";
constexpr std::string_view kGroupZero =
    "Select RID from TenantGroup where UnitKey = {unit} AND IsGroupZero=True";
constexpr std::string_view kInsertCredential =
    "INSERT INTO CREDENTIALBANK(UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,"
    "SequenceNumber,ButtonNumber,LASTMODIFIEDDATE)VALUES({unit},{row id text},{type},{number},"
    "{facility code},{id code},{sequence},{button},'_LMDATE_')";
constexpr std::string_view kInsertTenant =
    "INSERT INTO "
    "TENANTS(UNITKEY,LASTNAME,CREDENTIALID1,DOORSCHEDULE1,DOORSCHEDULE2,DOORSCHEDULE3,"
    "DOORSCHEDULE4,ACTIVESTARTTIME,ACTIVEENDTIME,RID,LASTMODIFIEDDATE,GROUPID,LINKCODE,"
    "ACTIVETENANT)VALUES({unit},'No Name{type and "
    "number}',{rid},{schedule},{schedule},{schedule},"
    "{schedule},{'start'},{'end'},{row id text},'_LMDATE_',{group},{link code},{active})";
constexpr std::string_view kInsertBackup =
    "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES ({unit} , {tenant})";
constexpr std::string_view kStoreDoor =
    "UPDATE CREDENTIALBANK SET DOORCODE = {door},LASTMODIFIEDDATE='_LMDATE_' WHERE "
    "UnitKey={unit} "
    "AND RID={rid}";
constexpr std::string_view kAssignFirst =
    "UPDATE TENANTS SET CREDENTIALID1 = {rid} WHERE TENANTID = {tenant} AND UNITKEY = {unit} "
    "AND "
    "(CREDENTIALID1 IS NULL OR (CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL ))";
constexpr std::string_view kAssignSecond =
    "UPDATE TENANTS SET CREDENTIALID2 = {rid} WHERE TENANTID = {tenant} AND UNITKEY = {unit} "
    "AND "
    "CREDENTIALID2 IS NULL AND CREDENTIALID1 IS NOT NULL  ";
constexpr std::string_view kSameCardBeside =
    "Select UnitKey,PINNo from CredentialBank where UnitKey = {unit} and CredentialType = "
    "{type} and "
    "PINNo = {number} and FacilityCode = {facility code} and RID <>{rid}";
constexpr std::string_view kSameTransmitterBeside =
    "Select UnitKey from CredentialBank where UnitKey = {unit} and CredentialType = 2 and "
    "val(PINNo) "
    "= {number} and val(FacilityCode) = {facility code} and val(IDCode) = {id code} and "
    "val(SequenceNumber) = {sequence} and val(ButtonNumber) = {button} and RID <>{rid}";
constexpr std::string_view kSameNumber =
    "Select PINNo from CredentialBank where UnitKey = {unit} and CredentialType = {type} and "
    "val(PINNo) = {number} and RID <>{rid}";
constexpr std::string_view kRenumberCredential =
    "UPDATE CREDENTIALBANK SET PINNo={number},LASTMODIFIEDDATE='_LMDATE_' WHERE UnitKey={unit} "
    "AND "
    "RID={rid}";
constexpr std::string_view kDirCodeSettings =
    "SELECT MAXDIGITSDIRECTORYCODE,IGNOREFACILITYCODE, RECORDDEACTIVATION, DEACTIVATIONDATE, "
    "DEACTIVATIONDAYS FROM UnitSettings WHERE UnitKey={unit}";
constexpr std::string_view kDirCodes =
    "SELECT "
    "UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,"
    "CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,"
    "STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE "
    "UNITKEY={unit} AND DIRECTORYCODE >=0  ORDER BY DIRECTORYCODE";
constexpr std::string_view kDirCode =
    "SELECT "
    "UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,"
    "CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,"
    "STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE "
    "UNITKEY={unit} AND DIRECTORYCODE >=0  AND RID={rid} ORDER BY DIRECTORYCODE";
constexpr std::string_view kCodeHoldersByName =
    "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey={unit} AND "
    "Resident=0 {holders} ORDER BY LastName,FirstName,MiddleInitial ";
constexpr std::string_view kCodeHoldersByDisplayName =
    "SELECT TenantID,NameAtUnit  FROM Tenants WHERE UnitKey={unit} AND Resident=0 {holders} "
    "ORDER BY "
    "NameAtUnit ";
constexpr std::string_view kInsertDirCode =
    "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
    "DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,"
    "LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED,"
    "SHOWDISPLAYNAME,SHOWDIRECTORYCODE)Values({unit},{row id "
    "text},{code},{'phone'},{'extension'},"
    "{delay},{DND schedule},{DND},{CF schedule},{CF},{'CF phone'},{'CF extension'},{CF delay},"
    "'_LMDATE_',{active},{'start'},{'end'},{'name'},{previous code},{state},{show name},{show "
    "code})";
constexpr std::string_view kUpdateDirCode =
    "UPDATE DIRECTORYCODE SET "
    "DIRECTORYCODE={code},PHONENUMBER={'phone'},EXTENSION={'extension'},"
    "TIMEDELAY={delay},DNDSCHEDULEID={DND schedule},ISDNDCHECKED={DND},CFSCHEDULEID={CF "
    "schedule},"
    "ISCFCHECKED={CF},CFPHONENUMBER={'CF phone'},CFEXTENSION={'CF extension'},CFTIMEDELAY={CF "
    "delay},LASTMODIFIEDDATE='_LMDATE_',ACTIVE={active},STARTDATE={'start'},ENDDATE={'end'},"
    "DISPLAYNAME={'name'},MODIFIED={state},SHOWDISPLAYNAME={show name},SHOWDIRECTORYCODE={show "
    "code} WHERE UNITKEY={unit} AND RID={rid}";
constexpr std::string_view kHoldsCode =
    "SELECT directorycode from directorycode where unitkey = {unit} AND DirectoryCode = "
    "{code}";
constexpr std::string_view kCodeOfRow = "SELECT DirectoryCode FROM DIRECTORYCODE WHERE RID = {rid}";
constexpr std::string_view kReleaseTenants =
    "UPDATE TENANTS SET DIRECTORYCODE=NULL,LASTMODIFIEDDATE='_LMDATE_' WHERE UNITKEY={unit} "
    "AND "
    "DIRECTORYCODE={rid}";
constexpr std::string_view kRenumberDirCode =
    "UPDATE DIRECTORYCODE SET DIRECTORYCODE={code},MODIFIED={state}  WHERE UNITKEY={unit} AND "
    "RID={rid}";
constexpr std::string_view kCodesForMerge =
    "SELECT UNITKEY,RID,DIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY={unit} AND "
    "DIRECTORYCODE >=0 "
    "ORDER BY DIRECTORYCODE";
constexpr std::string_view kPreviousCodes =
    "SELECT UNITKEY,RID,OLDDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY={unit} AND "
    "DIRECTORYCODE "
    ">=0 AND OLDDIRECTORYCODE<> NULL  ORDER BY OLDDIRECTORYCODE";
constexpr std::string_view kUpdateFromUnit =
    "UPDATE DIRECTORYCODE SET "
    "DIRECTORYCODE={code},PHONENUMBER={'phone'},EXTENSION={'extension'},"
    "TIMEDELAY={delay},DNDSCHEDULEID={DND schedule},ISDNDCHECKED={DND},CFSCHEDULEID={CF "
    "schedule},"
    "ISCFCHECKED={CF},CFPHONENUMBER={'CF phone'},CFEXTENSION={'CF extension'},CFTIMEDELAY={CF "
    "delay},LASTMODIFIEDDATE='_LMDATE_',ACTIVE={active},STARTDATE={'start'},ENDDATE={'end'},"
    "DISPLAYNAME={'name'},MODIFIED=0,OLDDIRECTORYCODE={code},{display options} WHERE "
    "UNITKEY={unit} "
    "AND RID={rid}";
constexpr std::string_view kInsertFromUnit =
    "Insert into DIRECTORYCODE(UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,"
    "DNDSCHEDULEID,ISDNDCHECKED,CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,"
    "LASTMODIFIEDDATE,ACTIVE,STARTDATE,ENDDATE,DISPLAYNAME,OLDDIRECTORYCODE,MODIFIED{display "
    "columns})Values({unit},{row id text},{code},{'phone'},{'extension'},{delay},{DND "
    "schedule},"
    "{DND},{CF schedule},{CF},{'CF phone'},{'CF extension'},{CF delay},'_LMDATE_',{active},"
    "{'start'},{'end'},{'name'},{code},0{display options})";
constexpr std::string_view kDeleteAllCodes =
    "DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey={unit}";
constexpr std::string_view kDeleteCode =
    "DELETE from DIRECTORYCODE WHERE DirectoryCode > -1 AND UnitKey={unit} AND RID={rid}";
constexpr std::string_view kReleaseAllAfterMerge =
    "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE UNITKEY={unit}";
constexpr std::string_view kReleaseAfterMerge =
    "UPDATE TENANTS SET DIRECTORYCODE=NULL,MODIFIED='_LMDATE_' WHERE UNITKEY={unit} AND "
    "DIRECTORYCODE={deleted rows}";
constexpr std::string_view kFieldChoices =
    "SELECT RID, FieldNameDisplay FROM TenantSelectionFields WHERE GridType = 0 AND FieldName "
    "LIKE "
    "'DirectoryCode._%' ORDER BY Display DESC, DisplaySeq ASC ";
constexpr std::string_view kUnitName = "SELECT UnitName FROM Units WHERE UnitKey = {unit}";
constexpr std::string_view kDirCodeLength =
    "SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey = {unit}";
constexpr std::string_view kEntryCodeLength =
    "SELECT MaxDigitsEntryCode FROM UnitSettings WHERE UnitKey = {unit}";
constexpr std::string_view kFieldNames =
    "SELECT FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' ORDER "
    "BY "
    "DisplaySeq";
constexpr std::string_view kFieldName =
    "SELECT FieldName FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' AND "
    "RID = "
    "{field}";
constexpr std::string_view kDirCodeReport =
    "SELECT {columns} FROM DirectoryCode WHERE DirectoryCode.UnitKey = {unit} AND "
    "DirectoryCode.DirectoryCode >= 0{conditions} Order By UCase(DirectoryCode.DisplayName)";
constexpr std::string_view kGridLayout =
    "SELECT FieldNameDisplay, DisplayWidth, FieldName FROM TenantSelectionFields WHERE "
    "FieldName "
    "LIKE 'DirectoryCode._%'  AND Display = 1 ORDER BY DisplaySeq";
constexpr std::string_view kSchedulesOfReport =
    "SELECT ScheduleID, ScheduleName FROM Schedules WHERE UnitKey = {unit} ORDER BY UnitKey, "
    "ScheduleID";
constexpr std::string_view kHeldCredentials =
    "SELECT  iif(CredentialType=0,'Corvin 30 Bit card',iif(CredentialType=1,'Standard 26 Bit "
    "card',iif(CredentialType=2,'Transmitter','Corporate 1000 35-Bit Card'))), "
    "PINNO,a.facilitycode,iif(a.CredentialType<>2,Null,a.IDCode),iif(a.CredentialType<>2,Null,"
    "a.sequencenumber),iif(a.CredentialType<>2,Null,a.buttonnumber),  b.LastName & ' '  &  "
    "b.FirstName & ' '  &   b.MiddleInitial ,a.CredentialType,a.RID,b.RID  FROM credentialbank "
    "a,  "
    "tenants b  where (a.RID = b.CredentialID1  or a.RID = b.CredentialID2) and "
    "a.unitkey={unit} "
    "{conditions; then nothing, or Union and the next statement}";
constexpr std::string_view kUnheldCredentials =
    " SELECT  IIf([CredentialType]=0,'Corvin 30 Bit card',IIf([CredentialType]=1,'Standard 26 "
    "Bit "
    "card',IIf([CredentialType]=2,'Transmitter','Corporate 1000 35-Bit Card'))) AS 'Credential "
    "Type',  a.PINNo, a.FacilityCode, iif(a.CredentialType<>2,Null,a.IDCode), "
    "iif(a.CredentialType<>2,Null,a.SequenceNumber), "
    "iif(a.CredentialType<>2,Null,a.ButtonNumber), "
    "'Unassigned' AS 'Assigned To', a.CredentialType, a.RID, -1 AS 'TenantRID'  FROM "
    "credentialbank "
    "AS a  WHERE a.UnitKey={unit} and a.RID Not In (SELECT CredentialID1  FROM   tenants where "
    "unitkey={unit} and Resident=0 and CredentialID1 is not null)  and a.RID Not In (SELECT "
    "CredentialID2  FROM   tenants where   unitkey={unit} and Resident=0 and CredentialID2 is "
    "not "
    "null) {conditions}";

std::vector<Statements> OfCredentials() {
  return {
      {"clsCredential", "pbRetrieveSchedules", {kSchedules}},
      {"clsCredential", "pbRetrieveTenants", {kTenantsByName}},
      {"clsCredential", "pbRetrieveSettingsFromUnit", {kCredentialSettings}},
      {"clsCredential", "pbRetrieveDoorDetails", {kDoors}},
      {"clsCredential", "pbRetrieveCredentials", {kCredentials, kCredential, kHolderOfCredential}},
      {"clsCredential",
       "pbSave",
       {kSameCard, kSameTransmitter, kCardsOfRange, kTransmittersOfRange, kCapacity, kGroupZero,
        kInsertCredential, kInsertTenant, kInsertBackup, kStoreDoor, kHolder, kReleaseFirst,
        kReleaseSecond, kAssignFirst, kAssignSecond}},
      {"clsCredential", "pbDelete", {kHolders, kHolder, kReleaseFirst, kReleaseSecond}},
      {"clsCredential",
       "pbUpdatePinNo",
       {kSameCardBeside, kSameTransmitterBeside, kSameNumber, kRenumberCredential}},
  };
}

std::vector<Statements> OfDirectoryCodes() {
  return {
      {"clsDirCode", "pbRetrieveSchedules", {kSchedules}},
      {"clsDirCode", "pbRetrieveSettingsFromUnit", {kDirCodeSettings}},
      {"clsDirCode", "pbRetrieveDirCodes", {kDirCodes, kDirCode}},
      {"clsDirCode", "pbRetrieveTenants", {kCodeHoldersByName, kCodeHoldersByDisplayName}},
      {"clsDirCode",
       "pbSave",
       {kUniqueCode, kUniqueCodeBeside, kCapacity, kState, kInsertDirCode, kUpdateDirCode,
        kHoldsCode}},
      {"clsDirCode", "pbDelete", {kHeldCode, kCodeOfRow, kState, kReleaseTenants}},
      {"clsDirCode", "pbUpdateDirCode", {kUniqueCode, kUniqueCodeBeside, kState, kRenumberDirCode}},
      {"clsDirCode", "pbFetchDirForMerge", {kCodesForMerge, kPreviousCodes}},
      {"clsDirCode",
       "pbMergeSave",
       {kUpdateFromUnit, kInsertFromUnit, kDeleteAllCodes, kDeleteCode, kReleaseAllAfterMerge,
        kReleaseAfterMerge}},
  };
}

std::vector<Statements> OfReports() {
  return {
      {"clsDirCodeReport", "pbComboData", {kFieldChoices}},
      {"clsDirCodeReport", "pbGetUnitName", {kUnitName}},
      {"clsDirCodeReport", "pbGetEntryLength", {kDirCodeLength, kEntryCodeLength}},
      {"clsDirCodeReport", "pbGenSql", {kFieldNames, kFieldName, kDirCodeReport}},
      {"clsDirCodeReport", "pvDirCodeReportResult", {kGridLayout, kSchedulesOfReport}},
      {"clsDirCodeReport", "pbValidate", {kHeldChosen}},
      {"clsDirCodeReport", "pbDelete", {kDeleteChosen}},
      {"clsCredentialReport", "pbGenSql", {kHeldCredentials, kUnheldCredentials}},
      {"clsCredentialReport", "pbValidate", {kHeldChosen}},
      {"clsCredentialReport", "pbDelete", {kDeleteChosen}},
  };
}

}  // namespace

const std::vector<Statements>& AllStatements() {
  static const std::vector<Statements> all = [] {
    std::vector<Statements> each = OfCredentials();
    for (auto* const more : {OfDirectoryCodes, OfReports}) {
      const std::vector<Statements> further = more();
      each.insert(each.end(), further.begin(), further.end());
    }
    return each;
  }();
  return all;
}

}  // namespace qorcred::contract

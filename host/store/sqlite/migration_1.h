// The first schema.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// Numbers are checked because SQLite would keep a text in a number column; a date column takes the
// canonical text alone. Tenants.MODIFIED is unchecked: hosts also write a time stamp there.
// Identities fit a host's 32-bit numbers. AUTOINCREMENT: rows of other tables refer to identities
// of deleted rows for a while, so an identity is never given out twice.
inline constexpr std::string_view kMigration1 = R"sql(
CREATE TABLE Units (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG NOT NULL UNIQUE CONSTRAINT "UnitKey must be a number"
    CHECK (typeof(UnitKey) = 'integer'),
  UnitName TEXT COLLATE DESKTOP
);

CREATE TABLE UNITTYPES (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  DESCRIPTION TEXT COLLATE DESKTOP NOT NULL UNIQUE,
  TOTAL TEXT COLLATE DESKTOP
);

CREATE TABLE UnitSettings (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG NOT NULL UNIQUE REFERENCES Units(UnitKey),
  UNITTYPE TEXT COLLATE DESKTOP,
  IGNOREFACILITYCODE BOOLEAN DEFAULT 0,
  RECORDDEACTIVATION LONG DEFAULT 0,
  DEACTIVATIONDATE DATETIME,
  DEACTIVATIONDAYS LONG,
  MaxDigitsDirectoryCode LONG,
  MaxDigitsEntryCode LONG,
  CARDDEFAULTFACILITYCODE LONG,
  RFDEFAULTFACILITYCODE LONG,
  CARDTYPE LONG,
  RFTYPE LONG,
  CONSTRAINT "RECORDDEACTIVATION must be a number" CHECK (typeof(RECORDDEACTIVATION) <> 'text'),
  CONSTRAINT "DEACTIVATIONDAYS must be a number" CHECK (typeof(DEACTIVATIONDAYS) <> 'text')
);

CREATE TABLE UnitCounters (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG NOT NULL UNIQUE,
  NextLinkCode LONG
);

CREATE TABLE DOORS (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UNITKEY LONG REFERENCES Units(UnitKey),
  DOORID LONG,
  DOORNAME TEXT COLLATE DESKTOP
);
CREATE INDEX DOORS_Unit ON DOORS (UNITKEY, DOORID);

CREATE TABLE Schedules (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  ScheduleID LONG,
  ScheduleName TEXT COLLATE DESKTOP,
  UnitKey LONG REFERENCES Units(UnitKey),
  Modified LONG DEFAULT 0,
  CONSTRAINT "ScheduleID must be a number" CHECK (typeof(ScheduleID) <> 'text'),
  CONSTRAINT "Modified must be a number" CHECK (typeof(Modified) <> 'text')
);
CREATE INDEX Schedules_Name ON Schedules (UnitKey, ScheduleName);

CREATE TABLE TenantGroup (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG REFERENCES Units(UnitKey),
  IsGroupZero BOOLEAN DEFAULT 0
);
CREATE INDEX TenantGroup_Unit ON TenantGroup (UnitKey);

CREATE TABLE CredentialBank (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG,
  CredentialType LONG,
  PINNo LONG,
  FacilityCode LONG,
  IDCode LONG,
  SequenceNumber LONG,
  ButtonNumber LONG,
  DOORCODE LONG,
  LASTMODIFIEDDATE DATETIME,
  CONSTRAINT "RID must be between 1 and 2147483647" CHECK (RID BETWEEN 1 AND 2147483647),
  CONSTRAINT "UnitKey must be a number" CHECK (typeof(UnitKey) <> 'text'),
  CONSTRAINT "CredentialType must be a number" CHECK (typeof(CredentialType) <> 'text'),
  CONSTRAINT "PINNo must be a number" CHECK (typeof(PINNo) <> 'text'),
  CONSTRAINT "FacilityCode must be a number" CHECK (typeof(FacilityCode) <> 'text'),
  CONSTRAINT "IDCode must be a number" CHECK (typeof(IDCode) <> 'text'),
  CONSTRAINT "SequenceNumber must be a number" CHECK (typeof(SequenceNumber) <> 'text'),
  CONSTRAINT "ButtonNumber must be a number" CHECK (typeof(ButtonNumber) <> 'text'),
  CONSTRAINT "DOORCODE must be a number" CHECK (typeof(DOORCODE) <> 'text')
);
-- Serves the list in its order and the duplicate checks; the only one, because ranges of tens of
-- thousands of credentials are inserted at once.
CREATE INDEX CredentialBank_List ON CredentialBank
  (UnitKey, CredentialType, PINNo, FacilityCode, IDCode, ButtonNumber, SequenceNumber);

CREATE TABLE Tenants (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  TenantID LONG GENERATED ALWAYS AS (RID) VIRTUAL,
  UnitKey LONG,
  LastName TEXT COLLATE DESKTOP,
  FirstName TEXT COLLATE DESKTOP,
  MiddleInitial TEXT COLLATE DESKTOP,
  NameAtUnit TEXT COLLATE DESKTOP,
  Resident LONG DEFAULT 0,
  GROUPID LONG,
  LINKCODE LONG,
  ACTIVETENANT BOOLEAN DEFAULT 0,
  ACTIVESTARTTIME DATETIME,
  ACTIVEENDTIME DATETIME,
  DOORSCHEDULE1 LONG,
  DOORSCHEDULE2 LONG,
  DOORSCHEDULE3 LONG,
  DOORSCHEDULE4 LONG,
  CREDENTIALID1 LONG,
  CREDENTIALID2 LONG,
  DIRECTORYCODE LONG,
  MODIFIED LONG DEFAULT 0,
  LASTMODIFIEDDATE DATETIME,
  CONSTRAINT "RID must be between 1 and 2147483647" CHECK (RID BETWEEN 1 AND 2147483647),
  CONSTRAINT "UnitKey must be a number" CHECK (typeof(UnitKey) <> 'text'),
  CONSTRAINT "Resident must be a number" CHECK (typeof(Resident) <> 'text'),
  CONSTRAINT "GROUPID must be a number" CHECK (typeof(GROUPID) <> 'text'),
  CONSTRAINT "LINKCODE must be a number" CHECK (typeof(LINKCODE) <> 'text'),
  CONSTRAINT "DOORSCHEDULE must be a number" CHECK (
    typeof(DOORSCHEDULE1) <> 'text' AND typeof(DOORSCHEDULE2) <> 'text' AND
    typeof(DOORSCHEDULE3) <> 'text' AND typeof(DOORSCHEDULE4) <> 'text'),
  CONSTRAINT "CREDENTIALID must be a number" CHECK (
    typeof(CREDENTIALID1) <> 'text' AND typeof(CREDENTIALID2) <> 'text'),
  CONSTRAINT "DIRECTORYCODE must be a number" CHECK (typeof(DIRECTORYCODE) <> 'text')
);
CREATE INDEX Tenants_TenantID ON Tenants (TenantID);
CREATE INDEX Tenants_Name ON Tenants (UnitKey, Resident, LastName, FirstName, MiddleInitial);
-- Most tenants have no second credential and no directory code: those cost nothing here.
CREATE INDEX Tenants_Credential1 ON Tenants (UnitKey, CREDENTIALID1)
  WHERE CREDENTIALID1 IS NOT NULL;
CREATE INDEX Tenants_Credential2 ON Tenants (UnitKey, CREDENTIALID2)
  WHERE CREDENTIALID2 IS NOT NULL;
CREATE INDEX Tenants_DirectoryCode ON Tenants (UnitKey, DIRECTORYCODE)
  WHERE DIRECTORYCODE IS NOT NULL;
CREATE INDEX Tenants_LinkCode ON Tenants (UnitKey, LINKCODE);

CREATE TABLE TenantsBackup (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG,
  TenantID LONG
);

CREATE TABLE DirectoryCode (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UNITKEY LONG,
  DIRECTORYCODE DOUBLE,
  PHONENUMBER TEXT COLLATE DESKTOP,
  EXTENSION TEXT COLLATE DESKTOP,
  TIMEDELAY LONG,
  DNDSCHEDULEID LONG,
  ISDNDCHECKED BOOLEAN,
  CFSCHEDULEID LONG,
  ISCFCHECKED BOOLEAN,
  CFPHONENUMBER TEXT COLLATE DESKTOP,
  CFEXTENSION TEXT COLLATE DESKTOP,
  CFTIMEDELAY LONG,
  LASTMODIFIEDDATE DATETIME,
  ACTIVE BOOLEAN,
  STARTDATE DATETIME,
  ENDDATE DATETIME,
  DISPLAYNAME TEXT COLLATE DESKTOP,
  SHOWDISPLAYNAME BOOLEAN,
  SHOWDIRECTORYCODE BOOLEAN,
  MODIFIED LONG DEFAULT 0,
  OLDDIRECTORYCODE DOUBLE,
  CONSTRAINT "RID must be between 1 and 2147483647" CHECK (RID BETWEEN 1 AND 2147483647),
  CONSTRAINT "UNITKEY must be a number" CHECK (typeof(UNITKEY) <> 'text'),
  CONSTRAINT "DIRECTORYCODE must be a number" CHECK (typeof(DIRECTORYCODE) <> 'text'),
  CONSTRAINT "TIMEDELAY must be a number" CHECK (typeof(TIMEDELAY) <> 'text'),
  CONSTRAINT "DNDSCHEDULEID must be a number" CHECK (typeof(DNDSCHEDULEID) <> 'text'),
  CONSTRAINT "CFSCHEDULEID must be a number" CHECK (typeof(CFSCHEDULEID) <> 'text'),
  CONSTRAINT "CFTIMEDELAY must be a number" CHECK (typeof(CFTIMEDELAY) <> 'text'),
  CONSTRAINT "MODIFIED must be a number" CHECK (typeof(MODIFIED) <> 'text'),
  CONSTRAINT "OLDDIRECTORYCODE must be a number" CHECK (typeof(OLDDIRECTORYCODE) <> 'text')
);
CREATE INDEX DirectoryCode_Code ON DirectoryCode (UNITKEY, DIRECTORYCODE);

CREATE TABLE TenantSelectionFields (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  FieldName TEXT COLLATE DESKTOP,
  FieldNameDisplay TEXT COLLATE DESKTOP,
  DisplayWidth LONG,
  GridType LONG,
  Display LONG,
  DisplaySeq LONG
);

CREATE TABLE ProgramSteps (
  RID INTEGER PRIMARY KEY AUTOINCREMENT,
  UnitKey LONG,
  Kind TEXT COLLATE DESKTOP,
  SubjectRID LONG,
  Code TEXT COLLATE DESKTOP,
  QueuedAt DATETIME,
  Sent BOOLEAN DEFAULT 0
);
CREATE INDEX ProgramSteps_Subject ON ProgramSteps (UnitKey, SubjectRID);

-- How full the tables get: without these figures the planner reads a unit's whole tenants to find
-- the holder of one credential. Rows in all, then rows for each prefix of the index's columns.
ANALYZE;
DELETE FROM sqlite_stat1;
INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES
  ('CredentialBank', 'CredentialBank_List', '100000 20000 7000 2 1 1 1 1'),
  ('Tenants', 'Tenants_TenantID', '20000 1'),
  ('Tenants', 'Tenants_Name', '20000 5000 5000 3 1 1'),
  ('Tenants', 'Tenants_Credential1', '20000 5000 1'),
  ('Tenants', 'Tenants_Credential2', '20000 5000 1'),
  ('Tenants', 'Tenants_DirectoryCode', '20000 5000 2'),
  ('Tenants', 'Tenants_LinkCode', '20000 5000 1'),
  ('DirectoryCode', 'DirectoryCode_Code', '4000 1000 1'),
  ('Schedules', 'Schedules_Name', '200 40 1'),
  ('ProgramSteps', 'ProgramSteps_Subject', '20000 5000 2');
ANALYZE sqlite_schema;
)sql";

}  // namespace qorhost::sqlite

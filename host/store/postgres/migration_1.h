// The first schema on a server.
#pragma once

#include <string_view>

namespace qorhost::postgres {

// Columns are named as the catalog spells them. Numbers are integers, dates canonical texts, which
// sort as they should, and texts compare byte by byte: their order and equality for the dialect are
// those of desktop.key(). Tenants.MODIFIED is a text: a merge writes a time stamp there. Identities
// are given out once, from 1 and for all units; the key of a row is that of its unit and its
// identity, so that the rows of a unit can lie together (placement.h).
inline constexpr std::string_view kTables1 = R"sql(
CREATE TABLE "Units" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL UNIQUE,
  "UnitName" text COLLATE "C",
  PRIMARY KEY ("UnitKey", "RID")
);

CREATE TABLE "UNITTYPES" (
  "RID" serial PRIMARY KEY CHECK ("RID" > 0),
  "DESCRIPTION" text COLLATE "C" NOT NULL,
  "TOTAL" text COLLATE "C"
);
CREATE UNIQUE INDEX "UNITTYPES_Description" ON "UNITTYPES" (desktop.key("DESCRIPTION"));

CREATE TABLE "UnitSettings" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL UNIQUE,
  "UNITTYPE" text COLLATE "C",
  "IGNOREFACILITYCODE" integer DEFAULT 0,
  "RECORDDEACTIVATION" integer DEFAULT 0,
  "DEACTIVATIONDATE" text COLLATE "C",
  "DEACTIVATIONDAYS" integer,
  "MaxDigitsDirectoryCode" integer,
  "MaxDigitsEntryCode" integer,
  "CARDDEFAULTFACILITYCODE" integer,
  "RFDEFAULTFACILITYCODE" integer,
  "CARDTYPE" integer,
  "RFTYPE" integer,
  PRIMARY KEY ("UnitKey", "RID")
);

CREATE TABLE "UnitCounters" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL UNIQUE,
  "NextLinkCode" bigint,
  PRIMARY KEY ("UnitKey", "RID")
);

CREATE TABLE "DOORS" (
  "RID" serial CHECK ("RID" > 0),
  "UNITKEY" integer NOT NULL,
  "DOORID" integer,
  "DOORNAME" text COLLATE "C",
  PRIMARY KEY ("UNITKEY", "RID")
);
CREATE INDEX "DOORS_Unit" ON "DOORS" ("UNITKEY", "DOORID");

CREATE TABLE "Schedules" (
  "RID" serial CHECK ("RID" > 0),
  "ScheduleID" integer,
  "ScheduleName" text COLLATE "C",
  "UnitKey" integer NOT NULL,
  "Modified" integer DEFAULT 0,
  PRIMARY KEY ("UnitKey", "RID")
);

CREATE TABLE "TenantGroup" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL,
  "IsGroupZero" integer DEFAULT 0,
  PRIMARY KEY ("UnitKey", "RID")
);

CREATE TABLE "CredentialBank" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL,
  "CredentialType" integer,
  "PINNo" integer,
  "FacilityCode" integer,
  "IDCode" integer,
  "SequenceNumber" integer,
  "ButtonNumber" integer,
  "DOORCODE" integer,
  "LASTMODIFIEDDATE" text COLLATE "C",
  PRIMARY KEY ("UnitKey", "RID")
);
CREATE INDEX "CredentialBank_List" ON "CredentialBank" ("UnitKey", "CredentialType", "PINNo",
  "FacilityCode", "IDCode", "ButtonNumber", "SequenceNumber");

CREATE TABLE "Tenants" (
  "RID" serial CHECK ("RID" > 0),
  "TenantID" integer GENERATED ALWAYS AS ("RID") STORED,
  "UnitKey" integer NOT NULL,
  "LastName" text COLLATE "C",
  "FirstName" text COLLATE "C",
  "MiddleInitial" text COLLATE "C",
  "NameAtUnit" text COLLATE "C",
  "Resident" integer DEFAULT 0,
  "GROUPID" integer,
  "LINKCODE" integer,
  "ACTIVETENANT" integer DEFAULT 0,
  "ACTIVESTARTTIME" text COLLATE "C",
  "ACTIVEENDTIME" text COLLATE "C",
  "DOORSCHEDULE1" integer,
  "DOORSCHEDULE2" integer,
  "DOORSCHEDULE3" integer,
  "DOORSCHEDULE4" integer,
  "CREDENTIALID1" integer,
  "CREDENTIALID2" integer,
  "DIRECTORYCODE" integer,
  "MODIFIED" text COLLATE "C" DEFAULT '0',
  "LASTMODIFIEDDATE" text COLLATE "C",
  PRIMARY KEY ("UnitKey", "RID")
);
CREATE INDEX "Tenants_TenantID" ON "Tenants" ("TenantID");
CREATE INDEX "Tenants_Unit" ON "Tenants" ("UnitKey", "Resident");
CREATE INDEX "Tenants_Credential1" ON "Tenants" ("UnitKey", "CREDENTIALID1")
  WHERE "CREDENTIALID1" IS NOT NULL;
CREATE INDEX "Tenants_Credential2" ON "Tenants" ("UnitKey", "CREDENTIALID2")
  WHERE "CREDENTIALID2" IS NOT NULL;
CREATE INDEX "Tenants_DirectoryCode" ON "Tenants" ("UnitKey", "DIRECTORYCODE")
  WHERE "DIRECTORYCODE" IS NOT NULL;
CREATE INDEX "Tenants_LinkCode" ON "Tenants" ("UnitKey", "LINKCODE");

CREATE TABLE "TenantsBackup" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL,
  "TenantID" integer,
  PRIMARY KEY ("UnitKey", "RID")
);

CREATE TABLE "DirectoryCode" (
  "RID" serial CHECK ("RID" > 0),
  "UNITKEY" integer NOT NULL,
  "DIRECTORYCODE" double precision,
  "PHONENUMBER" text COLLATE "C",
  "EXTENSION" text COLLATE "C",
  "TIMEDELAY" integer,
  "DNDSCHEDULEID" integer,
  "ISDNDCHECKED" integer,
  "CFSCHEDULEID" integer,
  "ISCFCHECKED" integer,
  "CFPHONENUMBER" text COLLATE "C",
  "CFEXTENSION" text COLLATE "C",
  "CFTIMEDELAY" integer,
  "LASTMODIFIEDDATE" text COLLATE "C",
  "ACTIVE" integer,
  "STARTDATE" text COLLATE "C",
  "ENDDATE" text COLLATE "C",
  "DISPLAYNAME" text COLLATE "C",
  "SHOWDISPLAYNAME" integer,
  "SHOWDIRECTORYCODE" integer,
  "MODIFIED" integer DEFAULT 0,
  "OLDDIRECTORYCODE" double precision,
  PRIMARY KEY ("UNITKEY", "RID")
);
CREATE INDEX "DirectoryCode_Code" ON "DirectoryCode" ("UNITKEY", "DIRECTORYCODE");

CREATE TABLE "TenantSelectionFields" (
  "RID" serial PRIMARY KEY CHECK ("RID" > 0),
  "FieldName" text COLLATE "C",
  "FieldNameDisplay" text COLLATE "C",
  "DisplayWidth" integer,
  "GridType" integer,
  "Display" integer,
  "DisplaySeq" integer
);

CREATE TABLE "ProgramSteps" (
  "RID" serial CHECK ("RID" > 0),
  "UnitKey" integer NOT NULL,
  "Kind" text COLLATE "C",
  "SubjectRID" integer,
  "Code" text COLLATE "C",
  "QueuedAt" text COLLATE "C",
  "Sent" integer DEFAULT 0,
  PRIMARY KEY ("UnitKey", "RID")
);
CREATE INDEX "ProgramSteps_Subject" ON "ProgramSteps" ("UnitKey", "SubjectRID");
CREATE INDEX "ProgramSteps_Code" ON "ProgramSteps" ("UnitKey", "Code") WHERE "Code" IS NOT NULL;

-- The fields of the directory-code report, which knows them by these identities. Those that are not
-- displayed come last: the grid's columns and the report's match by position. Widths are in twips.
INSERT INTO "TenantSelectionFields"
  ("RID", "FieldName", "FieldNameDisplay", "DisplayWidth", "GridType", "Display", "DisplaySeq")
VALUES
  (51, 'DirectoryCode.DirectoryCode', 'Directory Code', 1400, 0, 1, 1),
  (52, 'DirectoryCode.PhoneNumber', 'Phone No.', 1700, 0, 1, 2),
  (53, 'DirectoryCode.Extension', 'Phone No. Extension', 1800, 0, 1, 3),
  (54, 'DirectoryCode.TimeDelay', 'Phone No. Delay', 1500, 0, 1, 4),
  (55, 'DirectoryCode.IsDNDChecked', 'Do Not Disturb', 1400, 0, 1, 9),
  (56, 'DirectoryCode.DNDScheduleID', 'DND Schedule', 1600, 0, 1, 10),
  (57, 'DirectoryCode.IsCFChecked', 'Call Forwarding', 1400, 0, 1, 11),
  (58, 'DirectoryCode.CFScheduleID', 'CF Schedule', 1600, 0, 1, 12),
  (59, 'DirectoryCode.CFPhoneNumber', 'CF Phone No.', 1700, 0, 1, 13),
  (60, 'DirectoryCode.CFExtension', 'CF Extension', 1400, 0, 1, 14),
  (61, 'DirectoryCode.CFTimeDelay', 'CF Time Delay', 1400, 0, 1, 15),
  (62, 'DirectoryCode.Active', 'Directory Status', 1500, 0, 1, 6),
  (63, 'DirectoryCode.StartDate', 'Directory Start Date', 1900, 0, 1, 7),
  (64, 'DirectoryCode.EndDate', 'Directory End Date', 1900, 0, 1, 8),
  (65, 'DirectoryCode.DisplayName', 'Display Name', 2200, 0, 1, 5),
  (66, 'DirectoryCode.ShowDisplayName', 'Show Display Name', 1700, 0, 0, 16),
  (67, 'DirectoryCode.ShowDirectoryCode', 'Show Directory Code', 1800, 0, 0, 17);
SELECT setval(pg_get_serial_sequence('"TenantSelectionFields"', 'RID'), 67);

-- The rows of an entry are lines of JSON, in pieces, the first of which stands in the entry. Entries
-- are never deleted; UnitVersions keeps units that were deleted, so that no version comes twice. An
-- entry gets its number while its unit is locked, one of the whole store while all are: the entries
-- of a unit are stored in the order of their numbers, those of several units need not be. The number
-- of one that was undone is left out. "HomeUnit" is the unit with whose rows an entry lies: its own,
-- or 0 for one of the whole store.
CREATE TABLE "AuditEntries" (
  "HomeUnit" integer NOT NULL DEFAULT 0,
  "RID" bigint NOT NULL,
  "At" text COLLATE "C" NOT NULL,
  "Who" text COLLATE "C" NOT NULL,
  "Origin" text COLLATE "C" NOT NULL,
  "UnitKey" integer,
  "Previous" bigint,
  "What" text COLLATE "C" NOT NULL,
  "Rows" text COLLATE "C" NOT NULL,
  "Hash" text COLLATE "C" NOT NULL,
  PRIMARY KEY ("HomeUnit", "RID")
);

CREATE TABLE "AuditRows" (
  "HomeUnit" integer NOT NULL DEFAULT 0,
  "Entry" bigint NOT NULL,
  "Piece" integer NOT NULL,
  "Rows" text COLLATE "C" NOT NULL,
  PRIMARY KEY ("HomeUnit", "Entry", "Piece")
);
CREATE INDEX "AuditRows_Entry" ON "AuditRows" ("Entry");

-- One by one: numbers that a session keeps for later would come behind those of others.
CREATE SEQUENCE "AuditNumbers" AS bigint CACHE 1;

CREATE TABLE "UnitVersions" (
  "UnitKey" integer PRIMARY KEY,
  "Entry" bigint NOT NULL,
  "Mark" bigint NOT NULL
);
)sql";

// What holds between tables, said when they lie where they are to lie: within a unit alone.
inline constexpr std::string_view kLinks1 = R"sql(
ALTER TABLE "UnitSettings" ADD FOREIGN KEY ("UnitKey") REFERENCES "Units" ("UnitKey");
ALTER TABLE "DOORS" ADD FOREIGN KEY ("UNITKEY") REFERENCES "Units" ("UnitKey");
ALTER TABLE "Schedules" ADD FOREIGN KEY ("UnitKey") REFERENCES "Units" ("UnitKey");
)sql";

}  // namespace qorhost::postgres
